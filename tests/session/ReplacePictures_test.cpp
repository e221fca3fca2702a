#include "session/ReplacePictures.h"

#include "session/ShowPicture.h"
#include "support/FileSizeLimit.h"
#include "support/SessionFixture.h"
#include "support/SystemMeans.h"

namespace pictavo::tests {
namespace {

constexpr const char* kWorkFile2 = "0002.gpf2";

class ReplacePicturesTest : public SessionFixture {
  protected:
    /// The system's readers give one red pixel.
    void GiveRedPixel() { scripted.pictures.pixels = {1, 1, {{255, 0, 0, 0}}, false}; }

    std::filesystem::path WriteGif(const std::string& name) {
        GiveRedPixel();
        return WriteFile(temp / name, samples::MakeGif(samples::DrawOneColour(1, 1, {255, 0, 0, 255})));
    }

    GpfHeader WorkFileHeader(int number) const {
        return *ReadGpfHeader(MemorySource(ReadFile(session.workFiles.Replacement(number))));
    }
};

TEST_F(ReplacePicturesTest, WritesAGpf2WorkFileOfTheRowsNumberAndMarksTheRow) {
    Open(FourIcons());
    scripted.prompts.Expect(Asked::Compress, true);
    const Outcome outcome = ReplaceFrom(session, scripted.ports, 2, WriteGif("a.gif"), 0x88);
    EXPECT_TRUE(outcome.IsClean());
    EXPECT_EQ(ListNames(session.workFiles.folder), std::vector<std::string>{kWorkFile2});
    const GpfHeader header = WorkFileHeader(2);
    EXPECT_TRUE(header.isGPF2);
    EXPECT_EQ(header.width, 1);
    EXPECT_EQ(header.type, 0x88);
    EXPECT_EQ(header.number, 2);
    EXPECT_EQ(session.replaced, (std::vector<bool>{false, false, true, false}));
    EXPECT_TRUE(session.savePatchEnabled);
    ExpectFlashUntouched();
}

TEST_F(ReplacePicturesTest, TheViewShowsTheWorkFile) {
    Open(FourIcons());
    scripted.prompts.Expect(Asked::Compress, false);
    ASSERT_TRUE(ReplaceFrom(session, scripted.ports, 2, WriteGif("a.gif"), 0x88).IsClean());
    EXPECT_EQ(session.shown.caption, "2 :: 1 x 1 :: 16bit :: uncompressed :: 2 bytes");
}

TEST_F(ReplacePicturesTest, TheWorkFileIsNamedInDecimalWhateverTheSettingsSay) {
    Open(FourIcons());
    session.settings.HEXFilename = true;
    session.settings.CompressGPF = true;
    ASSERT_TRUE(ReplaceFrom(session, scripted.ports, 2, WriteGif("a.gif"), 0x88).IsClean());
    EXPECT_EQ(ListNames(session.workFiles.folder), std::vector<std::string>{kWorkFile2});
}

TEST_F(ReplacePicturesTest, ReplacingAgainRewritesTheWorkFile) {
    Open(FourIcons());
    ReplaceBy(2, samples::DrawIcon(8, 8, 5), 0x85);
    const Bytes first = ReadFile(session.workFiles.Replacement(2));
    ReplaceBy(2, samples::DrawIcon(4, 4, 6), 0x85);
    EXPECT_NE(ReadFile(session.workFiles.Replacement(2)), first);
}

TEST_F(ReplacePicturesTest, AMissingFileIsToldByItsNameBehindTheText) {
    Open(FourIcons());
    const auto path = temp / "none.bmp";
    EXPECT_EQ(ReplaceFrom(session, scripted.ports, 0, path, 0x88).end, Outcome::End::Refused);
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"fnExi!\r" + path.string()});
    EXPECT_FALSE(session.savePatchEnabled);
}

