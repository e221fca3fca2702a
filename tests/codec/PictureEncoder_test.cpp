#include "codec/PictureEncoder.h"

#include <gtest/gtest.h>
#include <random>

#include "PlainCodec.h"
#include "support/PictureOf.h"

namespace pictavo::tests {
namespace {

const Cell kRed{255, 0, 0, 0};
const Cell kGreen{0, 255, 0, 0};
const Cell kBlue{0, 0, 255, 0};

Bytes EncodedPixel(const Cell& cell, bool hasAlpha, std::uint8_t type) {
    return EncodePicture(PictureOf(1, 1, {cell}, hasAlpha), type);
}

void FillRow(Picture& picture, int y, const Cell& cell) {
    for (int x = 0; x < Raster::kColumns; ++x) picture.raster.At(x, y) = cell;
}

TEST(PictureEncoder, APictureWithAlphaKeepsItIn24Bits) {
    EXPECT_EQ(EncodedPixel({1, 2, 3, 4}, true, kType24Bit), (Bytes{3, 2, 1, 4}));
}

TEST(PictureEncoder, AlphaUnder127BecomesTheTransparentValueElsewhere) {
    EXPECT_EQ(EncodedPixel({255, 0, 0, 126}, true, kType8Bit), Bytes{0xC0});
    EXPECT_EQ(EncodedPixel({255, 0, 0, 127}, true, kType8Bit), Bytes{0xE0});
    EXPECT_EQ(EncodedPixel({255, 0, 0, 126}, true, kType16Bit), (Bytes{0x00, 0xE0}));
    EXPECT_EQ(EncodedPixel({255, 0, 0, 127}, true, kType16Bit), (Bytes{0x00, 0xF8}));
}

TEST(PictureEncoder, WithoutAlphaOnlyTheMarkerIsTransparentIn24Bits) {
    EXPECT_EQ(EncodedPixel(kTransparentMarker, false, kType24Bit), (Bytes{169, 171, 169, 0}));
    EXPECT_EQ(EncodedPixel({1, 2, 3, 0}, false, kType24Bit), (Bytes{3, 2, 1, 255}));
    EXPECT_EQ(EncodedPixel({1, 2, 3, 99}, false, kType24Bit), (Bytes{3, 2, 1, 255}));
}

TEST(PictureEncoder, TransparentPixelsOfAPictureWithAlphaAreWhiteIn1Bit) {
    Picture picture = PictureOf(4, 1, {{0, 0, 0, 126}, {0, 0, 0, 127}, {255, 255, 255, 0}, {0, 0, 0, 255}});
    picture.RasterHasAlpha = true;
    EXPECT_EQ(EncodePicture(picture, kType1Bit), Bytes{0x50});
}

TEST(PictureEncoder, TheMarkerTakesTheTransparentValueOf8And16Bits) {
    EXPECT_EQ(EncodedPixel(kTransparentMarker, false, kType8Bit), Bytes{0xC0});
    EXPECT_EQ(EncodedPixel(kTransparentMarker, false, kType16Bit), (Bytes{0x00, 0xE0}));
}

TEST(PictureEncoder, OneBitIsWhiteFromAMeanOf127On) {
    const std::vector<Cell> cells{
        {127, 127, 127, 0}, {126, 126, 126, 0}, kTransparentMarker, {34, 253, 94, 0}};
    EXPECT_EQ(EncodePicture(PictureOf(4, 1, cells), kType1Bit), Bytes{0x50});
}

TEST(PictureEncoder, OneBitRowsAreWholeBytesWithZerosBehindThePixels) {
    const std::vector<Cell> black(18);
    EXPECT_EQ(EncodePicture(PictureOf(9, 2, black), kType1Bit), (Bytes{0xFF, 0x80, 0xFF, 0x80}));
}

TEST(PictureEncoder, UncompressedPixelsStandInRowOrder) {
    const Picture picture = PictureOf(2, 2, {kRed, kGreen, kBlue, Cell{255, 255, 255, 0}});
    EXPECT_EQ(EncodePicture(picture, kType8Bit), (Bytes{0xE0, 0x1C, 0x03, 0xFF}));
    EXPECT_EQ(EncodePicture(picture, kType16Bit), (Bytes{0x00, 0xF8, 0xE0, 0x07, 0x1F, 0x00, 0xFF, 0xFF}));
    EXPECT_EQ(EncodePicture(picture, kType24Bit).size(), 16U);
}

TEST(PictureEncoder, AnEqualPairOverBlackIsARunOfTwoAndTheExtraRow) {
    EXPECT_EQ(EncodePicture(PictureOf(2, 1, {kRed, kRed}), kType16BitCompressed),
              (Bytes{0x02, 0x00, 0xF8, 0x02, 0, 0}));
}

TEST(PictureEncoder, ThreeDifferentPixelsOverBlackAreAStretchAndTheClosingRun) {
    EXPECT_EQ(EncodePicture(PictureOf(3, 1, {kRed, kGreen, kBlue}), kType8BitCompressed),
              (Bytes{0xFD, 0xE0, 0x1C, 0x03, 0x03, 0x00}));
}

TEST(PictureEncoder, ARunOf200IsARunOf127AndOneOf73) {
    Picture picture = PictureOf(200, 1, std::vector<Cell>(200, kRed));
    FillRow(picture, 1, kGreen);
    const Bytes stored = EncodePicture(picture, kType16BitCompressed);
    EXPECT_EQ(Bytes(stored.begin(), stored.begin() + 6), (Bytes{0x7F, 0x00, 0xF8, 0x49, 0x00, 0xF8}));
    EXPECT_EQ(Bytes(stored.begin() + 6, stored.end()), (Bytes{0x7F, 0xE0, 0x07, 0x49, 0xE0, 0x07}));
}

TEST(PictureEncoder, ALiteralStretchIsWrittenAt127Pixels) {
    std::vector<Cell> cells;
    for (int i = 0; i < 200; ++i) cells.push_back({static_cast<std::uint8_t>(i), 1, 0, 0});
    const Bytes stored = EncodePicture(PictureOf(200, 1, cells), kType24BitCompressed);
    EXPECT_EQ(stored[0], 0x81);
    EXPECT_EQ(stored[1 + 127 * 4], 256 - 73);
}

TEST(PictureEncoder, KeptGroupsAreFoundOnFullColours) {
    const std::vector<Cell> nearlyEqual{{255, 0, 0, 0}, {254, 0, 0, 0}, {253, 0, 0, 0}};
    EXPECT_EQ(EncodePicture(PictureOf(3, 1, nearlyEqual), kType8BitCompressed),
              (Bytes{0xFD, 0xE0, 0xE0, 0xE0, 0x03, 0x00}));
}

TEST(PictureEncoder, KeptTheExtraRowComesFromTheRasterBelow) {
    Picture picture = PictureOf(2, 1, {kRed, kRed});
    FillRow(picture, 1, kGreen);
    EXPECT_EQ(EncodePicture(picture, kType8BitCompressed), (Bytes{0x02, 0xE0, 0x02, 0x1C}));
    FillRow(picture, 1, kRed);
    EXPECT_EQ(EncodePicture(picture, kType8BitCompressed), (Bytes{0x04, 0xE0}));
}

TEST(PictureEncoder, KeptTheClosingGroupLosesAPixelOfAPictureOnePixelWide) {
    Picture picture = PictureOf(1, 2, {kRed, kGreen});
    FillRow(picture, 2, kBlue);
    EXPECT_EQ(EncodePicture(picture, kType8BitCompressed), (Bytes{0xFF, 0xE0, 0x03}));
}

TEST(PictureEncoder, ThePictureOf320RowsReadsTheRastersLastRow) {
    Picture picture = PictureOf(2, 320, std::vector<Cell>(640, kRed));
    FillRow(picture, 320, kGreen);
    const Bytes stored = EncodePicture(picture, kType8BitCompressed);
    EXPECT_EQ(Bytes(stored.end() - 2, stored.end()), (Bytes{0x02, 0x1C}));
}

TEST(PictureEncoder, BelowTheRasterAreZeroCells) {
    const Picture picture = PictureOf(2, 321, std::vector<Cell>(642, kRed));
    const Bytes stored = EncodePicture(picture, kType8BitCompressed);
    EXPECT_EQ(Bytes(stored.end() - 2, stored.end()), (Bytes{0x02, 0x00}));
}

TEST(PictureEncoder, NamesTheTypesItWrites) {
    for (unsigned type = 0; type < 256; ++type) {
        const bool isWritten = type == 0x01 || type == 0x05 || type == 0x08 || type == 0x0A || type == 0x85 ||
                               type == 0x88 || type == 0x8A;
        EXPECT_EQ(CanEncode(static_cast<std::uint8_t>(type)), isWritten) << type;
    }
}

TEST(PictureEncoder, AnEmptyPictureHasNoBytes) {
    for (const std::uint8_t type : std::initializer_list<std::uint8_t>{kType1Bit, kType8Bit, kType24Bit})
        EXPECT_TRUE(EncodePicture(PictureOf(3, 0, {}), type).empty());
    EXPECT_TRUE(EncodePicture(PictureOf(1, 1, {}), kType1Bit).size() == 1);
}

/// Cells of few colours in stretches, so that runs, literals and their ends meet at random.
Picture PictureOfStretches(std::mt19937& random, int width, int height) {
    Picture picture;
    picture.width = width;
    picture.height = height;
    picture.RasterHasAlpha = random() % 2 == 0;
    const auto colours = 1 + random() % 5;
    const auto longestStretch = 1 + random() % 300;
    std::uint_fast32_t left = 0;
    Cell cell;
    for (int i = 0; i < Raster::kColumns * Raster::kRows; ++i) {
        if (left == 0) {
            const auto shade = static_cast<std::uint8_t>(random() % colours * 50);
            cell = random() % 9 == 0 ? kTransparentMarker
                                     : Cell{shade, static_cast<std::uint8_t>(random() % 3), 9, shade};
            left = 1 + random() % longestStretch;
        }
        *(picture.raster.From(0, 0) + i) = cell;
        --left;
    }
    return picture;
}

TEST(PictureEncoder, WritesWhatThePlainEncoderWrites) {
    std::mt19937 random(13);
    for (int round = 0; round < 600; ++round) {
        const int width = 1 + static_cast<int>(random() % (round % 2 == 0 ? 12 : 240));
        const int height = 1 + static_cast<int>(random() % (round % 2 == 0 ? 9 : 60));
        const Picture picture = PictureOfStretches(random, width, height);
        for (const std::uint8_t type : std::initializer_list<std::uint8_t>{
                 kType8BitCompressed, kType16BitCompressed, kType24BitCompressed})
            ASSERT_EQ(EncodePicture(picture, type), plain::Encoder(picture, *BitDepthOf(type)).Run())
                << width << " x " << height << " type " << int{type};
    }
}

/// How a type shows single cells: each is written as a picture of one pixel, uncompressed, and read again.
class CellsAsShown {
  public:
    CellsAsShown(bool hasAlpha, std::uint8_t type)
        : plainType_(static_cast<std::uint8_t>(type & 0x7F)), written_(PictureOf(1, 1, {}, hasAlpha)) {}

