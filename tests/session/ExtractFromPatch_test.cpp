#include "session/ExtractFromPatch.h"

#include "patch/PatchLine.h"
#include "session/ChangePng.h"
#include "session/SavePatch.h"
#include "support/FileSizeLimit.h"
#include "support/SessionFixture.h"
#include "support/SystemMeans.h"

namespace pictavo::tests {
namespace {

class ExtractFromPatchTest : public SessionFixture {
  protected:
    ExtractFromPatchTest() {
        session.texts.cap_mnFileR = "Files";
        out = temp / "out";
    }

    /// A section of a picture of 4 x 1 pixels of a type, with these bytes.
    static std::string Section(const std::string& name, const Bytes& data, const std::string& type = "05") {
        return "\r\n; ##### Picture " + name + " #####\r\n000A0000: 0000000000000000 0401" + type +
               "00000018A0\r\n\r\n" + PatchLines(0x180000, Bytes(data.size(), 0x11), data);
    }

    static std::string PngSection(const std::string& name, const Bytes& data = Bytes(3, 0x77)) {
        return "\r\n; ##### PNG Picture " + name + " #####\r\n" +
               PatchLines(0x180000, Bytes(data.size(), 0x11), data);
    }

    std::filesystem::path Patch(const std::string& text) { return WriteFile(temp / "a.vkp", text); }

    Outcome Extract(const std::string& text) { return ExtractFrom(Patch(text)); }

    Outcome ExtractFrom(const std::filesystem::path& patch) {
        return ExtractFromPatchTo(session, scripted.ports, patch, out);
    }

    /// The file that a section of these bytes becomes.
    static Bytes Gpf(int number, const Bytes& data, std::uint8_t type = 0x05, bool isGPF2 = false) {
        return ComposeGpf({4, 1, type, static_cast<std::uint16_t>(number), isGPF2}, data);
    }

    Bytes Out(const std::string& name) const { return ReadFile(out / name); }

    /// The only section was passed over, and why.
    void ExpectPassedOver(const Outcome& outcome, const std::string& why) const {
        EXPECT_EQ(outcome.end, Outcome::End::Done);
        ASSERT_EQ(outcome.problems.size(), 1U);
        EXPECT_EQ(outcome.problems[0].error,
                  (Error{ErrorKind::Malformed, temp / "a.vkp", std::nullopt, "section passed over: " + why}));
    }