TEST_F(ReplacePicturesTest, APngWithoutConverterIsToldOnceAndChangesNothing) {
    Open(FourIcons());
    session.settings.nConvert = (temp / "no-converter").string();
    const auto png =
        WriteFile(temp / "a.png", samples::MakePng(samples::DrawIcon(4, 4, 1), samples::PngColour::Rgb));
    EXPECT_EQ(ReplaceFrom(session, scripted.ports, 0, png, 0x88).end, Outcome::End::Refused);
    ASSERT_EQ(scripted.prompts.notices.size(), 1U);
    EXPECT_EQ(scripted.prompts.notices[0].title, "nConvert");
    EXPECT_EQ(scripted.prompts.notices[0].text, "fnExi!");
    EXPECT_TRUE(ListNames(session.workFiles.folder).empty());
}

TEST_F(ReplacePicturesTest, AFileNamedPngNeedsTheConverterWhateverItHolds) {
    Open(FourIcons());
    const std::string converter = std::exchange(session.settings.nConvert, (temp / "no-converter").string());
    for (const char* name : {"a.png", "b.PNG", "c.Png"}) {
        const Outcome outcome = ReplaceFrom(session, scripted.ports, 0, WriteGif(name), 0x88);
        EXPECT_EQ(outcome.end, Outcome::End::Refused) << name;
        EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::ConverterMissing) << name;
    }
    session.settings.nConvert = converter;
    scripted.prompts.Expect(Asked::Compress, true);
    EXPECT_TRUE(ReplaceFrom(session, scripted.ports, 0, temp / "a.png", 0x88).IsClean());
    EXPECT_TRUE(scripted.processes.calls.empty());
}

TEST_F(ReplacePicturesTest, CompressedOneBitIsRefusedAndAnOlderWorkFileKept) {
    Open(FourIcons());
    ReplaceBy(2, samples::DrawIcon(8, 8, 5), 0x85);
    const Bytes older = ReadFile(session.workFiles.Replacement(2));
    scripted.prompts.Expect(Asked::Compress, true);
    EXPECT_EQ(ReplaceFrom(session, scripted.ports, 2, WriteGif("a.gif"), 0x81).end, Outcome::End::Refused);
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"1bit GPF CntCmp"});
    EXPECT_EQ(ReadFile(session.workFiles.Replacement(2)), older);
    EXPECT_FALSE(session.replaced[1]);
}

TEST_F(ReplacePicturesTest, OneBitWithoutCompressionIsWrittenAsType1) {
    Open(FourIcons());
    scripted.prompts.Expect(Asked::Compress, false);
    ASSERT_TRUE(ReplaceFrom(session, scripted.ports, 0, WriteGif("a.gif"), 0x81).IsClean());
    EXPECT_EQ(WorkFileHeader(0).type, 0x01);
}

TEST_F(ReplacePicturesTest, CompressGpfAsksNothingAndSoAlwaysRefusesOneBit) {
    Open(FourIcons());
    session.settings.CompressGPF = true;
    EXPECT_EQ(ReplaceFrom(session, scripted.ports, 0, WriteGif("a.gif"), 0x81).end, Outcome::End::Refused);
    EXPECT_TRUE(scripted.prompts.questions.empty());
}

TEST_F(ReplacePicturesTest, APictureTallerThan255IsRefusedOnAFlashOfShortRecords) {
    Open(FourIcons());
    const auto tall = WriteGpf2("tall.gpf2", 1, 256, 0x05, Bytes(256, 1));
    EXPECT_EQ(ReplaceFrom(session, scripted.ports, 0, tall, 0x88).end, Outcome::End::Refused);
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"CntCmp!"});
    EXPECT_TRUE(ListNames(session.workFiles.folder).empty());
}

TEST_F(ReplacePicturesTest, APictureTallerThan255IsTakenOnAFlashOfLongRecords) {
    Open(FourIcons(FlashKind::NewSGoldE71));
    session.settings.CompressGPF = true;
    const auto tall = WriteGpf2("tall.gpf2", 1, 256, 0x05, Bytes(256, 1));
    EXPECT_TRUE(ReplaceFrom(session, scripted.ports, 0, tall, 0x88).IsClean());
}

TEST_F(ReplacePicturesTest, AGpfThatItsDataDoNotFillIsRefused) {
    Open(FourIcons());
    const auto cut = WriteGpf2("cut.gpf2", 16, 16, 0x05, Bytes(100, 1));
    const Outcome outcome = ReplaceFrom(session, scripted.ports, 0, cut, 0x88);
    ASSERT_EQ(outcome.end, Outcome::End::Refused);
    EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::Truncated);
    EXPECT_EQ(outcome.problems[0].error.path, cut);
    EXPECT_FALSE(session.replaced[0]);
}

