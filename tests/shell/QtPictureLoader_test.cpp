#include "shell/QtPictureLoader.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <cstdlib>
#include <sys/stat.h>

#include "samples/FileMakers.h"
#include "support/CoreApplication.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

/// Else the toolkit asks itself where its messages go.
[[maybe_unused]] const bool kSpeaksToStandardError = qputenv("QT_FORCE_STDERR_LOGGING", "1");

using samples::Drawing;
using samples::DrawOneColour;

std::vector<Cell> CellsOf(const Drawing& drawing) {
    std::vector<Cell> cells;
    for (const samples::Pixel& pixel : drawing.pixels) cells.push_back({pixel.r, pixel.g, pixel.b, 0});
    return cells;
}

/// Four strong colours in stripes.
Drawing Stripes(int width, int height) {
    Drawing drawing = DrawOneColour(width, height, {255, 0, 0, 255});
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (x % 4 == 1) drawing.At(x, y) = {0, 255, 0, 255};
            if (x % 4 == 2) drawing.At(x, y) = {0, 0, 255, 255};
            if (y == 0) drawing.At(x, y) = {255, 255, 255, 255};
        }
    }
    return drawing;
}

/// Keeps its first colour and turns the others into `other`.
Drawing InTwoColours(Drawing drawing, samples::Pixel other) {
    for (samples::Pixel& pixel : drawing.pixels)
        if (!(pixel == drawing.pixels.front())) pixel = other;
    return drawing;
}

Bytes JpegOf(const Drawing& drawing) {
    QImage image(drawing.width, drawing.height, QImage::Format_RGB32);
    for (int y = 0; y < drawing.height; ++y) {
        for (int x = 0; x < drawing.width; ++x) {
            const samples::Pixel& pixel = drawing.At(x, y);
            image.setPixel(x, y, qRgb(pixel.r, pixel.g, pixel.b));
        }
    }
    const TempFolder temp;
    const std::filesystem::path path = temp / "made.jpg";
    QImageWriter writer(QString::fromStdString(path.string()), "jpg");
    writer.setQuality(100);
    EXPECT_TRUE(writer.write(image));
    return ReadFile(path);
}

/// `picture` with its one frame repeated in a second one of other pixels.
Bytes WithSecondFrame(Bytes picture, const Bytes& other) {
    constexpr std::size_t kHeadSize = 13 + 256 * 3;
    picture.pop_back();  // the trailer
    picture.insert(picture.end(), other.begin() + kHeadSize, other.end());
    return picture;
}

class QtPictureLoaderTest : public ::testing::Test {
  protected:
    Result<ImportedPixels> Load(const Bytes& file, const std::string& name = "picture") {
        return loader.Load(WriteFile(temp / name, file));
    }

    void ExpectLoads(const Bytes& file, const Drawing& drawing, const std::string& name = "picture") {
        const auto pixels = Load(file, name);
        ASSERT_TRUE(pixels) << pixels.error().detail;
        EXPECT_EQ(pixels->width, drawing.width);
        EXPECT_EQ(pixels->height, drawing.height);
        EXPECT_FALSE(pixels->hasAlpha);
        EXPECT_EQ(pixels->cells, CellsOf(drawing));
    }

    void ExpectFails(const Bytes& file, ErrorKind kind) {
        const auto pixels = Load(file, "bad");
        ASSERT_FALSE(pixels);
        EXPECT_EQ(pixels.error().kind, kind) << pixels.error().detail;
        EXPECT_EQ(pixels.error().path, temp / "bad");
        EXPECT_NE(pixels.error().detail, "");
    }

    TempFolder temp;
    QtPictureLoader loader;
};

TEST_F(QtPictureLoaderTest, NeedsNoDisplay) {
    EXPECT_EQ(std::getenv("DISPLAY"), nullptr);
    EXPECT_EQ(std::getenv("QT_QPA_PLATFORM"), nullptr);
    EXPECT_FALSE(QCoreApplication::instance()->inherits("QGuiApplication"));
}

TEST_F(QtPictureLoaderTest, TheReadersItPromisesAreThere) {
    const auto formats = QImageReader::supportedImageFormats();
    for (const char* format : {"bmp", "gif", "jpg", "jpeg"}) EXPECT_TRUE(formats.contains(format)) << format;
}

TEST_F(QtPictureLoaderTest, BitmapsOfEveryDepthComeWithTheirColours) {
    for (const int bits : {4, 8, 24}) ExpectLoads(samples::MakeBmp(Stripes(7, 5), bits), Stripes(7, 5));
    const Drawing two = InTwoColours(Stripes(7, 5), {0, 0, 255, 255});
    ExpectLoads(samples::MakeBmp(two, 1), two);
}

