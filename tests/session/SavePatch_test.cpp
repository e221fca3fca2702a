#include "session/SavePatch.h"

#include "session/ShowPicture.h"
#include "support/FileSizeLimit.h"
#include "support/SessionFixture.h"
#include "support/SystemMeans.h"
#include "support/WholePatch.h"

namespace pictavo::tests {
namespace {

class SavePatchTest : public SessionFixture {
  protected:
    /// Two pictures of 16 x 16 in type 05, with room for exactly that, and free flash behind the search
    /// start.
    static FlashBuilder TwoSquares(FlashKind kind = FlashKind::SGold) {
        FlashBuilder flash(kind);
        flash.Size(2U << 20).PicturesAt(0x180000).FillWithCode(0x40000, 0x4F000, 3);
        return flash.AddPicture(16, 16, 0x05, Bytes(256, 0x11)).AddPicture(16, 16, 0x05, Bytes(256, 0x22));
    }

    std::string Save() {
        patch = temp / "GP_new.vkp";
        outcome = SavePatchTo(session, scripted.ports, patch).outcome;
        return ReadText(patch);
    }

    void ReplaceByColour(std::size_t row, int width, int height, std::uint8_t type = 0x85) {
        ReplaceBy(row, samples::DrawOneColour(width, height, {255, 0, 0, 255}), type);
    }

    /// What the patch says behind its banner.
    static std::string BehindBanner(const std::string& text) {
        std::size_t at = 0;
        for (int line = 0; line < 8; ++line) at = text.find("\r\n", at) + 2;
        return text.substr(at);
    }

    /// The flash with the patch applied, opened in place of the old one.
    void ApplyAndOpen() {
        const MemorySource written(ReadFile(patch));
        const auto mismatches = MismatchesOf(written, *session.flash.source);
        ASSERT_TRUE(mismatches);
        EXPECT_TRUE(mismatches->empty());
        ASSERT_TRUE(ApplyPatch(written, *session.flash.source, temp / "copy.bin", false));
        ASSERT_TRUE(OpenFullflash(session, temp / "copy.bin", scripted.progress));
    }