    using Names = std::vector<std::string>;
    std::filesystem::path out;
};

TEST_F(ExtractFromPatchTest, PicturesBecomeGpfFilesAndPngFilesThemselves) {
    const Outcome outcome = Extract("; banner\r\n" + Section("0007", {1, 2, 3, 4}) +
                                    Section("0012", {5, 6}, "85") + PngSection("0012AB40", {7, 8, 9}));
    EXPECT_TRUE(outcome.IsClean());
    EXPECT_EQ(outcome.written, 3U);
    EXPECT_EQ(ListNames(out), (Names{"0012AB40.png", "12.gpf2", "7.gpf"}));
    EXPECT_EQ(Out("7.gpf"), Gpf(7, {1, 2, 3, 4}));
    EXPECT_EQ(Out("12.gpf2"), Gpf(12, {5, 6}, 0x85, true));
    EXPECT_EQ(Out("0012AB40.png"), (Bytes{7, 8, 9}));
    ASSERT_EQ(scripted.prompts.notices.size(), 1U);
    EXPECT_EQ(scripted.prompts.notices[0].title, "");
    EXPECT_EQ(scripted.prompts.notices[0].text, "Succes");
}

TEST_F(ExtractFromPatchTest, NoFlashNeedsToBeOpen) {
    ASSERT_FALSE(session.flash.IsOpen());
    EXPECT_EQ(Extract(Section("0007", {1})).written, 1U);
}

TEST_F(ExtractFromPatchTest, AGpfOf37BytesIsPaddedTo48) {
    EXPECT_TRUE(Extract(Section("0007", {1, 2, 3, 4, 5})).IsClean());
    const Bytes file = Out("7.gpf");
    ASSERT_EQ(file.size(), 48U);
    EXPECT_EQ(file[36], 5);
    EXPECT_EQ(Bytes(file.begin() + 37, file.end()), Bytes(11, 0));
}

TEST_F(ExtractFromPatchTest, ADataLengthOfWholeSixteensNeedsNoPadding) {
    EXPECT_TRUE(Extract(Section("0001", Bytes(16, 3)) + Section("0002", {})).IsClean());
    EXPECT_EQ(Out("1.gpf").size(), 48U);
    EXPECT_EQ(Out("2.gpf").size(), 32U);
}

TEST_F(ExtractFromPatchTest, APngHasNeitherHeadNorPadding) {
    EXPECT_TRUE(Extract(PngSection("a", Bytes(37, 0x77))).IsClean());
    EXPECT_EQ(Out("a.png"), Bytes(37, 0x77));
}

TEST_F(ExtractFromPatchTest, KeptTypesFrom0BOnBecomeGpf2AndThoseBelowGpf) {
    EXPECT_TRUE(Extract(Section("1", {1}, "0A") + Section("2", {1}, "0B")).IsClean());
    EXPECT_EQ(ListNames(out), (Names{"1.gpf", "2.gpf2"}));
}

TEST_F(ExtractFromPatchTest, NamesFollowTheSettings) {
    const auto nameOf = [this](bool hex, bool zeros) {
        session.settings.HEXFilename = hex;
        session.settings.ZeroFilename = zeros;
        std::filesystem::remove_all(out);
        EXPECT_TRUE(Extract(Section("0026", {1})).IsClean());
        return ListNames(out).at(0);
    };
    EXPECT_EQ(nameOf(false, false), "26.gpf");
    EXPECT_EQ(nameOf(false, true), "0026.gpf");
}

TEST_F(ExtractFromPatchTest, KeptWithHexNamesTheNumberIsReadAsHexadecimal) {
    session.settings.HEXFilename = true;
    EXPECT_TRUE(Extract(Section("0026", {1})).IsClean());
    EXPECT_EQ(Out("26.gpf"), Gpf(0x26, {1}));
    session.settings.ZeroFilename = true;
    EXPECT_TRUE(Extract(Section("0026", {1}) + Section("00a7", {1})).IsClean());
    EXPECT_EQ(ListNames(out), (Names{"026.gpf", "0A7.gpf", "26.gpf"}));
}

TEST_F(ExtractFromPatchTest, TheNumberOfTheHeadIsThatOfTheSection) {
    EXPECT_TRUE(Extract(Section("2500", {1})).IsClean());
    EXPECT_EQ(ReadGpfHeader(MemorySource(Out("2500.gpf")))->number, 2500);
}

TEST_F(ExtractFromPatchTest, ANameThatIsNoNumberIsPassedOver) {
    for (const char* name : {"", " ", "abc", "12x", "-1", "+1", "1 ", "65536", "99999999999999999999", "0x10",
                             "../7", "1.5", "1A"}) {
        std::filesystem::remove_all(out);
        const Outcome outcome = Extract(Section(name, {1}) + Section("0007", {1}));
        ExpectPassedOver(outcome, "\"" + std::string(name) + "\" is no number of a picture");
        EXPECT_EQ(ListNames(out), Names{"7.gpf"}) << name;
    }
}

TEST_F(ExtractFromPatchTest, APngNameThatLeadsOutOfTheFolderIsPassedOver) {
    std::filesystem::create_directory(temp / "other");
    for (const std::string name : {"", ".", "..", "/", "\\", "../other/x", "..\\x", "/tmp/x", "C:x", "a:b",
                                   "sub/x", "a\tb", "a\x01", "\x7F", "a\x1B[2J",
                                   "a\xC2\x9B"
                                   "31m"}) {
        std::filesystem::remove_all(out);
        const Outcome outcome = Extract(PngSection(name) + PngSection("good"));
        ExpectPassedOver(outcome, "\"" + name + "\" is no plain name of a PNG file");
        EXPECT_EQ(ListNames(out), Names{"good.png"}) << name;
    }
    EXPECT_TRUE(ListNames(temp / "other").empty());
    EXPECT_EQ(ListNames(temp.Path()), (Names{"a.vkp", "converter", "other", "out", "work"}));
}

TEST_F(ExtractFromPatchTest, AZeroByteInAPngNameIsPassedOver) {
    const std::string name("a\0b", 3);
    ExpectPassedOver(Extract(PngSection(name)), "\"" + name + "\" is no plain name of a PNG file");
}

TEST_F(ExtractFromPatchTest, OtherPngNamesAreTakenAsTheyStand) {
    EXPECT_TRUE(
        Extract(PngSection("my picture (2)") + PngSection("a..b") + PngSection("\xC3\xA9")).IsClean());
    EXPECT_EQ(ListNames(out), (Names{"a..b.png", "my picture (2).png", "\xC3\xA9.png"}));
}

TEST_F(ExtractFromPatchTest, ANameTooLongForTheSystemLosesOnlyItsFile) {
    const Outcome outcome = Extract(PngSection(std::string(300, 'a')) + PngSection("b"));
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::WriteFailed);
    EXPECT_EQ(ListNames(out), Names{"b.png"});
}

TEST_F(ExtractFromPatchTest, ADeclinedOverwriteSkipsThatSectionOnly) {
    std::filesystem::create_directory(out);
    WriteFile(out / "7.gpf", std::string("old"));
    WriteFile(out / "a.png", std::string("old"));
    scripted.prompts.Expect(Asked::Overwrite, false);
    scripted.prompts.Expect(Asked::Overwrite, false);
    const Outcome outcome =
        Extract(Section("0007", {1}) + Section("0008", {2}) + PngSection("a") + PngSection("b"));
    EXPECT_TRUE(outcome.IsClean());
    EXPECT_EQ(outcome.written, 2U);
    EXPECT_EQ(ReadText(out / "7.gpf"), "old");
    EXPECT_EQ(ReadText(out / "a.png"), "old");
    EXPECT_EQ(Out("8.gpf"), Gpf(8, {2}));
    EXPECT_EQ(Out("b.png"), Bytes(3, 0x77));
    EXPECT_EQ(scripted.prompts.questions[0].title, "faExi!");
    EXPECT_EQ(scripted.prompts.questions[0].text, (out / "7.gpf").string() + "\rfChan?");
}

TEST_F(ExtractFromPatchTest, AnExistingFileIsReplacedWithOK) {
    std::filesystem::create_directory(out);
    WriteFile(out / "7.gpf", std::string("old"));
    scripted.prompts.Expect(Asked::Overwrite, true);
    EXPECT_EQ(Extract(Section("0007", {1})).written, 1U);
    EXPECT_EQ(Out("7.gpf"), Gpf(7, {1}));
}

TEST_F(ExtractFromPatchTest, TheSameNumberTwiceAsksForTheFirstFile) {
    scripted.prompts.Expect(Asked::Overwrite, true);
    EXPECT_EQ(Extract(Section("0007", {1}) + Section("0007", {2})).written, 2U);
    EXPECT_EQ(Out("7.gpf"), Gpf(7, {2}));
}

TEST_F(ExtractFromPatchTest, AnEmptySectionGivesNoFileAndDoesNotSwallowTheNext) {
    EXPECT_TRUE(Extract("; banner\r\n\r\n; ##### Picture 0006 #####\r\n" + Section("0007", {1})).IsClean());
    EXPECT_EQ(ListNames(out), Names{"7.gpf"});
}

TEST_F(ExtractFromPatchTest, KeptAPictureThatHoldsALineOfFFIsCutThere) {
    Bytes data(64, 0x33);
    std::fill(data.begin() + 16, data.begin() + 32, std::uint8_t{0xFF});
    EXPECT_TRUE(Extract(Section("0007", data) + Section("0008", {1})).IsClean());
    EXPECT_EQ(Out("7.gpf"), Gpf(7, Bytes(16, 0x33)));
    EXPECT_EQ(Out("8.gpf"), Gpf(8, {1}));
}

TEST_F(ExtractFromPatchTest, APatchWithoutSectionsGivesNothing) {
    for (const std::string& text : {std::string(), std::string("; banner\r\n"), std::string(4000, '\xFF')}) {
        scripted.prompts.notices.clear();
        EXPECT_TRUE(Extract(text).IsClean());
        EXPECT_TRUE(ListNames(out).empty());
        EXPECT_EQ(scripted.prompts.NoticeTexts(), Names{"Succes"});
    }
}

TEST_F(ExtractFromPatchTest, TheChoosersAskForThePatchAndThenForTheFolder) {
    scripted.prompts.Choose(Patch(Section("0007", {1})));
    scripted.prompts.Choose(out);
    EXPECT_EQ(ExtractFromPatch(session, scripted.ports).written, 1U);
    const FileChoice& choice = scripted.prompts.choices.at(0);
    EXPECT_EQ(choice.title, "PlSel Files 4open");
    EXPECT_EQ(choice.filters, (std::vector<FileFilter>{{"ViKlay Patch File", {"*.vkp"}}}));
    EXPECT_EQ(scripted.prompts.folderTitles, std::vector<std::string>{"PlSel cFold 4save"});
}

TEST_F(ExtractFromPatchTest, CancelOfEitherChooserWritesAndTellsNothing) {
    scripted.prompts.Choose({});
    EXPECT_EQ(ExtractFromPatch(session, scripted.ports).end, Outcome::End::Cancelled);
    scripted.prompts.Choose(Patch(Section("0007", {1})));
    scripted.prompts.Choose({});
    EXPECT_EQ(ExtractFromPatch(session, scripted.ports).end, Outcome::End::Cancelled);
    EXPECT_TRUE(scripted.prompts.notices.empty());
    EXPECT_FALSE(std::filesystem::exists(out));
}

TEST_F(ExtractFromPatchTest, AMissingPatchIsToldWithoutItsPathBeforeTheFolderIsAskedFor) {
    scripted.prompts.Choose(temp / "missing.vkp");
    EXPECT_EQ(ExtractFromPatch(session, scripted.ports).end, Outcome::End::Refused);
    EXPECT_TRUE(scripted.prompts.folderTitles.empty());
    EXPECT_EQ(scripted.prompts.NoticeTexts(), Names{"fnExi!"});
    EXPECT_EQ(scripted.prompts.notices[0].title, "");
}

TEST_F(ExtractFromPatchTest, AnUnwritableFolderLosesEveryFileAndReadsOn) {
    PICTAVO_NEEDS_POSIX("folders that nobody can write");
    out = "/proc";
    const Outcome outcome = Extract(Section("50007", {1}) + PngSection("pictavo"));
    EXPECT_EQ(outcome.end, Outcome::End::Done);
    EXPECT_EQ(outcome.written, 0U);
    ASSERT_EQ(outcome.problems.size(), 2U);
    for (const Problem& problem : outcome.problems) EXPECT_EQ(problem.error.kind, ErrorKind::WriteFailed);
}

TEST_F(ExtractFromPatchTest, AFullDiskLosesOnlyTheFileThatDoesNotFit) {
    PICTAVO_NEEDS_POSIX("full disks");
    const auto patch = Patch(Section("1", {1}) + Section("2", Bytes(4000, 7)) + Section("3", {3}));
    Outcome outcome;
    {
        const FileSizeLimit full(1000);
        outcome = ExtractFrom(patch);
    }
    EXPECT_EQ(ListNames(out), (Names{"1.gpf", "3.gpf"}));
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::WriteFailed);
    EXPECT_EQ(Out("3.gpf"), Gpf(3, {3}));
}

