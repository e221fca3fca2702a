#include "codec/Bitmap.h"

#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "BitmapHeader.h"
#include "samples/FileMakers.h"
#include "support/PictureOf.h"
#include "support/Refusal.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

constexpr const char* kNotFilled = "the file ends before the last row of its pixels";

Bytes PixelsOf(const Bytes& bitmap) {
    return {bitmap.begin() + 54, bitmap.end()};
}

Bytes OnePixel(const Cell& cell, bool hasAlpha, const ChannelFlags& flags = {}) {
    return PixelsOf(ComposeBitmap(PictureOf(1, 1, {cell}, hasAlpha), true, flags));
}

TEST(ComposeBitmap, TheHeaderOf24BitsTellsLengthSizeAndNothingElse) {
    Bytes expected(54);
    expected[0] = 'B';
    expected[1] = 'M';
    expected[2] = 0x36;  // 54 + 240 * 3 * 320 = 0x38436
    expected[3] = 0x84;
    expected[4] = 0x03;
    expected[10] = 54;
    expected[14] = 40;
    expected[18] = 0xF0;
    expected[22] = 0x40;
    expected[23] = 0x01;
    expected[26] = 1;
    expected[28] = 24;
    expected[35] = 0x84;  // 0x38400
    expected[36] = 0x03;
    Bytes file = ComposeBitmap(PictureOf(240, 320, {}), false);
    EXPECT_EQ(file.size(), 0x38436U);
    file.resize(54);
    EXPECT_EQ(file, expected);
}

TEST(ComposeBitmap, TheHeaderOf32BitsDiffersInDepthAndLengths) {
    const Bytes file = ComposeBitmap(PictureOf(3, 2, {}), true);
    EXPECT_EQ(file.size(), 54U + 24);
    EXPECT_EQ(file[2], 54 + 24);
    EXPECT_EQ(file[28], 32);
    EXPECT_EQ(file[34], 24);
}

TEST(ComposeBitmap, RowsStandFromTheBottomUpAndPixelsAsBlueGreenRed) {
    const Picture picture = PictureOf(1, 2, {{1, 2, 3, 0}, {4, 5, 6, 0}});
    EXPECT_EQ(PixelsOf(ComposeBitmap(picture, false)), (Bytes{6, 5, 4, 0, 3, 2, 1, 0}));
}

TEST(ComposeBitmap, A24BitRowOfThreePixelsHasThreeZerosBehindIt) {
    const Cell cell{7, 7, 7, 9};
    EXPECT_EQ(PixelsOf(ComposeBitmap(PictureOf(3, 1, {cell, cell, cell}), false)),
              (Bytes{7, 7, 7, 7, 7, 7, 7, 7, 7, 0, 0, 0}));
}

TEST(ComposeBitmap, TheFourthByteIsTheAlphaOfAPictureThatHasIt) {
    EXPECT_EQ(OnePixel({1, 2, 3, 77}, true), (Bytes{3, 2, 1, 77}));
    EXPECT_EQ(OnePixel({169, 171, 169, 77}, true), (Bytes{169, 171, 169, 77}));
}

TEST(ComposeBitmap, TheFourthByteOfAPictureWithoutAlphaIsZeroForTheMarkerOnly) {
    EXPECT_EQ(OnePixel({169, 171, 169, 77}, false), (Bytes{169, 171, 169, 0}));
    EXPECT_EQ(OnePixel({1, 2, 3, 0}, false), (Bytes{3, 2, 1, 255}));
    EXPECT_EQ(OnePixel({168, 171, 169, 0}, false)[3], 255);
    EXPECT_EQ(OnePixel({169, 170, 169, 0}, false)[3], 255);
    EXPECT_EQ(OnePixel({169, 171, 170, 0}, false)[3], 255);
}

TEST(ComposeBitmap, The24BitsOfTheMarkerAreItsColour) {
    EXPECT_EQ(PixelsOf(ComposeBitmap(PictureOf(1, 1, {kTransparentMarker}), false)),
              (Bytes{169, 171, 169, 0}));
}

TEST(ComposeBitmap, ColoursThatAreNotFlaggedAreZero) {
    const Cell cell{1, 2, 3, 77};
    EXPECT_EQ(OnePixel(cell, true, {true, false, false, false}), (Bytes{0, 0, 1, 0}));
    EXPECT_EQ(OnePixel(cell, true, {false, true, false, false}), (Bytes{0, 2, 0, 0}));
    EXPECT_EQ(OnePixel(cell, true, {false, false, true, false}), (Bytes{3, 0, 0, 0}));
    EXPECT_EQ(OnePixel(cell, true, {false, false, false, true}), (Bytes{0, 0, 0, 77}));
}

