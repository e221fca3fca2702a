#include "codec/GPFcodec.h"
#include "support/CliFixture.h"

namespace pictavo::tests {
namespace {

class ExportTest : public CliTest {
  protected:
    Ended Export(const std::string& flash, const std::string& format, const Arguments& more = {}) const {
        Arguments arguments{"export", flash, "-o", (temp / "out").string(), "--format", format};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return Cli(arguments);
    }

    std::vector<std::string> Names() const { return ListNames(temp / "out"); }

    std::filesystem::path Out(const std::string& name) const { return temp / "out" / name; }

    void PutOld(const std::string& name) const {
        std::filesystem::create_directory(temp / "out");
        WriteFile(Out(name), std::string("old"));
    }

    /// FourIcons with picture 1 wider than any screen.
    static FlashBuilder OneUndecodable() {
        FlashBuilder flash = FourIcons();
        flash.Put(flash.RecordOffset(1), {0xFF, 0xFF, 0x05});
        return flash;
    }

    /// The flash's stored bytes of a picture under the header of a GPF file.
    static Bytes GpfOf(const FlashBuilder& flash, const Stored& picture, std::size_t number, bool isGpf2) {
        const Bytes stored = samples::EncodeForPhone(picture.drawing, picture.typeCode);
        EXPECT_EQ(stored.size(), flash.PictureLength(number));
        return ComposeGpf({static_cast<std::uint16_t>(picture.drawing.width),
                           static_cast<std::uint16_t>(picture.drawing.height), picture.typeCode,
                           static_cast<std::uint16_t>(number), isGpf2},
                          stored);
    }

