#include "codec/PictureDecoder.h"

#include <gtest/gtest.h>
#include <random>

#include "OldPicture.h"
#include "PlainCodec.h"
#include "codec/PictureType.h"
#include "samples/PictureEncoders.h"
#include "support/Refusal.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

const Cell kWhite{255, 255, 255, 0};
const Cell kBlack{0, 0, 0, 0};

constexpr PictureFormat Format(int width, int height, int bitDepth, bool compressed = false) {
    return {width, height, bitDepth, compressed};
}

/// A picture whose cells all hold kOld, so that what a decode leaves alone can be seen.
Picture OldPicture() {
    Picture picture;
    FillWithOld(picture.raster);
    return picture;
}

class PictureDecoderTest : public ::testing::Test {
  protected:
    /// Decodes what must decode; the bytes it consumed.
    std::uint64_t Decode(const Bytes& stored, const PictureFormat& format) {
        const auto decoded = DecodePicture(MemorySource(stored), 0, format, picture);
        EXPECT_TRUE(decoded) << decoded.error().detail;
        complete = decoded->complete;
        return decoded->consumed;
    }

    ErrorKind Refusal(const Bytes& stored, const PictureFormat& format) {
        const auto decoded = DecodePicture(MemorySource(stored), 0, format, picture);
        EXPECT_FALSE(decoded);
        return decoded.error().kind;
    }

    Cell At(int x, int y) const { return picture.raster.At(x, y); }

    Picture picture = OldPicture();
    bool complete = false;
};

TEST_F(PictureDecoderTest, CellsLieInRowsOf241) {
    EXPECT_EQ(picture.raster.From(3, 2) - picture.raster.From(0, 0), 3 + 2 * 241);
    EXPECT_EQ(picture.raster.From(240, 320) - picture.raster.From(0, 0), 241 * 321 - 1);
}

TEST_F(PictureDecoderTest, KeptCellsOutsideThePictureKeepWhatTheyHeld) {
    Decode({0, 0, 0, 0}, Format(2, 2, 8));
    EXPECT_EQ(At(1, 1), kBlack);
    EXPECT_EQ(At(2, 0), kOld);
    EXPECT_EQ(At(0, 2), kOld);
}

TEST_F(PictureDecoderTest, OneBitDropsTheRestOfARowsLastByte) {
    EXPECT_EQ(Decode({0xFF, 0x80}, Format(10, 1, 1)), 2U);
    EXPECT_EQ(At(8, 0), kBlack);
    EXPECT_EQ(At(9, 0), kWhite);
    EXPECT_EQ(At(10, 0), kOld);
}

TEST_F(PictureDecoderTest, OneBitRowsAreWholeBytes) {
    EXPECT_EQ(Decode({0x00, 0x80, 0xFF, 0x00, 0, 0}, Format(9, 3, 1)), 6U);
    EXPECT_EQ(At(8, 0), kBlack);
    EXPECT_EQ(At(0, 1), kBlack);
    EXPECT_EQ(At(8, 1), kWhite);
}

TEST_F(PictureDecoderTest, OtherRowsAreNotPadded) {
    EXPECT_EQ(Decode({0xE0, 0, 0, 0x1F}, Format(1, 3, 8)), 3U);
    EXPECT_EQ(At(0, 2), kBlack);
    EXPECT_EQ(Decode(Bytes(30, 0), Format(5, 3, 16)), 30U);
    EXPECT_EQ(Decode(Bytes(60, 0), Format(5, 3, 24)), 60U);
}

TEST_F(PictureDecoderTest, KeptUncompressed12BitIsBlackEvenAfterAColouredPicture) {
    Decode({0x12, 0x03, 0x12, 0x03}, Format(1, 1, 12, true));
    EXPECT_EQ(Decode({0x34, 0x05, 0x34, 0x05}, Format(2, 1, 12)), 4U);
    EXPECT_EQ(At(0, 0), kBlack);
    EXPECT_EQ(At(1, 0), kBlack);
}

