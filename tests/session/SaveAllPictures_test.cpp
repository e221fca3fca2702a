#include "session/SaveAllPictures.h"

#include "codec/Bitmap.h"
#include "session/ShowPicture.h"
#include "support/FileSizeLimit.h"
#include "support/SessionFixture.h"
#include "support/SystemMeans.h"

namespace pictavo::tests {
namespace {

class SaveAllPicturesTest : public SessionFixture {
  protected:
    SaveAllPicturesTest() { out = temp / "out"; }

    Outcome Save(BatchFormat format) { return SavePictures(session, scripted.ports, {out, format, {}}); }

    GpfHeader HeaderOf(const std::string& name) const {
        return *ReadGpfHeader(MemorySource(ReadFile(out / name)));
    }

    /// The stored bytes of a GPF file of the output folder, with its padding.
    Bytes DataOf(const std::string& name) const {
        const Bytes file = ReadFile(out / name);
        return {file.begin() + kGpfHeaderSize, file.end()};
    }

    void WriteOld(const std::string& name) {
        std::filesystem::create_directory(out);
        WriteFile(out / name, std::string("old"));
    }

    /// 27 pictures, so that the last one's number has a letter in hexadecimal.
    void OpenMany() {
        FlashBuilder flash(FlashKind::NewSGold);
        for (int i = 0; i < 27; ++i) flash.AddPicture(1, 1, 0x05, {0xE0});
        Open(flash);
    }

    /// A good picture, one that is too wide to be shown, and a good one.
    void OpenWithOneUndecodable() {
        FlashBuilder flash(FlashKind::NewSGold);
        flash.AddPicture(1, 1, 0x05, {0xE0}).AddPicture(250, 2, 0x05, Bytes(500, 0xE0));
        Open(flash.AddPicture(1, 1, 0x05, {0x1F}));
    }

    void GiveConverter() {
        scripted.processes.effect = [this](const FakeProcesses::Call&) {
            WriteFile(session.workFiles.Png(), png);
        };
    }

    const Bytes png = samples::MakePng(samples::DrawIcon(5, 4, 1), samples::PngColour::Rgb);
    std::filesystem::path out;
};

TEST_F(SaveAllPicturesTest, TheFolderIsAskedForFirstAndTheVariantOnce) {
    Open(FourIcons());
    scripted.prompts.Choose(out);
    scripted.prompts.Expect(Asked::WriteGpf2, true);
    EXPECT_TRUE(SaveAsGpfs(session, scripted.ports).IsClean());
    EXPECT_EQ(scripted.prompts.folderTitles, std::vector<std::string>{"PlSel cFold 4save"});
    EXPECT_EQ(scripted.prompts.questions.at(0).text, "Save as GPF2?");
    EXPECT_EQ(ListNames(out), (std::vector<std::string>{"0.gpf2", "1.gpf2", "2.gpf2", "3.gpf2"}));
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"Succes"});
}

TEST_F(SaveAllPicturesTest, ADeclinedVariantWritesGpfs) {
    Open(FourIcons());
    scripted.prompts.Choose(out);
    scripted.prompts.Expect(Asked::WriteGpf2, false);
    EXPECT_EQ(SaveAsGpfs(session, scripted.ports).written, 4U);
    EXPECT_EQ(ListNames(out), (std::vector<std::string>{"0.gpf", "1.gpf", "2.gpf", "3.gpf"}));
    EXPECT_FALSE(HeaderOf("0.gpf").isGPF2);
}

TEST_F(SaveAllPicturesTest, DefaultGpf2AsksForTheFolderOnly) {
    Open(FourIcons());
    session.settings.DefaultGPF2 = true;
    scripted.prompts.Choose(out);
    EXPECT_TRUE(SaveAsGpfs(session, scripted.ports).IsClean());
    EXPECT_TRUE(HeaderOf("0.gpf2").isGPF2);
}

TEST_F(SaveAllPicturesTest, ACancelledFolderEndsWithoutAWord) {
    Open(FourIcons());
    scripted.prompts.Choose({});
    EXPECT_EQ(SaveAsGpfs(session, scripted.ports).end, Outcome::End::Cancelled);
    scripted.prompts.Choose({});
    EXPECT_EQ(SaveAsBmps(session, scripted.ports).end, Outcome::End::Cancelled);
    EXPECT_TRUE(scripted.prompts.notices.empty());
    EXPECT_FALSE(session.shown.isShown);
}