TEST_F(ReplacePicturesTest, AFailedLoadIsNeverStoredAsSomebodysReplacement) {
    Open(FourIcons());
    ASSERT_TRUE(ShowRow(session, 3));
    const auto wrong = WriteFile(temp / "wrong.gpf", std::string(64, 'x'));
    EXPECT_EQ(ReplaceFrom(session, scripted.ports, 0, wrong, 0x88).end, Outcome::End::Refused);
    EXPECT_EQ(scripted.prompts.NoticeTexts(), (std::vector<std::string>{"UNKfile", "error was occupated"}));
    EXPECT_TRUE(ListNames(session.workFiles.folder).empty());
}

TEST_F(ReplacePicturesTest, TheChooserSuggestsTheNumberAndItsAnswerLosesItsTail) {
    Open(FourIcons());
    session.settings.ZeroFilename = true;
    session.settings.CompressGPF = true;
    scripted.prompts.Choose(WriteGif("a.gif").string() + " !(");
    ASSERT_TRUE(ReplacePicture(session, scripted.ports, 2, 0x88).IsClean());
    EXPECT_EQ(scripted.prompts.choices[0].suggestedName, "0002");
    EXPECT_EQ(scripted.prompts.choices[0].filters.at(0).name, "Graphic files");
}

TEST_F(ReplacePicturesTest, ACancelledChooserChangesNothing) {
    Open(FourIcons());
    scripted.prompts.Choose({});
    EXPECT_EQ(ReplacePicture(session, scripted.ports, 2, 0x88).end, Outcome::End::Cancelled);
    EXPECT_FALSE(session.savePatchEnabled);
}

TEST_F(ReplacePicturesTest, EachDepthIsWrittenInItsCompressedOrItsPlainType) {
    Open(FourIcons());
    for (const std::uint8_t type : std::initializer_list<std::uint8_t>{0x85, 0x88, 0x8A}) {
        scripted.prompts.Expect(Asked::Compress, true);
        ASSERT_TRUE(ReplaceFrom(session, scripted.ports, 1, WriteGif("a.gif"), type).IsClean());
        EXPECT_EQ(WorkFileHeader(1).type, type);
        scripted.prompts.Expect(Asked::Compress, false);
        ASSERT_TRUE(ReplaceFrom(session, scripted.ports, 1, WriteGif("a.gif"), type).IsClean());
        EXPECT_EQ(WorkFileHeader(1).type, type - 0x80);
    }
    EXPECT_EQ(scripted.prompts.questions.at(0).text, "CmpgpfF?");
    EXPECT_EQ(scripted.prompts.questions.at(0).title, "");
}

TEST_F(ReplacePicturesTest, TheLastFourCharactersTellAGpfInAnyCase) {
    Open(FourIcons());
    session.settings.CompressGPF = true;
    for (const char* name : {"A.GPF", "a.Gpf2", "agpf2"}) {
        const auto file = WriteGpf2(name, 3, 1, 0x05, Bytes(3, 1));
        EXPECT_TRUE(ReplaceFrom(session, scripted.ports, 0, file, 0x88).IsClean()) << name;
    }
}

TEST_F(ReplacePicturesTest, AGpfUnderAnotherNameIsLeftToTheSystemsReaders) {
    Open(FourIcons());
    scripted.pictures.error = Error{ErrorKind::UnknownFile, {}, std::nullopt, "no reader takes it"};
    const auto file = WriteGpf2("gpf.bmp", 3, 1, 0x05, Bytes(3, 1));
    const Outcome outcome = ReplaceFrom(session, scripted.ports, 0, file, 0x88);
    EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::UnknownFile);
    EXPECT_FALSE(session.replaced[0]);
}

