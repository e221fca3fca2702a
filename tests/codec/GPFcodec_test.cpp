#include "codec/GPFcodec.h"

#include <gtest/gtest.h>

#include "OldPicture.h"
#include "support/Refusal.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

/// 132 x 176 pixels of compressed 16 bit.
constexpr GpfHeader kTypical{132, 176, 0x88, 0x1234, false};

GpfHeader AsGpf2(GpfHeader header) {
    header.isGPF2 = true;
    return header;
}

Bytes HeaderBytes(const GpfHeader& header) {
    const auto bytes = GpfHeaderBytes(header);
    return {bytes.begin(), bytes.end()};
}

/// The magic, the bytes from 0x10 on, and zeros up to the header's 32 bytes.
Bytes Expected(std::string_view magic, std::initializer_list<std::uint8_t> fields) {
    Bytes bytes(32);
    std::copy(magic.begin(), magic.end(), bytes.begin());
    std::copy(fields.begin(), fields.end(), bytes.begin() + 0x10);
    return bytes;
}

void ExpectSame(const GpfHeader& one, const GpfHeader& other) {
    EXPECT_EQ(one.width, other.width);
    EXPECT_EQ(one.height, other.height);
    EXPECT_EQ(one.type, other.type);
    EXPECT_EQ(one.number, other.number);
    EXPECT_EQ(one.isGPF2, other.isGPF2);
}

TEST(GpfHeader, OfAGpfHasOneByteForWidthAndHeight) {
    EXPECT_EQ(HeaderBytes(kTypical),
              Expected("GraphicPatchFile", {0x34, 0x12, 0, 0, 0x84, 0xB0, 0x88, 0x00}));
}

TEST(GpfHeader, OfAGpf2HasTwoBytesForWidthAndHeight) {
    EXPECT_EQ(HeaderBytes(AsGpf2(kTypical)),
              Expected("GraphPatchFile_2", {0x34, 0x12, 0, 0, 0x84, 0x00, 0xB0, 0x00, 0x88, 0x00}));
}

TEST(GpfHeader, KeepsAllBitsOfSizesAndType) {
    EXPECT_EQ(HeaderBytes({0x0203, 0x0405, 0x0607, 0x0809, true}),
              Expected("GraphPatchFile_2", {0x09, 0x08, 0, 0, 0x03, 0x02, 0x05, 0x04, 0x07, 0x06}));
}

TEST(GpfHeader, KeptAGpfsSizesAreClampedTo255) {
    EXPECT_EQ(HeaderBytes({255, 256, 8, 0, false}), Expected(kGpfMagic, {0, 0, 0, 0, 0xFF, 0xFF, 8, 0}));
    EXPECT_EQ(HeaderBytes({0xFFFF, 7, 8, 0, false}), Expected(kGpfMagic, {0, 0, 0, 0, 0xFF, 0x07, 8, 0}));
    EXPECT_EQ(HeaderBytes({254, 320, 8, 0, false}), Expected(kGpfMagic, {0, 0, 0, 0, 0xFE, 0xFF, 8, 0}));
}

TEST(GpfHeader, IsReadAsItWasWritten) {
    for (const GpfHeader& header :
         {kTypical, AsGpf2(kTypical), GpfHeader{}, GpfHeader{255, 255, 0xFFFF, 0xFFFF, false},
          GpfHeader{0xFFFF, 0xFFFE, 0xFFFD, 0xFFFC, true}}) {
        const auto read = ReadGpfHeader(MemorySource(HeaderBytes(header)));
        ASSERT_TRUE(read);
        ExpectSame(*read, header);
    }
}

TEST(GpfHeader, OfAPictureHasItsSize) {
    Picture picture;
    picture.width = 132;
    picture.height = 300;
    const GpfHeader header = HeaderFor(picture, 0x8A, 12, true);
    EXPECT_EQ(header.width, 132);
    EXPECT_EQ(header.height, 300);
    EXPECT_EQ(header.type, 0x8A);
    EXPECT_EQ(header.number, 12);
    EXPECT_TRUE(header.isGPF2);
    EXPECT_FALSE(HeaderFor(picture, 0x8A, 12, false).isGPF2);
}

TEST(GpfHeader, ReservedBytesMeanNothing) {
    for (const GpfHeader& header : {kTypical, AsGpf2(kTypical)}) {
        Bytes bytes = HeaderBytes(header);
        bytes[0x12] = bytes[0x13] = 0xEE;
        std::fill(bytes.begin() + (header.isGPF2 ? 0x1A : 0x18), bytes.end(), std::uint8_t{0xEE});
        const auto read = ReadGpfHeader(MemorySource(bytes));
        ASSERT_TRUE(read);
        ExpectSame(*read, header);
    }
}