TEST_F(SaveAllPicturesTest, NamesFollowTheSettings) {
    OpenMany();
    for (const bool hex : {false, true}) {
        for (const bool zeros : {false, true}) {
            session.settings.HEXFilename = hex;
            session.settings.ZeroFilename = zeros;
            EXPECT_EQ(
                SavePictures(session, scripted.ports, {out, BatchFormat::Gpf, std::set<int>{26}}).written,
                1U);
        }
    }
    EXPECT_EQ(ListNames(out), (std::vector<std::string>{"0026.gpf", "01A.gpf", "1A.gpf", "26.gpf"}));
}

TEST_F(SaveAllPicturesTest, AGpfTakesTypeSizeAndNumberOfItsRow) {
    Open(FourIcons());
    EXPECT_TRUE(Save(BatchFormat::Gpf2).IsClean());
    const GpfHeader header = HeaderOf("2.gpf2");
    EXPECT_EQ(header.type, 0x88);
    EXPECT_EQ(header.width, 16);
    EXPECT_EQ(header.height, 16);
    EXPECT_EQ(header.number, 2);
    EXPECT_TRUE(scripted.prompts.questions.empty());
}

TEST_F(SaveAllPicturesTest, AGpfHoldsTheStoredBytesAsTheyStandAndZeros) {
    FlashBuilder flash(FlashKind::NewSGold);
    const Bytes oddlyCompressed{0x00, 0x11, 0x01, 0xE0, 0x01, 0xE0, 0x02, 0x1F};
    flash.AddPicture(2, 2, 0x85, oddlyCompressed);
    Open(flash);
    ASSERT_TRUE(Save(BatchFormat::Gpf2).IsClean());
    Bytes expected = oddlyCompressed;
    expected.resize(16);
    EXPECT_EQ(DataOf("0.gpf2"), expected);
}