TEST_F(PictureDecoderTest, Compressed12BitUsesItsConverter) {
    EXPECT_EQ(Decode({0x02, 0x12, 0x03}, Format(2, 1, 12, true)), 3U);
    EXPECT_EQ(At(1, 0), (Cell{51, 17, 34, 0}));
}

TEST_F(PictureDecoderTest, ARunAndALiteralStretchOf8Bits) {
    EXPECT_EQ(Decode({0x03, 0xC0, 0xFE, 0x1F, 0xE0}, Format(5, 1, 8, true)), 5U);
    for (int x = 0; x < 3; ++x) EXPECT_EQ(At(x, 0), kTransparentMarker);
    EXPECT_EQ(At(3, 0), (Cell{0, 255, 255, 0}));
    EXPECT_EQ(At(4, 0), (Cell{255, 0, 0, 0}));
}

TEST_F(PictureDecoderTest, KeptARunOfNoneConsumesItsPixelAndStoresNothing) {
    EXPECT_EQ(Decode({0x00, 0xE0, 0x01, 0x1F}, Format(1, 1, 8, true)), 4U);
    EXPECT_EQ(At(0, 0), (Cell{0, 255, 255, 0}));
}

TEST_F(PictureDecoderTest, MoreThan65536GroupsWithoutAPixelAreRefused) {
    for (const auto& [bitDepth, group] :
         {std::pair(8, Bytes{0x00, 0xE0}), {1, Bytes{0x80}}, {24, Bytes(5, 0)}}) {
        Bytes stored;
        for (int i = 0; i < 65536; ++i) stored.insert(stored.end(), group.begin(), group.end());
        Bytes whole = stored;
        whole.insert(whole.end(), {0x81, 1, 2, 3, 4});
        EXPECT_GT(Decode(whole, Format(1, 1, bitDepth, true)), stored.size()) << bitDepth;
        stored.insert(stored.end(), group.begin(), group.end());
        stored.insert(stored.end(), whole.begin(), whole.end());
        const MemorySource source(stored);
        const Error error = RefusalOf(DecodePicture(source, 0, Format(1, 1, bitDepth, true), picture));
        EXPECT_EQ(error.kind, ErrorKind::Malformed) << bitDepth;
        EXPECT_EQ(error.detail, "is no picture: more than 65536 of its groups hold no pixel") << bitDepth;
    }
}

TEST_F(PictureDecoderTest, TheControlByte80IsALiteralStretchOf128) {
    Bytes stored(129, 0xFF);
    stored[0] = 0x80;
    EXPECT_EQ(Decode(stored, Format(128, 1, 8, true)), 129U);
    EXPECT_EQ(At(127, 0), kWhite);
}

TEST_F(PictureDecoderTest, GroupsRunOnAcrossRowEnds) {
    EXPECT_EQ(Decode({0x05, 0xFF, 0xFF, 0x00}, Format(2, 3, 8, true)), 4U);
    EXPECT_EQ(At(0, 2), kWhite);
    EXPECT_EQ(At(1, 2), kBlack);
}

TEST_F(PictureDecoderTest, KeptTheLastGroupSpillsIntoTheRowsBelow) {
    EXPECT_EQ(Decode({0x85, 0xC3}, Format(3, 2, 1, true)), 2U);
    EXPECT_EQ(At(2, 0), kWhite);
    EXPECT_EQ(At(1, 1), kWhite);
    EXPECT_EQ(At(2, 1), kBlack);
    EXPECT_EQ(At(0, 2), kBlack);
    EXPECT_EQ(At(1, 2), kBlack);
    EXPECT_EQ(At(2, 2), kOld);
    EXPECT_TRUE(complete);
}

