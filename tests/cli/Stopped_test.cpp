#include "codec/GPFcodec.h"
#include "support/CliFixture.h"
#include "support/StartedProgram.h"

namespace pictavo::tests {
namespace {

/// Programs that are ended in the middle of their work.
class StoppedTest : public CliTest {
  protected:
    static constexpr int kPictures = 200;
    static constexpr std::uint64_t kSources = 30;
    static constexpr std::uint64_t kSourceLength = 2U << 20;

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

    /// Three pictures that each take the converter `seconds`, over an old patch.
    Arguments SlowPatch(const Arguments& pictures, const std::string& seconds) {
        WriteFile(temp / "old.vkp", std::string("old"));
        Protect(temp / "old.vkp");
        Arguments arguments{program,
                            "patch",
                            Write(FourIcons(FlashKind::SGold)),
                            "-o",
                            Path("old.vkp"),
                            "--overwrite",
                            "--converter",
                            SlowConverter(seconds)};
        arguments.insert(arguments.end(), pictures.begin(), pictures.end());
        return arguments;
    }

    Arguments PngsOneByOne() {
        const Bytes png = samples::MakePng(samples::DrawIcon(8, 8, 1), samples::PngColour::Rgb);
        Arguments pictures;
        for (const std::string number : {"0", "1", "2"})
            pictures.insert(pictures.end(), {"--picture", number + "=" + Write(number + ".png", png)});
        return pictures;
    }

    Arguments PngsOfAFolder() {
        PngsOneByOne();
        return {"--folder", temp.Path().string()};
    }

    /// Ends the program during its first conversion.
    Ended EndWhileConverting(const Arguments& command, int signal) const {
        StartedProgram started(command, around);
        EXPECT_TRUE(Await([&] { return Conversions() > 0; }));
        Ended ended = started.End(signal);
        EXPECT_TRUE(Await([&] { return Conversions() % 2 == 0; }));  // a killed program's converter goes on
        return ended;
    }

    /// Ends the program in the middle of a long output.
    Ended EndWhileWriting(const Arguments& command, int signal) const {
        StartedProgram started(command, around);
        EXPECT_TRUE(Await([&] { return started.BytesWritten() > 1U << 20; }));
        return started.End(signal);
    }

    /// Its block of pictures, at 0xC0000, is 60 MiB long.
    std::string LongFlash() {
        FlashBuilder flash(FlashKind::NewSGold);
        flash.Size(64U << 20);
        for (std::uint64_t i = 0; i <= kSources; ++i)
            flash.AddPictureAt(0xC0000 + i * kSourceLength, 4, 4, 0x05, Bytes(16, 1));
        return Write(flash);
    }

    /// A source for each picture of LongFlash; they fill all of its block.
    std::string LongSources() const {
        std::filesystem::create_directory(temp / "from");
        const Bytes file = ComposeGpf({4, 4, 0x05, 0, true}, Bytes(16, 7));
        for (std::uint64_t i = 0; i <= kSources; ++i) {
            const auto path = WriteFile(temp / "from" / (std::to_string(i) + ".gpf2"), file);
            if (i < kSources) std::filesystem::resize_file(path, kGpfHeaderSize + kSourceLength);
        }
        return Path("from");
    }

