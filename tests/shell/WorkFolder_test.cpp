#include "shell/WorkFolder.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

#include "support/Environment.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

namespace fs = std::filesystem;

constexpr const char* kUnwritable = "/proc";
constexpr uid_t kOtherUser = 12345;

class WorkFolderTest : public ::testing::Test {
  protected:
    WorkFolderTest() {
        fs::create_directory(named);
        fs::create_directory(system);
        environment.Set("TMP", named.string());
        environment.Set("TMPDIR", system.string());
    }

    static WorkFolder OpenOne() {
        auto opened = WorkFolder::Open();
        EXPECT_TRUE(opened);
        return std::move(*opened);
    }

    /// Of the name, and for this user only.
    static void ExpectPrivate(const fs::path& folder, const fs::path& parent) {
        EXPECT_EQ(folder.parent_path(), parent);
        EXPECT_TRUE(folder.filename().string().starts_with("pictavo-")) << folder;
        EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
    }

    TempFolder temp;
    const fs::path named = temp / "named";
    const fs::path system = temp / "system";
    Environment environment;
};

TEST_F(WorkFolderTest, IsTheOneThatTmpNames) {
    const WorkFolder folder = OpenOne();
    EXPECT_EQ(folder.Path(), named);
}

TEST_F(WorkFolderTest, OfTmpKeepsAllThatIsInIt) {
    WriteFile(named / "0001.gpf2", Bytes(1));
    {
        const WorkFolder folder = OpenOne();
        WriteFile(named / "PNGtemp.bmp", Bytes(1));
    }
    EXPECT_EQ(ListNames(named), (std::vector<std::string>{"0001.gpf2", "PNGtemp.bmp"}));
}

TEST_F(WorkFolderTest, IsAPrivateOneInsideWhileAnotherHoldsTmp) {
    const WorkFolder first = OpenOne();
    const WorkFolder second = OpenOne();
    const WorkFolder third = OpenOne();
    ExpectPrivate(second.Path(), named);
    ExpectPrivate(third.Path(), named);
    EXPECT_NE(second.Path(), third.Path());
}

TEST_F(WorkFolderTest, IsThatOfTmpAgainOnceItIsFree) {
    { const WorkFolder first = OpenOne(); }
    EXPECT_EQ(OpenOne().Path(), named);
}

TEST_F(WorkFolderTest, StaysHeldWhenItMoves) {
    WorkFolder first = OpenOne();
    const WorkFolder moved = std::move(first);
    EXPECT_EQ(moved.Path(), named);
    EXPECT_NE(OpenOne().Path(), named);
}

TEST_F(WorkFolderTest, OfAKilledProgramIsFree) {
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const auto held = WorkFolder::Open();
        if (write(ready[1], held ? "y" : "n", 1) != 1) _exit(1);
        for (;;) pause();
    }
    close(ready[1]);
    char answer = 0;
    EXPECT_EQ(read(ready[0], &answer, 1), 1);
    EXPECT_EQ(answer, 'y');
    EXPECT_NE(OpenOne().Path(), named);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    close(ready[0]);
    EXPECT_EQ(OpenOne().Path(), named);
}

TEST_F(WorkFolderTest, IsPrivateInTheSystemsFolderWhenTmpNamesNone) {
    environment.Unset("TMP");
    ExpectPrivate(OpenOne().Path(), system);
    for (const fs::path& name : {fs::path(), named / "gone", WriteFile(temp / "file", Bytes(1))}) {
        environment.Set("TMP", name.string());
        const WorkFolder folder = OpenOne();
        ExpectPrivate(folder.Path(), system);
    }
    EXPECT_TRUE(ListNames(system).empty());
}

TEST_F(WorkFolderTest, ThatIsPrivateGoesAtTheEndWithItsTemporaries) {
    environment.Unset("TMP");
    {
        const WorkFolder folder = OpenOne();
        WriteFile(folder.Path() / "PNGtemp.bmp", Bytes(1));
        WriteFile(folder.Path() / "PNGpatch.vkp", Bytes(1));
    }
    EXPECT_TRUE(ListNames(system).empty());
}

TEST_F(WorkFolderTest, ThatIsPrivateStaysWithItsWorkFiles) {
    const WorkFolder first = OpenOne();
    fs::path path;
    {
        const WorkFolder second = OpenOne();
        path = second.Path();
        WriteFile(path / "0007.gpf2", Bytes(1));
    }
    EXPECT_EQ(ListNames(path), std::vector<std::string>{"0007.gpf2"});
}

TEST_F(WorkFolderTest, IsAbsolute) {
    const fs::path before = fs::current_path();
    fs::current_path(temp.Path());
    environment.Set("TMP", "named");
    EXPECT_EQ(OpenOne().Path(), named);
    fs::current_path(before);
}

TEST_F(WorkFolderTest, FollowsNoLinkInTheLocksPlace) {
    const fs::path target = temp / "planted";
    fs::create_symlink(target, named / "pictavo.lock");
    const WorkFolder folder = OpenOne();
    ExpectPrivate(folder.Path(), named);
    EXPECT_FALSE(fs::exists(target));
    EXPECT_TRUE(fs::is_symlink(named / "pictavo.lock"));
}

TEST_F(WorkFolderTest, IsNotThatOfTmpWithAnotherUsersLock) {
    const fs::path lock = WriteFile(named / "pictavo.lock", Bytes(1));
    if (chown(lock.c_str(), kOtherUser, kOtherUser) != 0)
        GTEST_SKIP() << "only a privileged user can give files away";
    ExpectPrivate(OpenOne().Path(), named);
    EXPECT_TRUE(fs::exists(lock));
}

TEST_F(WorkFolderTest, TakesOverALockThatNobodyHolds) {
    WriteFile(named / "pictavo.lock", Bytes());
    EXPECT_EQ(OpenOne().Path(), named);
}

TEST_F(WorkFolderTest, CanNotBeWhereNothingCanBeWritten) {
    environment.Set("TMP", kUnwritable);
    const auto opened = WorkFolder::Open();
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.error().kind, ErrorKind::WriteFailed);
    EXPECT_EQ(opened.error().path, kUnwritable);
}

}  // namespace
}  // namespace pictavo::tests
