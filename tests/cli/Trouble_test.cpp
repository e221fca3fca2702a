#include <future>
#include <sys/stat.h>

#include "codec/GPFcodec.h"
#include "core/BasicCalculations_Tarsk.h"
#include "samples/Random.h"
#include "support/CliFixture.h"
#include "support/FileSizeLimit.h"
#include "support/UncountedChildren.h"

namespace pictavo::tests {
namespace {

constexpr std::uint64_t kFirstPicture = 0xC0000;

class TroubleTest : public CliTest {
  protected:
    Ended Export(const std::string& flash, const std::string& folder = "out",
                 const Arguments& more = {}) const {
        Arguments arguments{"export", flash, "-o", (temp / folder).string(), "--format", "bmp"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return Cli(arguments);
    }

    /// Stopped after a minute, so that a program that blocks fails its test.
    Ended InTime(const Arguments& arguments) const {
        Arguments command{"/usr/bin/timeout", "60", program};
        command.insert(command.end(), arguments.begin(), arguments.end());
        return RunProgram(command, around);
    }
};

TEST_F(TroubleTest, AnEmptyFileIsNoFullflash) {
    const std::string flash = Write("empty.bin", Bytes());
    for (const Arguments& command : {Arguments{"info", flash}, Arguments{"list", flash}}) {
        const Ended ended = Cli(command);
        EXPECT_EQ(ended.status, 1);
        ExpectOneComplaint(ended, {flash, "no fullflash"});
    }
    ExpectRefused(Export(flash), {flash, "no fullflash"});
    ExpectRefused(Cli({"patch", flash, "-o", Path("a.vkp")}), {flash, "no fullflash"});
    ExpectRefused(Cli({"backup-pit", flash, "-o", Path("out")}), {flash, "no fullflash"});
    EXPECT_FALSE(std::filesystem::exists(temp / "out"));
}

TEST_F(TroubleTest, AFolderIsNoFlash) {
    ExpectRefused(Cli({"info", temp.Path().string()}), {temp.Path().string(), "folder"});
    ExpectRefused(Export(temp.Path().string()), {temp.Path().string(), "folder"});
}

TEST_F(TroubleTest, AFlashBelowAFileIsNamed) {
    const std::string below = Write("file", std::string("text")) + "/flash.bin";
    ExpectRefused(Cli({"list", below}), {below, "Not a directory"});
}

TEST_F(TroubleTest, ALinkInACircleIsNamed) {
    std::filesystem::create_symlink("circle", temp / "circle");
    ExpectRefused(Cli({"list", Path("circle")}), {Path("circle")});
}

TEST_F(TroubleTest, APipeDoesNotBlock) {
    const std::string pipe = Path("pipe.png");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string flash = Write(FourIcons());
    ExpectRefused(InTime({"info", pipe}), {pipe, "no regular file"});
    ExpectRefused(InTime({"convert", pipe, Path("out.bmp")}), {pipe, "no regular file"});
    ExpectRefused(InTime({"png-info", pipe}), {pipe, "no regular file"});
    ExpectRefused(InTime({"check", pipe, flash}), {pipe, "no regular file"});
    const Ended patch = InTime({"patch", flash, "-o", Path("a.vkp"), "--picture", "0=" + pipe});
    ExpectRefused(patch, {"picture 0000", pipe});
    ExpectRefused(InTime({"patch", flash, "-o", pipe, "--overwrite"}), {pipe, "no regular file"});
}

TEST_F(TroubleTest, ADeviceIsNoFlash) {
    ExpectRefused(InTime({"info", "/dev/zero"}), {"/dev/zero"});
}

TEST_F(TroubleTest, AFlashCutInsideItsTableStillListsWhatItHoldsAndMissesThePictures) {
    const std::string flash = Write(FourIcons().Size(0xA0000 + 2 * 8));
    const Ended listed = Cli({"list", flash});
    EXPECT_THAT(Lines(listed.out).at(2), ::testing::StartsWith("0001\t001\t16\t16\t8500\tA0008\t"));
    const Ended ended = Export(flash);
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.err, HasSubstr("pictavo-cli: picture 0000: " + flash));
    EXPECT_THAT(ended.err, HasSubstr("pictavo-cli: picture 0001: " + flash));
}

TEST_F(TroubleTest, AFlashCutInsideAPictureSaysWhichOne) {
    FlashBuilder builder = FourIcons();
    const std::string flash = Write(builder.Size(builder.PictureOffset(3) + 10));
    const Ended ended = Export(flash);
    EXPECT_EQ(ended.status, 1);
    ExpectOneComplaint(ended, {"picture 0003: ", flash, "ends inside the picture"});
    ExpectShows(temp / "out/2.bmp", samples::DrawIcon(16, 16, 3), 0x88);
}

TEST_F(TroubleTest, AFlashCutAnywhereEndsWithAStatus) {
    const Bytes whole = FourIcons().Build();
    for (const std::size_t size : {1U, 0x8FC50U, 0x8FD0BU, 0x8FD0CU, 0xA0000U, 0xA0003U, 0xC0000U}) {
        const std::string name = "cut " + std::to_string(size) + ".bin";
        const std::string flash =
            Write(name, Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
        for (const Ended& ended :
             {Cli({"info", flash}), Cli({"list", flash}), Export(flash, "out " + name)}) {
            EXPECT_GE(ended.status, 0) << size;
            EXPECT_LE(ended.status, 1) << size;
        }
    }
}

/// Records whose fields point everywhere, an end or none behind them, and now and then other pointers.
FlashBuilder RandomFlash(std::uint64_t seed) {
    samples::Random random(seed);
    const auto kind = static_cast<FlashKind>(random.Below(4));
    FlashBuilder flash(kind);
    flash.FillWithCode(kFirstPicture, 0x20000, seed).EndTable(random.Below(2) == 0);
    const std::size_t length = samples::HasLongRecords(kind) ? 12 : 8;
    const std::size_t secondTypeByte = samples::HasLongRecords(kind) ? 5 : 3;
    for (std::uint32_t count = random.Below(24); count > 0; --count) {
        samples::Bytes record(length);
        for (std::uint8_t& byte : record) byte = random.Byte();
        if (length == 12) record[1] = record[3] = 0;
        record[secondTypeByte] = random.Below(30) == 0 ? random.Byte() : std::uint8_t{0};
        record[secondTypeByte - 1] = samples::kTypeCodes[random.Below(10)];
        if (random.Below(2) == 0) record[length - 2] = 0x0C;
        if (random.Below(4) == 0) record[secondTypeByte - 1] = random.Byte();
        flash.AddRecord(record);
    }
    if (random.Below(4) == 0)
        flash.Put(samples::kDescriptorPointerOffset, {random.Byte(), random.Byte(), random.Byte(), 0xA0});
    if (random.Below(4) == 0) flash.Size(0x8FD00 + random.Below(0x50000));
    return flash;
}

/// The command, the flash, and what else it takes.
Arguments CommandOn(const std::string& flash, std::uint64_t seed, const std::string& folder) {
    if (seed % 6 == 0) return {"info", flash};
    if (seed % 6 == 1) return {"list", flash, "--json"};
    return {"export", flash, "-o", folder, "--format", seed % 2 == 0 ? "bmp" : "gpf2", "--overwrite"};
}

TEST_F(TroubleTest, TablesThatPointEverywhereEndWithAStatus) {
    const std::string flash = Path("random.bin");
    for (std::uint64_t seed = 0; seed < 150; ++seed) {
        ASSERT_TRUE(RandomFlash(seed).WriteTo(flash));
        const Ended ended = Cli(CommandOn(flash, seed, Path("out")));
        EXPECT_TRUE(ended.status == 0 || ended.status == 1) << "seed " << seed << ": " << ended.status;
        EXPECT_EQ(ended.status == 1, !ended.err.empty()) << "seed " << seed;
        for (const std::string& line : Lines(ended.err))
            EXPECT_TRUE(line.starts_with("pictavo-cli: ")) << "seed " << seed << ": " << line;
    }
}

TEST_F(TroubleTest, AFullDiskLosesTheFilesThatDoNotFitAndNoOther) {
    const std::string flash = Write(FourIcons());
    Ended ended;
    {
        const FileSizeLimit disk(1000);  // three bitmaps of 822 bytes fit, the fourth has 1078
        ended = Export(flash);
    }
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out, "exported 3\n");
    ExpectOneComplaint(ended, {"picture 0003: ", Path("out/3.bmp"), "File too large"});
    EXPECT_EQ(ListNames(temp / "out"), (std::vector<std::string>{"0.bmp", "1.bmp", "2.bmp"}));
}

TEST_F(TroubleTest, AFullDiskLeavesOldFilesAsTheyWere) {
    const std::string flash = Write(FourIcons());
    const std::string patch = Write("fits all.vkp", std::string("; nothing\n"));
    const std::string photo = Write("photo.bmp", samples::MakeBmp(samples::DrawPhoto(60, 60, 1), 24));
    for (const char* name : {"old.vkp", "old.bin", "old.bmp", "old.gpf"}) Write(name, std::string("old"));
    const FileSizeLimit disk(500);
    ExpectRefused(Cli({"patch", flash, "-o", Path("old.vkp"), "--overwrite"}), {Path("old.vkp")});
    ExpectRefused(Cli({"apply", patch, flash, "-o", Path("old.bin"), "--overwrite"}), {Path("old.bin")});
    ExpectRefused(Cli({"convert", photo, Path("old.bmp"), "--overwrite"}), {Path("old.bmp")});
    ExpectRefused(Cli({"convert", photo, Path("old.gpf"), "--overwrite"}), {Path("old.gpf")});
}

TEST_F(TroubleTest, AFileInAFoldersPlaceIsNamed) {
    const std::string flash = Write(FourIcons());
    const std::string below = Write("file", std::string("text")) + "/out";
    ExpectRefused(Cli({"export", flash, "-o", below, "--format", "bmp"}), {below});
    ExpectRefused(Cli({"backup-pit", flash, "-o", below}), {below});
    ExpectRefused(Cli({"patch", flash, "-o", below + "/a.vkp"}), {below + "/a.vkp"});
    ExpectRefused(Cli({"apply", Write("a.vkp", std::string()), flash, "-o", below + "/a.bin"}),
                  {below + "/a.bin"});
}

TEST_F(TroubleTest, AnOutputFolderOfAnImpossibleNameIsNamed) {
    const std::string flash = Write(FourIcons());
    std::filesystem::create_symlink("circle", temp / "circle");
    for (const std::string& name : {std::string(300, 'n'), std::string("circle")}) {
        ExpectRefused(Export(flash, name), {Path(name)});
        ExpectRefused(Cli({"backup-pit", flash, "-o", Path(name)}), {Path(name)});
    }
}

TEST_F(TroubleTest, AFolderOfWorkFilesThatIsMissingFallsBackToTheSystems) {
    around.environment = {"PATH=/usr/bin:/bin", "TMP=" + Path("no such folder"),
                          "TMPDIR=" + runFolders.string()};
    ExpectDone(Export(Write(FourIcons())), "exported 4\n");
    EXPECT_FALSE(std::filesystem::exists(temp / "no such folder"));
}

TEST_F(TroubleTest, OddNamesOfFoldersAndFilesAreNamesLikeAnyOther) {
    const std::string odd = "a b  \"c\" 'd' $e `f` *; \xC3\xBC\xE2\x82\xAC \\ %1";
    for (const char* part : {"tmp", "app", "out"}) std::filesystem::create_directories(temp / odd / part);
    around.environment[1] = "TMP=" + Path(odd + "/tmp");
    const std::string flash = Write(FourIcons(FlashKind::SGold), odd + "/flash " + odd + ".bin");
    const std::string out = Path(odd + "/out");
    ExpectDone(Cli({"export", flash, "-o", out, "--format", "png"}), "exported 4\n");
    ExpectDone(Cli({"convert", out + "/0.png", out + "/" + odd + ".bmp"}));
    const Ended patch = Cli({"patch", flash, "-o", out + "/" + odd + ".vkp", "--picture",
                             "1=" + out + "/" + odd + ".bmp@8", "--picture", "0=" + out + "/0.png@8"});
    EXPECT_EQ(patch.status, 0) << patch.err;
    ExpectDone(Cli({"check", out + "/" + odd + ".vkp", flash}));
    ExpectDone(Cli({"apply", out + "/" + odd + ".vkp", flash, "-o", out + "/" + odd + ".bin"}));
    EXPECT_TRUE(ListNames(temp / odd / "tmp").empty());
}

TEST_F(TroubleTest, NamesThatAreNoUtf8AreTakenAsTheyAre) {
    const std::string odd = "\xFF\xC3 caf\xE9";
    const Drawing red = samples::DrawOneColour(5, 5, {255, 0, 0, 255});
    const std::string flash = Write(FourIcons(FlashKind::SGold), odd + ".bin");
    for (const std::string& picture :
         {Write(odd + ".bmp", samples::MakeBmp(red, 24)), Write(odd + ".gif", samples::MakeGif(red))})
        ExpectDone(Cli({"convert", picture, Path(odd + ".gpf2"), "--overwrite"}));
    ExpectDone(
        Cli({"patch", flash, "-o", Path(odd + ".vkp"), "--picture", "0=" + Path(odd + ".gpf2") + "@8"}),
        "picture 0000: 25 bytes at 00C0000, in place\n");
    EXPECT_TRUE(std::filesystem::exists(temp / (odd + ".vkp")));
}

TEST_F(TroubleTest, NamesWithALeadingDashReachTheConverterAsNames) {
    const Drawing red = samples::DrawOneColour(5, 5, {255, 0, 0, 255});
    Write("-o.png", samples::MakePng(red, samples::PngColour::Rgb));
    around.folder = temp.Path();
    ExpectDone(Cli({"convert", "--", "-o.png", "-out.bmp"}));
    EXPECT_TRUE(ReadBmp(temp / "-out.bmp").shown == red);
    ExpectDone(Cli({"convert", "./-out.bmp", "./-ctype.png"}));
    EXPECT_TRUE(std::filesystem::exists(temp / "-ctype.png"));
}

TEST_F(TroubleTest, RunsAtTheSameTimeNeverMeet) {
    const std::string flash = Write(FlashOf(OneOfEachType(), FlashKind::SGold));
    std::vector<std::future<Ended>> runs;
    for (int run = 0; run < 4; ++run) {
        const std::string picture =
            Write(std::to_string(run) + ".png",
                  samples::MakePng(samples::DrawGradient(30 + run, 20, 1), samples::PngColour::Rgb));
        runs.push_back(std::async(std::launch::async, [this, flash, picture, run] {
            return Cli(
                {"patch", flash, "-o", Path(std::to_string(run) + ".vkp"), "--picture", "0=" + picture});
        }));
    }
    for (std::size_t run = 0; run < runs.size(); ++run)
        ExpectDone(runs[run].get(),
                   "picture 0000: " + std::to_string((30 + run) * 20 * 2) + " bytes at 0040000, moved\n");
}

TEST_F(TroubleTest, RunsAtTheSameTimeIntoOneFolderWriteEachFileOnce) {
    const std::string flash = Write(FlashOf(OneOfEachType()));
    auto other = std::async(std::launch::async, [&] { return Export(flash); });
    const Ended one = Export(flash);
    const Ended two = other.get();
    const auto written = [](const Ended& ended) { return std::stoi(ended.out.substr(9)); };
    EXPECT_EQ(written(one) + written(two), 10);
    EXPECT_EQ(ListNames(temp / "out").size(), 10U);
    EXPECT_EQ(Lines(one.err + two.err).size(), 10U);
}

TEST_F(TroubleTest, AFolderOrPipeInAFilesPlaceIsNotReplaced) {
    const std::string flash = Write(FourIcons());
    const std::string patch = Write("a.vkp", std::string());
    const std::string pipe = Path("pipe.bmp");
    const std::string folder = Path("folder.bmp");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::filesystem::create_directory(folder);
    const std::string gif = Write("a.gif", samples::MakeGif(samples::DrawIcon(4, 4, 1)));
    for (const auto& [out, reason] : {std::pair{pipe, "is no regular file"}, {folder, "is a folder"}}) {
        ExpectRefused(InTime({"apply", patch, flash, "-o", out, "--overwrite"}), {out, reason});
        ExpectRefused(InTime({"convert", gif, out, "--overwrite"}), {out, reason});
    }
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
}

TEST_F(TroubleTest, ALimitOfFileSizesIsReportedLikeAFullDisk) {
    const UncountedChildren children;
    const std::string limited = "ulimit -f 2; exec \"$0\" \"$@\"";  // 1024 bytes
    const Ended ended = RunProgram({"/bin/sh", "-c", limited, program, "export", Write(FourIcons()), "-o",
                                    Path("out"), "--format", "bmp"},
                                   around);
    EXPECT_EQ(ended.status, 1);
    ExpectOneComplaint(ended, {"picture 0003: ", Path("out/3.bmp"), "File too large"});
}

#ifndef __SANITIZE_ADDRESS__  // which takes terabytes of addresses

class LittleMemoryTest : public TroubleTest {
  protected:
    /// With addresses for so many kilobytes in all. The program itself takes less than 60,000; one that reads
    /// pictures takes more.
    Ended Limited(const Arguments& arguments, int kilobytes = 150'000) {
        const std::string limit = "ulimit -v " + std::to_string(kilobytes) + "; exec \"$0\" \"$@\"";
        Arguments command{"/bin/sh", "-c", limit, program};
        command.insert(command.end(), arguments.begin(), arguments.end());
        return RunProgram(command, around);
    }

