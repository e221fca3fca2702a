#include "samples/Random.h"
#include "support/CliFixture.h"
#include "support/FileSizeLimit.h"

namespace pictavo::tests {
namespace {

using std::string_literals::operator""s;

class ExtractPatchTest : public CliTest {
  protected:
    Ended Extract(const std::string& patch, const Arguments& more = {}) const {
        Arguments arguments{"extract-patch", patch, "-o", Path("out")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return Cli(arguments);
    }

    /// A section of a picture of 4 x 1 pixels in type 05 with this line of data.
    static std::string Section(const std::string& name, const std::string& data = "01020304") {
        return "\r\n; ##### Picture " + name +
               " #####\r\n000A0000: 0000000000000000 04010500000018A0\r\n\r\n" +
               "00180000: " + std::string(data.size(), '1') + " " + data + "\r\n";
    }

    static std::string PngSection(const std::string& name) {
        return "\r\n; ##### PNG Picture " + name + " #####\r\n00180000: 111111 777777\r\n";
    }

    using Names = std::vector<std::string>;
};

TEST_F(ExtractPatchTest, SectionsBecomeFilesAndNothingIsPrinted) {
    ExpectDone(Extract(Write("a.vkp", Section("0007") + PngSection("0012AB40"))));
    EXPECT_EQ(ListNames(temp / "out"), (Names{"0012AB40.png", "7.gpf"}));
    EXPECT_EQ(ReadText(temp / "out/0012AB40.png"), "www");
    EXPECT_EQ(std::filesystem::file_size(temp / "out/7.gpf"), 48U);
}

TEST_F(ExtractPatchTest, AFileWithoutASectionIsToldAndNoFailure) {
    const std::string patch = Write("a.vkp", std::string("00180000: 1111 7777\r\n"));
    const Ended ended = Extract(patch);
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.out, "");
    ExpectOneComplaint(ended, {patch, "holds no section"});
}

TEST_F(ExtractPatchTest, OptionsChooseTheNames) {
    const std::string patch = Write("a.vkp", Section("0026"));
    ExpectDone(Extract(patch, {"--zero-names"}));
    ExpectDone(Extract(patch));
    ExpectDone(Extract(patch, {"--hex-names", "--zero-names"}));
    EXPECT_EQ(ListNames(temp / "out"), (Names{"0026.gpf", "026.gpf", "26.gpf"}));
}

TEST_F(ExtractPatchTest, ThePicturesOfAPatchShowWhatWasPutIntoIt) {
    const Drawing photo = samples::DrawPhoto(40, 30, 1);
    const Drawing disc = samples::DrawSoftDisc(7, 7, 2);
    const std::string flash = Write(FourIcons(FlashKind::SGold));
    const Ended patched = Cli({"patch", flash, "-o", Path("a.vkp"), "--picture",
                               "1=" + Write("photo.bmp", samples::MakeBmp(photo, 24)) + "@24", "--picture",
                               "0=" + Write("disc.bmp", samples::MakeBmp(disc, 32)) + "@24"});
    ASSERT_EQ(patched.status, 0) << patched.err;
    EXPECT_THAT(patched.out, HasSubstr("moved"));
    EXPECT_THAT(patched.out, HasSubstr("in place"));
    ExpectDone(Extract(Path("a.vkp")));
    EXPECT_EQ(ListNames(temp / "out"), (Names{"0.gpf", "1.gpf"}));
    ExpectDone(Cli({"convert", Path("out/1.gpf"), Path("1.bmp")}));
    ExpectDone(Cli({"convert", Path("out/0.gpf"), Path("0.bmp")}));
    ExpectShows(temp / "1.bmp", photo, 0x0A);
    ExpectShows(temp / "0.bmp", disc, 0x0A);
}

TEST_F(ExtractPatchTest, AReplacedPngComesOutAsItWasPutIn) {
    FlashBuilder flash = FourIcons();
    flash.Put(0x1C0000, samples::MakePng(samples::DrawPhoto(30, 30, 1), samples::PngColour::Rgb));
    const Bytes png = samples::MakePng(samples::DrawIcon(9, 9, 2), samples::PngColour::Rgba);
    ASSERT_EQ(Cli({"patch", Write(flash), "-o", Path("a.vkp"), "--png", Write("1C0000.png", png)}).status, 0);
    ExpectDone(Extract(Path("a.vkp")));
    EXPECT_EQ(ListNames(temp / "out"), Names{"1C0000.png"});
    EXPECT_EQ(ReadFile(temp / "out/1C0000.png"), png);
}

TEST_F(ExtractPatchTest, ANameThatLeadsOutOfTheFolderIsPassedOver) {
    const std::string patch = Write("a.vkp", PngSection("../evil") + PngSection("good"));
    ExpectRefused(Extract(patch), {patch, "\"../evil\" is no plain name"});
    EXPECT_EQ(ListNames(temp / "out"), Names{"good.png"});
    EXPECT_FALSE(std::filesystem::exists(temp / "evil.png"));
}

TEST_F(ExtractPatchTest, ControlCharactersOfANameDoNotReachTheTerminal) {
    const Ended ended = Extract(Write("a.vkp", PngSection("a\x1B[2Jb") + Section("1\x07")));
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(Lines(ended.err).size(), 2U);
    for (const char c : {'\x1B', '\x07'}) EXPECT_EQ(ended.err.find(c), std::string::npos);
}

TEST_F(ExtractPatchTest, AnExistingFileIsLeftAloneWithoutOverwrite) {
    const std::string patch = Write("a.vkp", Section("0007") + Section("0008"));
    std::filesystem::create_directory(temp / "out");
    WriteFile(temp / "out/7.gpf", "old"s);
    ExpectRefused(Extract(patch), {Path("out/7.gpf"), "exists already"});
    EXPECT_EQ(ReadText(temp / "out/7.gpf"), "old");
    EXPECT_TRUE(std::filesystem::exists(temp / "out/8.gpf"));
    ExpectDone(Extract(patch, {"--overwrite"}));
    EXPECT_EQ(std::filesystem::file_size(temp / "out/7.gpf"), 48U);
}

TEST_F(ExtractPatchTest, AMissingPatchIsNamed) {
    ExpectRefused(Extract(Path("missing.vkp")), {Path("missing.vkp")});
    EXPECT_FALSE(std::filesystem::exists(temp / "out"));
}

TEST_F(ExtractPatchTest, AFullDiskLosesTheFilesThatDoNotFitAndNoOther) {
    const std::string patch =
        Write("a.vkp", Section("1") + Section("2", std::string(8000, '2')) + PngSection("c"));
    Ended ended;
    {
        const FileSizeLimit disk(1000);
        ended = Extract(patch);
    }
    ExpectRefused(ended, {Path("out/2.gpf"), "File too large"});
    EXPECT_EQ(ListNames(temp / "out"), (Names{"1.gpf", "c.png"}));
}

TEST_F(ExtractPatchTest, AFileInAFoldersPlaceIsNamed) {
    const std::string below = Write("file", "text"s) + "/out";
    ExpectRefused(Cli({"extract-patch", Write("a.vkp", Section("1")), "-o", below}), {below});
}

TEST_F(ExtractPatchTest, SpoiltPatchesEndWithAStatusAndStayInTheFolder) {
    const std::string good = Section("0007") + PngSection("0012AB40") + Section("0008");
    samples::Random random(7);
    for (int round = 0; round < 60; ++round) {
        std::string text = good;
        for (std::uint32_t changes = 1 + random.Below(5); changes > 0; --changes)
            text[random.Below(static_cast<std::uint32_t>(text.size()))] = static_cast<char>(random.Byte());
        const auto patch = WriteFile(temp / "spoilt.vkp", text);
        const Ended ended = Extract(patch.string(), {"--overwrite"});
        EXPECT_TRUE(ended.status == 0 || ended.status == 1) << round;
        const bool foundNothing = ended.err.find("holds no section") != std::string::npos;
        EXPECT_EQ(ended.status == 1, !ended.err.empty() && !foundNothing) << round;
    }
    EXPECT_EQ(ListNames(temp.Path()), (Names{"out", "run folders", "spoilt.vkp"}));
}

}  // namespace
}  // namespace pictavo::tests