    std::filesystem::path patch;
    Outcome outcome;
};

TEST_F(SavePatchTest, WithoutReplacementsHoldsTheBannerOnly) {
    FlashBuilder flash = TwoSquares(FlashKind::NewSGold);
    flash.Model("E71");
    Open(flash);
    const std::string rule = "; " + std::string(71, '#') + "\r\n";
    const auto framed = [](const std::string& text) {
        return text + std::string(70 - text.size(), ' ') + "###\r\n";
    };
    EXPECT_EQ(Save(), rule + framed("; ### This file is made by Pictavo v1.3") +
                          framed("; ### Pictures for your own phone; keep a copy of the fullflash.") +
                          framed("; ###") + framed("; ### See ReadMe.txt before you flash.") +
                          framed("; ###") + framed("; ### Patch for SIEMENS E71fw2E (lg1)") + rule);
    EXPECT_TRUE(outcome.IsClean());
}

TEST_F(SavePatchTest, ControlBytesOfTheFlashBecomeBlanksInTheBanner) {
    FlashBuilder flash = TwoSquares();
    flash.Manufacturer("A\r\nB").LanguagePack(std::string("l\0x", 3));
    Open(flash);
    const std::string text = Save();
    EXPECT_NE(text.find("; ### Patch for A  B "), std::string::npos);
    EXPECT_NE(text.find("fw2E (l x)"), std::string::npos);
}

TEST_F(SavePatchTest, APictureThatFitsStaysInPlace) {
    Open(TwoSquares());
    ReplaceByColour(0, 4, 1);
    const std::string hex = UpperHex(session.rows[0].pitOffset);
    EXPECT_EQ(BehindBanner(Save()),
              "\r\n; ##### Picture 0000 #####\r\n" + PadZeros(hex, 8, true) +
                  ": 10100500000018A0 04010500000018A0\r\n\r\n00180000: 11111111 E0E0E0E0\r\n");
    EXPECT_EQ(session.flash.FreeSearchOffset, 0x40000U);
}

TEST_F(SavePatchTest, RoomOfExactlyTheLengthIsInPlaceAndLessMoves) {
    Open(TwoSquares());
    ReplaceByColour(0, 16, 16);
    EXPECT_NE(Save().find("00180000: 1111"), std::string::npos);
    Open(TwoSquares(), "again.bin");
    const auto longer = WriteGpf2("longer.gpf2", 16, 16, 0x05, Bytes(256, 0x44));
    scripted.prompts.Expect(Asked::Compress, false);
    ASSERT_TRUE(
        ReplaceFrom(session, scripted.ports, 0, longer, 0x88).IsClean());  // 512 bytes for 256 of room
    std::filesystem::remove(patch);
    EXPECT_NE(Save().find("\r\n0008F000: "), std::string::npos);
}

TEST_F(SavePatchTest, AMovedPictureTakesTheNextFreePlaceAndItsRecordNamesIt) {
    Open(TwoSquares());
    ReplaceByColour(0, 17, 16);
    const std::string text = Save();
    EXPECT_NE(text.find(" 1110050000F008A0\r\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\r\n0008F000: "), std::string::npos);
    EXPECT_EQ(session.flash.FreeSearchOffset, 0x8F000U + 272U);
}

TEST_F(SavePatchTest, TwoMovedPicturesGetTwoPlaces) {
    Open(TwoSquares());
    ReplaceByColour(0, 17, 16);
    ReplaceByColour(1, 18, 16);
    const std::string text = Save();
    EXPECT_NE(text.find("\r\n0008F000: "), std::string::npos);
    EXPECT_NE(text.find("\r\n0008F110: "), std::string::npos);
}

TEST_F(SavePatchTest, TheLastRowHasTheRoomOfItsOwnOldPicture) {
    Open(TwoSquares());
    ReplaceByColour(1, 16, 16);
    EXPECT_NE(Save().find("\r\n00180100: 2222"), std::string::npos);
}

TEST_F(SavePatchTest, EqualOffsetsGiveNoRoom) {
    FlashBuilder flash = TwoSquares();
    flash.AddPictureAt(0x180100, 16, 16, 0x05, Bytes(256, 0x33));
    Open(flash);
    ReplaceByColour(1, 4, 1);
    EXPECT_NE(Save().find("\r\n0008F000: "), std::string::npos);
}

TEST_F(SavePatchTest, FallingOffsetsGiveNoRoom) {
    FlashBuilder flash = TwoSquares();
    flash.AddPictureAt(0x170000, 16, 16, 0x05, Bytes(256, 0x33));
    Open(flash);
    ReplaceByColour(1, 4, 1);
    EXPECT_NE(Save().find("\r\n0008F000: "), std::string::npos);
}

TEST_F(SavePatchTest, LongRecordsAreTwelveBytesAndHoldTallPictures) {
    Open(TwoSquares(FlashKind::NewSGoldE71).Size(0x1100000));
    ReplaceByColour(0, 240, 320);
    EXPECT_NE(Save().find(" F000400105000000000000A1\r\n"), std::string::npos);
}

TEST_F(SavePatchTest, TheSameModelOnAnSGoldFlashHasShortRecords) {
    FlashBuilder flash = TwoSquares();
    flash.Model("E71");
    Open(flash);
    ReplaceByColour(0, 4, 1);
    EXPECT_NE(Save().find(" 04010500000018A0\r\n"), std::string::npos);
}

TEST_F(SavePatchTest, LinesHoldSixteenBytesTheLastTheRestAndEqualOnesAreNotLeftOut) {
    Open(TwoSquares());
    ReplaceBy(0, samples::DrawOneColour(17, 1, {36, 146, 85, 255}), 0x85);  // stored as the old bytes may be
    Save();
    const auto entries = ReadWholePatch(MemorySource(ReadFile(patch)));
    ASSERT_TRUE(entries);
    ASSERT_EQ(entries->size(), 3U);
    EXPECT_EQ((*entries)[1].newBytes.size(), 16U);
    EXPECT_EQ((*entries)[2].newBytes.size(), 1U);
    EXPECT_EQ((*entries)[2].offset, 0x180010U);
}

TEST_F(SavePatchTest, ABoldRowWithoutWorkFileHasAnEmptySection) {
    Open(TwoSquares());
    ReplaceByColour(0, 4, 1);
    std::filesystem::remove(session.workFiles.Replacement(0));
    EXPECT_EQ(BehindBanner(Save()), "\r\n; ##### Picture 0000 #####\r\n");
}

TEST_F(SavePatchTest, ConsumesTheWorkFilesAndKeepsTheRowsBold) {
    Open(TwoSquares());
    ReplaceByColour(0, 4, 1);
    Save();
    EXPECT_TRUE(ListNames(session.workFiles.folder).empty());
    EXPECT_FALSE(session.savePatchEnabled);
    EXPECT_TRUE(session.replaced[0]);
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"Succes"});
}

