#include "core/BasicCalculations_Tarsk.h"
#include "samples/Sample.h"
#include "support/CliFixture.h"
#include "support/FileSizeLimit.h"
#include "support/StartedProgram.h"

namespace pictavo::tests {
namespace {

using std::string_literals::operator""s;

class CarveTest : public CliTest {
  protected:
    Ended Carve(const std::string& kind, const std::string& source, const Arguments& more = {}) const {
        Arguments arguments{"carve", kind, source, "-o", Path("out")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return Cli(arguments);
    }

    static std::string Fill(std::size_t count) { return std::string(count, 'x'); }

    /// A GIF of `length` bytes, at least 8.
    static std::string Gif(std::size_t length) { return "GIF89a" + Fill(length - 8) + "\x00\x3B"s; }

    using Names = std::vector<std::string>;
};

TEST_F(CarveTest, PrintsHowManyFilesItFound) {
    const std::string source = Write("a.bin", Gif(20) + Fill(9) + Gif(30));
    ExpectDone(Carve("gif", source), "found 2\n");
    EXPECT_EQ(ListNames(temp / "out"), (Names{"00000000.gif", "0000001D.gif"}));
    EXPECT_EQ(ReadText(temp / "out/0000001D.gif"), Gif(30));
}

TEST_F(CarveTest, ASourceWithoutAMatchHasNone) {
    ExpectDone(Carve("png", Write("a.bin", Fill(5000))), "found 0\n");
    ExpectDone(Carve("xml", Write("empty.bin", ""s)), "found 0\n");
    EXPECT_TRUE(ListNames(temp / "out").empty());
}

TEST_F(CarveTest, TheKindIsOneOfThree) {
    const std::string source = Write("a.bin", Gif(20));
    for (const char* kind : {"jpg", "GIF", "", "gif,png"})
        ExpectWrongUsage(Carve(kind, source), "Usage: pictavo-cli carve");
    ExpectWrongUsage(Cli({"carve", "gif", "-o", Path("out")}), "Usage: pictavo-cli carve");
    ExpectWrongUsage(Cli({"carve", "gif", source}), "Usage: pictavo-cli carve");
    EXPECT_FALSE(std::filesystem::exists(temp / "out"));
}

TEST_F(CarveTest, AMissingSourceIsNamedAndNoFolderMade) {
    ExpectRefused(Carve("gif", Path("missing.bin")), {Path("missing.bin")});
    ExpectRefused(Carve("gif", temp.Path().string()), {temp.Path().string(), "folder"});
    EXPECT_FALSE(std::filesystem::exists(temp / "out"));
}

TEST_F(CarveTest, AnExistingFileIsLeftAloneWithoutOverwrite) {
    const std::string source = Write("a.bin", Gif(20) + Gif(30));
    std::filesystem::create_directory(temp / "out");
    WriteFile(temp / "out/00000000.gif", "old"s);
    const Ended ended = Carve("gif", source);
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out, "found 1\n");
    ExpectOneComplaint(ended, {Path("out/00000000.gif"), "exists already"});
    EXPECT_EQ(ReadText(temp / "out/00000000.gif"), "old");
    EXPECT_EQ(ReadText(temp / "out/00000014.gif"), Gif(30));
    ExpectDone(Carve("gif", source, {"--overwrite"}), "found 2\n");
    EXPECT_EQ(ReadText(temp / "out/00000000.gif"), Gif(20));
}

TEST_F(CarveTest, AFullDiskLosesTheFilesThatDoNotFitAndNoOther) {
    const std::string source = Write("a.bin", Gif(100) + Gif(5000) + Gif(200));
    Ended ended;
    {
        const FileSizeLimit disk(1000);
        ended = Carve("gif", source);
    }
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out, "found 2\n");
    ExpectOneComplaint(ended, {Path("out/00000064.gif"), "File too large"});
    EXPECT_EQ(ListNames(temp / "out"), (Names{"00000000.gif", "000013EC.gif"}));
}

TEST_F(CarveTest, AFolderThatCanNotBeWrittenLosesEveryFileByItsName) {
    const Ended ended = Cli({"carve", "gif", Write("a.bin", Gif(20) + Gif(30)), "-o", "/proc"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out, "found 0\n");
    ASSERT_EQ(Lines(ended.err).size(), 2U);
    EXPECT_THAT(ended.err, HasSubstr("/proc/00000000.gif"));
    EXPECT_THAT(ended.err, HasSubstr("/proc/00000014.gif"));
}

TEST_F(CarveTest, AFileInAFoldersPlaceIsNamed) {
    const std::string below = Write("file", "text"s) + "/out";
    ExpectRefused(Cli({"carve", "gif", Write("a.bin", Gif(20)), "-o", below}), {below});
}

TEST_F(CarveTest, ASourceIsNoOutputEvenWithOverwrite) {
    std::filesystem::create_directory(temp / "out");
    const std::string source = Write("out/00000000.gif", Gif(20) + Gif(30));
    const Ended ended = Carve("gif", source, {"--overwrite"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out, "found 1\n");
    ExpectOneComplaint(ended, {source, "is read"});
}

TEST_F(CarveTest, AnInterruptedSearchKeepsWholeFilesAndSaysSo) {
    const auto source = temp / "long.bin";
    WriteFile(source, Gif(20));
    std::filesystem::resize_file(source, std::uintmax_t{64} << 30);  // a hole takes no room
    StartedProgram started({program, "carve", "gif", source.string(), "-o", Path("out")}, around);
    ASSERT_TRUE(Await([&] { return std::filesystem::exists(temp / "out/00000000.gif"); }));
    const Ended ended = started.End(SIGINT);
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out, "found 1\n");
    EXPECT_EQ(ended.err, "pictavo-cli: stopped before the end\n");
    EXPECT_EQ(ListNames(temp / "out"), Names{"00000000.gif"});
    EXPECT_EQ(ReadText(temp / "out/00000000.gif"), Gif(20));
}

TEST_F(CarveTest, ASamplesFilesComeOutByteForByte) {
    samples::SampleSpec spec;
    spec.sizeMiB = 16;
    spec.pictureCount = 20;
    const samples::Sample sample = samples::MakeSample(spec);
    const std::string source = Write(sample.flash, "sample.bin");
    const Bytes flash = ReadFile(source);
    const std::map<std::string, samples::FileKind> kinds{
        {"gif", samples::FileKind::Gif}, {"png", samples::FileKind::Png}, {"xml", samples::FileKind::Xml}};
    for (const auto& [name, kind] : kinds) {
        const auto count = std::count_if(sample.files.begin(), sample.files.end(),
                                         [kind = kind](const auto& file) { return file.kind == kind; });
        EXPECT_GT(count, 0);
        ExpectDone(Carve(name, source), "found " + std::to_string(count) + "\n");
        for (const samples::EmbeddedFile& file : sample.files) {
            if (file.kind != kind) continue;
            const auto begin = flash.begin() + static_cast<std::ptrdiff_t>(file.offset);
            const Bytes found =
                ReadFile(temp / "out" / (PadZeros(UpperHex(file.offset), 8, true) + "." + name));
            EXPECT_TRUE(found == Bytes(begin, begin + static_cast<std::ptrdiff_t>(file.length)))
                << file.offset;
        }
    }
    EXPECT_EQ(ListNames(temp / "out").size(), sample.files.size());
}

}  // namespace
}  // namespace pictavo::tests