TEST_F(QtPictureLoaderTest, ABitmapStoredFromTheTopStandsUpright) {
    ExpectLoads(samples::MakeBmp(Stripes(7, 5), 24, true), Stripes(7, 5));
}

TEST_F(QtPictureLoaderTest, GifComesWithItsColours) {
    ExpectLoads(samples::MakeGif(Stripes(7, 5)), Stripes(7, 5));
}

TEST_F(QtPictureLoaderTest, TransparentPartsOfAGifBecomeWhite) {
    Drawing drawing = Stripes(7, 5);
    drawing.At(2, 2).a = drawing.At(6, 4).a = 0;
    const Bytes file = samples::MakeGif(drawing);
    drawing.At(2, 2) = drawing.At(6, 4) = {255, 255, 255, 255};
    ExpectLoads(file, drawing);
}

TEST_F(QtPictureLoaderTest, OfSeveralFramesTheFirstIsTaken) {
    const Bytes other = samples::MakeGif(DrawOneColour(7, 5, {9, 9, 9, 255}));
    ExpectLoads(WithSecondFrame(samples::MakeGif(Stripes(7, 5)), other), Stripes(7, 5));
}

TEST_F(QtPictureLoaderTest, HalfTransparentPartsAreLaidOverWhite) {
    Drawing drawing = DrawOneColour(2, 1, {0, 100, 255, 128});
    const auto pixels = Load(samples::MakePng(drawing, samples::PngColour::Rgba));
    ASSERT_TRUE(pixels);
    EXPECT_EQ(pixels->cells[0], (Cell{127, 177, 255, 0}));
    EXPECT_FALSE(pixels->hasAlpha);
}

TEST_F(QtPictureLoaderTest, JpegComesWithItsColours) {
    const auto pixels = Load(JpegOf(DrawOneColour(16, 8, {200, 100, 50, 255})));
    ASSERT_TRUE(pixels) << pixels.error().detail;
    EXPECT_EQ(pixels->width, 16);
    EXPECT_EQ(pixels->height, 8);
    EXPECT_FALSE(pixels->hasAlpha);
    for (const Cell& cell : pixels->cells) {
        EXPECT_NEAR(cell.r, 200, 2);
        EXPECT_NEAR(cell.g, 100, 2);
        EXPECT_NEAR(cell.b, 50, 2);
        EXPECT_EQ(cell.a, 0);
    }
}

/// With the note of a camera that the picture is to be turned by a quarter.
Bytes WithQuarterTurnNote(Bytes jpeg) {
    const Bytes note{0xFF, 0xE1, 0x00, 0x22, 'E', 'x', 'i', 'f', 0, 0, 'M', 'M',  0,    0x2A, 0, 0, 0, 0x08,
                     0,    1,    0x01, 0x12, 0,   3,   0,   0,   0, 1, 0,   0x06, 0x00, 0x00, 0, 0, 0, 0};
    jpeg.insert(jpeg.begin() + 2, note.begin(), note.end());
    return jpeg;
}

TEST_F(QtPictureLoaderTest, AJpegIsNotTurnedByWhatItsCameraNoted) {
    const Bytes turned = WithQuarterTurnNote(JpegOf(DrawOneColour(16, 8, {1, 2, 3, 255})));
    QByteArray bytes(reinterpret_cast<const char*>(turned.data()), static_cast<qsizetype>(turned.size()));
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    ASSERT_EQ(reader.transformation(), QImageIOHandler::TransformationRotate90)
        << "the note is not understood";
    const auto pixels = Load(turned);
    ASSERT_TRUE(pixels);
    EXPECT_EQ(pixels->width, 16);
    EXPECT_EQ(pixels->height, 8);
}

TEST_F(QtPictureLoaderTest, TheContentDecidesAndNotTheName) {
    ExpectLoads(samples::MakeGif(Stripes(7, 5)), Stripes(7, 5), "gif.bmp");
    ExpectLoads(samples::MakeBmp(Stripes(7, 5), 24), Stripes(7, 5), "bitmap.gif");
    ExpectLoads(samples::MakeBmp(Stripes(7, 5), 24), Stripes(7, 5), "bitmap.jpg");
    EXPECT_TRUE(Load(JpegOf(Stripes(7, 5)), "jpeg.bmp"));
}

TEST_F(QtPictureLoaderTest, NamesMayHoldAnything) {
    for (const std::string name : {"with blank.bmp", "quote\"'.bmp", "-o", "#%?.bmp", ":x.bmp",
                                   "\xD0\x96\xE2\x82\xAC.bmp", "latin-\xE9.bmp"})
        ExpectLoads(samples::MakeBmp(Stripes(7, 5), 24), Stripes(7, 5), name);
}

