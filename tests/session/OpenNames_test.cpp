#include "session/OpenNames.h"

#include <map>

#include "support/BmpFile.h"
#include "support/SessionFixture.h"

namespace pictavo::tests {
namespace {

using Names = std::vector<std::string>;

TEST(SplitCommandLine, AQuotedNameWithBlanksIsOne) {
    EXPECT_EQ(SplitCommandLine("\"D:\\my flash\\a b.bin\""), Names{"D:\\my flash\\a b.bin"});
}

TEST(SplitCommandLine, BlanksPartNames) {
    EXPECT_EQ(SplitCommandLine("a.gpf \"b c.gpf\" d.gpf"), (Names{"a.gpf", "b c.gpf", "d.gpf"}));
}

TEST(SplitCommandLine, AnEmptyLineHoldsNoName) {
    EXPECT_TRUE(SplitCommandLine("").empty());
}

TEST(SplitCommandLine, NothingBetweenTwoBlanksIsANameToo) {
    EXPECT_EQ(SplitCommandLine("a  b"), (Names{"a", "", "b"}));
    EXPECT_EQ(SplitCommandLine("a "), (Names{"a", ""}));
    EXPECT_EQ(SplitCommandLine(" a"), (Names{"", "a"}));
}

TEST(SplitCommandLine, AQuotationThatIsNotClosedReachesToTheEnd) {
    EXPECT_EQ(SplitCommandLine("\"a b"), Names{"a b"});
}

TEST(SplitCommandLine, AQuotationInsideANamePartsNothingAndStays) {
    EXPECT_EQ(SplitCommandLine("a\" \"b"), Names{"a\" \"b"});
}

TEST(SplitCommandLine, OnlyOneMarkIsTakenOffEitherEnd) {
    EXPECT_EQ(SplitCommandLine("\"\"a\"\""), Names{"\"a\""});
    EXPECT_EQ(SplitCommandLine("\""), Names{""});
}

class OpenNamesTest : public SessionFixture {
  protected:
    OpenNamesTest() { session.texts.str_MultFFound = "MultFFound"; }

    Outcome OpenAll(const std::vector<std::filesystem::path>& paths) {
        Names names;
        for (const auto& path : paths) names.push_back(path.string());
        return OpenNames(session, scripted.ports, names, [this](FileKind opened) {
            widths.push_back(session.picture.width);
            kinds.push_back(opened);
        });
    }

    std::filesystem::path WriteFlash(const std::string& name) {
        const samples::Outcome written = FourIcons().WriteTo(temp / name);
        EXPECT_TRUE(written) << written.Reason();
        return temp / name;
    }

    /// A picture without alpha.
    std::filesystem::path WriteGpfFile(const std::string& name, int width = 2, int height = 3) {
        const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
        return WriteGpf2(name, width, height, 0x05, Bytes(count, 0xE0));
    }

    /// A picture with alpha.
    std::filesystem::path WriteBmp(const std::string& name) {
        return WriteFile(temp / name, samples::MakeBmp(samples::DrawIcon(7, 5, 1), 32));
    }

    void PickAndApply(SaveCommand command, bool appliesToAll) {
        scripted.prompts.Pick(command);
        scripted.prompts.Expect(Asked::ApplyToAll, appliesToAll);
    }

    bool IsThere(const std::string& name) const { return std::filesystem::exists(temp / name); }

    GpfHeader HeaderOf(const std::string& name) const {
        return *ReadGpfHeader(MemorySource(ReadFile(temp / name)));
    }

    /// A file that is named as one and is none.
    std::filesystem::path WriteBadGpf(const std::string& name) {
        return WriteFile(temp / name, std::string("no GPF file at all, though long enough"));
    }