    static std::string Repeated(const std::string& part, std::size_t megabytes) {
        std::string text;
        while (text.size() < megabytes << 20) text += part;
        return text;
    }
};

TEST_F(LittleMemoryTest, ALackOfMemoryIsTold) {
    const std::string head = std::string(kGpfMagic) + std::string(16, '\0');
    const Ended ended = Limited({"extract-gpn", Write("long.gpn", Repeated(head, 72)), "-o", Path("out")});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.err, "pictavo-cli: there is not enough memory for this\n");
}

TEST_F(LittleMemoryTest, ALongPatchTakesNone) {
    const std::string flash = Write(FourIcons());
    const std::string first = BytesToHex(ByteView(ReadFile(flash)).first(1), false);
    const std::string patch = Write("long.vkp", Repeated("0: " + first + " 5A\n", 16));
    ExpectDone(Limited({"apply", patch, flash, "-o", Path("copy.bin")}));
    EXPECT_EQ(ReadFile(temp / "copy.bin")[0], 0x5A);
}

TEST_F(LittleMemoryTest, ALongListOfMismatchesTakesNone) {
    const std::string flash = Write(FourIcons());
    const std::string patch = Write("long.vkp", Repeated("0: 5A 00\n", 4));
    const Ended ended = Limited({"check", patch, flash, "--json"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_TRUE(ended.out.starts_with("[\n  {\n    \"line\": 1,\n"));
    EXPECT_TRUE(ended.out.ends_with("\"\n  }\n]\n"));
    ExpectOneComplaint(ended, {patch + ": ", " lines differ"});
}

TEST_F(LittleMemoryTest, ANumberInAFileTakesNone) {
    Bytes bmp = samples::MakeBmp(samples::DrawIcon(16, 16, 1), 32);
    for (const std::size_t at : {18U, 22U}) bmp[at + 1] = 0x75;  // 30,000 pixels each way
    Bytes gif = samples::MakeGif(samples::DrawIcon(16, 16, 1));
    for (const std::size_t at : {7U, 9U}) gif[at] = 0xFF;
    Bytes png = samples::MakePng(samples::DrawIcon(16, 16, 1), samples::PngColour::Rgb);
    for (const std::size_t at : {33U, 34U, 35U}) png[at] = 0xF0;  // the length of the second chunk
    for (const auto& [name, bytes] : {std::pair("a.bmp", bmp), {"a.gif", gif}, {"a.png", png}}) {
        const Ended ended = Limited({"convert", Write(name, bytes), Path("out.gpf2")}, 400'000);
        EXPECT_EQ(ended.status, 1) << name;
        EXPECT_THAT(ended.err, HasSubstr(name));
        EXPECT_THAT(ended.err, ::testing::Not(HasSubstr("memory"))) << name;
    }
    EXPECT_EQ(Limited({"png-info", Path("a.png")}).status, 0);
}

#endif

TEST_F(TroubleTest, AReaderThatIsGoneLeavesNoFolderOfTemporaryFiles) {
    const std::string flash = Write(FourIcons());
    const std::string piped = "mkfifo pipe; : <pipe & exec 3>pipe; wait; \"$0\" \"$@\" >&3; echo $? >status";
    around.folder = temp.Path();
    RunProgram({"/bin/sh", "-c", piped, program, "export", flash, "-o", Path("out"), "--format", "bmp"},
               around);
    EXPECT_EQ(ReadText(temp / "status"), "1\n");
    EXPECT_EQ(ListNames(temp / "out").size(), 4U);
    EXPECT_TRUE(std::filesystem::is_empty(runFolders));
}

TEST_F(TroubleTest, AComplaintOfANameWithControlCharactersStaysOneLine) {
    ExpectRefused(Cli({"info", Path("two\nlines\r\x1B[31m\xC2\x9B.bin")}),
                  {Path("two lines  [31m .bin") + ": "});
    ExpectWrongUsage(Cli({"info", Path("a"), Path("two\nlines")}));
}

}  // namespace
}  // namespace pictavo::tests
