#include <sys/stat.h>

#include "core/BasicCalculations_Tarsk.h"
#include "support/CliFixture.h"

namespace pictavo::tests {
namespace {

class PatchTest : public CliTest {
  protected:
    /// Done, and the one line says that the folder "in" holds no picture's file.
    void ExpectNothingReplaced(const Ended& ended) const {
        EXPECT_EQ(ended.status, 0);
        EXPECT_EQ(ended.out, "");
        ExpectOneComplaint(ended, {Path("in"), "holds no file named by the number of a picture"});
    }

    Ended Patch(const std::string& flash, const Arguments& more = {}) const {
        Arguments arguments{"patch", flash, "-o", NewPatch().string()};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return Cli(arguments);
    }

    std::filesystem::path NewPatch() const { return temp / "new.vkp"; }

    /// The lines of the patch that are no comments and not empty.
    std::vector<std::string> PatchLines() const {
        std::vector<std::string> kept;
        for (const std::string& line : Lines(ReadText(NewPatch())))
            if (!line.starts_with(";") && line != "\r") kept.push_back(line);
        return kept;
    }

    /// The type byte in the new record of the first section.
    std::string NewType() const { return PatchLines().at(0).substr(10 + 16 + 1 + 4, 2); }

    std::string WriteBmp(const std::string& name, int width, int height,
                         samples::Pixel colour = {255, 0, 0, 255}) {
        return Write(name, samples::MakeBmp(samples::DrawOneColour(width, height, colour), 24));
    }