TEST_F(PictureDecoderTest, ACompressedBitGroupBelow80IsSevenPixels) {
    EXPECT_EQ(Decode({0x55}, Format(7, 1, 1, true)), 1U);
    for (int x = 0; x < 7; ++x) EXPECT_EQ(At(x, 0), x % 2 == 0 ? kBlack : kWhite);
}

TEST_F(PictureDecoderTest, ACompressedBitGroupOfNoneStoresNothing) {
    EXPECT_EQ(Decode({0x80, 0xC0, 0xC1}, Format(1, 1, 1, true)), 3U);
    EXPECT_EQ(At(0, 0), kBlack);
    EXPECT_EQ(At(0, 1), kOld);
}

TEST_F(PictureDecoderTest, SixteenAndTwentyFourBitPixelsShowTheirColours) {
    Decode({0x00, 0xE0, 0xE0, 0x07}, Format(2, 1, 16));
    EXPECT_EQ(At(0, 0), kTransparentMarker);
    EXPECT_EQ(At(1, 0), (Cell{0, 255, 0, 0}));
    Decode({0x10, 0x20, 0x30, 0x40}, Format(1, 1, 24));
    EXPECT_EQ(At(0, 0), (Cell{0x30, 0x20, 0x10, 0x40}));
}

TEST_F(PictureDecoderTest, TheEndOfTheDataEndsACompressedPictureWithoutAnError) {
    EXPECT_EQ(Decode({0x02, 0xFF, 0x02}, Format(2, 4, 8, true)), 4U);
    EXPECT_FALSE(complete);
    EXPECT_EQ(At(1, 1), kBlack) << "the missing pixel reads as 0x00";
    EXPECT_EQ(At(0, 2), kOld);
}

TEST_F(PictureDecoderTest, AnUncompressedPictureCountsItsFullSizeWhereverTheFileEnds) {
    EXPECT_EQ(Decode({0xFF}, Format(2, 2, 16)), 8U);
    EXPECT_FALSE(complete);
    EXPECT_EQ(At(1, 1), kBlack);
}

TEST_F(PictureDecoderTest, AnUnknownDepthIsRefusedWithItsBoxTextAndTouchesNothing) {
    const auto decoded = DecodePicture(MemorySource(Bytes(9, 0)), 0, Format(2, 2, 0), picture);
    ASSERT_FALSE(decoded);
    EXPECT_EQ(decoded.error().kind, ErrorKind::BadBitDepth);
    EXPECT_EQ(decoded.error().detail, " 0bit");
    EXPECT_EQ(At(0, 0), kOld);
    EXPECT_EQ(picture.width, 0);
}

TEST_F(PictureDecoderTest, APixelOutsideTheRasterEndsTheDecodeAndLeavesWhatWasWritten) {
    EXPECT_EQ(Refusal(Bytes(500, 0xFF), Format(250, 2, 8)), ErrorKind::TooLarge);
    EXPECT_EQ(At(240, 0), kWhite);
    EXPECT_EQ(At(0, 1), kOld);
    EXPECT_EQ(picture.width, 0);
}

TEST_F(PictureDecoderTest, ARowBelowTheRasterIsOutsideToo) {
    EXPECT_EQ(Refusal(Bytes(322, 0xFF), Format(1, 322, 8)), ErrorKind::TooLarge);
    EXPECT_EQ(At(0, 320), kWhite);
}

TEST_F(PictureDecoderTest, TheLastCellMayBeWrittenAndTheCursorMayPassIt) {
    EXPECT_EQ(Decode(Bytes(std::size_t{241} * 321, 0xFF), Format(241, 321, 8)), 241U * 321U);
    EXPECT_EQ(At(240, 320), kWhite);
}

TEST_F(PictureDecoderTest, ASpillBelowTheRasterIsARangeError) {
    EXPECT_EQ(Refusal({0x7F, 0x00, 0x7F, 0x00, 0x7F, 0xFF, 0x7F, 0xFF}, Format(1, 321, 8, true)),
              ErrorKind::TooLarge);
}

