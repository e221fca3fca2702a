/// Two windows at a time, one after a crash, and a window beside someone who means harm: what each of them
/// works on is its own.

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

#include "session/SavePatch.h"
#include "session/ShowPicture.h"
#include "session/StartUp.h"
#include "shell/WorkFolder.h"
#include "support/CoreApplication.h"
#include "support/Environment.h"
#include "support/SessionFixture.h"

namespace pictavo::tests {
namespace {

namespace fs = std::filesystem;

/// A session as a window has it, with its work files in the folder that TMP names, or beside it.
class Window : public SessionFixture {
  public:
    explicit Window(const std::string& flashName) {
        auto opened = WorkFolder::Open();
        EXPECT_TRUE(opened);
        folder_.emplace(std::move(*opened));
        session.workFiles.folder = folder_->Path();
        RemoveTemporaries(session);
        Open(FourIcons(), flashName);
    }
    void TestBody() override {}

    void Replace(std::size_t row, std::uint32_t seed) {
        ReplaceBy(row, samples::DrawIcon(16, 16, seed), 0x85);
    }

    Raster Shown(std::size_t row) {
        EXPECT_TRUE(ShowRow(session, row));
        return session.picture.raster;
    }

    std::string Patch() {
        EXPECT_TRUE(SavePatchTo(session, scripted.ports, temp / "new.vkp").outcome.IsClean());
        return ReadText(temp / "new.vkp");
    }

    Session& State() { return session; }
    ScriptedPorts& Ports() { return scripted; }

  private:
    std::optional<WorkFolder> folder_;
};

class TwoAtOnceTest : public ::testing::Test {
  protected:
    TwoAtOnceTest() {
        fs::create_directory(shared);
        environment.Set("TMP", shared.string());
    }

    TempFolder temp;
    const fs::path shared = temp / "shared";
    Environment environment;
};

bool IsSame(const Raster& one, const Raster& other) {
    for (int y = 0; y < Raster::kRows; ++y)
        for (int x = 0; x < Raster::kColumns; ++x)
            if (!(one.At(x, y) == other.At(x, y))) return false;
    return true;
}

TEST_F(TwoAtOnceTest, ReplacementsOfOneNumberStayApart) {
    Window first("first.bin");
    Window second("second.bin");
    first.Replace(0, 21);
    const Raster ofFirst = first.Shown(0);
    second.Replace(0, 22);
    EXPECT_FALSE(IsSame(second.Shown(0), ofFirst));
    EXPECT_TRUE(IsSame(first.Shown(0), ofFirst));
    EXPECT_NE(first.Patch(), second.Patch());
}

TEST_F(TwoAtOnceTest, TheSecondsStartAndEndLeaveTheFirstsFiles) {
    Window first("first.bin");
    first.Replace(1, 21);
    const Raster ofFirst = first.Shown(1);
    { Window second("second.bin"); }
    EXPECT_TRUE(IsSame(first.Shown(1), ofFirst));
}

TEST_F(TwoAtOnceTest, WorkFilesThatACrashLeftAreNoOtherFlashsPictures) {
    const pid_t child = fork();
    if (child == 0) {
        Window crashing("crashing.bin");
        crashing.Replace(0, 21);
        raise(SIGKILL);
    }
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    ASSERT_TRUE(fs::exists(shared / "0000.gpf2")) << "the crash left nothing";
    Window next("next.bin");
    ASSERT_EQ(next.State().workFiles.folder, shared) << "the crash is not in the way";
    const Raster ofFlash = next.Shown(0);
    next.State().workFiles.folder = temp / "nowhere";
    EXPECT_TRUE(IsSame(next.Shown(0), ofFlash));
    EXPECT_FALSE(HasReplacement(next.State(), 0));
}

TEST_F(TwoAtOnceTest, ALinkInAWorkFilesPlaceIsNotWrittenThrough) {
    const fs::path victim = WriteFile(temp / "victim", Bytes{1, 2, 3});
    fs::create_symlink(victim, shared / "0000.gpf2");
    Window window("flash.bin");
    window.Replace(0, 21);
    EXPECT_EQ(ReadFile(victim), (Bytes{1, 2, 3}));
    EXPECT_FALSE(fs::is_symlink(shared / "0000.gpf2"));
}

TEST_F(TwoAtOnceTest, WhereOthersMayWriteTheFolderIsPrivate) {
    fs::permissions(shared, fs::perms::all | fs::perms::sticky_bit);
    Window window("flash.bin");
    EXPECT_EQ(window.State().workFiles.folder.parent_path(), shared);
    EXPECT_EQ(fs::status(window.State().workFiles.folder).permissions(), fs::perms::owner_all);
}

}  // namespace
}  // namespace pictavo::tests
