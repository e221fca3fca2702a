#include "samples/PictureEncoders.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace pictavo::samples {
namespace {

constexpr Pixel kPureRed{255, 0, 0, 255};
constexpr Pixel kGrey{128, 128, 128, 255};
constexpr Pixel kBlack{0, 0, 0, 255};
constexpr Pixel kWhite{255, 255, 255, 255};
constexpr Pixel kClear{10, 20, 30, 0};

Drawing Row(std::vector<Pixel> pixels) {
    return {static_cast<int>(pixels.size()), 1, std::move(pixels)};
}

/// Red, red, grey, transparent: a run and a literal stretch.
Bytes FourPixels(std::uint8_t typeCode) {
    return EncodeForPhone(Row({kPureRed, kPureRed, kGrey, kClear}), typeCode);
}

Drawing AllDifferent(int width) {
    Drawing drawing = DrawOneColour(width, 1, kBlack);
    for (int x = 0; x < width; ++x) drawing.At(x, 0).a = static_cast<std::uint8_t>(x);
    return drawing;
}

TEST(PictureEncoders, StoresUncompressedPixelsOneAfterTheOther) {
    EXPECT_EQ(FourPixels(0x05), (Bytes{0xE0, 0xE0, 0x92, 0xC0}));
    EXPECT_EQ(FourPixels(0x07), (Bytes{0x00, 0xFF, 0x00, 0xFF, 0x88, 0xF8, 0xFF, 0x0F}));
    EXPECT_EQ(FourPixels(0x08), (Bytes{0x00, 0xF8, 0x00, 0xF8, 0x10, 0x84, 0x00, 0xE0}));
    EXPECT_EQ(FourPixels(0x0A), (Bytes{0, 0, 255, 255, 0, 0, 255, 255, 128, 128, 128, 255, 30, 20, 10, 0}));
}

TEST(PictureEncoders, StoresCompressedPixelsAsRunsAndLiteralStretches) {
    EXPECT_EQ(FourPixels(0x85), (Bytes{0x02, 0xE0, 0xFE, 0x92, 0xC0}));
    EXPECT_EQ(FourPixels(0x87), (Bytes{0x02, 0x00, 0xFF, 0xFE, 0x88, 0xF8, 0xFF, 0x0F}));
    EXPECT_EQ(FourPixels(0x88), (Bytes{0x02, 0x00, 0xF8, 0xFE, 0x10, 0x84, 0x00, 0xE0}));
    EXPECT_EQ(FourPixels(0x8A), (Bytes{0x02, 0, 0, 255, 255, 0xFE, 128, 128, 128, 255, 30, 20, 10, 0}));
}

TEST(PictureEncoders, FillsUncompressedBitRowsUpToWholeBytes) {
    Drawing drawing = DrawOneColour(9, 2, kWhite);
    drawing.At(0, 0) = drawing.At(8, 0) = drawing.At(7, 1) = kBlack;
    EXPECT_EQ(EncodeForPhone(drawing, 0x01), (Bytes{0x80, 0x80, 0x01, 0x00}));
}

TEST(PictureEncoders, StoresCompressedBitsAsRunsAndGroupsOfSeven) {
    Drawing drawing = DrawOneColour(80, 1, kWhite);
    drawing.At(65, 0) = drawing.At(72, 0) = kBlack;
    EXPECT_EQ(EncodeForPhone(drawing, 0x81), (Bytes{0xBF, 0x10, 0x10, 0x83}));
    EXPECT_EQ(EncodeForPhone(DrawOneColour(3, 1, kBlack), 0x81), (Bytes{0xC3}));
}

TEST(PictureEncoders, SplitsLongRunsAndLongLiteralStretches) {
    EXPECT_EQ(EncodeForPhone(DrawOneColour(200, 1, kPureRed), 0x85), (Bytes{0x7F, 0xE0, 0x49, 0xE0}));
    const Bytes literals = EncodeForPhone(AllDifferent(130), 0x8A);
    ASSERT_EQ(literals.size(), 1U + 128 * 4 + 1 + 2 * 4);
    EXPECT_EQ(literals[0], 0x80);
    EXPECT_EQ(literals[1 + 128 * 4], 0xFE);
}

TEST(PictureEncoders, ExpectWhatAReaderShowsOfEachType) {
    const Drawing drawing = Row({kPureRed, kGrey, kClear, kWhite});
    const Pixel red{255, 0, 0, 0}, black{0, 0, 0, 0}, white{255, 255, 255, 0};
    using Pixels = std::vector<Pixel>;
    EXPECT_EQ(ExpectedPixels(drawing, 0x81), (Pixels{black, white, white, white}));
    EXPECT_EQ(ExpectedPixels(drawing, 0x85), (Pixels{red, {146, 146, 170, 0}, kMarker, white}));
    EXPECT_EQ(ExpectedPixels(drawing, 0x87), (Pixels{red, {136, 136, 136, 0}, kMarker, white}));
    EXPECT_EQ(ExpectedPixels(drawing, 0x88), (Pixels{red, {132, 130, 132, 0}, kMarker, white}));
    EXPECT_EQ(ExpectedPixels(drawing, 0x8A), drawing.pixels);
    EXPECT_EQ(ExpectedPixels(drawing, 0x07), (Pixels{black, black, black, black}));
}

TEST(PictureEncoders, ExpectAnOpaqueColourOnTheTransparentValueToShowAsTheMarker) {
    EXPECT_EQ(ExpectedPixels(Row({{219, 0, 0, 255}}), 0x05), std::vector<Pixel>{kMarker});
    EXPECT_EQ(ExpectedPixels(Row({{230, 0, 0, 255}}), 0x08), std::vector<Pixel>{kMarker});
}

/// How many pixels a compressed stream stands for, by its control bytes alone.
std::size_t PixelsOf(ByteView stream, std::uint8_t typeCode) {
    const std::size_t unit = typeCode == 0x85 ? 1 : typeCode == 0x8A ? 4 : 2;
    std::size_t pixels = 0;
    for (std::size_t at = 0; at < stream.size();) {
        const std::size_t control = stream[at];
        const std::size_t stored = typeCode == 0x81 ? 0 : control < 0x80 ? 1 : 256 - control;
        if (typeCode == 0x81)
            pixels += control < 0x80 ? 7 : control & 0x3F;
        else
            pixels += control < 0x80 ? control : stored;
        at += 1 + stored * unit;
    }
    return pixels;
}

TEST(PictureEncoders, EndACompressedStreamExactlyWithTheLastPixel) {
    for (const std::uint8_t typeCode : kTypeCodes) {
        if (typeCode < 0x80) continue;
        for (int kind = 0; kind < kDrawingKindCount; ++kind) {
            const Drawing drawing = Draw({static_cast<DrawingKind>(kind), 47, 33, 5});
            EXPECT_EQ(PixelsOf(EncodeForPhone(drawing, typeCode), typeCode), 47U * 33U)
                << "type " << int{typeCode} << ", drawing " << kind;
        }
    }
}

}  // namespace
}  // namespace pictavo::samples