TEST_F(PictureDecoderTest, ADecodeSaysWhetherItsAlphaCounts) {
    Decode(Bytes(4, 0), Format(1, 1, 24));
    EXPECT_TRUE(picture.RasterHasAlpha);
    Decode(Bytes(4, 0), Format(1, 1, 16));
    EXPECT_FALSE(picture.RasterHasAlpha);
}

TEST_F(PictureDecoderTest, NoHeightStoresAndConsumesNothingWhereDataAreUncompressed) {
    for (const int depth : {1, 8, 12, 16, 24})
        for (const int height : {0, -1}) EXPECT_EQ(Decode(Bytes(9, 1), Format(3, height, depth, false)), 0U);
    EXPECT_EQ(At(0, 0), kOld);
}

TEST_F(PictureDecoderTest, NoHeightTakesOneGroupWhereDataAreCompressed) {
    for (const int height : {0, -1}) {
        EXPECT_EQ(Decode({0x05, 0x11, 0x05, 0x11}, Format(3, height, 8, true)), 2U);
        EXPECT_EQ(Decode({0x00, 0x11, 0x05, 0x11}, Format(3, height, 8, true)), 2U);
        EXPECT_EQ(Decode({0xFE, 1, 2, 3, 4, 5, 6}, Format(3, height, 16, true)), 5U);
        EXPECT_EQ(Decode({0x85, 0xC3}, Format(3, height, 1, true)), 1U);
    }
    EXPECT_EQ(Decode({0x05, 0xE0, 0x05, 0x11}, Format(3, 0, 8, true)), 2U);
    EXPECT_EQ(At(1, 1), (Cell{255, 0, 0, 0}));
}

TEST_F(PictureDecoderTest, NeitherWidthNorHeightTakesOneGroupWhereDataAreCompressed) {
    for (const int width : {0, -3})
        for (const int height : {0, -1}) {
            EXPECT_EQ(Decode({0x05, 0x11, 0x05, 0x11}, Format(width, height, 8, true)), 2U);
            EXPECT_EQ(Decode(Bytes(999, 0x7F), Format(width, height, 1, true)), 1U);
        }
}

TEST_F(PictureDecoderTest, NoWidthIsARangeErrorWhereDataAreCompressedAndEmptyElsewhere) {
    EXPECT_EQ(Refusal(Bytes(999, 0x7F), Format(0, 3, 8, true)), ErrorKind::TooLarge);
    EXPECT_EQ(Decode(Bytes(9, 0x7F), Format(0, 3, 8)), 0U);
}

TEST_F(PictureDecoderTest, ANegativeWidthNeverHangs) {
    EXPECT_EQ(Refusal(Bytes(999, 0x7F), Format(-1, 3, 8, true)), ErrorKind::TooLarge);
    EXPECT_EQ(Decode(Bytes(9, 0x7F), Format(-1, 3, 8)), 0U);
    EXPECT_EQ(Refusal(Bytes(999, 0x7F), Format(-1, 3, 1)), ErrorKind::TooLarge);
}