    std::vector<int> widths;      ///< of the pictures, each time the window was to be drawn
    std::vector<FileKind> kinds;  ///< that it was told then
};

TEST_F(OpenNamesTest, NoNameDoesNothing) {
    EXPECT_TRUE(OpenAll({}).IsClean());
    EXPECT_TRUE(widths.empty());
}

TEST_F(OpenNamesTest, OneFlashIsOpenedAndShownWithoutABox) {
    EXPECT_TRUE(OpenAll({WriteFlash("a b.bin")}).IsClean());
    EXPECT_EQ(session.rows.size(), 4U);
    EXPECT_EQ(session.settings.MRU[0], (temp / "a b.bin").string());
    EXPECT_EQ(widths.size(), 1U);
    EXPECT_TRUE(scripted.prompts.notices.empty());
}

TEST_F(OpenNamesTest, OnePictureIsShownAndNotOfferedForSaving) {
    EXPECT_TRUE(OpenAll({WriteGpfFile("a.gpf2")}).IsClean());
    EXPECT_EQ(widths, std::vector<int>{2});
    EXPECT_EQ(scripted.prompts.popups, 0);
}

TEST_F(OpenNamesTest, EndingsAreExact) {
    for (const auto& path : {WriteFlash("A.BIN"), WriteGpfFile("b.Gpf"), WriteGpfFile("b_gpf2"),
                             WriteBmp("c.jpeg"), WriteBmp("c.BMP")}) {
        const Outcome outcome = OpenAll({path});
        EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::UnknownFile) << path;
        EXPECT_FALSE(session.shown.isShown) << path;
        EXPECT_TRUE(session.rows.empty()) << path;
    }
    EXPECT_TRUE(scripted.prompts.notices.empty());
}

TEST_F(OpenNamesTest, EndingsOfSeveralAreExactToo) {
    const Outcome outcome = OpenAll({WriteFlash("A.BIN"), WriteGpfFile("b.GPF"), WriteBmp("c.JPG")});
    EXPECT_EQ(outcome.problems.size(), 3U);
    EXPECT_EQ(scripted.prompts.popups, 0);
    EXPECT_TRUE(session.rows.empty());
}

TEST_F(OpenNamesTest, AMissingFileIsTriedAndTold) {
    EXPECT_FALSE(OpenAll({temp / "gone.bin"}).IsClean());
    EXPECT_EQ(scripted.prompts.NoticeTexts(), Names{(temp / "gone.bin").string() + "\rfnExi!"});
}

TEST_F(OpenNamesTest, SeveralNamesAreAnnouncedAndTheUnknownPassedOver) {
    scripted.prompts.Expect(Asked::ApplyToAll, false);  // after the flash
    const Outcome outcome =
        OpenAll({WriteFlash("a.bin"), WriteFile(temp / "b.txt", Bytes(3)), "", "nothing"});
    EXPECT_EQ(outcome.end, Outcome::End::Done);
    EXPECT_EQ(outcome.problems.size(), 3U);
    EXPECT_EQ(scripted.prompts.NoticeTexts(), Names{"MultFFound"});
    EXPECT_EQ(session.rows.size(), 4U);
}

TEST_F(OpenNamesTest, EachPictureIsOfferedUntilItsCommandAppliesToAll) {
    PickAndApply(SaveCommand::Bmp, false);
    PickAndApply(SaveCommand::Bmp, true);
    const Outcome outcome =
        OpenAll({WriteGpfFile("a.gpf2", 4), WriteGpfFile("b.gpf", 5), WriteGpfFile("c.gpf2", 6)});
    EXPECT_TRUE(outcome.IsClean());
    EXPECT_EQ(outcome.written, 3U);
    EXPECT_EQ(scripted.prompts.popups, 2);
    EXPECT_EQ(widths, (std::vector<int>{4, 5, 6}));
    EXPECT_EQ(ReadBmp(temp / "a.bmp").shown.width, 4);
    EXPECT_EQ(ReadBmp(temp / "b.bmp").shown.width, 5);
    EXPECT_EQ(ReadBmp(temp / "c.bmp").shown.width, 6);
    EXPECT_TRUE(scripted.prompts.choices.empty());
}

TEST_F(OpenNamesTest, TheFileIsDrawnBeforeItIsOffered) {
    scripted.prompts.Pick(std::nullopt);
    scripted.prompts.Expect(Asked::ApplyToAll, false);
    std::vector<int> popupsBefore;
    const Names names{WriteGpfFile("a.gpf2").string(), "x"};
    const Outcome outcome = OpenNames(session, scripted.ports, names,
                                      [&](FileKind) { popupsBefore.push_back(scripted.prompts.popups); });
    EXPECT_EQ(outcome.written, 0U);
    EXPECT_EQ(popupsBefore, (std::vector<int>{0, 1}));
}

TEST_F(OpenNamesTest, WhetherItAppliesToAllIsAskedInTheSameWordsInEveryLanguage) {
    session.texts.str_all = "all";
    scripted.prompts.Pick(std::nullopt);
    scripted.prompts.Expect(Asked::ApplyToAll, false);
    OpenAll({WriteGpfFile("a.gpf"), "x"});
    EXPECT_EQ(scripted.prompts.questions.at(0).text,
              "\u041F\u0440\u0438\u043C\u0435\u043D\u0438\u0442\u044C \u0434\u043B\u044F "
              "\u0432\u0441\u0435\u0445?");
    EXPECT_EQ(scripted.prompts.questions.at(0).title, "");
}

TEST_F(OpenNamesTest, WhetherItAppliesToAllIsAskedAfterEveryNameThatWasTried) {
    for (int i = 0; i < 3; ++i) scripted.prompts.Expect(Asked::ApplyToAll, false);
    PickAndApply(SaveCommand::Bmp, false);
    const auto gone = temp / "gone.bmp";
    OpenAll({WriteFlash("f.bin"), WriteBadGpf("b.gpf"), gone, temp / "x.txt", WriteGpfFile("a.gpf2")});
    EXPECT_EQ(scripted.prompts.questions.size(), 4U);
    EXPECT_TRUE(IsThere("a.bmp"));
}

TEST_F(OpenNamesTest, AppliedToAllBeforeAnythingWasPickedNothingIsSaved) {
    scripted.prompts.Expect(Asked::ApplyToAll, true);
    EXPECT_EQ(OpenAll({WriteFlash("f.bin"), WriteGpfFile("a.gpf2"), WriteGpfFile("b.gpf2")}).written, 0U);
    EXPECT_EQ(scripted.prompts.popups, 0);
}

TEST_F(OpenNamesTest, TheFrontIsToldWhatEachNameWasOpenedAs) {
    for (int i = 0; i < 2; ++i) scripted.prompts.Expect(Asked::ApplyToAll, false);
    for (int i = 0; i < 2; ++i) {
        scripted.prompts.Pick(std::nullopt);
        scripted.prompts.Expect(Asked::ApplyToAll, false);
    }
    OpenAll({WriteBadGpf("b.gpf"), WriteFlash("f.bin"), WriteGpfFile("a.gpf2"), WriteBmp("c.bmp"), "x"});
    EXPECT_EQ(kinds, (std::vector<FileKind>{FileKind::Unknown, FileKind::Fullflash, FileKind::Gpf,
                                            FileKind::Picture, FileKind::Unknown}));
    kinds.clear();
    OpenAll({temp / "f.bin"});
    OpenAll({temp / "gone.bin"});
    EXPECT_EQ(kinds, (std::vector<FileKind>{FileKind::Fullflash, FileKind::Unknown}));
}

TEST_F(OpenNamesTest, OneBoxAtTheEndTellsOfTheFilesWritten) {
    PickAndApply(SaveCommand::Bmp, true);
    OpenAll({WriteGpfFile("a.gpf2"), WriteGpfFile("b.gpf2")});
    EXPECT_EQ(scripted.prompts.NoticeTexts(), (Names{"MultFFound", "Succes"}));
}

TEST_F(OpenNamesTest, AMenuClosedWithoutAChoiceSavesAndRecordsNothing) {
    scripted.prompts.Pick(std::nullopt);
    scripted.prompts.Expect(Asked::ApplyToAll, true);
    const Outcome outcome = OpenAll({WriteGpfFile("a.gpf2"), WriteGpfFile("b.gpf2")});
    EXPECT_TRUE(outcome.IsClean());
    EXPECT_EQ(outcome.written, 0U);
    EXPECT_EQ(ListNames(temp.Path()), (Names{"a.gpf2", "b.gpf2", "converter", "work"}));
    EXPECT_EQ(scripted.prompts.NoticeTexts(), Names{"MultFFound"});
}

TEST_F(OpenNamesTest, AClosedMenuKeepsWhatWasPickedBefore) {
    PickAndApply(SaveCommand::Bmp, false);
    scripted.prompts.Pick(std::nullopt);
    scripted.prompts.Expect(Asked::ApplyToAll, true);
    OpenAll({WriteGpfFile("a.gpf2"), WriteGpfFile("b.gpf2"), WriteGpfFile("c.gpf2")});
    EXPECT_TRUE(IsThere("a.bmp"));
    EXPECT_FALSE(IsThere("b.bmp"));
    EXPECT_TRUE(IsThere("c.bmp"));
}

TEST_F(OpenNamesTest, EachGpfCommandOfTheMenuSavesItsOwnDepth) {
    const std::map<SaveCommand, int> types = {{SaveCommand::Gpf1Bit, 0x01},
                                              {SaveCommand::Gpf8Bit, 0x05},
                                              {SaveCommand::Gpf16Bit, 0x08},
                                              {SaveCommand::Gpf24Bit, 0x0A}};
    for (const auto& [command, type] : types) {
        const std::string name = std::to_string(type);
        scripted.prompts.Pick(command);
        scripted.prompts.Expect(Asked::WriteGpf2, false);
        scripted.prompts.Expect(Asked::Compress, false);
        scripted.prompts.Expect(Asked::ApplyToAll, false);
        EXPECT_EQ(OpenAll({WriteGpfFile(name + ".gpf2"), "x"}).written, 1U);
        EXPECT_EQ(HeaderOf(name + ".gpf").type, type);
    }
}

TEST_F(OpenNamesTest, ThePngCommandOfTheMenuRunsTheConverter) {
    scripted.processes.effect = [this](const FakeProcesses::Call&) {
        const auto png = samples::MakePng(samples::DrawIcon(2, 3, 1), samples::PngColour::Rgb);
        WriteFile(session.workFiles.Png(), png);
    };
    PickAndApply(SaveCommand::Png, true);
    EXPECT_EQ(OpenAll({WriteGpfFile("a.gpf"), WriteGpfFile("b.gpf")}).written, 2U);
    EXPECT_TRUE(IsThere("a.png"));
    EXPECT_TRUE(IsThere("b.png"));
}

TEST_F(OpenNamesTest, AFlashIsNotOfferedAndALoadThatFailedSavesNothing) {
    scripted.prompts.Expect(Asked::ApplyToAll, false);  // after the flash
    PickAndApply(SaveCommand::Bmp, true);
    const auto bad = WriteBadGpf("b.gpf");
    const Outcome outcome = OpenAll({WriteFlash("f.bin"), WriteGpfFile("a.gpf2"), bad, temp / "gone.bmp"});
    EXPECT_EQ(outcome.written, 1U);
    EXPECT_EQ(outcome.problems.size(), 2U);
    EXPECT_EQ(scripted.prompts.popups, 1);
    EXPECT_FALSE(IsThere("b.bmp"));
    EXPECT_FALSE(IsThere("gone.bmp"));
    EXPECT_EQ(scripted.prompts.NoticeTexts(), (Names{"MultFFound", "UNKfile", "error was occupated",
                                                     (temp / "gone.bmp").string() + "\rfnExi!", "Succes"}));
}

TEST_F(OpenNamesTest, OnlyTheLettersOfTheExtensionChange) {
    session.settings.DefaultGPF2 = true;
    session.settings.CompressGPF = true;
    PickAndApply(SaveCommand::Gpf8Bit, false);
    PickAndApply(SaveCommand::Bmp, false);
    OpenAll({WriteGpfFile("pic.one.gpf"), WriteGpfFile("pic.two.gpf2")});
    EXPECT_TRUE(HeaderOf("pic.one.gpf2").isGPF2);
    EXPECT_TRUE(IsThere("pic.two.bmp"));
}

TEST_F(OpenNamesTest, EvenTheFileJustLoadedIsReplacedOnlyWhenAsked) {
    session.settings.DefaultGPF2 = true;
    session.settings.CompressGPF = true;
    const auto a = WriteGpfFile("a.gpf2");
    const auto b = WriteGpfFile("b.gpf2");
    const Bytes before = ReadFile(b);
    scripted.prompts.Pick(SaveCommand::Gpf16Bit);
    scripted.prompts.Expect(Asked::Overwrite, true);
    scripted.prompts.Expect(Asked::ApplyToAll, true);
    scripted.prompts.Expect(Asked::Overwrite, false);
    EXPECT_EQ(OpenAll({a, b}).written, 1U);
    EXPECT_EQ(HeaderOf("a.gpf2").type, 0x88);
    EXPECT_EQ(ReadFile(b), before);
    EXPECT_EQ(scripted.prompts.questions.at(0).text, a.string() + "\rfChan?");
    EXPECT_EQ(scripted.prompts.questions.at(2).text, b.string() + "\rfChan?");
}

TEST_F(OpenNamesTest, TheVariantAndTheCompressionAreAskedOnceForAll) {
    scripted.prompts.Pick(SaveCommand::Gpf8Bit);
    scripted.prompts.Expect(Asked::WriteGpf2, true);
    scripted.prompts.Expect(Asked::Compress, false);
    scripted.prompts.Expect(Asked::ApplyToAll, true);
    EXPECT_EQ(OpenAll({WriteBmp("a.bmp"), WriteBmp("b.bmp"), WriteBmp("c.bmp")}).written, 3U);
    for (const char* name : {"a.gpf2", "b.gpf2", "c.gpf2"}) EXPECT_EQ(HeaderOf(name).type, 0x05) << name;
}

TEST_F(OpenNamesTest, WithEachMenuEverythingIsAskedAnew) {
    for (const bool isKept : {true, false}) {
        scripted.prompts.Pick(SaveCommand::Gpf8Bit);
        scripted.prompts.Expect(Asked::WriteGpf2, isKept);
        scripted.prompts.Expect(Asked::Compress, isKept);
        scripted.prompts.Expect(Asked::ApplyToAll, false);
    }
    EXPECT_EQ(OpenAll({WriteBmp("a.bmp"), WriteBmp("b.bmp")}).written, 2U);
    EXPECT_EQ(HeaderOf("a.gpf2").type, 0x85);
    EXPECT_EQ(HeaderOf("b.gpf").type, 0x05);
}

TEST_F(OpenNamesTest, AlphaIsAskedAboutAtTheFirstPictureThatHasOne) {
    PickAndApply(SaveCommand::Bmp, true);
    scripted.prompts.Expect(Asked::SaveWithAlpha, false);
    EXPECT_EQ(OpenAll({WriteGpfFile("a.gpf"), WriteBmp("b.gif"), WriteBmp("c.gif")}).written, 3U);
    EXPECT_EQ(ReadBmp(temp / "b.bmp").bits, 24);
    EXPECT_EQ(ReadBmp(temp / "c.bmp").bits, 24);
}

TEST_F(OpenNamesTest, QuestionsKeepTheirOrder) {
    WriteFile(temp / "a.gpf", std::string("old"));
    scripted.prompts.Pick(SaveCommand::Gpf8Bit);
    scripted.prompts.Expect(Asked::WriteGpf2, false);
    scripted.prompts.Expect(Asked::Overwrite, true);
    scripted.prompts.Expect(Asked::Compress, true);
    scripted.prompts.Expect(Asked::ApplyToAll, false);
    EXPECT_TRUE(OpenAll({WriteBmp("a.bmp"), "x"}).written);
    EXPECT_EQ(HeaderOf("a.gpf").type, 0x85);
}

TEST_F(OpenNamesTest, ASaveThatIsRefusedIsToldEachTime) {
    session.settings.CompressGPF = true;
    session.settings.DefaultGPF2 = true;
    PickAndApply(SaveCommand::Gpf1Bit, true);
    const Outcome outcome = OpenAll({WriteBmp("a.bmp"), WriteBmp("b.bmp")});
    EXPECT_EQ(outcome.written, 0U);
    EXPECT_EQ(outcome.problems.size(), 2U);
    EXPECT_EQ(scripted.prompts.NoticeTexts(), (Names{"MultFFound", "1bit GPF CntCmp", "1bit GPF CntCmp"}));
}

TEST_F(OpenNamesTest, AMissingConverterIsToldAndNothingWritten) {
    session.settings.nConvert = (temp / "no converter").string();
    PickAndApply(SaveCommand::Png, false);
    EXPECT_EQ(OpenAll({WriteGpfFile("a.gpf"), "x"}).written, 0U);
    EXPECT_EQ(scripted.prompts.notices.at(1).title, "nConvert");
    EXPECT_EQ(scripted.prompts.notices.size(), 2U);
}

TEST_F(OpenNamesTest, ProgressIsToldBehindEachNameAndEscStops) {
    scripted.progress.stopAfter = 2;
    PickAndApply(SaveCommand::Bmp, true);
    const Outcome outcome =
        OpenAll({WriteGpfFile("a.gpf"), WriteGpfFile("b.gpf"), WriteGpfFile("c.gpf"), WriteGpfFile("d.gpf")});
    EXPECT_EQ(scripted.progress.percents, (std::vector<double>{25, 50}));
    EXPECT_EQ(outcome.written, 2U);
    EXPECT_EQ(outcome.problems.back().error.kind, ErrorKind::Stopped);
    EXPECT_FALSE(IsThere("c.bmp"));
    EXPECT_EQ(scripted.prompts.NoticeTexts(), Names{"MultFFound"});
}

TEST_F(OpenNamesTest, OneNameMoreThanTheMostIsRefusedBeforeAnythingOpens) {
    std::vector<std::filesystem::path> paths(kMostNames + 1, WriteGpfFile("a.gpf"));
    const Outcome outcome = OpenAll(paths);
    EXPECT_EQ(outcome.end, Outcome::End::Refused);
    EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::Overflow);
    EXPECT_EQ(scripted.prompts.NoticeTexts(), Names{"more than 257 files are named on the command line"});
    EXPECT_TRUE(widths.empty());
}

TEST_F(OpenNamesTest, TheMostNamesAreTaken) {
    const std::vector<std::filesystem::path> paths(kMostNames, "x");
    EXPECT_EQ(OpenAll(paths).problems.size(), 257U);
    EXPECT_EQ(widths.size(), 257U);
}

}  // namespace
}  // namespace pictavo::tests