    /// "out" with old files of both names.
    std::string OldBlocks() {
        std::filesystem::create_directory(temp / "out");
        for (const char* name : {"out/0x00A0000.bin", "out/0x00C0000.bin"})
            WriteFile(temp / name, std::string("old"));
        return Path("out");
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
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        PutOldFiles();
        StartedProgram started(ExportOver(flash), around);
        ASSERT_TRUE(Await([&] { return std::filesystem::file_size(Out(0)) != 3; }));
        const Ended ended = started.End(signal);
        EXPECT_EQ(ended.status, 1);
        ExpectOneComplaint(ended, {"stopped"});
        EXPECT_EQ(ended.out, "exported " + std::to_string(CountNew()) + "\n");
    }
}

TEST_F(StoppedTest, AStoppedPatchKeepsTheOldOneAndTakesNoFurtherPicture) {
    const Ended ended = EndWhileConverting(SlowPatch(PngsOneByOne(), "0.2"), SIGINT);
    ExpectRefused(ended, {"stopped"});
    EXPECT_EQ(Conversions(), 2U);
}

TEST_F(StoppedTest, AStoppedFolderOfPicturesGivesNoPatch) {
    const Ended ended = EndWhileConverting(SlowPatch(PngsOfAFolder(), "0.2"), SIGTERM);
    ExpectRefused(ended, {"stopped"});
    EXPECT_EQ(Conversions(), 2U);
}

TEST_F(StoppedTest, AKilledPatchKeepsTheOldOne) {
    leftoversAreFine = true;
    EXPECT_EQ(EndWhileConverting(SlowPatch(PngsOneByOne(), "0.2"), SIGKILL).status, -SIGKILL);
}

TEST_F(StoppedTest, ASecondInterruptEndsTheProgramAtOnce) {
    leftoversAreFine = true;
    const Arguments command = SlowPatch(PngsOneByOne(), "1");
    for (const int second : {SIGINT, SIGTERM, SIGHUP}) {
        std::filesystem::remove(temp / "conversions");
        StartedProgram started(command, around);
        ASSERT_TRUE(Await([&] { return Conversions() > 0; }));
        started.Send(SIGINT);
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        EXPECT_EQ(started.End(second).status, -second);
        EXPECT_TRUE(Await([&] { return Conversions() == 2; }));
    }
}

TEST_F(StoppedTest, AHangUpThatWasToBeIgnoredIsIgnored) {
    const std::string bmp =
        Write("in.png", samples::MakePng(samples::DrawIcon(8, 8, 1), samples::PngColour::Rgb));
    const Arguments command{"/usr/bin/nohup", program,       "convert",           bmp,
                            Path("out.bmp"),  "--converter", SlowConverter("0.2")};
    ExpectDone(EndWhileConverting(command, SIGHUP));
    EXPECT_TRUE(std::filesystem::exists(temp / "out.bmp"));
}

TEST_F(StoppedTest, AKilledConvertKeepsTheOldFile) {
    leftoversAreFine = true;
    const std::string bmp = Write("in.bmp", samples::MakeBmp(samples::DrawIcon(8, 8, 1), 24));
    const std::string old = Write("old.png", std::string("old"));
    EXPECT_EQ(EndWhileConverting(
                  {program, "convert", bmp, old, "--overwrite", "--converter", SlowConverter("0.2")}, SIGKILL)
                  .status,
              -SIGKILL);
}

TEST_F(StoppedTest, AStoppedConvertKeepsTheOldFile) {
    const std::string png =
        Write("in.png", samples::MakePng(samples::DrawIcon(8, 8, 1), samples::PngColour::Rgb));
    const std::string old = Write("old.bmp", std::string("old"));
    ExpectRefused(
        EndWhileConverting({program, "convert", png, old, "--overwrite", "--converter", SlowConverter("0.2")},
                           SIGINT),
        {"stopped"});
}

TEST_F(StoppedTest, AnApplyThatIsInterruptedEndsAtOnceAndKeepsTheOldCopy) {
    FlashBuilder builder = FourIcons();
    const std::string flash = Write(builder.Size(48U << 20));
    const std::string patch = Write("a.vkp", std::string("; nothing\n"));
    const std::string copy = Write("copy.bin", std::string("old"));
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        EXPECT_EQ(EndWhileWriting({program, "apply", patch, flash, "-o", copy, "--overwrite"}, signal).status,
                  -signal);
}

TEST_F(StoppedTest, AKilledBackupKeepsTheOldBlock) {
    leftoversAreFine = true;
    const Arguments backup{program, "backup-pit", LongFlash(), "-o", OldBlocks(), "--overwrite"};
    Protect(temp / "out/0x00C0000.bin");
    EXPECT_EQ(EndWhileWriting(backup, SIGKILL).status, -SIGKILL);
    EXPECT_EQ(std::filesystem::file_size(temp / "out/0x00A0000.bin"),
              8 * (kSources + 1));  // it was whole already
}

TEST_F(StoppedTest, AnInterruptedBackupWritesItsBlockToTheEnd) {
    const Arguments backup{program, "backup-pit", LongFlash(), "-o", OldBlocks(), "--overwrite"};
    ExpectDone(EndWhileWriting(backup, SIGINT));
    EXPECT_EQ(std::filesystem::file_size(temp / "out/0x00C0000.bin"), kSources * kSourceLength + 16);
}

TEST_F(StoppedTest, AKilledRebuildKeepsBothOldFiles) {
    leftoversAreFine = true;
    const Arguments rebuild{program,       "rebuild-pit", LongFlash(), "--from",
                            LongSources(), "-o",          OldBlocks(), "--overwrite"};
    for (const char* name : {"out/0x00A0000.bin", "out/0x00C0000.bin"}) Protect(temp / name);
    EXPECT_EQ(EndWhileWriting(rebuild, SIGKILL).status, -SIGKILL);
}

TEST_F(StoppedTest, AStoppedRebuildKeepsBothOldFiles) {
    const Arguments rebuild{program,       "rebuild-pit", LongFlash(), "--from",
                            LongSources(), "-o",          OldBlocks(), "--overwrite"};
    for (const char* name : {"out/0x00A0000.bin", "out/0x00C0000.bin"}) Protect(temp / name);
    ExpectRefused(EndWhileWriting(rebuild, SIGINT), {"stopped"});
}

}  // namespace
}  // namespace pictavo::tests