    Cell operator()(const Cell& cell) {
        written_.raster.At(0, 0) = cell;
        const MemorySource stored(EncodePicture(written_, plainType_));
        EXPECT_TRUE(DecodePicture(stored, 0, {1, 1, *BitDepthOf(plainType_), false}, read_));
        return read_.raster.At(0, 0);
    }

  private:
    std::uint8_t plainType_;
    Picture written_;
    Picture read_;
};

void ExpectRoundTrip(const Picture& picture, std::uint8_t type) {
    const Bytes stored = EncodePicture(picture, type);
    Picture decoded;
    const auto result =
        DecodePicture(MemorySource(stored), 0,
                      {picture.width, picture.height, *BitDepthOf(type), IsCompressed(type)}, decoded);
    ASSERT_TRUE(result);
    ASSERT_TRUE(result->complete);
    CellsAsShown shown(picture.RasterHasAlpha, type);
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
            ASSERT_EQ(decoded.raster.At(x, y), shown(picture.raster.At(x, y))) << x << ", " << y;
    for (int x = 0; x < Raster::kColumns && picture.height + 1 < Raster::kRows; ++x)
        ASSERT_EQ(decoded.raster.At(x, picture.height + 1), Cell{}) << "spilled below the extra row";
}

TEST(PictureEncoder, EveryWrittenTypeComesBackAtAllSizesFromTwoColumnsOn) {
    std::mt19937 random(17);
    const std::array<std::pair<int, int>, 9> sizes{
        {{2, 1}, {2, 2}, {3, 5}, {8, 8}, {9, 9}, {127, 3}, {128, 4}, {240, 1}, {61, 63}}};
    for (const auto& [width, height] : sizes) {
        for (const std::uint8_t type :
             std::initializer_list<std::uint8_t>{0x01, 0x05, 0x08, 0x0A, 0x85, 0x88, 0x8A}) {
            SCOPED_TRACE(std::to_string(width) + " x " + std::to_string(height) + " " + std::to_string(type));
            ExpectRoundTrip(PictureOfStretches(random, width, height), type);
            if (::testing::Test::HasFatalFailure()) return;
        }
    }
}

Picture ThereAndBack(const Picture& picture, std::uint8_t type) {
    Picture decoded;
    const auto result =
        DecodePicture(MemorySource(EncodePicture(picture, type)), 0,
                      {picture.width, picture.height, *BitDepthOf(type), IsCompressed(type)}, decoded);
    EXPECT_TRUE(result && result->complete);
    return decoded;
}

TEST(PictureEncoder, EveryWidthFromTwoOnComesBackFromTheCompressedTypesAsFromThePlain) {
    std::mt19937 random(18);
    for (int width = 2; width <= 240; ++width) {
        for (const std::uint8_t type : std::initializer_list<std::uint8_t>{0x85, 0x88, 0x8A}) {
            const Picture picture = PictureOfStretches(random, width, 1 + width % 3);
            const Picture compressed = ThereAndBack(picture, type);
            const Picture plain = ThereAndBack(picture, static_cast<std::uint8_t>(type & 0x7F));
            for (int y = 0; y < picture.height; ++y)
                ASSERT_TRUE(std::equal(plain.raster.From(0, y), plain.raster.From(0, y) + width,
                                       compressed.raster.From(0, y)))
                    << width << " " << int{type} << " row " << y;
        }
    }
}

TEST(PictureEncoder, TheLargestPictureComesBackInEveryType) {
    std::mt19937 random(19);
    const Picture picture = PictureOfStretches(random, 240, 320);
    for (const std::uint8_t type : std::initializer_list<std::uint8_t>{0x85, 0x88, 0x8A})
        ExpectRoundTrip(picture, type);
}

TEST(PictureEncoder, OneByOneComesBackUncompressedAndOverABlackRow) {
    for (const std::uint8_t type :
         std::initializer_list<std::uint8_t>{0x01, 0x05, 0x08, 0x0A, 0x85, 0x88, 0x8A}) {
        SCOPED_TRACE(int{type});
        ExpectRoundTrip(PictureOf(1, 1, {Cell{}}), type);
    }
}

}  // namespace
}  // namespace pictavo::tests