TEST(ComposeBitmap, TheAlphaFlagOfAPictureWithoutAlphaGives255AndTheMarkerZero) {
    const ChannelFlags alpha{false, false, false, true};
    EXPECT_EQ(OnePixel({1, 2, 3, 77}, false, alpha), (Bytes{0, 0, 0, 255}));
    EXPECT_EQ(OnePixel(kTransparentMarker, false, alpha), (Bytes{0, 0, 0, 0}));
}

TEST(ComposeBitmap, KeptWithFlagsA24BitRowHasFourBytesAPixelAndPaddingForThree) {
    const Picture picture = PictureOf(2, 1, {{1, 2, 3, 0}, {4, 5, 6, 0}});
    const Bytes file = ComposeBitmap(picture, false, {true, true, true, false});
    EXPECT_EQ(file[28], 24);
    EXPECT_EQ(PixelsOf(file), (Bytes{3, 2, 1, 0, 6, 5, 4, 0, 0, 0}));
}

void ExpectOnlyAHeader(const Picture& picture, std::uint8_t width, std::uint8_t height) {
    for (const bool withAlpha : {false, true}) {
        for (const bool red : {false, true}) {
            const Bytes file = ComposeBitmap(picture, withAlpha, {red, false, false, false});
            ASSERT_EQ(file.size(), 54U) << picture.width << " x " << picture.height;
            EXPECT_EQ(LittleEndian32(ByteView(file).subspan(18)), width);
            EXPECT_EQ(LittleEndian32(ByteView(file).subspan(22)), height);
        }
    }
}

TEST(ComposeBitmap, APictureWithASideOfNothingIsAHeader) {
    Picture picture;
    ExpectOnlyAHeader(picture, 0, 0);
    picture.height = 5;
    ExpectOnlyAHeader(picture, 0, 5);
    picture.width = kSmallest;
    ExpectOnlyAHeader(picture, 0, 5);
    picture.width = 5;
    picture.height = -1;
    ExpectOnlyAHeader(picture, 5, 0);
}

/// One pixel after the other, as the format is described.
Bytes PlainPixels(const Picture& picture, bool withAlpha, const ChannelFlags& flags) {
    Bytes bytes;
    for (int y = picture.height - 1; y >= 0; --y) {
        for (int x = 0; x < picture.width; ++x) {
            const Cell& cell = picture.raster.At(x, y);
            const bool isMarker = cell.r == 169 && cell.g == 171 && cell.b == 169;
            const std::uint8_t fourth = picture.RasterHasAlpha ? cell.a : isMarker ? 0 : 255;
            bytes.push_back(flags.blue || !flags.Any() ? cell.b : 0);
            bytes.push_back(flags.green || !flags.Any() ? cell.g : 0);
            bytes.push_back(flags.red || !flags.Any() ? cell.r : 0);
            if (withAlpha || flags.Any()) bytes.push_back(flags.alpha || !flags.Any() ? fourth : 0);
        }
        const int odd = picture.width * 3 % 4;
        if (!withAlpha && odd != 0) bytes.insert(bytes.end(), static_cast<std::size_t>(4 - odd), 0);
    }
    return bytes;
}

Picture RandomPicture(std::mt19937& random, int width, int height) {
    Picture picture = PictureOf(width, height, {}, random() % 2 == 0);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const auto byte = [&] { return static_cast<std::uint8_t>(random()); };
            picture.raster.At(x, y) =
                random() % 4 == 0 ? Cell{169, 171, 169, byte()} : Cell{byte(), byte(), byte(), byte()};
        }
    return picture;
}

TEST(ComposeBitmap, WritesWhatAPlainWriterWrites) {
    std::mt19937 random(24);
    for (int width = 1; width <= 240; ++width) {
        const Picture picture = RandomPicture(random, width, 3);
        for (unsigned set = 0; set < 16; ++set) {
            const ChannelFlags flags{(set & 1) != 0, (set & 2) != 0, (set & 4) != 0, (set & 8) != 0};
            for (const bool withAlpha : {false, true}) {
                const Bytes file = ComposeBitmap(picture, withAlpha, flags);
                ASSERT_EQ(PixelsOf(file), PlainPixels(picture, withAlpha, flags)) << width << ", " << set;
                ASSERT_EQ(LittleEndian32(ByteView(file).subspan(2)), file.size());
                ASSERT_EQ(LittleEndian32(ByteView(file).subspan(34)), file.size() - 54);
            }
        }
    }
}