TEST_F(PictureDecoderTest, AFailedReadIsAnError) {
    const TempFolder temp;
    const auto path = WriteFile(temp / "flash", Bytes(400'000, 0));
    const auto source = FileSource::Open(path);
    std::filesystem::resize_file(path, 10);
    const auto decoded = DecodePicture(**source, 300'000, Format(2, 2, 8), picture);
    ASSERT_FALSE(decoded);
    EXPECT_EQ(decoded.error().kind, ErrorKind::ReadFailed);
    EXPECT_EQ(decoded.error().path, path);
}

/// Decodes with both and compares every cell and the count.
void ExpectDecodesAsPlain(const Bytes& data, std::size_t start, const PictureFormat& format) {
    Picture fast = OldPicture();
    Picture slow = OldPicture();
    const auto decoded = DecodePicture(MemorySource(data), start, format, fast);
    plain::Decoder plainDecoder(data, start, format, slow.raster);
    bool inRange = true;
    try {
        plainDecoder.Run();
    } catch (const plain::OutOfRange&) {
        inRange = false;
    }
    ASSERT_EQ(decoded.has_value(), inRange);
    ASSERT_EQ(decoded ? decoded->consumed : plainDecoder.Position() - start, plainDecoder.Position() - start);
    const std::size_t cells = std::size_t{Raster::kColumns} * Raster::kRows;
    ASSERT_TRUE(std::equal(fast.raster.From(0, 0), fast.raster.From(0, 0) + cells, slow.raster.From(0, 0)));
}

TEST(PictureFormat, OfARecordSaysWhatItsTypeSays) {
    const PictureFormat format = FormatOf({.width = 132, .height = 176, .typeCode = 0x88}, 24);
    EXPECT_EQ(SizeText(format.width, format.height), "132 x 176");
    EXPECT_EQ(format.bitDepth, 16);
    EXPECT_TRUE(format.compressed);
    EXPECT_FALSE(FormatOf({.typeCode = 0x05}, 24).compressed);
}

TEST(PictureFormat, OfATypeThatNamesNoDepthIsTheGivenOne) {
    EXPECT_EQ(FormatOf({.typeCode = 0x86}, 24).bitDepth, 24);
    EXPECT_EQ(FormatOf({.typeCode = 0x86}, 0).bitDepth, 0);
}

TEST(PictureDecoder, DecodesRandomBytesAsThePlainDecoder) {
    std::mt19937 random(11);
    const std::array<int, 5> depths{1, 8, 12, 16, 24};
    for (int round = 0; round < 400; ++round) {
        Bytes data(random() % 6000);
        const auto flavour = random() % 3;  // any bytes, short runs, long groups
        for (std::uint8_t& byte : data)
            byte = static_cast<std::uint8_t>(flavour == 0   ? random()
                                             : flavour == 1 ? random() % 6
                                                            : 0x70 + random() % 32);
        const PictureFormat format{static_cast<int>(random() % 244), static_cast<int>(random() % 40),
                                   depths[random() % 5], random() % 4 != 0};
        SCOPED_TRACE(round);
        ExpectDecodesAsPlain(data, random() % 9, format);
        if (::testing::Test::HasFatalFailure()) return;
    }
}

TEST(PictureDecoder, ShowsEveryTypeAndSizeOfTheSampleEncodersPixelForPixel) {
    const std::array<std::pair<int, int>, 9> sizes{
        {{1, 1}, {1, 2}, {2, 1}, {7, 3}, {8, 8}, {9, 5}, {101, 80}, {132, 176}, {240, 320}}};
    for (const std::uint8_t type : samples::kTypeCodes) {
        for (const auto& [width, height] : sizes) {
            const samples::Drawing drawing = samples::DrawSoftDisc(width, height, 3);
            const Bytes stored = samples::EncodeForPhone(drawing, type);
            Picture picture;
            const auto decoded = DecodePicture(
                MemorySource(stored), 0, {width, height, *BitDepthOf(type), IsCompressed(type)}, picture);
            ASSERT_TRUE(decoded);
            EXPECT_EQ(decoded->consumed, stored.size());
            EXPECT_TRUE(decoded->complete);
            const auto expected = samples::ExpectedPixels(drawing, type);
            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width; ++x) {
                    const samples::Pixel& pixel = expected[static_cast<std::size_t>(y * width + x)];
                    ASSERT_EQ(picture.raster.At(x, y), (Cell{pixel.r, pixel.g, pixel.b, pixel.a}))
                        << int{type} << " at " << x << ", " << y << " of " << width << " x " << height;
                }
            }
        }
    }
}

}  // namespace
}  // namespace pictavo::tests