TEST_F(ExtractFromPatchTest, APatchThatWouldBeItsOwnOutputIsLeftAlone) {
    std::filesystem::create_directory(out);
    const std::string text = Section("1", {1}) + PngSection("self") + Section("2", {2});
    const auto patch = WriteFile(out / "self.png", text);
    const Outcome outcome = ExtractFrom(patch);
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::OutputIsInput);
    EXPECT_EQ(ReadText(patch), text);
    EXPECT_EQ(ListNames(out), (Names{"1.gpf", "2.gpf", "self.png"}));
}

TEST_F(ExtractFromPatchTest, AnEndlessLineIsPassedOver) {
    const Outcome outcome =
        Extract(Section("1", {1}) + Section("2", {2}) + std::string(1'100'000, '2') + Section("3", {3}));
    EXPECT_TRUE(outcome.IsClean());
    EXPECT_EQ(ListNames(out), (Names{"1.gpf", "2.gpf", "3.gpf"}));
}

TEST_F(ExtractFromPatchTest, StoppedItKeepsTheFilesBeforeAndTellsNoCompletion) {
    scripted.progress.stopAfter = 2;
    const Outcome outcome = Extract(Section("1", {1}) + Section("2", {2}) + Section("3", {3}));
    EXPECT_EQ(outcome.problems.back().error.kind, ErrorKind::Stopped);
    EXPECT_EQ(ListNames(out), (Names{"1.gpf", "2.gpf"}));
    EXPECT_EQ(scripted.prompts.NoticeTexts(), Names{"stopped before the end"});
}