TEST(GpfHeader, AMagicWithOneByteChangedIsNone) {
    for (const GpfHeader& header : {kTypical, AsGpf2(kTypical)}) {
        for (std::size_t i = 0; i < kGpfMagic.size(); ++i) {
            Bytes bytes = HeaderBytes(header);
            bytes[i] ^= 0x20U;
            EXPECT_EQ(RefusalOf(ReadGpfHeader(MemorySource(bytes))),
                      (Error{ErrorKind::NoGpf,
                             {},
                             std::nullopt,
                             "is no GPF file (its first bytes are not those of one)"}));
        }
    }
}

TEST(GpfHeader, AFileOfLessThanTheMagicIsNoGpf) {
    for (const GpfHeader& header : {kTypical, AsGpf2(kTypical)}) {
        const Bytes bytes = HeaderBytes(header);
        for (std::ptrdiff_t length = 0; length < 16; ++length) {
            const MemorySource source(Bytes(bytes.begin(), bytes.begin() + length));
            EXPECT_EQ(RefusalOf(ReadGpfHeader(source)).kind, ErrorKind::NoGpf) << length;
        }
    }
}

TEST(GpfHeader, AFileThatEndsBehindTheMagicIsTruncatedWhereItEnds) {
    for (const GpfHeader& header : {kTypical, AsGpf2(kTypical)}) {
        const Bytes bytes = HeaderBytes(header);
        for (std::size_t length = 16; length < 32; ++length) {
            const MemorySource source(
                Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length)));
            EXPECT_EQ(RefusalOf(ReadGpfHeader(source)),
                      (Error{ErrorKind::Truncated, {}, length, "the file ends inside its header"}));
        }
    }
}

TEST(GpfHeader, OfAFileThatShrinksAfterItWasOpenedIsAReadError) {
    const TempFolder temp;
    const auto path = WriteFile(temp / "a.gpf", HeaderBytes(kTypical));
    const auto source = FileSource::Open(path);
    ASSERT_TRUE(source);
    std::filesystem::resize_file(path, 0);
    const Error error = RefusalOf(ReadGpfHeader(**source));
    EXPECT_EQ(error.kind, ErrorKind::ReadFailed);
    EXPECT_EQ(error.path, path);
}

TEST(GpfPadding, FillsUpToSixteen) {
    EXPECT_EQ(GpfPaddingAfter(0), 0U);
    EXPECT_EQ(GpfPaddingAfter(0x41), 15U);
    EXPECT_EQ(GpfPaddingAfter(0x4F), 1U);
    EXPECT_EQ(GpfPaddingAfter(0x50), 0U);
    EXPECT_EQ(GpfPaddingAfter(~std::uint64_t{0}), 1U);
}

TEST(GpfFile, IsHeaderStoredBytesAndZeros) {
    const Bytes header = HeaderBytes(kTypical);
    for (std::size_t length = 0; length <= 33; ++length) {
        Bytes expected(length == 0 ? 32 : length <= 16 ? 48 : length <= 32 ? 64 : 80);
        std::copy(header.begin(), header.end(), expected.begin());
        std::fill_n(expected.begin() + 32, length, std::uint8_t{0xAB});
        EXPECT_EQ(ComposeGpf(kTypical, Bytes(length, 0xAB)), expected) << length;
    }
}

PictureFormat FormatOfType(std::uint16_t type) {
    return GpfPictureFormat({3, 2, type, 0, true});
}

void ExpectType(std::uint16_t type, int bitDepth, bool compressed) {
    const PictureFormat format = FormatOfType(type);
    EXPECT_EQ(format.bitDepth, bitDepth) << type;
    EXPECT_EQ(format.compressed, compressed) << type;
}

TEST(GpfType, FirstDigit8IsCompressed) {
    ExpectType(0x81, 1, true);
    ExpectType(0x85, 8, true);
    ExpectType(0x87, 12, true);
    ExpectType(0x88, 16, true);
    ExpectType(0x8A, 24, true);
}

TEST(GpfType, OneDigitGetsAZeroInFrontAndIsUncompressed) {
    ExpectType(0x1, 1, false);
    ExpectType(0x5, 8, false);
    ExpectType(0x7, 12, false);
    ExpectType(0x8, 16, false);
    ExpectType(0xA, 24, false);
}

TEST(GpfType, KeptOnlyTheFirstDigitOfLongerTypesTellsTheCompression) {
    ExpectType(0x188, 16, false);
    ExpectType(0x805, 8, true);
    ExpectType(0x8888, 16, true);
    ExpectType(0x1885, 8, false);
}

TEST(GpfType, ALastDigitOfNoDepthGivesNone) {
    for (const std::uint8_t digit :
         std::initializer_list<std::uint8_t>{0, 2, 3, 4, 6, 9, 0xB, 0xC, 0xD, 0xE, 0xF}) {
        ExpectType(digit, 0, false);
        ExpectType(static_cast<std::uint16_t>(0x80 + digit), 0, true);
    }
}

TEST(GpfType, SizesAreThoseOfTheHeader) {
    const PictureFormat format = GpfPictureFormat({0xFFFF, 0x8000, 0x88, 0, true});
    EXPECT_EQ(format.width, 0xFFFF);
    EXPECT_EQ(format.height, 0x8000);
}

