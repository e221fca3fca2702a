#include "codec/GPFcodec.h"
#include "support/CliFixture.h"
#include "support/StartedProgram.h"

namespace pictavo::tests {
namespace {

/// Programs that are ended in the middle of their work.
class StoppedTest : public CliTest {
  protected:
    // So much work that a test which is late still comes before its end.
    static constexpr int kPictures = 2000;
    static constexpr int kRounds = 20;
    static constexpr std::uintmax_t kLongFlash = std::uintmax_t{1} << 30;
    static constexpr std::uint64_t kSources = 30;
    static constexpr std::uint64_t kShortSource = 2U << 20;
    static constexpr std::uint64_t kLongSource = 15U << 20;

    /// Records of one and the same picture.
    std::string ManyPictures() {
        FlashBuilder flash(FlashKind::NewSGold);
        flash.Size(2U << 20);
        const Bytes stored = samples::EncodeForPhone(samples::DrawPhoto(100, 130, 1), 0x08);
        for (int i = 0; i < kPictures; ++i) flash.AddPictureAt(0xC0000, 100, 130, 0x08, stored);
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

    /// A converter that ends no picture before "go" lies beside it, and then makes a bitmap of any; it tells
    /// of its conversions as SlowConverter does.
    std::string WaitingConverter() {
        const std::string log = " >>'" + Path("conversions") + "'\n";
        const std::string ready = Write("ready", samples::MakeBmp(samples::DrawIcon(8, 8, 1), 24));
        return WriteProgram("waiting", "#!/bin/sh\necho begun" + log + "while [ -e \"$0\" ] && [ ! -e '" +
                                           Path("go") + "' ]; do sleep 0.01; done\n" +
                                           "while [ $1 != -o ]; do shift; done\ncp '" + ready +
                                           "' \"$2\"\necho ended" + log);
    }

    void LetTheConverterGoOn() const { WriteFile(temp / "go", Bytes()); }

    /// Three pictures for the converter, over an old patch.
    Arguments PatchThatWaits(const Arguments& pictures) {
        WriteFile(temp / "old.vkp", std::string("old"));
        Protect(temp / "old.vkp");
        Arguments arguments{program,       "patch",           Write(FourIcons(FlashKind::SGold)),
                            "-o",          Path("old.vkp"),   "--overwrite",
                            "--converter", WaitingConverter()};
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
        started.Send(signal);
        EXPECT_TRUE(Await([&] { return !started.Handles(signal); }));  // once it was noted
        LetTheConverterGoOn();
        Ended ended = started.AwaitEnd();
        EXPECT_TRUE(Await([&] { return Conversions() % 2 == 0; }));  // a killed program's converter goes on
        return ended;
    }

    /// Ends the program once it `isAtWork` on what is prepared, and tries again where a busy machine let it
    /// come to its own end before.
    Ended EndAtWork(const Arguments& command, int signal, const std::function<void()>& prepare,
                    const std::function<bool(const StartedProgram&)>& isAtWork) const {
        for (int round = 1;; ++round) {
            prepare();
            StartedProgram started(command, around);
            EXPECT_TRUE(Await([&] { return isAtWork(started) || started.HasEnded(); }));
            Ended ended = started.End(signal);
            if (ended.status != 0 || round == kRounds) return ended;
        }
    }

    /// Ends the program in the middle of a long output.
    Ended EndWhileWriting(const Arguments& command, int signal) const {
        return EndAtWork(
            command, signal, [this] { PutBackProtected(); },
            [](const StartedProgram& started) { return started.BytesWritten() > 1U << 20; });
    }

    /// Its block of pictures, at 0xC0000, is as long as so many sources.
    std::string LongFlash(std::uint64_t sourceLength) {
        FlashBuilder flash(FlashKind::NewSGold);
        flash.Size(2U << 20);
        for (std::uint64_t i = 0; i <= kSources; ++i)
            flash.AddPictureAt(0xC0000 + i * sourceLength, 4, 4, 0x05, {});
        const std::filesystem::path path = temp / "flash.bin";
        EXPECT_TRUE(flash.WriteTo(path));
        std::filesystem::resize_file(path,
                                     (kSources + 2) * sourceLength);  // pictures in a hole, without room
        return path.string();
    }

    /// A source for each picture of the long flash; they fill all of its block.
    std::string LongSources() const {
        std::filesystem::create_directory(temp / "from");
        const Bytes file = ComposeGpf({4, 4, 0x05, 0, true}, Bytes(16, 7));
        for (std::uint64_t i = 0; i <= kSources; ++i) {
            const auto path = WriteFile(temp / "from" / (std::to_string(i) + ".gpf2"), file);
            if (i < kSources) std::filesystem::resize_file(path, kGpfHeaderSize + kLongSource);
        }
        return Path("from");
    }

    Arguments RebuildOver() {
        const std::string flash = LongFlash(kLongSource);
        return {program, "rebuild-pit", flash, "--from", LongSources(), "-o", OldBlocks(), "--overwrite"};
    }

    /// A long copy over an old one.
    Arguments ApplyOver() {
        const std::filesystem::path flash = temp / "flash.bin";
        EXPECT_TRUE(FourIcons().WriteTo(flash));
        std::filesystem::resize_file(flash, kLongFlash);  // a hole takes no room
        const std::string patch = Write("a.vkp", std::string("; nothing\n"));
        const std::string copy = Write("copy.bin", std::string("old"));
        return {program, "apply", patch, flash.string(), "-o", copy, "--overwrite"};
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
    EXPECT_EQ(EndWhileWriting(ApplyOver(), SIGKILL).status, -SIGKILL);  // and the old copy is protected
}

TEST_F(StoppedTest, APoliteEndFinishesTheFileAtHandAndLeavesNothingBehind) {
    const std::string flash = ManyPictures();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const Ended ended = EndAtWork(
            ExportOver(flash), signal, [this] { PutOldFiles(); },
            [this](const StartedProgram&) { return std::filesystem::file_size(Out(0)) != 3; });
        EXPECT_EQ(ended.status, 1);
        ExpectOneComplaint(ended, {"stopped"});
        EXPECT_EQ(ended.out, "exported " + std::to_string(CountNew()) + "\n");
    }
}

TEST_F(StoppedTest, AStoppedPatchKeepsTheOldOneAndTakesNoFurtherPicture) {
    const Ended ended = EndWhileConverting(PatchThatWaits(PngsOneByOne()), SIGINT);
    ExpectRefused(ended, {"stopped"});
    EXPECT_EQ(Conversions(), 2U);
}

TEST_F(StoppedTest, AStoppedFolderOfPicturesGivesNoPatch) {
    const Ended ended = EndWhileConverting(PatchThatWaits(PngsOfAFolder()), SIGTERM);
    ExpectRefused(ended, {"stopped"});
    EXPECT_EQ(Conversions(), 2U);
}

TEST_F(StoppedTest, AKilledPatchKeepsTheOldOne) {
    leftoversAreFine = true;
    EXPECT_EQ(EndWhileConverting(PatchThatWaits(PngsOneByOne()), SIGKILL).status, -SIGKILL);
}

TEST_F(StoppedTest, ASecondInterruptEndsTheProgramAtOnce) {
    leftoversAreFine = true;
    const Arguments command = PatchThatWaits(PngsOneByOne());
    for (const int second : {SIGINT, SIGTERM, SIGHUP}) {
        for (const char* name : {"conversions", "go"}) std::filesystem::remove(temp / name);
        StartedProgram started(command, around);
        ASSERT_TRUE(Await([&] { return Conversions() > 0; }));
        started.Send(SIGINT);
        ASSERT_TRUE(Await([&] { return !started.Handles(second); }));
        EXPECT_EQ(started.End(second).status, -second);
        LetTheConverterGoOn();
        EXPECT_TRUE(Await([&] { return Conversions() == 2; }));
    }
}

TEST_F(StoppedTest, AHangUpThatWasToBeIgnoredIsIgnored) {
    const std::string bmp =
        Write("in.png", samples::MakePng(samples::DrawIcon(8, 8, 1), samples::PngColour::Rgb));
    const Arguments command{"/usr/bin/nohup", program,       "convert",         bmp,
                            Path("out.bmp"),  "--converter", WaitingConverter()};
    ExpectDone(EndWhileConverting(command, SIGHUP));
    EXPECT_TRUE(std::filesystem::exists(temp / "out.bmp"));
}

TEST_F(StoppedTest, AKilledConvertKeepsTheOldFile) {
    leftoversAreFine = true;
    const std::string bmp = Write("in.bmp", samples::MakeBmp(samples::DrawIcon(8, 8, 1), 24));
    const std::string old = Write("old.png", std::string("old"));
    const Arguments command{program, "convert", bmp, old, "--overwrite", "--converter", WaitingConverter()};
    EXPECT_EQ(EndWhileConverting(command, SIGKILL).status, -SIGKILL);
}

TEST_F(StoppedTest, AStoppedConvertKeepsTheOldFile) {
    const std::string png =
        Write("in.png", samples::MakePng(samples::DrawIcon(8, 8, 1), samples::PngColour::Rgb));
    const std::string old = Write("old.bmp", std::string("old"));
    const Arguments command{program, "convert", png, old, "--overwrite", "--converter", WaitingConverter()};
    ExpectRefused(EndWhileConverting(command, SIGINT), {"stopped"});
}

TEST_F(StoppedTest, AnApplyThatIsInterruptedEndsAtOnceAndKeepsTheOldCopy) {
    const Arguments apply = ApplyOver();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        EXPECT_EQ(EndWhileWriting(apply, signal).status, -signal);
}

TEST_F(StoppedTest, AKilledBackupKeepsTheOldBlock) {
    leftoversAreFine = true;
    const Arguments backup{program, "backup-pit", LongFlash(kLongSource), "-o", OldBlocks(), "--overwrite"};
    Protect(temp / "out/0x00C0000.bin");
    EXPECT_EQ(EndWhileWriting(backup, SIGKILL).status, -SIGKILL);
    EXPECT_EQ(std::filesystem::file_size(temp / "out/0x00A0000.bin"),
              8 * (kSources + 1));  // it was whole already
}

TEST_F(StoppedTest, AnInterruptedBackupWritesItsBlockToTheEnd) {
    const Arguments backup{program, "backup-pit", LongFlash(kShortSource), "-o", OldBlocks(), "--overwrite"};
    StartedProgram started(backup, around);
    ASSERT_TRUE(Await([&] { return started.BytesWritten() > 1U << 20 || started.HasEnded(); }));
    ExpectDone(started.End(SIGINT));
    EXPECT_EQ(std::filesystem::file_size(temp / "out/0x00C0000.bin"), kSources * kShortSource + 16);
}

TEST_F(StoppedTest, AKilledRebuildKeepsBothOldFiles) {
    leftoversAreFine = true;
    const Arguments rebuild = RebuildOver();
    for (const char* name : {"out/0x00A0000.bin", "out/0x00C0000.bin"}) Protect(temp / name);
    EXPECT_EQ(EndWhileWriting(rebuild, SIGKILL).status, -SIGKILL);
}

TEST_F(StoppedTest, AStoppedRebuildKeepsBothOldFiles) {
    const Arguments rebuild = RebuildOver();
    for (const char* name : {"out/0x00A0000.bin", "out/0x00C0000.bin"}) Protect(temp / name);
    ExpectRefused(EndWhileWriting(rebuild, SIGINT), {"stopped"});
}

}  // namespace
}  // namespace pictavo::tests