TEST_F(ExtractFromPatchTest, ProgressIsTheShareOfThePatchThatWasRead) {
    Extract(Section("1", {1}) + Section("2", {2}) + Section("3", {3}));
    const auto& percents = scripted.progress.percents;
    ASSERT_EQ(percents.size(), 3U);
    EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end()));
    EXPECT_EQ(percents.back(), 100);
}

TEST_F(ExtractFromPatchTest, APatchCutAnywhereNeverGivesMoreThanItHolds) {
    const std::string text = Section("1", Bytes(20, 1)) + PngSection("a", Bytes(20, 2));
    for (std::size_t length = 0; length < text.size(); length += 3) {
        std::filesystem::remove_all(out);
        EXPECT_EQ(Extract(text.substr(0, length)).end, Outcome::End::Done);
        for (const std::string& name : ListNames(out)) EXPECT_LE(Out(name).size(), 64U) << length;
    }
}

/// Patches that the program itself writes.
class PatchRoundTripTest : public ExtractFromPatchTest, public ::testing::WithParamInterface<FlashKind> {
  protected:
    /// Two pictures of 16 x 16 in type 05, with room for exactly that, and free flash to move to.
    FlashBuilder TwoSquares() const {
        FlashBuilder flash(GetParam());
        flash.Size(0x1100000).PicturesAt(0x180000);
        return flash.AddPicture(16, 16, 0x05, Bytes(256, 0x11)).AddPicture(16, 16, 0x05, Bytes(256, 0x22));
    }