TEST_F(SavePatchTest, ASecondPatchHasEmptySectionsForTheOldRows) {
    Open(TwoSquares());
    ReplaceByColour(0, 4, 1);
    Save();
    ReplaceByColour(1, 4, 1);
    std::filesystem::remove(patch);
    EXPECT_TRUE(BehindBanner(Save()).starts_with(
        "\r\n; ##### Picture 0000 #####\r\n\r\n; ##### Picture 0001 #####\r\n"));
}

TEST_F(SavePatchTest, NoFreeMemoryKeepsThePicturePendingAndWritesTheOthers) {
    FlashBuilder flash = TwoSquares();
    flash.FillWithCode(0x40000, (2U << 20) - 0x40000, 3);
    Open(flash);
    ReplaceByColour(0, 17, 16);
    ReplaceByColour(1, 4, 1);
    const std::string text = BehindBanner(Save());
    EXPECT_TRUE(text.starts_with("\r\n; ##### Picture 0000 #####\r\n\r\n; ##### Picture 0001 #####\r\n0"));
    EXPECT_EQ(scripted.prompts.NoticeTexts(),
              (std::vector<std::string>{"Can't find free memory in fullflash!", "Succes"}));
    EXPECT_EQ(scripted.prompts.notices[0].title, "0000");
    EXPECT_EQ(outcome.problems.at(0).number, 0);
    EXPECT_EQ(ListNames(session.workFiles.folder), std::vector<std::string>{"0000.gpf2"});
    EXPECT_TRUE(session.savePatchEnabled);
}

TEST_F(SavePatchTest, APendingPngPatchIsAppendedAsItStandsAndConsumed) {
    Open(TwoSquares());
    WriteFile(session.workFiles.PngPatch(), std::string("; png\r\n00000010: 00 01\r\n"));
    session.pngPatchPending = true;
    EXPECT_EQ(BehindBanner(Save()), "; png\r\n00000010: 00 01\r\n");
    EXPECT_FALSE(session.pngPatchPending);
    EXPECT_TRUE(ListNames(session.workFiles.folder).empty());
}

TEST_F(SavePatchTest, APngPatchThatIsNotPendingIsDeletedUnused) {
    Open(TwoSquares());
    WriteFile(session.workFiles.PngPatch(), std::string("; of another run\r\n"));
    EXPECT_EQ(BehindBanner(Save()), "");
    EXPECT_TRUE(ListNames(session.workFiles.folder).empty());
}

TEST_F(SavePatchTest, AnUnwritablePatchChangesNothing) {
    Open(TwoSquares());
    ReplaceByColour(0, 17, 16);
    const PatchOutcome saved = SavePatchTo(session, scripted.ports, temp / "no folder" / "a.vkp");
    EXPECT_EQ(saved.outcome.end, Outcome::End::Refused);
    EXPECT_EQ(saved.outcome.problems[0].error.kind, ErrorKind::WriteFailed);
    EXPECT_EQ(ListNames(session.workFiles.folder), std::vector<std::string>{"0000.gpf2"});
    EXPECT_EQ(session.flash.FreeSearchOffset, 0x40000U);
    EXPECT_TRUE(session.savePatchEnabled);
}