TEST_F(SaveAllPicturesTest, TypesThatAreNeverEncodedAreCopiedToo) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.AddPicture(4, 2, 0x07, Bytes(16, 0x2A)).AddPicture(3, 2, 0x81, {0x85, 0xC3});
    Open(flash);
    EXPECT_TRUE(Save(BatchFormat::Gpf2).IsClean());
    EXPECT_EQ(HeaderOf("0.gpf2").type, 0x07);
    EXPECT_EQ(DataOf("0.gpf2"), Bytes(16, 0x2A));
    EXPECT_EQ(HeaderOf("1.gpf2").type, 0x81);
    EXPECT_EQ(DataOf("1.gpf2"), (Bytes{0x85, 0xC3, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(SaveAllPicturesTest, AGpfOf320RowsSays255AndHoldsAllBytes) {
    FlashBuilder flash(FlashKind::NewSGoldE71);
    flash.AddPicture(3, 320, 0x05, Bytes(960, 0xE0));
    Open(flash);
    const Outcome outcome = Save(BatchFormat::Gpf);
    EXPECT_TRUE(outcome.IsClean());
    EXPECT_EQ(outcome.warning,
              "1 GPF file of pictures higher than 255 rows: a GPF says 255, only a GPF2 can say more");
    EXPECT_EQ(ReadFile(out / "0.gpf").at(0x15), 255);
    EXPECT_EQ(DataOf("0.gpf"), Bytes(960, 0xE0));
}

TEST_F(SaveAllPicturesTest, NoWarningIsGivenWhereTheFileCanSayTheHeight) {
    FlashBuilder flash(FlashKind::NewSGoldE71);
    flash.AddPicture(3, 320, 0x05, Bytes(960, 0xE0)).AddPicture(3, 255, 0x05, Bytes(765, 0xE0));
    Open(flash);
    EXPECT_EQ(Save(BatchFormat::Gpf2).warning, "");
    const SaveRequest lower{out, BatchFormat::Gpf, std::set<int>{1}};
    EXPECT_EQ(SavePictures(session, scripted.ports, lower).warning, "");
}

TEST_F(SaveAllPicturesTest, ABoldRowTakesTypeSizeAndBytesOfItsWorkFile) {
    Open(FourIcons());
    ReplaceBy(1, samples::DrawIcon(5, 7, 9), 0x88);
    ASSERT_TRUE(SavePictures(session, scripted.ports, {out, BatchFormat::Gpf2, std::nullopt}).IsClean());
    EXPECT_EQ(HeaderOf("1.gpf2").type, 0x08);
    EXPECT_EQ(ReadFile(out / "1.gpf2"), ReadFile(session.workFiles.Replacement(1)));
}

TEST_F(SaveAllPicturesTest, ABoldRowWithoutWorkFileTakesTheFlashs) {
    Open(FourIcons());
    ReplaceBy(1, samples::DrawIcon(5, 7, 9), 0x88);
    std::filesystem::remove(session.workFiles.Replacement(1));
    ASSERT_TRUE(Save(BatchFormat::Gpf2).IsClean());
    EXPECT_EQ(HeaderOf("1.gpf2").type, 0x85);
    EXPECT_EQ(HeaderOf("1.gpf2").width, 16);
}

TEST_F(SaveAllPicturesTest, ADeclinedOverwriteSkipsThatFileOnly) {
    Open(FourIcons());
    WriteOld("0.gpf2");
    WriteOld("2.gpf2");
    scripted.prompts.Expect(Asked::Overwrite, false);
    scripted.prompts.Expect(Asked::Overwrite, true);
    const Outcome outcome = Save(BatchFormat::Gpf2);
    EXPECT_TRUE(outcome.IsClean());
    EXPECT_EQ(outcome.written, 3U);
    EXPECT_EQ(ReadText(out / "0.gpf2"), "old");
    EXPECT_EQ(HeaderOf("2.gpf2").width, 16);
    EXPECT_EQ(scripted.prompts.questions.at(0).title, "faExi!");
    EXPECT_EQ(scripted.prompts.questions.at(0).text, (out / "0.gpf2").string() + "\rfChan?");
}

TEST_F(SaveAllPicturesTest, BitmapsCarryAlphaWhereThePictureHasIt) {
    Open(FourIcons());
    scripted.prompts.Choose(out);
    EXPECT_TRUE(SaveAsBmps(session, scripted.ports).IsClean());
    EXPECT_EQ(ListNames(out), (std::vector<std::string>{"0.bmp", "1.bmp", "2.bmp", "3.bmp"}));
    EXPECT_EQ(ReadFile(out / "2.bmp").at(28), 24);
    EXPECT_EQ(ReadFile(out / "3.bmp"), ComposeBitmap(session.picture, true));
    EXPECT_EQ(scripted.prompts.folderTitles, std::vector<std::string>{"PlSel cFold 4save"});
}

TEST_F(SaveAllPicturesTest, ProgressGrowsPictureByPictureToAHundred) {
    Open(FourIcons());
    scripted.progress.percents.clear();
    ASSERT_TRUE(Save(BatchFormat::Bmp).IsClean());
    EXPECT_EQ(scripted.progress.percents, (std::vector<double>{25, 50, 75, 100}));
}

TEST_F(SaveAllPicturesTest, StopsAfterThePictureAtHandAndSaysSoAndNotThatItIsDone) {
    Open(FourIcons());
    scripted.progress.stopAfter = scripted.progress.percents.size() + 2;
    const Outcome outcome = Save(BatchFormat::Bmp);
    EXPECT_EQ(ListNames(out), (std::vector<std::string>{"0.bmp", "1.bmp"}));
    EXPECT_EQ(outcome.written, 2U);
    EXPECT_EQ(outcome.problems.back().error.kind, ErrorKind::Stopped);
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"stopped before the end"});
}

TEST_F(SaveAllPicturesTest, APictureThatCanNotBeDecodedGivesNoFileAndTheOthersGoOn) {
    OpenWithOneUndecodable();
    for (const BatchFormat format : {BatchFormat::Bmp, BatchFormat::Gpf, BatchFormat::Gpf2}) {
        const Outcome outcome = Save(format);
        EXPECT_EQ(outcome.written, 2U);
        ASSERT_EQ(outcome.problems.size(), 1U);
        EXPECT_EQ(outcome.problems[0].number, 1);
        EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::TooLarge);
    }
    EXPECT_EQ(ListNames(out),
              (std::vector<std::string>{"0.bmp", "0.gpf", "0.gpf2", "2.bmp", "2.gpf", "2.gpf2"}));
}