Result<ImportedPixels> Read(const ByteSource& source) {
    const auto info = ReadPictureFileInfo(source);
    EXPECT_TRUE(info) << info.error().detail;
    return ReadBitmap32(source, *info);
}

Result<ImportedPixels> Read(const Bytes& file) {
    return Read(MemorySource(file));
}

void ExpectPixels(const ImportedPixels& pixels, const samples::Drawing& drawing) {
    EXPECT_EQ(pixels.width, drawing.width);
    EXPECT_EQ(pixels.height, drawing.height);
    EXPECT_TRUE(pixels.hasAlpha);
    ASSERT_EQ(pixels.cells.size(), drawing.pixels.size());
    for (std::size_t i = 0; i < pixels.cells.size(); ++i) {
        const samples::Pixel& pixel = drawing.pixels[i];
        ASSERT_EQ(pixels.cells[i], (Cell{pixel.r, pixel.g, pixel.b, pixel.a})) << i;
    }
}

TEST(ReadBitmap32, ReadsAllFourBytesAtAwkwardSizes) {
    for (const auto& [width, height] : {std::pair{1, 1}, {1, 7}, {47, 33}, {240, 320}}) {
        const samples::Drawing drawing = samples::DrawNoise(width, height, 5);
        for (const bool topDown : {false, true}) {
            const auto pixels = Read(samples::MakeBmp(drawing, 32, topDown));
            ASSERT_TRUE(pixels);
            ExpectPixels(*pixels, drawing);
        }
    }
}

TEST(ReadBitmap32, ReadsWhatComposeBitmapWrites) {
    std::mt19937 random(7);
    Picture picture = RandomPicture(random, 31, 17);
    picture.RasterHasAlpha = true;
    const auto pixels = Read(ComposeBitmap(picture, true));
    ASSERT_TRUE(pixels);
    for (int y = 0; y < 17; ++y)
        for (int x = 0; x < 31; ++x)
            ASSERT_EQ(pixels->cells[static_cast<std::size_t>(x + 31 * y)], picture.raster.At(x, y));
}

TEST(ReadBitmap32, ThePixelsBeginWhereTheHeaderSays) {
    for (const std::uint32_t gap : {0U, 1U, 84U}) {
        Bytes file = BitmapHeader({1, 1, 32, 0, 54 + gap});
        file.resize(54 + gap, 0xEE);
        file.insert(file.end(), {3, 2, 1, 4});
        const auto pixels = Read(file);
        ASSERT_TRUE(pixels);
        EXPECT_EQ(pixels->cells, (std::vector<Cell>{{1, 2, 3, 4}}));
    }
}

TEST(ReadBitmap32, AFileCutAnywhereInItsPixelsIsTruncated) {
    const Bytes whole = samples::MakeBmp(samples::DrawNoise(3, 2, 1), 32);
    ASSERT_TRUE(Read(whole));
    for (std::size_t length = 54; length < whole.size(); ++length) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(RefusalOf(Read(cut)),
                  (Error{ErrorKind::Truncated, {}, 54, "the file ends inside what is to be read here"}));
    }
}

TEST(ReadBitmap32, SizesThatTheFileDoesNotHoldAreTruncatedBeforeAnyMemoryIsTaken) {
    for (const auto& [width, height] : {std::pair{kLargest, kLargest},
                                        {kLargest, kSmallest},
                                        {1 << 30, kSmallest},
                                        {1, kSmallest},
                                        {kLargest, 1},
                                        {1 << 16, 1 << 16},
                                        {1 << 16, -(1 << 16)},
                                        {2, 1}}) {
        Bytes file = BitmapHeader({width, height, 32});
        file.resize(58);
        EXPECT_EQ(RefusalOf(Read(file)).kind, ErrorKind::Truncated) << width << " x " << height;
    }
}

TEST(ReadBitmap32, PixelsBehindTheEndAreTruncated) {
    for (const std::uint32_t offset : {55U, 58U, 59U, 0x80000000U, 0xFFFFFFFFU}) {
        Bytes file = BitmapHeader({1, 1, 32, 0, offset});
        file.resize(58);
        EXPECT_EQ(RefusalOf(Read(file)).offset, offset);
    }
}

