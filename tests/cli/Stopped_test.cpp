#include "support/CliFixture.h"
#include "support/StartedProgram.h"

namespace pictavo::tests {
namespace {

/// Programs that are ended in the middle of their work.
class StoppedTest : public CliTest {
  protected:
    static constexpr int kPictures = 200;

    std::string ManyPictures() {
        FlashBuilder flash(FlashKind::NewSGold);
        flash.Size(6U << 20);
        const Bytes stored = samples::EncodeForPhone(samples::DrawPhoto(100, 130, 1), 0x08);
        for (int i = 0; i < kPictures; ++i) flash.AddPicture(100, 130, 0x08, stored);
        return Write(flash);
    }

    /// Names of kPictures files in "out", each holding "old".
    void PutOldFiles() const {
        std::filesystem::create_directory(temp / "out");
        for (int i = 0; i < kPictures; ++i) WriteFile(Out(i), std::string("old"));
    }

    std::filesystem::path Out(int number) const { return temp / "out" / (std::to_string(number) + ".bmp"); }

    Arguments ExportOver(const std::string& flash) const {
        return {program, "export", flash, "-o", Path("out"), "--format", "bmp", "--overwrite"};
    }

    /// How many of the files are new; each is either old or whole.
    int CountNew() const {
        int count = 0;
        for (int i = 0; i < kPictures; ++i) {
            const std::uintmax_t size = std::filesystem::file_size(Out(i));
            EXPECT_TRUE(size == 3 || size == 54 + 100 * 130 * 3) << Out(i) << ": " << size << " bytes";
            if (size == 3) continue;
            EXPECT_TRUE(ReadBmp(Out(i)).shown == ReadBmp(Out(0)).shown) << Out(i);
            ++count;
        }
        return count;
    }
};

TEST_F(StoppedTest, AKilledExportLeavesOnlyWholeFilesAndOldOnes) {
    leftoversAreFine = true;
    const std::string flash = ManyPictures();
    for (const int milliseconds : {0, 3, 9}) {
        PutOldFiles();
        StartedProgram started(ExportOver(flash), around);
        ASSERT_TRUE(Await([&] { return std::filesystem::file_size(Out(0)) != 3; }));
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
        started.End(SIGKILL);
        EXPECT_GE(CountNew(), 1);
        ExpectShows(Out(0), samples::DrawPhoto(100, 130, 1), 0x08);
    }
}

TEST_F(StoppedTest, AKilledApplyLeavesTheOldCopyAsItWas) {
    leftoversAreFine = true;
    FlashBuilder builder = FourIcons();
    const std::string flash = Write(builder.Size(48U << 20));
    const std::string patch = Write("a.vkp", std::string("; nothing\n"));
    Write("copy.bin", std::string("old"));
    StartedProgram started({program, "apply", patch, flash, "-o", Path("copy.bin"), "--overwrite"}, around);
    ASSERT_TRUE(Await([&] { return started.BytesWritten() > 1U << 20; }));
    EXPECT_EQ(started.End(SIGKILL).status, -SIGKILL);  // and copy.bin is protected
}

TEST_F(StoppedTest, APoliteEndFinishesTheFileAtHandAndLeavesNothingBehind) {
    const std::string flash = ManyPictures();
    for (const int signal : {SIGINT, SIGTERM}) {
        PutOldFiles();
        StartedProgram started(ExportOver(flash), around);
        ASSERT_TRUE(Await([&] { return std::filesystem::file_size(Out(0)) != 3; }));
        const Ended ended = started.End(signal);
        EXPECT_EQ(ended.status, 1);
        ExpectOneComplaint(ended, {"stopped"});
        EXPECT_EQ(ended.out, "exported " + std::to_string(CountNew()) + "\n");
    }
}

}  // namespace
}  // namespace pictavo::tests