TEST_F(SaveAllPicturesTest, FilesThatCanNotBeWrittenAreToldWhereTheirRowsStandAndTheStopIsLast) {
    PICTAVO_NEEDS_POSIX("full disks");
    OpenWithOneUndecodable();
    scripted.progress.stopAfter = scripted.progress.percents.size() + 3;
    Outcome outcome;
    {
        const FileSizeLimit full(50);
        outcome = Save(BatchFormat::Bmp);
    }
    ASSERT_EQ(outcome.problems.size(), 4U);
    EXPECT_EQ(outcome.problems[0].number, 0);
    EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::WriteFailed);
    EXPECT_EQ(outcome.problems[1].number, 1);
    EXPECT_EQ(outcome.problems[1].error.kind, ErrorKind::TooLarge);
    EXPECT_EQ(outcome.problems[2].number, 2);
    EXPECT_EQ(outcome.problems[2].error.kind, ErrorKind::WriteFailed);
    EXPECT_EQ(outcome.problems[3].error.kind, ErrorKind::Stopped);
    EXPECT_EQ(outcome.written, 0U);
}

TEST_F(SaveAllPicturesTest, EachOfManyLargeFilesIsThatOfItsPicture) {
    FlashBuilder flash(FlashKind::NewSGold);
    for (std::uint32_t i = 0; i < 12; ++i) flash.AddDrawing(samples::DrawIcon(132, 176, i + 1), 0x88);
    Open(flash);
    EXPECT_EQ(Save(BatchFormat::Bmp).written, 12U);
    for (std::size_t row = 0; row < 12; ++row) {
        ASSERT_TRUE(ShowRow(session, row));
        EXPECT_EQ(ReadFile(out / (std::to_string(row) + ".bmp")), ComposeBitmap(session.picture, false))
            << row;
    }
}

TEST_F(SaveAllPicturesTest, OneBoxNamesWhatWasPassedOverByNumberAndFile) {
    OpenWithOneUndecodable();
    Save(BatchFormat::Bmp);
    ASSERT_EQ(scripted.prompts.notices.size(), 2U);
    EXPECT_TRUE(scripted.prompts.notices[0].text.starts_with("0001: " + flashPath.string() + ": "));
    EXPECT_EQ(scripted.prompts.notices[1].text, "Succes");
}

TEST_F(SaveAllPicturesTest, TheBoxOfALongBatchStaysShort) {
    FlashBuilder flash(FlashKind::NewSGold);
    for (int i = 0; i < 20; ++i) flash.AddPicture(250, 2, 0x05, Bytes(500, 0xE0));
    Open(flash);
    EXPECT_EQ(Save(BatchFormat::Bmp).problems.size(), 20U);
    const std::string text = scripted.prompts.NoticeTexts().at(0);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\r'), 12);
    EXPECT_TRUE(text.ends_with("\r... (20)"));
}

TEST_F(SaveAllPicturesTest, APictureThatTheFlashEndsInsideIsWrittenWithZerosAndReported) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.AddPictureAt((1U << 20) - 2, 2, 2, 0x05, {0xE0, 0xE0});
    Open(flash);
    const Outcome outcome = Save(BatchFormat::Gpf2);
    EXPECT_EQ(outcome.written, 1U);
    EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::Truncated);
    EXPECT_EQ(DataOf("0.gpf2"), (Bytes{0xE0, 0xE0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(SaveAllPicturesTest, OnlyTheNumbersMeantAreWritten) {
    Open(FourIcons());
    const SaveRequest request{out, BatchFormat::Bmp, std::set<int>{1, 3, 99}};
    EXPECT_EQ(SavePictures(session, scripted.ports, request).written, 2U);
    EXPECT_EQ(ListNames(out), (std::vector<std::string>{"1.bmp", "3.bmp"}));
}

TEST_F(SaveAllPicturesTest, AMissingFolderIsMadeWithItsParents) {
    Open(FourIcons());
    out = temp / "a" / "b";
    EXPECT_TRUE(Save(BatchFormat::Bmp).IsClean());
    EXPECT_EQ(ListNames(out).size(), 4U);
}

TEST_F(SaveAllPicturesTest, AFileInPlaceOfTheFolderIsRefused) {
    Open(FourIcons());
    WriteFile(out, std::string("a file"));
    const Outcome outcome = Save(BatchFormat::Bmp);
    EXPECT_EQ(outcome.end, Outcome::End::Refused);
    EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::WriteFailed);
    EXPECT_EQ(ReadText(out), "a file");
}

TEST_F(SaveAllPicturesTest, AnOutputThatIsTheFlashItselfIsAProblemAndTheOthersGoOn) {
    out = temp.Path();
    Open(FourIcons(), "2.bmp");
    const Outcome outcome = Save(BatchFormat::Bmp);
    EXPECT_EQ(outcome.written, 3U);
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].number, 2);
    EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::OutputIsInput);
    ExpectFlashUntouched();
}