    /// Pictures move to 0x40000 on in this one.
    static FlashBuilder Flash() { return FourIcons(FlashKind::SGold); }
};

TEST_F(PatchTest, WithoutAPictureHoldsTheBannerOnly) {
    ExpectDone(Patch(Write(Flash())));
    const std::string text = ReadText(NewPatch());
    EXPECT_TRUE(PatchLines().empty());
    EXPECT_EQ(Lines(text).size(), 8U);
    EXPECT_THAT(text, HasSubstr("; ### Patch for SIEMENS T55fw2E (lg1)"));
    EXPECT_THAT(text, ::testing::Not(HasSubstr("Picture 0")));
}

TEST_F(PatchTest, APictureThatFitsStaysInPlace) {
    const Ended ended =
        Patch(Write(Flash()), {"--picture", "0=" + WriteBmp("red.bmp", 16, 16), "--bits", "8"});
    ExpectDone(ended, "picture 0000: 256 bytes at 00C0000, in place\n");
    EXPECT_EQ(PatchLines().size(), 1U + 16U);
    EXPECT_EQ(PatchLines()[0].substr(8), ": 1010050000000CA0 1010050000000CA0\r");
}

TEST_F(PatchTest, ALargerOneMoves) {
    ExpectDone(Patch(Write(Flash()), {"--picture", "0=" + WriteBmp("red.bmp", 16, 16)}),
               "picture 0000: 512 bytes at 0040000, moved\n");
    EXPECT_THAT(PatchLines()[0], HasSubstr(" 10100800000004A0\r"));
    EXPECT_EQ(PatchLines()[1].substr(0, 43), "00040000: " + std::string(32, 'F') + " ");
}

TEST_F(PatchTest, SectionsComeInTheOrderOfTheTableWhateverTheOrderGiven) {
    const std::string red = WriteBmp("red.bmp", 16, 16);
    ExpectDone(Patch(Write(Flash()), {"--picture", "2=" + red, "--picture", "0=" + red}),
               "picture 0000: 512 bytes at 0040000, moved\n"
               "picture 0002: 512 bytes at 0040200, moved\n");
}

TEST_F(PatchTest, TheLastOfARepeatedNumberWins) {
    const Ended ended = Patch(Write(Flash()), {"--picture", "0=" + WriteBmp("red.bmp", 16, 16) + "@24",
                                               "--picture", "0=" + WriteBmp("small.bmp", 3, 5) + "@8"});
    ExpectDone(ended, "picture 0000: 15 bytes at 00C0000, in place\n");
}

TEST_F(PatchTest, PicturesAreTakenInTheOrderGivenUntilOneCanNotBe) {
    const std::string flash = Write(Flash());
    const Ended ended = Patch(flash, {"--picture", "3=" + WriteBmp("red.bmp", 16, 16), "--picture",
                                      "2=" + Path("missing 2"), "--picture", "1=" + Path("missing 1")});
    ExpectRefused(ended, {"picture 0002: ", Path("missing 2")});
    EXPECT_FALSE(std::filesystem::exists(NewPatch()));
}

TEST_F(PatchTest, BitsChooseTheUncompressedType) {
    const std::string flash = Write(Flash());
    const std::string red = WriteBmp("red.bmp", 4, 4);
    const std::vector<std::pair<std::string, std::string>> types{
        {"1", "01"}, {"8", "05"}, {"16", "08"}, {"24", "0A"}};
    for (const auto& [bits, type] : types) {
        EXPECT_EQ(Patch(flash, {"--picture", "0=" + red, "--bits", bits, "--overwrite"}).status, 0);
        EXPECT_EQ(NewType(), type);
        EXPECT_EQ(Patch(flash, {"--picture", "0=" + red + "@" + bits, "--overwrite"}).status, 0);
        EXPECT_EQ(NewType(), type);
    }
}

TEST_F(PatchTest, SixteenBitsWhenNothingIsSaid) {
    EXPECT_EQ(Patch(Write(Flash()), {"--picture", "0=" + WriteBmp("red.bmp", 4, 4)}).status, 0);
    EXPECT_EQ(NewType(), "08");
}

TEST_F(PatchTest, BitsOfAPictureComeBeforeThoseOfAll) {
    const std::string red = WriteBmp("red.bmp", 4, 4);
    EXPECT_EQ(Patch(Write(Flash()), {"--picture", "0=" + red + "@8", "--bits", "24"}).status, 0);
    EXPECT_EQ(NewType(), "05");
}

TEST_F(PatchTest, CompressStoresTheCompressedType) {
    const std::string flash = Write(Flash());
    const std::string red = WriteBmp("red.bmp", 16, 16);
    ExpectDone(Patch(flash, {"--picture", "0=" + red, "--compress"}),
               "picture 0000: 9 bytes at 00C0000, in place\n");
    EXPECT_EQ(NewType(), "88");
}

TEST_F(PatchTest, OneBitCanNotBeCompressed) {
    const std::string red = WriteBmp("red.bmp", 16, 16);
    const Ended ended = Patch(Write(Flash()), {"--picture", "0=" + red + "@1", "--compress"});
    ExpectRefused(ended, {"picture 0000: ", red});
    EXPECT_FALSE(std::filesystem::exists(NewPatch()));
}

TEST_F(PatchTest, OtherBitsAreWrongUsage) {
    const std::string flash = Write(Flash());
    for (const char* bits : {"", "0", "2", "12", "32", "x", "16.0", "+16", "016", "0x10", "-8"})
        ExpectWrongUsage(Patch(flash, {std::string("--bits=") + bits}));
}

TEST_F(PatchTest, TheNumberEndsAtTheFirstEqualsSign) {
    const std::string odd = WriteBmp("a=b=1.bmp", 4, 4);
    EXPECT_EQ(Patch(Write(Flash()), {"--picture", "0=" + odd}).status, 0);
    EXPECT_EQ(NewType(), "08");
}

TEST_F(PatchTest, WhatFollowsTheLastAtSignIsPartOfTheNameUnlessItIsADepth) {
    const std::string flash = Write(Flash());
    const std::string odd = WriteBmp("a@8.bmp", 4, 4);
    EXPECT_EQ(Patch(flash, {"--picture", "0=" + odd}).status, 0);
    EXPECT_EQ(NewType(), "08");
    const std::string at = WriteBmp("b@12", 4, 4);
    EXPECT_EQ(Patch(flash, {"--picture", "0=" + at, "--overwrite"}).status, 0);
    EXPECT_EQ(NewType(), "08");
    EXPECT_EQ(Patch(flash, {"--picture", "0=" + at + "@24", "--overwrite"}).status, 0);
    EXPECT_EQ(NewType(), "0A");
    const std::string depthLike = WriteBmp("c@8", 4, 4);
    EXPECT_EQ(Patch(flash, {"--picture", "0=" + depthLike + "@24", "--overwrite"}).status, 0);
    ExpectRefused(Patch(flash, {"--picture", "0=" + depthLike}), {Path("c") + ": "});
}

TEST_F(PatchTest, APictureThatIsNotNumberAndFileIsWrongUsage) {
    const std::string flash = Write(Flash());
    for (const char* text :
         {"", "0", "=a.bmp", "0=", "0=@16", "x=a.bmp", "-1=a.bmp", "0x1=a.bmp", "1 =a.bmp"})
        ExpectWrongUsage(Patch(flash, {std::string("--picture=") + text}));
}

TEST_F(PatchTest, PictureAndFolderExcludeEachOther) {
    const std::string flash = Write(Flash());
    ExpectWrongUsage(
        Patch(flash, {"--picture", "0=" + WriteBmp("red.bmp", 4, 4), "--folder", temp.Path().string()}));
    EXPECT_FALSE(std::filesystem::exists(NewPatch()));
}

TEST_F(PatchTest, ANumberThatTheFlashDoesNotHaveIsRefused) {
    const std::string flash = Write(Flash());
    ExpectRefused(Patch(flash, {"--picture", "4=" + WriteBmp("red.bmp", 4, 4)}), {"picture 0004: ", flash});
    EXPECT_FALSE(std::filesystem::exists(NewPatch()));
}

TEST_F(PatchTest, APictureThatCanNotBeTakenMeansNoPatch) {
    const std::string flash = Write(Flash());
    const std::string good = WriteBmp("red.bmp", 4, 4);
    const std::string noPicture = Write("no.bmp", std::string("no picture at all"));
    const std::string wide = Write("wide.bmp", samples::MakeBmp(samples::DrawIcon(241, 1, 1), 24));
    const std::string tall = Write("tall.bmp", samples::MakeBmp(samples::DrawIcon(1, 256, 1), 24));
    for (const std::string& bad : {noPicture, wide, tall, temp.Path().string(), Path("missing.gpf2")}) {
        ExpectRefused(Patch(flash, {"--picture", "0=" + good, "--picture", "1=" + bad}),
                      {"picture 0001: ", bad});
        EXPECT_FALSE(std::filesystem::exists(NewPatch())) << bad;
    }
}

TEST_F(PatchTest, AFolderGivesThePicturesThatItHoldsByNumber) {
    std::filesystem::create_directory(temp / "in");
    Write("in/0.bmp", samples::MakeBmp(samples::DrawOneColour(4, 4, {255, 0, 0, 255}), 24));
    Write("in/2.png",
          samples::MakePng(samples::DrawOneColour(4, 2, {0, 255, 0, 255}), samples::PngColour::Rgb));
    Write("in/3.gif", samples::MakeGif(samples::DrawOneColour(4, 1, {0, 0, 255, 255})));
    Write("in/9.bmp", std::string("for a picture that there is not"));
    Write("in/notes.txt", std::string("not a picture"));
    const FlashBuilder flash = Flash();
    const auto placed = [&](std::size_t number) {
        return " at " + PadZeros(UpperHex(flash.PictureOffset(number)), 7, true) + ", in place\n";
    };
    ExpectDone(Patch(Write(flash), {"--folder", Path("in"), "--bits", "8"}),
               "picture 0000: 16 bytes" + placed(0) + "picture 0002: 8 bytes" + placed(2) +
                   "picture 0003: 4 bytes" + placed(3));
}

TEST_F(PatchTest, NamesInAFolderFollowTheNameOptions) {
    std::filesystem::create_directory(temp / "in");
    const Bytes red = samples::MakeBmp(samples::DrawOneColour(4, 4, {255, 0, 0, 255}), 24);
    Write("in/0.bmp", red);
    Write("in/0001.bmp", red);
    Write("in/002.bmp", red);
    const std::string flash = Write(Flash());
    const auto numberOf = [&](const Arguments& options) {
        Arguments more{"--folder", Path("in"), "--bits", "8", "--overwrite"};
        more.insert(more.end(), options.begin(), options.end());
        return Patch(flash, more).out.substr(0, 12);
    };
    EXPECT_EQ(numberOf({}), "picture 0000");
    EXPECT_EQ(numberOf({"--zero-names"}), "picture 0001");
    EXPECT_EQ(numberOf({"--zero-names", "--hex-names"}), "picture 0002");
}

TEST_F(PatchTest, ARowOfAFolderThatCanNotBeTakenIsReportedAndThePatchHoldsTheOthers) {
    std::filesystem::create_directory(temp / "in");
    Write("in/0.bmp", samples::MakeBmp(samples::DrawOneColour(4, 4, {255, 0, 0, 255}), 24));
    const std::string bad = Write("in/1.bmp", std::string("BM, but no bitmap"));
    const Ended ended = Patch(Write(Flash()), {"--folder", Path("in"), "--bits", "8"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out, "picture 0000: 16 bytes at 00C0000, in place\n");
    ExpectOneComplaint(ended, {"picture 0001: ", bad});
    EXPECT_EQ(PatchLines().size(), 2U);
}

TEST_F(PatchTest, WhatIsNoFileInAFolderHidesNoPicture) {
    std::filesystem::create_directories(temp / "in/0.gpf2");
    ASSERT_EQ(mkfifo(Path("in/0.gpf").c_str(), 0600), 0);
    Write("in/0.bmp", samples::MakeBmp(samples::DrawOneColour(4, 4, {255, 0, 0, 255}), 24));
    ExpectDone(Patch(Write(Flash()), {"--folder", Path("in"), "--bits", "8"}),
               "picture 0000: 16 bytes at 00C0000, in place\n");
}

TEST_F(PatchTest, AFolderWithoutAFileForAPictureIsToldAndNoFailure) {
    std::filesystem::create_directory(temp / "in");
    const Ended ended = Patch(Write(Flash()), {"--folder", Path("in"), "--hex-names", "--zero-names"});
    ExpectNothingReplaced(ended);
    EXPECT_THAT(ended.err, HasSubstr("such as 000.bmp"));
    EXPECT_TRUE(std::filesystem::exists(NewPatch()));
}

TEST_F(PatchTest, BitsThatThereAreNotAreToldBesideThoseThatThereAre) {
    const std::string flash = Write(Flash());
    const std::string red = WriteBmp("red.bmp", 4, 4);
    ExpectRefused(Patch(flash, {"--picture", "0=" + red + "@12"}), {red + "@12: ", "@1, @8, @16 or @24"});
    ExpectRefused(Patch(flash, {"--picture", "0=" + Path("none.bmp")}), {"none.bmp: can"});
    EXPECT_EQ(Patch(flash, {"--picture", "0=" + Path("a@b.bmp")}).err.find("@16"), std::string::npos);
}

TEST_F(PatchTest, AFolderThatIsNotThereIsRefused) {
    const std::string flash = Write(Flash());
    ExpectRefused(Patch(flash, {"--folder", Path("no folder")}), {Path("no folder")});
    ExpectRefused(Patch(flash, {"--folder", flash}), {flash});
    EXPECT_FALSE(std::filesystem::exists(NewPatch()));
}

TEST_F(PatchTest, NoFreeMemoryIsReportedByNumberAndThePatchHoldsTheOthers) {
    const std::string red = WriteBmp("red.bmp", 16, 16);
    const std::string small = WriteBmp("small.bmp", 4, 4);
    const std::string flash = Write(FourIcons(FlashKind::NewSGold));  // searched from behind its end on
    const Ended ended = Patch(flash, {"--picture", "0=" + red, "--picture", "3=" + small + "@8"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_TRUE(ended.out.starts_with("picture 0003: 16 bytes at ")) << ended.out;
    ExpectOneComplaint(ended, {"picture 0000: ", flash, "free memory"});
    EXPECT_EQ(PatchLines().size(), 2U);
}

TEST_F(PatchTest, APatchThatExistsIsLeftAlone) {
    const std::string flash = Write(Flash());
    WriteFile(NewPatch(), std::string("old"));
    const Ended ended = Patch(flash, {"--picture", "0=" + WriteBmp("red.bmp", 4, 4)});
    ExpectRefused(ended, {NewPatch().string(), "exists"});
    EXPECT_EQ(ReadText(NewPatch()), "old");
}

TEST_F(PatchTest, OverwriteReplacesIt) {
    const std::string flash = Write(Flash());
    WriteFile(NewPatch(), std::string("old"));
    ExpectDone(Patch(flash, {"--overwrite"}));
    EXPECT_TRUE(ReadText(NewPatch()).starts_with("; ####"));
}

TEST_F(PatchTest, TheFlashIsNoOutputAlsoThroughALink) {
    const std::string flash = Write(Flash());
    std::filesystem::create_symlink(flash, temp / "soft.vkp");
    std::filesystem::create_hard_link(flash, temp / "hard.vkp");
    for (const std::string& output : {flash, Path("soft.vkp"), Path("hard.vkp")})
        ExpectRefused(Cli({"patch", flash, "-o", output, "--overwrite"}), {output, "is read"});
    EXPECT_TRUE(std::filesystem::is_symlink(temp / "soft.vkp"));
}

TEST_F(PatchTest, APictureThatIsReadIsNoOutputEither) {
    const std::string flash = Write(Flash());
    const std::string red = WriteBmp("red.bmp", 4, 4);
    std::filesystem::create_symlink(red, temp / "soft.vkp");
    for (const std::string& output : {red, Path("soft.vkp")})
        ExpectRefused(Cli({"patch", flash, "-o", output, "--picture", "0=" + red + "@8", "--overwrite"}),
                      {output, "is read"});
    std::filesystem::create_directory(temp / "in");
    const std::string inFolder = Write("in/0.bmp", ReadFile(red));
    ExpectRefused(Cli({"patch", flash, "-o", inFolder, "--folder", Path("in"), "--overwrite"}),
                  {inFolder, "is read"});
}

TEST_F(PatchTest, OfAFoldersFilesOnlyThoseNamedAsPicturesAreInputs) {
    const std::string flash = Write(Flash());
    std::filesystem::create_directory(temp / "in");
    const std::string upper = Write("in/99.GPF2", std::string("for no picture of the flash"));
    ExpectRefused(Cli({"patch", flash, "-o", upper, "--folder", Path("in"), "--overwrite"}),
                  {upper, "is read"});
    const auto notes = WriteFile(temp / "in/notes.txt", std::string("old"));
    ExpectNothingReplaced(Cli({"patch", flash, "-o", notes.string(), "--folder", Path("in"), "--overwrite"}));
    EXPECT_TRUE(ReadText(notes).starts_with("; ####"));
}

TEST_F(PatchTest, APatchOfAnEarlierRunBesideThePicturesMayBeReplaced) {
    const std::string flash = Write(Flash());
    std::filesystem::create_directory(temp / "in");
    for (int run = 0; run < 2; ++run)
        ExpectNothingReplaced(
            Cli({"patch", flash, "-o", Path("in/new.vkp"), "--folder", Path("in"), "--overwrite"}));
}

TEST_F(PatchTest, TheSameArgumentsGiveTheSameBytes) {
    const std::string flash = Write(Flash());
    const std::string photo = Write("photo.bmp", samples::MakeBmp(samples::DrawPhoto(40, 30, 3), 24));
    EXPECT_EQ(Patch(flash, {"--picture", "1=" + photo}).status, 0);
    const Bytes first = ReadFile(NewPatch());
    EXPECT_EQ(Patch(flash, {"--picture", "1=" + photo, "--overwrite"}).status, 0);
    EXPECT_EQ(ReadFile(NewPatch()), first);
}

/// PNG files of the flash that lie outside its table.
class PatchPngTest : public PatchTest {
  protected:
    static Bytes Png(std::uint32_t seed, int side = 9) {
        return samples::MakePng(samples::DrawIcon(side, side, seed), samples::PngColour::Rgb);
    }

    /// With PNG files of 12 x 12 pixels at 0x1C0000 and 0x1D0000.
    static FlashBuilder FlashOfPngs() {
        FlashBuilder flash = Flash();
        return flash.Put(0x1C0000, Png(1, 12)).Put(0x1D0000, Png(2, 12));
    }

    static std::string LineOf(const std::string& name, const Bytes& png) {
        return "png " + name + ": " + std::to_string(png.size()) + " bytes\n";
    }
};

TEST_F(PatchPngTest, APngGoesToTheOffsetThatItsNameTells) {
    const std::string flash = Write(FlashOfPngs());
    const Bytes png = Png(3);
    ExpectDone(Patch(flash, {"--png", Write("001C0000.png", png)}), LineOf("001C0000", png));
    EXPECT_THAT(ReadText(NewPatch()),
                HasSubstr("\r\n; ##### PNG Picture 001C0000 #####\r\n001C0000: 89504E47"));
    ExpectDone(Cli({"check", NewPatch().string(), flash}));
    ExpectDone(Cli({"apply", NewPatch().string(), flash, "-o", Path("copy.bin")}));
    ExpectDone(Cli({"carve", "png", Path("copy.bin"), "-o", Path("out")}), "found 2\n");
    EXPECT_EQ(ReadFile(temp / "out/001C0000.png"), png);
    EXPECT_EQ(ReadFile(temp / "out/001D0000.png"), Png(2, 12));
}

TEST_F(PatchPngTest, SeveralStandInTheOrderGivenBehindThePictures) {
    const Bytes one = Png(3);
    const Bytes two = Png(4);
    const Ended ended =
        Patch(Write(FlashOfPngs()), {"--png", Write("1D0000.png", one), "--picture",
                                     "0=" + WriteBmp("red.bmp", 4, 4), "--png", Write("1C0000.png", two)});
    ExpectDone(ended, "picture 0000: 32 bytes at 00C0000, in place\n" + LineOf("1D0000", one) +
                          LineOf("1C0000", two));
    const std::string text = ReadText(NewPatch());
    EXPECT_LT(text.find("; ##### Picture 0000 #####"), text.find("; ##### PNG Picture 1D0000 #####"));
    EXPECT_LT(text.find("; ##### PNG Picture 1D0000 #####"), text.find("; ##### PNG Picture 1C0000 #####"));
}

TEST_F(PatchPngTest, GoesWithAFolderOfPicturesToo) {
    std::filesystem::create_directory(temp / "in");
    WriteBmp("in/0.bmp", 4, 4);
    const Bytes png = Png(3);
    ExpectDone(Patch(Write(FlashOfPngs()), {"--folder", Path("in"), "--png", Write("1C0000.png", png)}),
               "picture 0000: 32 bytes at 00C0000, in place\n" + LineOf("1C0000", png));
}

TEST_F(PatchPngTest, OneThatCanNotBeTakenLeavesNoPatch) {
    const std::string flash = Write(FlashOfPngs());
    const std::string good = Write("1C0000.png", Png(3));
    const auto refuse = [&](const std::string& path, const std::vector<std::string>& mentions) {
        ExpectRefused(Patch(flash, {"--png", good, "--png", path}), mentions);
        EXPECT_FALSE(std::filesystem::exists(NewPatch())) << path;
    };
    refuse(Path("1D0000.PNG"), {Path("1D0000.PNG"), "cannot be opened"});
    const std::string misnamed = Write("picture.png", Png(3));
    refuse(misnamed, {misnamed, "is not named by the offset"});
    refuse(Write("1D0001.png", Png(3)), {flash, "at 0x1D0001: no PNG file begins there"});
    refuse(Write("1D0000.png", Png(3, 40)), {flash, "at 0x1D0000: Too large size!"});
    const std::string noPng = Write("001D0000.png", std::string("text"));
    refuse(noPng, {noPng, "is no PNG file"});
}

TEST_F(PatchPngTest, RowsOfTheFolderThatCouldNotBeTakenAreToldEvenThen) {
    std::filesystem::create_directory(temp / "in");
    const std::string broken = Write("in/0.gpf", std::string("no picture"));
    const Ended ended = Patch(Write(FlashOfPngs()), {"--folder", Path("in"), "--png", Path("1C0000.png")});
    EXPECT_EQ(ended.status, 1);
    ASSERT_EQ(Lines(ended.err).size(), 2U);
    EXPECT_THAT(Lines(ended.err)[0], HasSubstr("picture 0000: " + broken));
    EXPECT_THAT(Lines(ended.err)[1], HasSubstr(Path("1C0000.png")));
    EXPECT_FALSE(std::filesystem::exists(NewPatch()));
}

TEST_F(PatchPngTest, BytesThatAPictureOfThePatchWritesAreRefused) {
    FlashBuilder builder = FlashOfPngs();
    builder.AddPictureAt(0x1C0010, 4, 4, 0x05, Bytes(16, 0)).Put(0x1C0000, Png(1, 12));
    const std::string flash = Write(builder);
    const Ended ended = Patch(
        flash, {"--picture", "4=" + WriteBmp("red.bmp", 4, 4) + "@8", "--png", Write("1C0000.png", Png(3))});
    ExpectRefused(ended, {flash, "at 0x1C0000: the replaced picture 0004 writes the same bytes"});
    EXPECT_FALSE(std::filesystem::exists(NewPatch()));
}

TEST_F(PatchPngTest, ThePngThatIsReadIsNoOutput) {
    const std::string png = Write("1C0000.png", Png(3));
    ExpectRefused(Cli({"patch", Write(FlashOfPngs()), "-o", png, "--png", png, "--overwrite"}),
                  {png, "is read"});
}

}  // namespace
}  // namespace pictavo::tests