    /// The stored bytes of a row's replacement.
    Bytes UsedBytes(int number) const {
        const Bytes file = ReadFile(session.workFiles.Replacement(number));
        Picture scratch;
        const auto loaded = LoadGpf(MemorySource(file), scratch);
        EXPECT_TRUE(loaded);
        const auto begin = file.begin() + static_cast<std::ptrdiff_t>(kGpfHeaderSize);
        return {begin, begin + static_cast<std::ptrdiff_t>(loaded->decoded.consumed)};
    }

    /// Size, type, number and bytes of an extracted file.
    void ExpectFile(const std::string& name, const GpfHeader& header, const Bytes& stored) const {
        EXPECT_EQ(Out(name), ComposeGpf(header, stored)) << name;
    }
};

TEST_P(PatchRoundTripTest, PicturesInPlaceAndMovedComeOutAsTheirWorkFiles) {
    Open(TwoSquares());
    const samples::Drawing small = samples::DrawPhoto(9, 7, 1);
    const samples::Drawing large = samples::DrawPhoto(61, 47, 2);
    ReplaceBy(0, small, 0x85);
    ReplaceBy(1, large, 0x88);
    const Bytes inPlace = UsedBytes(0);
    const Bytes moved = UsedBytes(1);
    const PatchOutcome saved = SavePatchTo(session, scripted.ports, temp / "a.vkp");
    ASSERT_EQ(saved.sections.at(0).placement, Placement::InPlace);
    ASSERT_EQ(saved.sections.at(1).placement, Placement::Moved);
    EXPECT_TRUE(ExtractFrom(temp / "a.vkp").IsClean());
    EXPECT_EQ(ListNames(out), (Names{"0.gpf", "1.gpf"}));
    ExpectFile("0.gpf", {9, 7, 0x05, 0, false}, inPlace);
    ExpectFile("1.gpf", {61, 47, 0x08, 1, false}, moved);
}