TEST_F(SaveAllPicturesTest, PngsNeedTheConverterBeforeAnythingIsMade) {
    Open(FourIcons());
    session.settings.nConvert.clear();
    EXPECT_EQ(Save(BatchFormat::Png).end, Outcome::End::Refused);
    EXPECT_EQ(scripted.prompts.notices.at(0).title, "nConvert");
    EXPECT_FALSE(std::filesystem::exists(out));
}

TEST_F(SaveAllPicturesTest, PngsAreConvertedOneByOneWithAlphaWhereThePictureHasIt) {
    Open(FourIcons());
    GiveConverter();
    EXPECT_EQ(Save(BatchFormat::Png).written, 4U);
    ASSERT_EQ(scripted.processes.calls.size(), 4U);
    EXPECT_EQ(scripted.processes.calls[2].arguments.at(3), "rgb");
    EXPECT_EQ(scripted.processes.calls[3].arguments.at(3), "rgba");
    EXPECT_EQ(ReadFile(out / "3.png"), png);
    EXPECT_TRUE(ListNames(session.workFiles.folder).empty());
}

TEST_F(SaveAllPicturesTest, APngThatDidNotComeOutIsAProblemAndNeverAnEarlierPicture) {
    Open(FourIcons());
    scripted.processes.effect = [this](const FakeProcesses::Call&) {
        if (scripted.processes.calls.size() != 2) WriteFile(session.workFiles.Png(), png);
    };
    const Outcome outcome = Save(BatchFormat::Png);
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].number, 1);
    EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::ConverterFailed);
    EXPECT_EQ(ListNames(out), (std::vector<std::string>{"0.png", "2.png", "3.png"}));
}

TEST_F(SaveAllPicturesTest, AHalfWrittenPngIsAProblemAndTheOthersGoOn) {
    Open(FourIcons());
    scripted.processes.effect = [this](const FakeProcesses::Call&) {
        const std::size_t lost = scripted.processes.calls.size() == 2 ? 1 : 0;
        WriteFile(session.workFiles.Png(), ByteView(png).first(png.size() - lost));
    };
    const Outcome outcome = Save(BatchFormat::Png);
    EXPECT_EQ(outcome.written, 3U);
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].number, 1);
    EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::ConverterFailed);
    EXPECT_EQ(ListNames(out), (std::vector<std::string>{"0.png", "2.png", "3.png"}));
}

TEST_F(SaveAllPicturesTest, TheFlashStaysUntouched) {
    Open(FourIcons());
    ASSERT_TRUE(Save(BatchFormat::Gpf).IsClean());
    ExpectFlashUntouched();
}

TEST_F(SaveAllPicturesTest, AFullDiskLeavesNoHalfFileAndTheOldOneAsItWas) {
    PICTAVO_NEEDS_POSIX("full disks");
    Open(FourIcons());
    WriteOld("3.bmp");
    scripted.prompts.Expect(Asked::Overwrite, true);
    Outcome outcome;
    {
        const FileSizeLimit full(900);
        outcome = Save(BatchFormat::Bmp);
    }
    EXPECT_EQ(outcome.written, 3U);
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].number, 3);
    EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::WriteFailed);
    EXPECT_EQ(ListNames(out), (std::vector<std::string>{"0.bmp", "1.bmp", "2.bmp", "3.bmp"}));
    EXPECT_EQ(ReadText(out / "3.bmp"), "old");
}

}  // namespace
}  // namespace pictavo::tests