TEST_F(ReplacePicturesTest, ATooLargePictureIsToldAndChangesNothing) {
    Open(FourIcons());
    const auto file = WriteFile(temp / "a.bmp", samples::MakeBmp(samples::DrawIcon(241, 1, 1), 32));
    EXPECT_EQ(ReplaceFrom(session, scripted.ports, 0, file, 0x88).end, Outcome::End::Refused);
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"LarPic!"});
    EXPECT_TRUE(ListNames(session.workFiles.folder).empty());
    EXPECT_FALSE(session.savePatchEnabled);
}

TEST_F(ReplacePicturesTest, TheChooserNamesTheCommandAndFollowsHexNames) {
    FlashBuilder flash(FlashKind::NewSGold);
    for (int i = 0; i < 27; ++i) flash.AddDrawing(samples::DrawIcon(2, 2, 1), 0x05);
    Open(flash);
    session.settings.HEXFilename = true;
    scripted.prompts.Choose({});
    EXPECT_EQ(ReplacePicture(session, scripted.ports, 26, 0x88).end, Outcome::End::Cancelled);
    const FileChoice& choice = scripted.prompts.choices.at(0);
    EXPECT_EQ(choice.title, "PlSel Load picture 4open");
    EXPECT_EQ(choice.suggestedName, "1A");
    EXPECT_EQ(choice.filters.at(0).patterns,
              (std::vector<std::string>{"*.gpf", "*.gpf2", "*.bmp", "*.gif", "*.jpg", "*.png"}));
}

TEST_F(ReplacePicturesTest, AFullDiskKeepsTheOlderWorkFile) {
    PICTAVO_NEEDS_POSIX("full disks");
    Open(FourIcons());
    ReplaceBy(2, samples::DrawIcon(8, 8, 5), 0x85);
    const Bytes older = ReadFile(session.workFiles.Replacement(2));
    const auto file = WriteGpf2("large.gpf2", 100, 100, 0x05, Bytes(10000, 1));
    session.settings.CompressGPF = true;
    Outcome outcome;
    {
        const FileSizeLimit full(100);
        outcome = ReplaceFrom(session, scripted.ports, 2, file, 0x8A);
    }
    EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::WriteFailed);
    EXPECT_EQ(ReadFile(session.workFiles.Replacement(2)), older);
    EXPECT_EQ(ListNames(session.workFiles.folder), std::vector<std::string>{kWorkFile2});
}

TEST_F(ReplacePicturesTest, WithoutTemporaryFolderTheRowIsNotMarked) {
    Open(FourIcons());
    std::filesystem::remove(session.workFiles.folder);
    session.settings.CompressGPF = true;
    const Outcome outcome = ReplaceFrom(session, scripted.ports, 2, WriteGif("a.gif"), 0x88);
    EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::WriteFailed);
    EXPECT_FALSE(session.replaced[2]);
    EXPECT_FALSE(session.savePatchEnabled);
}

class ReplaceFromFolderTest : public ReplacePicturesTest {
  protected:
    ReplaceFromFolderTest() {
        folder = temp / "folder";
        std::filesystem::create_directory(folder);
        session.settings.CompressGPF = true;
    }

    void PutGpf2(const std::string& name, int width) {
        std::filesystem::rename(WriteGpf2("x", width, 1, 0x05, Bytes(static_cast<std::size_t>(width), 1)),
                                folder / name);
    }

    Outcome Run(std::uint8_t type = 0x88) { return ReplaceFromFolder(session, scripted.ports, folder, type); }

    std::filesystem::path folder;
};

TEST_F(ReplaceFromFolderTest, TakesRowsByNumberAndPassesOverTheOthers) {
    Open(FourIcons());
    PutGpf2("1.gpf2", 5);
    PutGpf2("3.gpf2", 6);
    EXPECT_TRUE(Run().IsClean());
    EXPECT_EQ(session.replaced, (std::vector<bool>{false, true, false, true}));
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"Succes"});
    EXPECT_EQ(scripted.progress.percents.back(), 100);
}