TEST(ReadBitmap32, AFileThatShrinksAfterItWasOpenedIsAReadError) {
    const TempFolder temp;
    const auto path = WriteFile(temp / "a.bmp", samples::MakeBmp(samples::DrawNoise(240, 320, 1), 32));
    const auto source = FileSource::Open(path);
    ASSERT_TRUE(source);
    std::filesystem::resize_file(path, 100'000);
    const Error error = RefusalOf(Read(**source));
    EXPECT_EQ(error.kind, ErrorKind::ReadFailed);
    EXPECT_EQ(error.path, path);
}

/// Whether a file of the header and `pixelBytes` behind it counts as filled.
bool IsFilled(const BitmapFields& fields, std::size_t pixelBytes) {
    Bytes file = BitmapHeader(fields);
    file.resize(54 + pixelBytes);
    const MemorySource source(file);
    const auto info = ReadPictureFileInfo(source);
    EXPECT_TRUE(info);
    const Status filled = CheckBitmapFilled(source, *info);
    if (filled) return true;
    EXPECT_EQ(filled.error(), (Error{ErrorKind::Truncated, {}, fields.pixelOffset, kNotFilled}));
    return false;
}

void ExpectNeeds(std::int32_t width, std::int32_t height, std::uint8_t bits, std::size_t pixelBytes) {
    EXPECT_TRUE(IsFilled({width, height, bits}, pixelBytes)) << width << " x " << height << ", " << int{bits};
    EXPECT_FALSE(IsFilled({width, height, bits}, pixelBytes - 1))
        << width << " x " << height << ", " << int{bits};
}

TEST(CheckBitmapFilled, RowsAreWholeGroupsOfFourBytes) {
    ExpectNeeds(1, 1, 1, 4);
    ExpectNeeds(32, 3, 1, 12);
    ExpectNeeds(33, 3, 1, 24);
    ExpectNeeds(9, 2, 4, 16);
    ExpectNeeds(5, 2, 8, 16);
    ExpectNeeds(3, 2, 16, 16);
    ExpectNeeds(3, 2, 24, 24);
    ExpectNeeds(240, 320, 24, 230400);
    ExpectNeeds(3, 2, 32, 24);
}

TEST(CheckBitmapFilled, RowsFromTheTopNeedAsMuch) {
    ExpectNeeds(3, -2, 24, 24);
}

TEST(CheckBitmapFilled, ACompressedBitmapIsLeftToItsReader) {
    EXPECT_TRUE(IsFilled({240, 320, 8, 1}, 0));
    EXPECT_FALSE(IsFilled({240, 320, 16, 3}, 0));
}

TEST(CheckBitmapFilled, NoBitsAPixelNeedNoBytes) {
    EXPECT_TRUE(IsFilled({240, 320, 0}, 0));
    EXPECT_FALSE(IsFilled({240, 320, 0, 0, 55}, 0));
}

TEST(CheckBitmapFilled, ThePlaceOfThePixelsCounts) {
    EXPECT_TRUE(IsFilled({1, 1, 24, 0, 56}, 6));
    EXPECT_FALSE(IsFilled({1, 1, 24, 0, 57}, 6));
    EXPECT_FALSE(IsFilled({1, 1, 24, 0, 61}, 6));
    EXPECT_FALSE(IsFilled({1, 1, 24, 0, 0xFFFFFFFF}, 6));
}

TEST(CheckBitmapFilled, SizesOfAnyHeaderAreNotFilledByAFewBytes) {
    for (const std::int32_t width : {1, 2, 1 << 16, 1 << 28, 1 << 29, 1 << 30, kLargest})
        for (const std::int32_t height : {1 << 16, 1 << 30, kLargest, -kLargest, kSmallest})
            for (const std::uint8_t bits : std::initializer_list<std::uint8_t>{1, 8, 24, 32, 64, 128, 255})
                EXPECT_FALSE(IsFilled({width, height, bits}, 64))
                    << width << " x " << height << ", " << int{bits};
}

TEST(CheckBitmapFilled, NamesTheFile) {
    const TempFolder temp;
    const auto path = WriteFile(temp / "a.bmp", BitmapHeader({1, 1, 24}));
    const auto source = FileSource::Open(path);
    ASSERT_TRUE(source);
    EXPECT_EQ(RefusalOf(CheckBitmapFilled(**source, *ReadPictureFileInfo(**source))),
              (Error{ErrorKind::Truncated, path, 54, kNotFilled}));
}

}  // namespace
}  // namespace pictavo::tests