TEST_F(QtPictureLoaderTest, SizesFromOnePixelTo240By320AreTaken) {
    for (const auto& [width, height] : {std::pair{1, 1}, {240, 320}, {240, 1}, {1, 320}}) {
        ExpectLoads(samples::MakeBmp(Stripes(width, height), 24), Stripes(width, height));
        ExpectLoads(samples::MakeGif(Stripes(width, height)), Stripes(width, height));
    }
}

TEST_F(QtPictureLoaderTest, LargerPicturesAreRefused) {
    for (const auto& [width, height] : {std::pair{241, 1}, {1, 321}, {320, 240}}) {
        ExpectFails(samples::MakeBmp(Stripes(width, height), 24), ErrorKind::TooLarge);
        ExpectFails(samples::MakeGif(Stripes(width, height)), ErrorKind::TooLarge);
        ExpectFails(JpegOf(Stripes(width, height)), ErrorKind::TooLarge);
    }
}

TEST_F(QtPictureLoaderTest, ASizeAboveTheLimitIsRefusedBeforeItIsRead) {
    Bytes gif = samples::MakeGif(Stripes(7, 5));
    gif[7] = gif[9] = 0x02;  // 519 x 517
    ExpectFails(gif, ErrorKind::TooLarge);
    Bytes bitmap = samples::MakeBmp(Stripes(7, 5), 24);
    bitmap[19] = bitmap[23] = 0x02;
    ExpectFails(bitmap, ErrorKind::TooLarge);
}

TEST_F(QtPictureLoaderTest, AnAbsurdSizeIsRefusedWithoutTheMemoryForIt) {
    Bytes gif = samples::MakeGif(Stripes(7, 5));
    gif[6] = gif[7] = gif[8] = gif[9] = 0xFF;
    EXPECT_FALSE(Load(gif));
    Bytes bitmap = samples::MakeBmp(Stripes(7, 5), 24);
    bitmap[20] = bitmap[24] = 1;  // 65543 x 65541
    EXPECT_FALSE(Load(bitmap));
}

TEST_F(QtPictureLoaderTest, WhatNoReaderTakesIsUnknown) {
    ExpectFails({}, ErrorKind::UnknownFile);
    ExpectFails({'h', 'e', 'l', 'l', 'o', ',', ' ', 'h', 'e', 'l', 'l', 'o'}, ErrorKind::UnknownFile);
}

TEST_F(QtPictureLoaderTest, ABrokenPictureIsMalformed) {
    Bytes jpeg = JpegOf(Stripes(16, 16));
    jpeg.resize(30);
    ExpectFails(jpeg, ErrorKind::Malformed);
    Bytes gif = samples::MakeGif(Stripes(7, 5));
    gif.resize(20);
    ExpectFails(gif, ErrorKind::Malformed);
}

TEST_F(QtPictureLoaderTest, APictureCutAnywhereNeverBreaksTheProgram) {
    for (const Bytes& file :
         {samples::MakeGif(Stripes(7, 5)), samples::MakeBmp(Stripes(7, 5), 8), JpegOf(Stripes(7, 5))}) {
        for (std::size_t length = 0; length < file.size(); length += 7) {
            const auto pixels = Load(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length)));
            EXPECT_TRUE(!pixels || pixels->cells.size() == 35U) << length;
        }
    }
}

TEST_F(QtPictureLoaderTest, MissingFilesFoldersAndPipesAreMissing) {
    ASSERT_EQ(mkfifo((temp / "pipe").c_str(), 0600), 0);
    for (const auto& path : {temp / "missing", temp.Path(), temp / "pipe", std::filesystem::path()}) {
        const auto pixels = loader.Load(path);
        ASSERT_FALSE(pixels);
        EXPECT_EQ(pixels.error().kind, ErrorKind::FileMissing) << path;
        EXPECT_EQ(pixels.error().path, path);
    }
}

TEST_F(QtPictureLoaderTest, TheFileIsLeftAsItIs) {
    const Bytes file = samples::MakeGif(Stripes(7, 5));
    const auto path = WriteFile(temp / "picture", file);
    std::filesystem::permissions(path, std::filesystem::perms::owner_read);
    ASSERT_TRUE(loader.Load(path));
    EXPECT_EQ(ReadFile(path), file);
    EXPECT_EQ(ListNames(temp.Path()), std::vector<std::string>{"picture"});
}

TEST_F(QtPictureLoaderTest, WhatAReaderSaysDoesNotReachStandardError) {
    Bytes jpeg = JpegOf(DrawOneColour(16, 8, {200, 100, 50, 255}));
    jpeg.erase(jpeg.end() - 5, jpeg.end() - 2);
    ::testing::internal::CaptureStderr();
    const auto pixels = Load(jpeg);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
    EXPECT_TRUE(pixels);
}

}  // namespace
}  // namespace pictavo::tests