TEST_F(ReplaceFromFolderTest, Gpf2ComesBeforeGpfAndGpfBeforeBitmaps) {
    Open(FourIcons());
    PutGpf2("1.gpf2", 5);
    PutGpf2("1.gpf", 6);
    WriteFile(folder / "1.bmp", samples::MakeBmp(samples::DrawIcon(7, 7, 1), 32));
    ASSERT_TRUE(Run().IsClean());
    EXPECT_EQ(WorkFileHeader(1).width, 5);
    std::filesystem::remove(folder / "1.gpf2");
    ASSERT_TRUE(Run().IsClean());
    EXPECT_EQ(WorkFileHeader(1).width, 6);
    std::filesystem::remove(folder / "1.gpf");
    ASSERT_TRUE(Run().IsClean());
    EXPECT_EQ(WorkFileHeader(1).width, 7);
}

TEST_F(ReplaceFromFolderTest, NamesFollowTheSettings) {
    FlashBuilder flash(FlashKind::NewSGold);
    for (int i = 0; i < 27; ++i) flash.AddDrawing(samples::DrawIcon(2, 2, 1), 0x05);
    Open(flash);
    session.settings.HEXFilename = true;
    session.settings.ZeroFilename = true;
    PutGpf2("01A.gpf2", 5);
    ASSERT_TRUE(Run().IsClean());
    EXPECT_TRUE(session.replaced[26]);
    EXPECT_EQ(ListNames(session.workFiles.folder), std::vector<std::string>{"0026.gpf2"});
}

TEST_F(ReplaceFromFolderTest, FindsNamesInAnyCaseButTheExactOneFirst) {
    Open(FourIcons());
    PutGpf2("1.GPF2", 5);
    ASSERT_TRUE(Run().IsClean());
    EXPECT_EQ(WorkFileHeader(1).width, 5);
    PutGpf2("1.gpf2", 6);
    ASSERT_TRUE(Run().IsClean());
    EXPECT_EQ(WorkFileHeader(1).width, 6);
}

TEST_F(ReplaceFromFolderTest, CompletesAndEnablesThePatchEvenWithoutAMatch) {
    Open(FourIcons());
    EXPECT_TRUE(Run().IsClean());
    EXPECT_TRUE(session.savePatchEnabled);
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"Succes"});
}

TEST_F(ReplaceFromFolderTest, AsksForEachPictureAndNeverSubtractsTwice) {
    Open(FourIcons());
    session.settings.CompressGPF = false;
    PutGpf2("0.gpf2", 5);
    PutGpf2("1.gpf2", 5);
    PutGpf2("2.gpf2", 5);
    scripted.prompts.Expect(Asked::Compress, false);
    scripted.prompts.Expect(Asked::Compress, false);
    scripted.prompts.Expect(Asked::Compress, true);
    ASSERT_TRUE(Run().IsClean());
    EXPECT_EQ(WorkFileHeader(0).type, 0x08);
    EXPECT_EQ(WorkFileHeader(1).type, 0x08);
    EXPECT_EQ(WorkFileHeader(2).type, 0x88);
}

TEST_F(ReplaceFromFolderTest, ARefusedFileSkipsItsRowAndIsReported) {
    Open(FourIcons());
    WriteFile(folder / "0.gpf", std::string("no gpf"));
    PutGpf2("1.gpf2", 5);
    const Outcome outcome = Run();
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].number, 0);
    EXPECT_EQ(session.replaced, (std::vector<bool>{false, true, false, false}));
}

TEST_F(ReplaceFromFolderTest, StopsAfterThePictureAtHand) {
    Open(FourIcons());
    for (const char* name : {"0.gpf2", "1.gpf2", "2.gpf2"}) PutGpf2(name, 5);
    scripted.progress.stopAfter = scripted.progress.percents.size() + 2;
    const Outcome outcome = Run();
    EXPECT_EQ(session.replaced, (std::vector<bool>{true, true, false, false}));
    EXPECT_EQ(outcome.problems.back().error.kind, ErrorKind::Stopped);
}

TEST_F(ReplaceFromFolderTest, BehindBitmapsComePngThenJpgThenGif) {
    Open(FourIcons());
    int width = 5;
    for (const char* name : {"1.bmp", "1.png", "1.jpg", "1.gif"})
        WriteFile(folder / name, samples::MakeBmp(samples::DrawIcon(width++, 1, 1), 32));
    width = 5;
    for (const char* name : {"1.bmp", "1.png", "1.jpg", "1.gif"}) {
        ASSERT_TRUE(Run().IsClean());
        EXPECT_EQ(WorkFileHeader(1).width, width++) << name;
        std::filesystem::remove(folder / name);
    }
}