TEST_F(SavePatchTest, TheFlashItselfIsRefusedAsTarget) {
    PICTAVO_NEEDS_POSIX("symbolic links");
    Open(TwoSquares());
    std::filesystem::create_symlink(flashPath, temp / "link.vkp");
    EXPECT_EQ(SavePatchTo(session, scripted.ports, temp / "link.vkp").outcome.problems[0].error.kind,
              ErrorKind::OutputIsInput);
    ExpectFlashUntouched();
}

TEST_F(SavePatchTest, TheChooserOffersGpAndItsAnswerGetsTheExtension) {
    Open(TwoSquares());
    scripted.prompts.Choose(temp / "X.VKP");
    EXPECT_TRUE(SavePatch(session, scripted.ports).outcome.IsClean());
    EXPECT_TRUE(std::filesystem::exists(temp / "X.VKP.vkp"));
    const FileChoice& choice = scripted.prompts.choices[0];
    EXPECT_EQ(choice.suggestedName, "GP_");
    EXPECT_EQ(choice.filters.at(0).name, "ViKlay Patch File");
    EXPECT_EQ(choice.title, "PlSel File 4save");
}

TEST_F(SavePatchTest, ARefusedOverwriteConsumesNothing) {
    Open(TwoSquares());
    ReplaceByColour(0, 4, 1);
    const auto existing = WriteFile(temp / "a.vkp", std::string("old"));
    scripted.prompts.Choose(existing);
    scripted.prompts.Expect(Asked::Overwrite, false);
    EXPECT_EQ(SavePatch(session, scripted.ports).outcome.end, Outcome::End::Cancelled);
    EXPECT_EQ(ReadText(existing), "old");
    EXPECT_EQ(scripted.prompts.questions.back().title, "faExi!");
    EXPECT_EQ(scripted.prompts.questions.back().text, existing.string() + "\rfChan?");
    EXPECT_EQ(ListNames(session.workFiles.folder), std::vector<std::string>{"0000.gpf2"});
}

TEST_F(SavePatchTest, ThePatchedCopyShowsTheNewPictures) {
    Open(TwoSquares());
    ReplaceBy(0, samples::DrawGradient(40, 30, 1), 0x88);
    ReplaceBy(1, samples::DrawIcon(9, 9, 2), 0x85);
    Save();
    ApplyAndOpen();
    ASSERT_TRUE(ShowRow(session, 0));
    EXPECT_EQ(session.shown.caption, "0000 :: 40 x 30 :: 16bit :: uncompressed :: 2400 bytes");
    const auto expected = samples::ExpectedPixels(samples::DrawGradient(40, 30, 1), 0x08);
    EXPECT_EQ(CellAt(39, 29), (Cell{expected.back().r, expected.back().g, expected.back().b, 0}));
    ASSERT_TRUE(ShowRow(session, 1));
    EXPECT_EQ(session.picture.width, 9);
}

TEST_F(SavePatchTest, SectionsStandInTheOrderOfTheListAndNotOfTheReplacing) {
    Open(TwoSquares());
    ReplaceByColour(1, 4, 1);
    ReplaceByColour(0, 4, 1);
    const std::string text = Save();
    EXPECT_LT(text.find("; ##### Picture 0000 #####"), text.find("; ##### Picture 0001 #####"));
}

TEST_F(SavePatchTest, AMovedPictureKeepsClearOfOneThatGrowsInPlaceOverErasedBytes) {
    FlashBuilder flash = TwoSquares();
    flash.AddPictureAt(0x8F000, 16, 16, 0x05, Bytes(256, 0xFF));
    Open(flash);
    ReplaceByColour(0, 17, 16);
    ReplaceByColour(2, 16, 16);
    const std::string text = Save();
    EXPECT_NE(text.find(" 1110050000F108A0\r\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\r\n0008F100: "), std::string::npos);
    EXPECT_NE(text.find("\r\n0008F0F0: "), std::string::npos);
}

