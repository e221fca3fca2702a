#include "session/ShowPicture.h"

#include "support/SessionFixture.h"

namespace pictavo::tests {
namespace {

class ShowPictureTest : public SessionFixture {
  protected:
    void ExpectShown(const samples::Drawing& drawing, std::uint8_t type) const {
        const auto expected = samples::ExpectedPixels(drawing, type);
        for (int y = 0; y < drawing.height; ++y)
            for (int x = 0; x < drawing.width; ++x) {
                const samples::Pixel& pixel = expected[static_cast<std::size_t>(x + y * drawing.width)];
                ASSERT_EQ(CellAt(x, y), (Cell{pixel.r, pixel.g, pixel.b, pixel.a})) << x << ", " << y;
            }
    }
};

TEST_F(ShowPictureTest, ShowsThePictureOfEveryTypeCode) {
    FlashBuilder flash(FlashKind::NewSGoldE71);
    for (const std::uint8_t type : samples::kTypeCodes)
        flash.AddDrawing(samples::DrawSoftDisc(33, 21, type), type);
    Open(flash);
    for (std::size_t row = 0; row < samples::kTypeCodes.size(); ++row) {
        const std::uint8_t type = samples::kTypeCodes[row];
        ASSERT_TRUE(ShowRow(session, row));
        ExpectShown(samples::DrawSoftDisc(33, 21, type), type);
        EXPECT_EQ(session.shown.consumed, flash.PictureLength(row)) << "type " << int{type};
    }
}

TEST_F(ShowPictureTest, TheInformationLineOfARowBeginsWithItsListNumber) {
    Open(FourIcons());
    ASSERT_TRUE(ShowRow(session, 0));
    EXPECT_EQ(session.shown.caption, "0000 :: 16 x 16 :: 8bit :: uncompressed :: 256 bytes");
}

TEST_F(ShowPictureTest, TheInformationLineOfAGpfBeginsWithThePlainNumber) {
    const GpfHeader header{2, 1, 0x05, 12, true};
    ASSERT_TRUE(LoadGPFfile(session, WriteFile(temp / "a.gpf2", ComposeGpf(header, Bytes{0xE0, 0x1F}))));
    EXPECT_EQ(session.shown.caption, "12 :: 2 x 1 :: 8bit :: uncompressed :: 2 bytes");
}

TEST_F(ShowPictureTest, ABoldRowShowsItsWorkFileAndWithoutOneTheFlash) {
    Open(FourIcons());
    ReplaceBy(0, samples::DrawOneColour(3, 2, {255, 0, 0, 255}), 0x85);
    ASSERT_TRUE(ShowRow(session, 0));
    EXPECT_EQ(session.picture.width, 3);
    std::filesystem::remove(session.workFiles.Replacement(0));
    ASSERT_TRUE(ShowRow(session, 0));
    EXPECT_EQ(session.picture.width, 16);
}

TEST_F(ShowPictureTest, ATypeOfNoBitDepthKeepsThatOfThePictureBefore) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.AddPicture(1, 1, 0x08, {0xE0, 0x07}).AddPicture(1, 1, 0x02, {0x1F, 0x00});
    Open(flash);
    ASSERT_TRUE(ShowRow(session, 0));
    ASSERT_TRUE(ShowRow(session, 1));
    EXPECT_EQ(session.picture.bitDepth, 16);
    EXPECT_EQ(CellAt(0, 0), (Cell{0, 0, 255, 0}));
}

TEST_F(ShowPictureTest, ATypeOfNoBitDepthShownFirstIsRefusedAsZeroBit) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.AddPicture(1, 1, 0x02, {0x1F});
    Open(flash);
    const Status shown = ShowRow(session, 0);
    ASSERT_FALSE(shown);
    EXPECT_EQ(shown.error().detail, " 0bit");
}

TEST_F(ShowPictureTest, AGpfTypeOfNoBitDepthIsRefusedEvenAfterAnotherPicture) {
    Open(FourIcons());
    ASSERT_TRUE(ShowRow(session, 0));
    const auto loaded = LoadGPFfile(session, WriteGpf2("a.gpf2", 1, 1, 0x02, {0}));
    ASSERT_FALSE(loaded);
    EXPECT_EQ(loaded.error().kind, ErrorKind::BadBitDepth);
    EXPECT_EQ(loaded.error().detail, " 0bit");
}

TEST_F(ShowPictureTest, APictureTooWideForTheRasterIsNotShownAndTheCaptionSaysWhy) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.AddPicture(250, 2, 0x05, Bytes(500, 0xE0));
    Open(flash);
    const Status shown = ShowRow(session, 0);
    ASSERT_FALSE(shown);
    EXPECT_EQ(shown.error().kind, ErrorKind::TooLarge);
    EXPECT_FALSE(session.shown.isShown);
    EXPECT_EQ(session.shown.caption, "0000 :: 250 x 2 :: LarPic!");
}

TEST_F(ShowPictureTest, ATypeOfNoBitDepthTakesThatOfAPictureThatWasTooLargeToShow) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.AddPicture(250, 2, 0x08, Bytes(1000, 0)).AddPicture(1, 1, 0x02, {0x00, 0xF8});
    Open(flash);
    ASSERT_FALSE(ShowRow(session, 0));
    ASSERT_TRUE(ShowRow(session, 1));
    EXPECT_EQ(session.shown.caption, "0001 :: 1 x 1 :: 16bit :: uncompressed :: 2 bytes");
}