TEST_F(ReplaceFromFolderTest, WithPaddedNamesAGpf2BeatsABitmapToo) {
    Open(FourIcons());
    session.settings.ZeroFilename = true;
    PutGpf2("0002.gpf2", 5);
    PutGpf2("3.gpf2", 5);
    WriteFile(folder / "0002.bmp", samples::MakeBmp(samples::DrawIcon(7, 7, 1), 32));
    ASSERT_TRUE(Run().IsClean());
    EXPECT_EQ(WorkFileHeader(2).width, 5);
    EXPECT_EQ(session.replaced, (std::vector<bool>{false, false, true, false}));
}

TEST_F(ReplaceFromFolderTest, ATooLargePictureIsNeverReplacedByTheOneBeforeIt) {
    Open(FourIcons());
    PutGpf2("0.gpf2", 5);
    WriteFile(folder / "1.bmp", samples::MakeBmp(samples::DrawIcon(241, 1, 1), 32));
    PutGpf2("2.gpf2", 6);
    const Outcome outcome = Run();
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].number, 1);
    EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::TooLarge);
    EXPECT_EQ(ListNames(session.workFiles.folder), (std::vector<std::string>{"0000.gpf2", "0002.gpf2"}));
    EXPECT_EQ(session.replaced, (std::vector<bool>{true, false, true, false}));
}

TEST_F(ReplaceFromFolderTest, CompressedOneBitIsRefusedPictureByPicture) {
    Open(FourIcons());
    session.settings.CompressGPF = false;
    PutGpf2("0.gpf2", 5);
    PutGpf2("1.gpf2", 5);
    scripted.prompts.Expect(Asked::Compress, true);
    scripted.prompts.Expect(Asked::Compress, false);
    EXPECT_EQ(Run(0x81).problems.size(), 1U);
    EXPECT_EQ(scripted.prompts.NoticeTexts().at(0), "1bit GPF CntCmp");
    EXPECT_EQ(session.replaced, (std::vector<bool>{false, true, false, false}));
    EXPECT_EQ(WorkFileHeader(1).type, 0x01);
}

TEST_F(ReplaceFromFolderTest, PngFilesWithoutConverterAreReportedAndTheOthersGoOn) {
    Open(FourIcons());
    session.settings.nConvert.clear();
    WriteFile(folder / "0.png", samples::MakePng(samples::DrawIcon(4, 4, 1), samples::PngColour::Rgb));
    PutGpf2("1.gpf2", 5);
    EXPECT_EQ(Run().problems.at(0).error.kind, ErrorKind::ConverterMissing);
    EXPECT_EQ(session.replaced, (std::vector<bool>{false, true, false, false}));
}

TEST_F(ReplaceFromFolderTest, TheFolderIsAskedForByItsTitle) {
    Open(FourIcons());
    scripted.prompts.Choose({});
    EXPECT_EQ(ReplacePictures(session, scripted.ports, 0x88).end, Outcome::End::Cancelled);
    EXPECT_FALSE(session.savePatchEnabled);
    scripted.prompts.Choose(folder);
    EXPECT_TRUE(ReplacePictures(session, scripted.ports, 0x88).IsClean());
    EXPECT_EQ(scripted.prompts.folderTitles.at(1), "PlSel cFold 4open");
}

TEST_F(ReplaceFromFolderTest, AFolderThatIsNotThereIsRefused) {
    Open(FourIcons());
    folder = temp / "none";
    EXPECT_EQ(Run().end, Outcome::End::Refused);
    EXPECT_FALSE(session.savePatchEnabled);
}

TEST_F(ReplaceFromFolderTest, ProgressCountsTheRowsWithoutAFileToo) {
    Open(FourIcons());
    PutGpf2("2.gpf2", 5);
    scripted.progress.percents.clear();
    ASSERT_TRUE(Run().IsClean());
    EXPECT_EQ(scripted.progress.percents, (std::vector<double>{25, 50, 75, 100}));
}

}  // namespace
}  // namespace pictavo::tests
