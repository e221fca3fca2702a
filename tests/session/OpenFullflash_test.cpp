#include "session/OpenFullflash.h"

#include "session/ShowPicture.h"
#include "support/SessionFixture.h"

namespace pictavo::tests {
namespace {

class OpenFullflashTest : public SessionFixture {};

TEST_F(OpenFullflashTest, FillsTheRowsAndSaysTheNumberOfTheLast) {
    Open(FourIcons());
    EXPECT_EQ(session.rows.size(), 4U);
    EXPECT_EQ(session.flash.picnum, 3);
    EXPECT_EQ(session.replaced, std::vector<bool>(4, false));
}

TEST_F(OpenFullflashTest, ProgressEndsAtAHundred) {
    Open(FourIcons());
    EXPECT_EQ(scripted.progress.percents, (std::vector<double>{0, 0.05, 0.1, 0.15, 100}));
}

TEST_F(OpenFullflashTest, KeepsPicnumWhenTheTableHasNoEnd) {
    Open(FourIcons());
    FlashBuilder full(FlashKind::NewSGold);
    full.EndTable(false);
    for (int i = 0; i <= 2000; ++i) full.AddRecord({1, 1, 5, 0, 0, 0, 0, 0xA0});
    Open(full, "full.bin");
    EXPECT_EQ(session.rows.size(), 2001U);
    EXPECT_EQ(session.flash.picnum, 3);
}

TEST_F(OpenFullflashTest, KeepsTheOldFlashWhenTheNewOneCanNotBeOpened) {
    Open(FourIcons());
    const Status opened = OpenFullflash(session, temp / "missing.bin", scripted.progress);
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.error().kind, ErrorKind::FileMissing);
    EXPECT_EQ(session.rows.size(), 4U);
    EXPECT_TRUE(ShowRow(session, 2));
}

TEST_F(OpenFullflashTest, OpeningAnotherFlashOverwritesEverything) {
    Open(FourIcons());
    FlashBuilder other(FlashKind::SGold);
    other.AddDrawing(samples::DrawIcon(8, 8, 9), 0x05);
    Open(other, "other.bin");
    EXPECT_EQ(session.rows.size(), 1U);
    EXPECT_EQ(session.flash.platform, "SGold");
    EXPECT_EQ(session.flash.FreeSearchOffset, 262144U);
}

TEST_F(OpenFullflashTest, DropsAPendingPngPatchAndKeepsWorkFiles) {
    Open(FourIcons());
    ReplaceBy(1, samples::DrawIcon(4, 4, 7), 0x85);
    WriteFile(session.workFiles.PngPatch(), std::string("0012: 00 01\r\n"));
    session.pngPatchPending = true;
    Open(FourIcons(), "again.bin");
    EXPECT_FALSE(session.pngPatchPending);
    EXPECT_FALSE(session.savePatchEnabled);
    EXPECT_EQ(ListNames(session.workFiles.folder), std::vector<std::string>{"0001.gpf2"});
    EXPECT_EQ(session.replaced, std::vector<bool>(4, false));
}

TEST_F(OpenFullflashTest, ClosingRemovesTheRowsAndResetsTheSearch) {
    Open(FourIcons());
    session.savePatchEnabled = true;
    EXPECT_EQ(session.flash.FreeSearchOffset, 16777216U);
    CloseFullflash(session);
    EXPECT_FALSE(session.flash.IsOpen());
    EXPECT_TRUE(session.rows.empty());
    EXPECT_TRUE(session.replaced.empty());
    EXPECT_FALSE(session.savePatchEnabled);
    EXPECT_EQ(session.flash.FreeSearchOffset, 262144U);
}

TEST_F(OpenFullflashTest, KeptOfAClosedFlashOnlyTheLastPicturesNumberStays) {
    Open(FourIcons());
    CloseFullflash(session);
    EXPECT_EQ(session.flash.picnum, 3);
    session.flash.picnum = 0;
    EXPECT_TRUE(session.flash == FullflashImage());
}

TEST_F(OpenFullflashTest, AFlashWithoutAPictureHasTheLastNumberMinusOne) {
    Open(FlashBuilder(FlashKind::NewSGold));
    EXPECT_TRUE(session.rows.empty());
    EXPECT_EQ(session.flash.picnum, -1);
    const auto empty = WriteFile(temp / "empty.bin", std::string());
    ASSERT_TRUE(OpenFullflash(session, empty, scripted.progress));
    EXPECT_EQ(session.flash.picnum, -1);
}

TEST_F(OpenFullflashTest, KeptAFullLongTableLeavesPicnumAsItWas) {
    Open(FourIcons());
    FlashBuilder full(FlashKind::NewSGoldE71);
    for (int i = 0; i <= 2501; ++i) full.AddPicture(1, 1, 0x05, {0xE0});
    Open(full, "full.bin");
    EXPECT_EQ(session.rows.size(), 2501U);
    EXPECT_EQ(ColumnText(session.rows.back(), Column::Number), "2500");
    EXPECT_EQ(session.flash.picnum, 3);
}

TEST_F(OpenFullflashTest, IdentificationTextShowsTheFlashsBytesAsLatin1) {
    FullflashImage flash;
    flash.ManufN = "M\xE4rz";
    EXPECT_TRUE(IdentificationText({}, flash).ends_with("\r: M\xC3\xA4rz"));
}

TEST_F(OpenFullflashTest, IdentificationTextHasSixLinesTheFourthEmpty) {
    Open(FourIcons());
    session.texts.str_mModel = "Model";
    session.texts.str_manuf = "Maker";
    EXPECT_EQ(IdentificationText(session.texts, session.flash),
              "Model: " + session.flash.mModel + "\r: 2E\r: lg1\r\r: New-SGold\rMaker: SIEMENS");
}

TEST_F(OpenFullflashTest, AnEmptyManufacturerEndsRightAfterTheColon) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.Manufacturer("");
    Open(flash);
    EXPECT_TRUE(IdentificationText({}, session.flash).ends_with("\r: "));
}

TEST_F(OpenFullflashTest, NeverWritesTheFlash) {
    Open(FourIcons());
    const auto written = std::filesystem::last_write_time(flashPath);
    ReplaceBy(0, samples::DrawIcon(4, 4, 7), 0x85);
    EXPECT_TRUE(ShowRow(session, 0));
    EXPECT_EQ(std::filesystem::last_write_time(flashPath), written);
    ExpectFlashUntouched();
}

}  // namespace
}  // namespace pictavo::tests