/// White pixels of 16 bits are FF FF.
TEST_F(SavePatchTest, AMovedPictureKeepsClearOfWhitePicturesThatStay) {
    FlashBuilder flash = TwoSquares();
    flash.AddPictureAt(0x8F000, 16, 16, 0x08, Bytes(512, 0xFF));
    Open(flash);
    ReplaceByColour(0, 17, 16);
    const std::string text = Save();
    EXPECT_NE(text.find(" 1110050000F208A0\r\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("\r\n0008F0"), std::string::npos) << text;
    EXPECT_NE(text.find("\r\n0008F200: "), std::string::npos) << text;
    ApplyAndOpen();
    ASSERT_TRUE(ShowRow(session, 2));
    EXPECT_EQ(session.picture.raster.At(0, 0), (Cell{255, 255, 255, 0}));
    EXPECT_EQ(session.picture.raster.At(15, 15), (Cell{255, 255, 255, 0}));
}

TEST_F(SavePatchTest, WithoutFreeMemoryTheRowStaysBoldAndTheSearchWhereItWas) {
    FlashBuilder flash = TwoSquares();
    flash.FillWithCode(0x40000, (2U << 20) - 0x40000, 3);
    Open(flash);
    ReplaceByColour(0, 17, 16);
    Save();
    EXPECT_EQ(session.flash.FreeSearchOffset, 0x40000U);
    EXPECT_TRUE(session.replaced[0]);
    EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::NoFreeMemory);
    EXPECT_EQ(outcome.written, 1U);
}

TEST_F(SavePatchTest, TheNextPatchSearchesBehindTheLastOnesPlaces) {
    Open(TwoSquares());
    ReplaceByColour(0, 17, 16);
    Save();
    ReplaceByColour(1, 17, 16);
    std::filesystem::remove(patch);
    EXPECT_NE(Save().find("\r\n0008F110: "), std::string::npos);
}

TEST_F(SavePatchTest, APictureWhoseOldBytesTheFlashDoesNotHoldStaysPending) {
    FlashBuilder flash = TwoSquares();
    flash.AddPictureAt((2U << 20) - 2, 2, 2, 0x05, {0x33, 0x33});
    Open(flash);
    ReplaceByColour(2, 2, 2);
    EXPECT_EQ(BehindBanner(Save()), "\r\n; ##### Picture 0002 #####\r\n");
    EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::Truncated);
    EXPECT_EQ(outcome.problems.at(0).number, 2);
    EXPECT_EQ(ListNames(session.workFiles.folder), std::vector<std::string>{"0002.gpf2"});
    EXPECT_TRUE(session.savePatchEnabled);
}

TEST_F(SavePatchTest, AWorkFileThatIsNoGpfIsAProblemAndStays) {
    Open(TwoSquares());
    ReplaceByColour(0, 4, 1);
    ReplaceByColour(1, 4, 1);
    WriteFile(session.workFiles.Replacement(0), std::string(64, 'x'));
    EXPECT_TRUE(BehindBanner(Save()).starts_with(
        "\r\n; ##### Picture 0000 #####\r\n\r\n; ##### Picture 0001 #####\r\n0"));
    EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::NoGpf);
    EXPECT_EQ(ListNames(session.workFiles.folder), std::vector<std::string>{"0000.gpf2"});
    EXPECT_TRUE(session.savePatchEnabled);
}

