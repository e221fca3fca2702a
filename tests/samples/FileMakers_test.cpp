#include "samples/FileMakers.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>

#include "Parts.h"
#include "samples/Checksums.h"

namespace pictavo::samples {
namespace {

constexpr Pixel kRed{255, 0, 0, 255};
constexpr Pixel kBlue{1, 2, 250, 255};

TEST(Checksums, GiveThePublishedValues) {
    EXPECT_EQ(Crc32(Text("123456789")), 0xCBF43926U);
    EXPECT_EQ(Crc32(Text("IEND")), 0xAE426082U);
    EXPECT_EQ(Adler32(Text("Wikipedia")), 0x11E60398U);
}

TEST(PngMaker, WritesEveryChunkOfATinyPicture) {
    const Bytes png = MakePng(DrawOneColour(1, 1, kRed), PngColour::Rgb);
    EXPECT_EQ(Part(png, 0, 16),
              (Bytes{0x89, 'P', 'N', 'G', 13, 10, 26, 10, 0, 0, 0, 13, 'I', 'H', 'D', 'R'}));
    EXPECT_EQ(Part(png, 16, 17), (Bytes{0, 0, 0, 1, 0, 0, 0, 1, 8, 2, 0, 0, 0, 0x90, 0x77, 0x53, 0xDE}));
    EXPECT_EQ(Part(png, 33, 8), (Bytes{0, 0, 0, 15, 'I', 'D', 'A', 'T'}));
    EXPECT_EQ(Part(png, 41, 15), (Bytes{0x78, 1, 1, 4, 0, 0xFB, 0xFF, 0, 255, 0, 0, 0x03, 0x01, 0x01, 0x00}));
    EXPECT_EQ(Part(png, png.size() - 12, 12),
              (Bytes{0, 0, 0, 0, 'I', 'E', 'N', 'D', 0xAE, 0x42, 0x60, 0x82}));
}

TEST(PngMaker, SplitsLongDataIntoSeveralStoredBlocks) {
    const Bytes png = MakePng(DrawOneColour(240, 320, kRed), PngColour::Rgba);
    constexpr std::size_t kRows = 320 * (1 + 4 * 240), kBlocks = 5;
    EXPECT_EQ(png.size(), 8 + 25 + (12 + 2 + kRows + 5 * kBlocks + 4) + 12);
}

TEST(PngMaker, KeepsAlphaInAPalette) {
    const Bytes png = MakePng(DrawOneColour(1, 1, {1, 2, 3, 4}), PngColour::Palette);
    EXPECT_EQ(Part(png, 33, 11), (Bytes{0, 0, 0, 3, 'P', 'L', 'T', 'E', 1, 2, 3}));
    EXPECT_EQ(Part(png, 48, 9), (Bytes{0, 0, 0, 1, 't', 'R', 'N', 'S', 4}));
}

TEST(BmpMaker, FillsRowsUpToFourBytesFromTheBottomUp) {
    Drawing drawing = DrawOneColour(3, 2, kRed);
    drawing.At(0, 1) = kBlue;
    const Bytes bmp = MakeBmp(drawing, 24);
    ASSERT_EQ(bmp.size(), 54U + 24U);
    EXPECT_EQ(Part(bmp, 0, 14), (Bytes{'B', 'M', 78, 0, 0, 0, 0, 0, 0, 0, 54, 0, 0, 0}));
    EXPECT_EQ(Part(bmp, 18, 12), (Bytes{3, 0, 0, 0, 2, 0, 0, 0, 1, 0, 24, 0}));
    EXPECT_EQ(Part(bmp, 54, 12), (Bytes{250, 2, 1, 0, 0, 255, 0, 0, 255, 0, 0, 0}));
}

TEST(BmpMaker, StoresRowsFromTheTopUnderANegativeHeight) {
    Drawing drawing = DrawOneColour(1, 2, kRed);
    drawing.At(0, 1) = {9, 8, 7, 6};
    const Bytes bmp = MakeBmp(drawing, 32, true);
    EXPECT_EQ(Part(bmp, 22, 4), (Bytes{0xFE, 0xFF, 0xFF, 0xFF}));
    EXPECT_EQ(Part(bmp, 54, 8), (Bytes{0, 0, 255, 255, 7, 8, 9, 6}));
}

TEST(BmpMaker, PacksEntriesOfOneAndFourBitsFromTheLeft) {
    Drawing drawing = DrawOneColour(9, 1, kRed);
    drawing.At(1, 0) = drawing.At(8, 0) = kBlue;
    EXPECT_EQ(Part(MakeBmp(drawing, 1), 54, 12), (Bytes{0, 0, 255, 0, 250, 2, 1, 0, 0x40, 0x80, 0, 0}));
    EXPECT_EQ(Part(MakeBmp(drawing, 4), 54 + 64, 8), (Bytes{0x01, 0, 0, 0, 0x10, 0, 0, 0}));
}

TEST(GifMaker, WritesCodesOfNineBits) {
    const Bytes gif = MakeGif(DrawOneColour(2, 1, kRed));
    EXPECT_EQ(Part(gif, 0, 16), (Bytes{'G', 'I', 'F', '8', '9', 'a', 2, 0, 1, 0, 0xF7, 0, 0, 255, 0, 0}));
    // 100000000, 000000000, 000000000 and 100000001 from the lowest bit up.
    EXPECT_EQ(Part(gif, 13 + 768, 19),
              (Bytes{0x2C, 0, 0, 0, 0, 2, 0, 1, 0, 0, 8, 5, 0x00, 0x01, 0x00, 0x08, 0x08, 0, 0x3B}));
    EXPECT_EQ(gif.size(), 13U + 768 + 19);
}

TEST(GifMaker, NamesTheTransparentColour) {
    Drawing drawing = DrawOneColour(2, 1, kRed);
    drawing.At(1, 0).a = 0;
    EXPECT_EQ(Part(MakeGif(drawing), 13 + 768, 8), (Bytes{0x21, 0xF9, 4, 1, 0, 0, 1, 0}));
}

TEST(XmlMaker, WritesNoZeroByte) {
    const Bytes xml = MakeXml(3);
    EXPECT_EQ(Part(xml, 0, 6), Text("<?xml "));
    EXPECT_EQ(std::ranges::count(xml, 0), 0);
}

}  // namespace
}  // namespace pictavo::samples