TEST_P(PatchRoundTripTest, CompressedPicturesComeOutAsGpf2) {
    Open(TwoSquares());
    const samples::Drawing drawing = samples::DrawIcon(40, 30, 3);
    const auto file = WriteGpf2("source.gpf2", 40, 30, 0x88, samples::EncodeForPhone(drawing, 0x88));
    scripted.prompts.Expect(Asked::Compress, true);
    ASSERT_TRUE(ReplaceFrom(session, scripted.ports, 1, file, 0x88).IsClean());
    const Bytes stored = UsedBytes(1);
    ASSERT_TRUE(SavePatchTo(session, scripted.ports, temp / "a.vkp").outcome.IsClean());
    EXPECT_TRUE(ExtractFrom(temp / "a.vkp").IsClean());
    ExpectFile("1.gpf2", {40, 30, 0x88, 1, true}, stored);
}

TEST_P(PatchRoundTripTest, EmptySectionsOfRowsWrittenBeforeGiveNothing) {
    Open(TwoSquares());
    ReplaceBy(0, samples::DrawPhoto(9, 7, 1), 0x85);
    ASSERT_TRUE(SavePatchTo(session, scripted.ports, temp / "before.vkp").outcome.IsClean());
    ReplaceBy(1, samples::DrawPhoto(9, 7, 1), 0x85);
    ASSERT_TRUE(SavePatchTo(session, scripted.ports, temp / "a.vkp").outcome.IsClean());
    ASSERT_NE(ReadText(temp / "a.vkp").find("; ##### Picture 0000 #####\r\n\r\n; ##### Picture 0001 #####"),
              std::string::npos);
    EXPECT_TRUE(ExtractFrom(temp / "a.vkp").IsClean());
    EXPECT_EQ(ListNames(out), Names{"1.gpf"});
}

TEST_P(PatchRoundTripTest, AReplacedPngComesOutByteForByte) {
    const Bytes newPng = samples::MakePng(samples::DrawIcon(9, 9, 1), samples::PngColour::Rgb);
    Bytes longer = samples::MakePng(samples::DrawPhoto(20, 20, 2), samples::PngColour::Rgba);
    FlashBuilder flash = TwoSquares();
    Open(flash.Put(0x1C0000, longer));
    ReplaceBy(0, samples::DrawPhoto(9, 7, 1), 0x85);
    const auto file = WriteFile(temp / "001C0000.png", newPng);
    ASSERT_TRUE(ChangePngFrom(session, scripted.ports, file).outcome.IsClean());
    ASSERT_TRUE(SavePatchTo(session, scripted.ports, temp / "a.vkp").outcome.IsClean());
    EXPECT_TRUE(ExtractFrom(temp / "a.vkp").IsClean());
    EXPECT_EQ(ListNames(out), (Names{"0.gpf", "001C0000.png"}));
    EXPECT_EQ(Out("001C0000.png"), newPng);
}

TEST_P(PatchRoundTripTest, KeptFewerThanSixteenBytesFFOverAnOldPngAreTakenForItsEnd) {
    const Bytes newPng = samples::MakePng(samples::DrawIcon(9, 9, 1), samples::PngColour::Rgb);
    Bytes old = newPng;
    old.insert(old.begin() + 33, 5, 0x00);  // behind the header
    FlashBuilder flash = TwoSquares();
    Open(flash.Put(0x1C0000, old));
    const auto file = WriteFile(temp / "001C0000.png", newPng);
    ASSERT_TRUE(ChangePngFrom(session, scripted.ports, file).outcome.IsClean());
    ASSERT_TRUE(SavePatchTo(session, scripted.ports, temp / "a.vkp").outcome.IsClean());
    EXPECT_TRUE(ExtractFrom(temp / "a.vkp").IsClean());
    Bytes expected = newPng;
    expected.insert(expected.end(), 5, 0xFF);
    EXPECT_EQ(Out("001C0000.png"), expected);
}

INSTANTIATE_TEST_SUITE_P(RecordLengths, PatchRoundTripTest,
                         ::testing::Values(FlashKind::NewSGold, FlashKind::NewSGoldE71),
                         [](const auto& kind) {
                             return kind.param == FlashKind::NewSGold ? std::string("Short")
                                                                      : std::string("Long");
                         });

}  // namespace
}  // namespace pictavo::tests