TEST_F(SavePatchTest, AWorkFileThatCannotBeOpenedIsAProblemAndNoMissingOne) {
    Open(TwoSquares());
    ReplaceByColour(0, 4, 1);
    const std::filesystem::path workFile = session.workFiles.Replacement(0);
    std::filesystem::remove(workFile);
    std::filesystem::create_directory(workFile);
    Save();
    EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::FileMissing);
    EXPECT_EQ(outcome.problems.at(0).error.path, workFile);
    EXPECT_EQ(scripted.prompts.notices.size(), 2U) << "a box for the picture, and one for the patch";
    EXPECT_TRUE(session.savePatchEnabled);
    EXPECT_FALSE(ShowRow(session, 0)) << "the flash's picture took its place";
}

TEST_F(SavePatchTest, TheChooserIsForPatches) {
    Open(TwoSquares());
    scripted.prompts.Choose({});
    EXPECT_EQ(SavePatch(session, scripted.ports).outcome.end, Outcome::End::Cancelled);
    EXPECT_EQ(scripted.prompts.choices.at(0).filters.at(0).patterns, std::vector<std::string>{"*.vkp"});
    EXPECT_EQ(scripted.prompts.choices.at(0).defaultExtension, "vkp");
}

TEST_F(SavePatchTest, ACancelledChooserConsumesNothing) {
    Open(TwoSquares());
    ReplaceByColour(0, 17, 16);
    scripted.prompts.Choose({});
    EXPECT_EQ(SavePatch(session, scripted.ports).outcome.end, Outcome::End::Cancelled);
    EXPECT_EQ(ListNames(session.workFiles.folder), std::vector<std::string>{"0000.gpf2"});
    EXPECT_TRUE(session.savePatchEnabled);
    EXPECT_EQ(session.flash.FreeSearchOffset, 0x40000U);
    EXPECT_TRUE(scripted.prompts.notices.empty());
}

TEST_F(SavePatchTest, AnAnswerWithoutExtensionLosesItsTailAndGetsIt) {
    Open(TwoSquares());
    scripted.prompts.Choose(temp / "mine !");
    EXPECT_TRUE(SavePatch(session, scripted.ports).outcome.IsClean());
    EXPECT_TRUE(std::filesystem::exists(temp / "mine.vkp"));
}

TEST_F(SavePatchTest, AnAcceptedOverwriteReplacesTheWholeFile) {
    Open(TwoSquares());
    const auto existing = WriteFile(temp / "a.vkp", std::string(5000, 'x'));
    scripted.prompts.Choose(existing);
    scripted.prompts.Expect(Asked::Overwrite, true);
    EXPECT_TRUE(SavePatch(session, scripted.ports).outcome.IsClean());
    EXPECT_EQ(ReadFile(existing).size(), 8U * 75);
}

TEST_F(SavePatchTest, AFullDiskKeepsTheOldPatchAndTheWorkFiles) {
    PICTAVO_NEEDS_POSIX("full disks");
    Open(TwoSquares());
    ReplaceByColour(0, 17, 16);
    const auto existing = WriteFile(temp / "a.vkp", std::string("old"));
    const auto before = ListNames(temp.Path());
    scripted.prompts.Expect(Asked::Overwrite, true);
    {
        const FileSizeLimit full(1000);
        outcome = SavePatchTo(session, scripted.ports, existing).outcome;
    }
    EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::WriteFailed);
    EXPECT_EQ(ReadText(existing), "old");
    EXPECT_EQ(ListNames(temp.Path()), before);
    EXPECT_EQ(ListNames(session.workFiles.folder), std::vector<std::string>{"0000.gpf2"});
    EXPECT_EQ(session.flash.FreeSearchOffset, 0x40000U);
}

TEST_F(SavePatchTest, TheFlashStaysUntouched) {
    Open(TwoSquares());
    ReplaceByColour(0, 17, 16);
    Save();
    ExpectFlashUntouched();
}

/// A PNG section that is pending beside replaced pictures.
class PendingPngTest : public SavePatchTest {
  protected:
    /// Nothing but this line; the old bytes do not matter here.
    void MakePending(const std::string& line) {
        section = "\r\n; ##### PNG Picture 0 #####\r\n" + line + "\r\n";
        WriteFile(session.workFiles.PngPatch(), section);
        session.pngPatchPending = true;
    }