class LoadGpfTest : public ::testing::Test {
  protected:
    LoadGpfTest() {
        FillWithOld(picture.raster);
        picture.width = 11;
        picture.height = 12;
        picture.bitDepth = 24;
        picture.RasterHasAlpha = true;
    }

    Result<LoadedGpf> LoadFile(const Bytes& file) {
        const auto source = FileSource::Open(WriteFile(path, file));
        EXPECT_TRUE(source);
        return LoadGpf(**source, picture);
    }

    void ExpectNothingChanged() const {
        EXPECT_EQ(picture.width, 11);
        EXPECT_EQ(picture.height, 12);
        EXPECT_EQ(picture.bitDepth, 24);
        EXPECT_TRUE(picture.RasterHasAlpha);
        EXPECT_EQ(picture.raster.At(0, 0), kOld);
    }

    TempFolder temp;
    std::filesystem::path path = temp / "a.gpf";
    Picture picture;
};

TEST_F(LoadGpfTest, ThePictureBeginsBehindTheHeader) {
    const Bytes stored{0x03, 0xE0};
    for (const bool isGPF2 : {false, true}) {
        const auto loaded = LoadFile(ComposeGpf({3, 1, 0x85, 26, isGPF2}, stored));
        ASSERT_TRUE(loaded);
        ExpectSame(loaded->header, {3, 1, 0x85, 26, isGPF2});
        EXPECT_EQ(loaded->decoded.consumed, 2U);
        EXPECT_TRUE(loaded->decoded.complete);
        EXPECT_EQ(picture.raster.At(2, 0), (Cell{255, 0, 0, 0}));
        EXPECT_EQ(picture.raster.At(3, 0), kOld);
        EXPECT_EQ(picture.width, 3);
        EXPECT_EQ(picture.bitDepth, 8);
        EXPECT_FALSE(picture.RasterHasAlpha);
    }
}

TEST_F(LoadGpfTest, CompressedOneBitIsReadThoughNeverWritten) {
    const auto loaded = LoadFile(ComposeGpf({7, 1, 0x81, 0, false}, Bytes{0xFF}));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(picture.bitDepth, 1);
}

TEST_F(LoadGpfTest, DataThatEndEarlyAreToldAsIncomplete) {
    Bytes file = ComposeGpf({4, 8, 0x05, 0, false}, Bytes(32, 0xE0));
    ASSERT_TRUE(LoadFile(file)->decoded.complete);
    file.pop_back();
    const auto loaded = LoadFile(file);
    ASSERT_TRUE(loaded);
    EXPECT_FALSE(loaded->decoded.complete);
    EXPECT_EQ(loaded->decoded.consumed, 32U);
}

TEST_F(LoadGpfTest, ATypeOfNoDepthIsRefusedWithTheFilesName) {
    const Bytes file = ComposeGpf({3, 1, 0x82, 0, false}, Bytes(16));
    EXPECT_EQ(RefusalOf(LoadFile(file)), (Error{ErrorKind::BadBitDepth, path, std::nullopt, " 0bit"}));
    ExpectNothingChanged();
}

TEST_F(LoadGpfTest, AnUnknownMagicDecodesNothing) {
    Bytes file = ComposeGpf({3, 1, 0x05, 0, false}, Bytes(16));
    file[0] = 'g';
    const Error error = RefusalOf(LoadFile(file));
    EXPECT_EQ(error.kind, ErrorKind::NoGpf);
    EXPECT_EQ(error.path, path);
    ExpectNothingChanged();
}

TEST_F(LoadGpfTest, SizesBeyondTheRasterAreTooLarge) {
    for (const std::uint16_t type : std::initializer_list<std::uint16_t>{0x01, 0x08, 0x81, 0x8A}) {
        const Bytes file = ComposeGpf({0xFFFF, 0xFFFF, type, 0, true}, Bytes(4096, 0x7F));
        const Error error = RefusalOf(LoadFile(file));
        EXPECT_EQ(error.kind, ErrorKind::TooLarge) << type;
        EXPECT_EQ(error.path, path);
        EXPECT_EQ(picture.width, 11);
        EXPECT_EQ(picture.height, 12);
    }
}

TEST(InformationLine, OfACompressedPicture) {
    EXPECT_EQ(InformationLine("12", {132, 176, 16, true}, 20311),
              "12 :: 132 x 176 :: 16bit :: compressed :: 20311 bytes");
}

TEST(InformationLine, OfAnUncompressedPicture) {
    EXPECT_EQ(InformationLine("0", {1, 320, 1, false}, 320),
              "0 :: 1 x 320 :: 1bit :: uncompressed :: 320 bytes");
}

TEST(InformationLine, TheNumberStandsAsGivenAndCountsAreNotGrouped) {
    EXPECT_EQ(InformationLine("01A", {65535, 65535, 0, false}, 4'294'967'296),
              "01A :: 65535 x 65535 :: 0bit :: uncompressed :: 4294967296 bytes");
}

}  // namespace
}  // namespace pictavo::tests