TEST_F(ShowPictureTest, ATooLargeGpfIsNotShownAndTheCaptionSaysWhy) {
    Open(FourIcons());
    const auto loaded = LoadGPFfile(session, WriteGpf2("a.gpf2", 250, 2, 0x05, Bytes(500, 0xE0)));
    ASSERT_FALSE(loaded);
    EXPECT_EQ(loaded.error().kind, ErrorKind::TooLarge);
    EXPECT_EQ(session.shown.caption, "0 :: 250 x 2 :: LarPic!");
}

TEST_F(ShowPictureTest, AGpfThatEndsBeforeItsTooLargeSizeDoesIsNotShownEither) {
    Open(FourIcons());
    for (const int height : {1, 60000}) {
        const auto width = static_cast<std::uint16_t>(height == 1 ? 242 : 1);
        const auto path = WriteGpf2("a.gpf2", width, static_cast<std::uint16_t>(height), 0x85, {0x01, 0xE0});
        const auto loaded = LoadGPFfile(session, path);
        ASSERT_FALSE(loaded);
        EXPECT_EQ(loaded.error().kind, ErrorKind::TooLarge);
        EXPECT_FALSE(session.shown.isShown);
        EXPECT_EQ(CellAt(0, 0), (Cell{255, 0, 0, 0}));
    }
}

TEST_F(ShowPictureTest, AFileThatIsNoGpfLeavesWhatIsShown) {
    Open(FourIcons());
    ASSERT_TRUE(ShowRow(session, 1));
    const ShownPicture before = session.shown;
    const auto loaded = LoadGPFfile(session, WriteFile(temp / "a.gpf", std::string(64, 'x')));
    ASSERT_FALSE(loaded);
    EXPECT_EQ(loaded.error().kind, ErrorKind::NoGpf);
    EXPECT_EQ(session.shown.caption, before.caption);
    EXPECT_TRUE(session.shown.isShown);
}

TEST_F(ShowPictureTest, OfABoldRowWhoseWorkFileIsBadNothingIsShownAndTheCaptionSaysWhy) {
    const Bytes whole = ReadFile(WriteGpf2("whole.gpf2", 1, 1, 0x05, {0xE0}));
    const Bytes badDepth = ReadFile(WriteGpf2("depth.gpf2", 1, 1, 0x02, {0xE0}));
    const Bytes noGpf(64, 'x');
    const Bytes cutHeader(whole.begin(), whole.begin() + 20);
    Open(FourIcons());
    ReplaceBy(1, samples::DrawOneColour(3, 2, {255, 0, 0, 255}), 0x85);
    const std::vector<std::pair<Bytes, std::string>> cases = {
        {noGpf, "1 :: is no GPF file (its first bytes are not those of one)"},
        {cutHeader, "1 :: the file ends inside its header"},
        {badDepth, "1 ::  0bit"}};
    for (const auto& [bytes, caption] : cases)
        for (const std::size_t rowBefore : {3U, 1U}) {  // a picture with alpha, then one that failed as well
            const bool wasShown = ShowRow(session, rowBefore).has_value();
            EXPECT_EQ(wasShown, rowBefore == 3U);
            const Picture before = session.picture;
            WriteFile(session.workFiles.Replacement(1), bytes);
            EXPECT_FALSE(ShowRow(session, 1));
            EXPECT_FALSE(session.shown.isShown) << caption;
            EXPECT_EQ(session.shown.caption, caption);
            EXPECT_EQ(session.picture.RasterHasAlpha, before.RasterHasAlpha);
            EXPECT_EQ(session.picture.bitDepth, before.bitDepth);
            EXPECT_EQ(CellAt(8, 8), before.raster.At(8, 8));
        }
}

TEST_F(ShowPictureTest, OfABoldRowThatFailsNoReasonOfAnEarlierOneStays) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.AddPicture(1, 1, 0x05, {0xE0}).AddPicture(250, 2, 0x05, Bytes(500, 0xE0));
    Open(flash);
    ReplaceBy(0, samples::DrawOneColour(3, 2, {255, 0, 0, 255}), 0x85);
    WriteFile(session.workFiles.Replacement(0), Bytes(64, 'x'));
    EXPECT_FALSE(ShowRow(session, 1));
    EXPECT_FALSE(ShowRow(session, 0));
    EXPECT_TRUE(session.shown.caption.starts_with("0 :: is no GPF file")) << session.shown.caption;
}

TEST_F(ShowPictureTest, ReadingAMissingGpfNeverCreatesIt) {
    ASSERT_FALSE(LoadGPFfile(session, temp / "missing.gpf"));
    EXPECT_FALSE(std::filesystem::exists(temp / "missing.gpf"));
}

TEST_F(ShowPictureTest, APictureThatTheFlashEndsInsideIsShownAsIncomplete) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.AddPictureAt((1U << 20) - 2, 2, 2, 0x05, {0xE0, 0xE0});
    Open(flash);
    ASSERT_TRUE(ShowRow(session, 0));
    EXPECT_FALSE(session.shown.isComplete);
    EXPECT_EQ(session.shown.consumed, 4U);
    EXPECT_EQ(CellAt(1, 0), (Cell{255, 0, 0, 0}));
    EXPECT_EQ(CellAt(0, 1), (Cell{0, 0, 0, 0}));
}

}  // namespace
}  // namespace pictavo::tests