    /// Picture 0 was left out of the patch by name, and the PNG section stands in it.
    void ExpectPictureRefused() {
        EXPECT_EQ(BehindBanner(Save()), "\r\n; ##### Picture 0000 #####\r\n" + section);
        EXPECT_EQ(outcome.end, Outcome::End::Done);
        ASSERT_EQ(outcome.problems.size(), 1U);
        EXPECT_EQ(outcome.problems[0].number, 0);
        EXPECT_EQ(outcome.problems[0].error, (Error{ErrorKind::Conflict, flashPath, 0x180000, kReason}));
        EXPECT_EQ(scripted.prompts.NoticeTexts(),
                  (std::vector<std::string>{flashPath.string() + "\rat 0x180000: " + kReason, "Succes"}));
        EXPECT_EQ(scripted.prompts.notices[0].title, "0000");
        EXPECT_EQ(ListNames(session.workFiles.folder), std::vector<std::string>{"0000.gpf2"});
        EXPECT_TRUE(session.savePatchEnabled);
        EXPECT_FALSE(session.pngPatchPending);
    }

    static constexpr const char* kReason = "the pending PNG replacements write the same bytes";
    std::string section;
};

TEST_F(PendingPngTest, APictureWhoseBytesItWritesTooIsRefusedByNameAndStaysPending) {
    Open(TwoSquares());
    MakePending("00180003: 11 22");
    ReplaceByColour(0, 4, 1);
    ExpectPictureRefused();
}

TEST_F(PendingPngTest, APictureWhoseRecordItWritesTooIsRefusedByNameAndStaysPending) {
    Open(TwoSquares());
    MakePending(PadZeros(UpperHex(session.rows[0].pitOffset + 7), 8, true) + ": A0 22");
    ReplaceByColour(0, 4, 1);
    ExpectPictureRefused();
}

TEST_F(PendingPngTest, TheRefusedPictureIsInTheNextPatch) {
    Open(TwoSquares());
    MakePending("00180003: 11 22");
    ReplaceByColour(0, 4, 1);
    Save();
    std::filesystem::remove(patch);
    EXPECT_NE(Save().find("\r\n00180000: 11111111 E0E0E0E0\r\n"), std::string::npos);
    EXPECT_TRUE(outcome.IsClean());
    EXPECT_FALSE(session.savePatchEnabled);
}

TEST_F(PendingPngTest, APictureBesideItIsWrittenAndTheSectionStandsBehind) {
    Open(TwoSquares());
    MakePending("00180004: 11 22");
    ReplaceByColour(0, 4, 1);
    const std::string text = Save();
    EXPECT_TRUE(text.ends_with("\r\n00180000: 11111111 E0E0E0E0\r\n" + section));
    EXPECT_TRUE(outcome.IsClean());
}

TEST_F(PendingPngTest, AMovedPictureKeepsClearOfWhatItWrites) {
    Open(TwoSquares());
    MakePending("0008F000: " + std::string(32, 'F') + " " + std::string(32, '7'));
    ReplaceByColour(0, 17, 16);
    EXPECT_NE(Save().find("\r\n0008F010: "), std::string::npos);
    EXPECT_TRUE(outcome.IsClean());
}

TEST_F(PendingPngTest, OneThatIsGoneRefusesThePatchAndConsumesNothing) {
    Open(TwoSquares());
    ReplaceByColour(0, 4, 1);
    session.pngPatchPending = true;
    outcome = SavePatchTo(session, scripted.ports, temp / "a.vkp").outcome;
    EXPECT_EQ(outcome.end, Outcome::End::Refused);
    EXPECT_EQ(outcome.problems.at(0).error.path, session.workFiles.PngPatch());
    EXPECT_FALSE(std::filesystem::exists(temp / "a.vkp"));
    EXPECT_EQ(ListNames(session.workFiles.folder), std::vector<std::string>{"0000.gpf2"});
}

}  // namespace
}  // namespace pictavo::tests