    void ExpectGpfs(const std::string& format) {
        const std::vector<Stored> pictures = OneOfEachType();
        const FlashBuilder flash = FlashOf(pictures);
        ExpectDone(Export(Write(flash), format), "exported 10\n");
        for (std::size_t i = 0; i < pictures.size(); ++i)
            EXPECT_EQ(ReadFile(Out(std::to_string(i) + "." + format)),
                      GpfOf(flash, pictures[i], i, format == "gpf2"))
                << i;
    }
};

TEST_F(ExportTest, BitmapsShowEveryTypePixelForPixel) {
    const std::vector<Stored> pictures = OneOfEachType();
    ExpectDone(Export(Write(FlashOf(pictures)), "bmp"), "exported 10\n");
    EXPECT_EQ(Names().size(), 10U);
    for (std::size_t i = 0; i < pictures.size(); ++i)
        ExpectShows(Out(std::to_string(i) + ".bmp"), pictures[i].drawing, pictures[i].typeCode);
}

TEST_F(ExportTest, BitmapsOfAWholeScreenAreRightToo) {
    const Stored photo{samples::DrawPhoto(240, 320, 5), 0x88};
    const Stored disc{samples::DrawSoftDisc(240, 320, 6), 0x8A};
    ExpectDone(Export(Write(FlashOf({photo, disc}, FlashKind::NewSGoldE71)), "bmp"), "exported 2\n");
    ExpectShows(Out("0.bmp"), photo.drawing, photo.typeCode);
    ExpectShows(Out("1.bmp"), disc.drawing, disc.typeCode);
}

TEST_F(ExportTest, GpfsHoldTheStoredBytes) {
    ExpectGpfs("gpf");
}

TEST_F(ExportTest, Gpf2sHoldTheStoredBytes) {
    ExpectGpfs("gpf2");
}

TEST_F(ExportTest, PngsConvertBackToTheSamePixels) {
    const std::vector<Stored> pictures{{samples::DrawPhoto(31, 17, 5), 0x88},
                                       {samples::DrawSoftDisc(20, 20, 6), 0x8A}};
    ExpectDone(Export(Write(FlashOf(pictures)), "png"), "exported 2\n");
    EXPECT_EQ(Names(), (std::vector<std::string>{"0.png", "1.png"}));
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        ASSERT_TRUE(ReadText(Out(std::to_string(i) + ".png")).starts_with("\x89PNG\r\n\x1A\n"));
        const std::string back = Path(std::to_string(i) + ".bmp");
        ExpectDone(Cli({"convert", Out(std::to_string(i) + ".png").string(), back}));
        ExpectShows(back, pictures[i].drawing, pictures[i].typeCode);
    }
}

TEST_F(ExportTest, PngWithoutAConverterIsRefusedBeforeAnythingIsMade) {
    const std::string missing = Path("no converter");
    ExpectRefused(Export(Write(FourIcons()), "png", {"--converter", missing}), {missing, "converter"});
    EXPECT_FALSE(std::filesystem::exists(temp / "out"));
}

TEST_F(ExportTest, AConverterThatFailsIsReportedForEachPicture) {
    const Ended ended = Export(Write(FourIcons()), "png", {"--converter", "/bin/false"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out, "exported 0\n");
    ASSERT_EQ(Lines(ended.err).size(), 4U);
    EXPECT_TRUE(Lines(ended.err)[2].starts_with("pictavo-cli: picture 0002: ")) << ended.err;
    EXPECT_TRUE(Names().empty());
}

TEST_F(ExportTest, OnlyTheListedPictures) {
    ExpectDone(Export(Write(FlashOf(OneOfEachType())), "bmp", {"--pictures", "0,5,7-9"}), "exported 5\n");
    EXPECT_EQ(Names(), (std::vector<std::string>{"0.bmp", "5.bmp", "7.bmp", "8.bmp", "9.bmp"}));
}

TEST_F(ExportTest, TheOrderAndRepetitionsOfTheListChangeNothing) {
    const std::string flash = Write(FlashOf(OneOfEachType()));
    ExpectDone(Export(flash, "bmp", {"--pictures", "9,3-4,3,0009"}), "exported 3\n");
    EXPECT_EQ(Names(), (std::vector<std::string>{"3.bmp", "4.bmp", "9.bmp"}));
}

TEST_F(ExportTest, PicturesAreDecodedInListOrderWhateverTheOrderOfTheList) {
    FlashBuilder flash = FourIcons();
    for (const std::size_t number : {1U, 3U}) flash.Put(flash.RecordOffset(number), {0xFF, 0xFF, 0x05});
    const Ended ended = Export(Write(flash), "bmp", {"--pictures", "3,2,1"});
    EXPECT_EQ(ended.out, "exported 1\n");
    ASSERT_EQ(Lines(ended.err).size(), 2U);
    EXPECT_THAT(Lines(ended.err)[0], HasSubstr("picture 0001"));
    EXPECT_THAT(Lines(ended.err)[1], HasSubstr("picture 0003"));
}

TEST_F(ExportTest, AListThatIsNoneIsWrongUsage) {
    const std::string flash = Write(FourIcons());
    for (const char* list : {"", ",", "1,", ",1", "1,,2", "a", "1-", "-1", "3-2", "1-2-3", " 1", "1 ", "0x1",
                             "1;2", "+1", "100000"})
        ExpectWrongUsage(Export(flash, "bmp", {std::string("--pictures=") + list}),
                         "Usage: pictavo-cli export FLASH");
    EXPECT_FALSE(std::filesystem::exists(temp / "out"));
}

TEST_F(ExportTest, ANumberThatTheFlashDoesNotHaveIsReported) {
    const std::string flash = Write(FourIcons());
    const Ended ended = Export(flash, "bmp", {"--pictures", "2-4"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out, "exported 2\n");
    ExpectOneComplaint(ended, {"picture 0004: ", flash, "no picture"});
}

TEST_F(ExportTest, MoreThanTenMissingNumbersAreOneLine) {
    const std::string flash = Write(FourIcons());
    EXPECT_EQ(Lines(Export(flash, "bmp", {"--pictures", "4-13"}).err).size(), 10U);
    const Ended ended = Export(flash, "bmp", {"--pictures", "3,20-99999,7"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out, "exported 1\n");
    ExpectOneComplaint(ended, {flash + ": ", "99981 of the numbers", "the first is 7"});
}

TEST_F(ExportTest, APictureThatCanNotBeDecodedIsReportedAndTheOthersGoOn) {
    const std::string flash = Write(OneUndecodable());
    for (const char* format : {"bmp", "gpf", "gpf2", "png"}) {
        std::filesystem::remove_all(temp / "out");
        const Ended ended = Export(flash, format);
        EXPECT_EQ(ended.status, 1);
        EXPECT_EQ(ended.out, "exported 3\n");
        ExpectOneComplaint(ended, {"picture 0001: ", flash});
        EXPECT_EQ(Names().size(), 3U);
        EXPECT_FALSE(std::filesystem::exists(Out(std::string("1.") + format)));
    }
}

TEST_F(ExportTest, FilesThatExistAreLeftAloneAndTheOthersAreWritten) {
    const std::string flash = Write(FourIcons());
    PutOld("1.bmp");
    const Ended ended = Export(flash, "bmp");
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out, "exported 3\n");
    ExpectOneComplaint(ended, {Out("1.bmp").string(), "exists"});
    EXPECT_EQ(ReadText(Out("1.bmp")), "old");
    EXPECT_EQ(Names().size(), 4U);
}

TEST_F(ExportTest, OverwriteReplacesThem) {
    const std::string flash = Write(FourIcons());
    PutOld("1.bmp");
    ExpectDone(Export(flash, "bmp", {"--overwrite"}), "exported 4\n");
    ExpectShows(Out("1.bmp"), samples::DrawIcon(16, 16, 2), 0x85);
}

TEST_F(ExportTest, OverwriteReplacesALinkAndNotWhatItLeadsTo) {
    const std::string flash = Write(FourIcons());
    const std::string precious = Write("precious", std::string("precious"));
    std::filesystem::create_directory(temp / "out");
    std::filesystem::create_symlink(precious, Out("1.bmp"));
    EXPECT_EQ(Export(flash, "bmp").status, 1);
    ExpectDone(Export(flash, "bmp", {"--overwrite", "--pictures", "1"}), "exported 1\n");
    EXPECT_FALSE(std::filesystem::is_symlink(Out("1.bmp")));
}

TEST_F(ExportTest, TheFlashUnderAnOutputNameIsNeverWritten) {
    std::filesystem::create_directory(temp / "out");
    const std::string flash = Write(FourIcons(), "out/2.bmp");
    std::filesystem::create_symlink(flash, Out("0.bmp"));
    std::filesystem::create_hard_link(flash, Out("1.bmp"));
    const Ended ended = Export(flash, "bmp", {"--overwrite"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out, "exported 1\n");
    ASSERT_EQ(Lines(ended.err).size(), 3U);
    for (const std::string& line : Lines(ended.err)) EXPECT_THAT(line, HasSubstr("is read"));
    EXPECT_TRUE(std::filesystem::is_symlink(Out("0.bmp")));
    EXPECT_EQ(std::filesystem::hard_link_count(flash), 2U);
}

TEST_F(ExportTest, MissingFoldersAreCreated) {
    const std::string flash = Write(FourIcons());
    ExpectDone(Cli({"export", flash, "-o", Path("a/b/c"), "--format", "gpf"}), "exported 4\n");
    EXPECT_EQ(ListNames(temp / "a/b/c").size(), 4U);
}

TEST_F(ExportTest, AFileInTheFoldersPlaceIsRefused) {
    const std::string flash = Write(FourIcons());
    const std::string file = Write("out", std::string("a file"));
    ExpectRefused(Export(flash, "bmp"), {file, "folder"});
}

TEST_F(ExportTest, AFolderInAFilesPlaceIsReportedAndTheOthersGoOn) {
    const std::string flash = Write(FourIcons());
    std::filesystem::create_directories(Out("2.bmp"));
    const Ended ended = Export(flash, "bmp", {"--overwrite"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out, "exported 3\n");
    ExpectOneComplaint(ended, {"picture 0002: ", Out("2.bmp").string()});
}

TEST_F(ExportTest, HexAndZeroNames) {
    const std::string flash = Write([] {
        FlashBuilder builder(FlashKind::NewSGold);
        for (int i = 0; i < 12; ++i) builder.AddDrawing(samples::DrawIcon(8, 8, 1), 0x05);
        return builder;
    }());
    ExpectDone(Export(flash, "bmp", {"--pictures", "11"}), "exported 1\n");
    ExpectDone(Export(flash, "bmp", {"--pictures", "11", "--hex-names"}), "exported 1\n");
    ExpectDone(Export(flash, "bmp", {"--pictures", "11", "--zero-names"}), "exported 1\n");
    ExpectDone(Export(flash, "bmp", {"--pictures", "11", "--hex-names", "--zero-names"}), "exported 1\n");
    EXPECT_EQ(Names(), (std::vector<std::string>{"0011.bmp", "00B.bmp", "11.bmp", "B.bmp"}));
}

TEST_F(ExportTest, AnUnknownFormatIsWrongUsage) {
    const std::string flash = Write(FourIcons());
    for (const char* format : {"", "jpg", "BMP", "0", "1"}) ExpectWrongUsage(Export(flash, format));
}

TEST_F(ExportTest, AGpf2ConvertsToTheBitmapThatIsExported) {
    const std::string flash = Write(FlashOf(OneOfEachType()));
    ExpectDone(Export(flash, "bmp"), "exported 10\n");
    for (int number : {0, 4, 9}) {
        const std::string name = std::to_string(number);
        ExpectDone(Export(flash, "gpf2", {"--pictures", name}), "exported 1\n");
        ExpectDone(Cli({"convert", Out(name + ".gpf2").string(), Path("again.bmp"), "--overwrite"}));
        EXPECT_EQ(ReadFile(temp / "again.bmp"), ReadFile(Out(name + ".bmp"))) << number;
    }
}

}  // namespace
}  // namespace pictavo::tests
