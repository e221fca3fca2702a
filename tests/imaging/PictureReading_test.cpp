#include "imaging/PictureReading.h"

#include <QBuffer>
#include <gtest/gtest.h>

#include "core/Bytes.h"
#include "samples/FileMakers.h"
#include "support/CoreApplication.h"

namespace pictavo::tests {
namespace {

using samples::Drawing;

const std::filesystem::path kPath = "a picture";

Drawing TwoTransparentPixels() {
    Drawing drawing = samples::DrawOneColour(3, 2, {10, 20, 30, 255});
    drawing.At(1, 0) = {200, 100, 50, 0};
    drawing.At(2, 1) = {40, 50, 60, 7};
    return drawing;
}

class PictureReadingTest : public ::testing::Test {
  protected:
    Result<ImportedPixels> ReadAny(const Bytes& file) { return ReadAnyPicture(Open(file), kPath); }

    Result<ImportedPixels> ReadAs(const char* format, const Bytes& file) {
        return ReadPictureAs(format, Open(file), kPath);
    }

    static void ExpectPixels(const Result<ImportedPixels>& pixels, const Drawing& drawing) {
        ASSERT_TRUE(pixels) << pixels.error().detail;
        EXPECT_EQ(pixels->width, drawing.width);
        EXPECT_EQ(pixels->height, drawing.height);
        EXPECT_TRUE(pixels->hasAlpha);
        std::vector<Cell> cells;
        for (const samples::Pixel& pixel : drawing.pixels)
            cells.push_back({pixel.r, pixel.g, pixel.b, pixel.a});
        EXPECT_EQ(pixels->cells, cells);
    }

    static void ExpectFails(const Result<ImportedPixels>& pixels, ErrorKind kind, const std::string& detail) {
        ASSERT_FALSE(pixels);
        EXPECT_EQ(pixels.error().kind, kind);
        EXPECT_EQ(pixels.error().path, kPath);
        EXPECT_EQ(pixels.error().detail, detail);
    }

  private:
    QBuffer& Open(const Bytes& file) {
        buffer_.close();
        buffer_.setData(reinterpret_cast<const char*>(file.data()), static_cast<int>(file.size()));
        buffer_.open(QIODevice::ReadOnly);
        return buffer_;
    }

    QBuffer buffer_;
};

TEST_F(PictureReadingTest, TheColourOfATransparentPixelStays) {
    const Bytes png = samples::MakePng(TwoTransparentPixels(), samples::PngColour::Rgba);
    ExpectPixels(ReadAny(png), TwoTransparentPixels());
    ExpectPixels(ReadAs("png", png), TwoTransparentPixels());
}

TEST_F(PictureReadingTest, APictureWithoutAlphaIsOpaque) {
    const Drawing drawing = samples::DrawOneColour(4, 3, {1, 2, 3, 255});
    ExpectPixels(ReadAny(samples::MakeBmp(drawing, 24)), drawing);
    ExpectPixels(ReadAs("bmp", samples::MakeBmp(drawing, 24)), drawing);
    ExpectPixels(ReadAny(samples::MakeGif(drawing)), drawing);
}

TEST_F(PictureReadingTest, WhatNoReaderTakesIsUnknownUnlessAFormatIsNamed) {
    const Bytes text{'h', 'e', 'l', 'l', 'o', ',', ' ', 'h', 'e', 'l', 'l', 'o'};
    ExpectFails(ReadAny(text), ErrorKind::UnknownFile, "is no picture file of a known kind");
    ExpectFails(ReadAs("png", text), ErrorKind::Malformed,
                "cannot be read as a picture (Unable to read image data)");
}

TEST_F(PictureReadingTest, ABrokenPictureIsMalformed) {
    Bytes png = samples::MakePng(TwoTransparentPixels(), samples::PngColour::Rgba);
    png.resize(40);  // inside the first chunk of pixels
    for (const auto& pixels : {ReadAny(png), ReadAs("png", png)})
        ExpectFails(pixels, ErrorKind::Malformed, "cannot be read as a picture (Unable to read image data)");
}

TEST_F(PictureReadingTest, APictureLargerThanTheRasterIsRefused) {
    const Bytes png = samples::MakePng(samples::DrawIcon(241, 320, 1), samples::PngColour::Rgb);
    const std::string detail = "a picture of 241 x 320 is too large (at most 240 x 320)";
    ExpectFails(ReadAny(png), ErrorKind::TooLarge, detail);
    ExpectFails(ReadAs("png", png), ErrorKind::TooLarge, detail);
}

}  // namespace
}  // namespace pictavo::tests
