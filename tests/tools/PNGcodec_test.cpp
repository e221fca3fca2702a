#include "tools/PNGcodec.h"

#include <gtest/gtest.h>
#include <map>

#include "samples/FileMakers.h"
#include "support/Refusal.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

using samples::PngChunk;
using samples::PngColour;

const Bytes kSignature = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};

Bytes Joined(const std::vector<Bytes>& parts) {
    Bytes joined;
    for (const Bytes& part : parts) joined.insert(joined.end(), part.begin(), part.end());
    return joined;
}

void AppendBig32(Bytes& bytes, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<std::uint8_t>(value >> shift & 0xFF));
}

struct Header {
    std::uint32_t width = 16;
    std::uint32_t height = 16;
    std::uint8_t bitDepth = 8;
    std::uint8_t colourType = 2;
    std::uint8_t compression = 0;
    std::uint8_t filter = 0;
    std::uint8_t interlace = 0;
};

Bytes HeaderChunk(const Header& header) {
    Bytes data;
    AppendBig32(data, header.width);
    AppendBig32(data, header.height);
    data.insert(data.end(),
                {header.bitDepth, header.colourType, header.compression, header.filter, header.interlace});
    return PngChunk("IHDR", data);
}

Bytes PhysicalSizeChunk(std::uint32_t x, std::uint32_t y, std::uint8_t unit) {
    Bytes data;
    AppendBig32(data, x);
    AppendBig32(data, y);
    data.push_back(unit);
    return PngChunk("pHYs", data);
}

Bytes Png(const Header& header, const std::vector<Bytes>& chunks) {
    return Joined({kSignature, HeaderChunk(header), Joined(chunks), PngChunk("IEND", {})});
}

Bytes PngOfColourType(std::uint8_t colourType, const std::vector<Bytes>& chunks = {}) {
    Header header;
    header.colourType = colourType;
    return Png(header, chunks);
}

Result<PNGInfo> Read(const Bytes& file) {
    return ReadPNGInfo(MemorySource(file));
}

PNGInfo ReadWell(const Bytes& file) {
    const auto info = Read(file);
    EXPECT_TRUE(info) << info.error().detail;
    return info.value_or(PNGInfo());
}

ErrorKind KindOfFailure(const Bytes& file) {
    const auto info = Read(file);
    EXPECT_FALSE(info);
    return info ? ErrorKind::Stopped : info.error().kind;
}

TEST(ReadPNGInfo, OneBitGreyscaleOfSixteenBySixteen) {
    const PNGInfo info = ReadWell(Png({16, 16, 1, 0}, {PngChunk("IDAT", Bytes{0x78, 1})}));
    EXPECT_EQ(info.width, 16);
    EXPECT_EQ(info.height, 16);
    EXPECT_EQ(info.bitDepth, 1);
    EXPECT_EQ(info.colourType, 0);
    EXPECT_EQ(info.colourTypeName, "Greyscale");
}

TEST(ReadPNGInfo, HeaderFieldsAreReadInTheirOrder) {
    const PNGInfo info = ReadWell(Png({0x0102, 0x7FFF, 16, 6, 7, 8, 9}, {}));
    EXPECT_EQ(info.width, 0x0102);
    EXPECT_EQ(info.height, 0x7FFF);
    EXPECT_EQ(info.bitDepth, 16);
    EXPECT_EQ(info.compression, 7);
    EXPECT_EQ(info.filter, 8);
    EXPECT_EQ(info.interlace, 9);
}

TEST(ReadPNGInfo, FiveColourTypesHaveANameAndNoOther) {
    const std::map<int, std::string> names = {{0, "Greyscale"},
                                              {2, "Truecolor"},
                                              {3, "Indexed-color"},
                                              {4, "Greyscale with alpha"},
                                              {6, "Truecolor with alpha"}};
    for (int type = 0; type < 256; ++type) {
        const auto name = names.find(type);
        const PNGInfo info = ReadWell(PngOfColourType(static_cast<std::uint8_t>(type)));
        EXPECT_EQ(info.colourType, type);
        EXPECT_EQ(info.colourTypeName, name == names.end() ? "" : name->second) << type;
    }
}

TEST(ReadPNGInfo, WhatOtherProgramsWriteIsRead) {
    const samples::Drawing drawing = samples::DrawSoftDisc(31, 17, 1);
    for (const PngColour colour :
         {PngColour::Grey, PngColour::Rgb, PngColour::Palette, PngColour::GreyAlpha, PngColour::Rgba}) {
        const PNGInfo info = ReadWell(samples::MakePng(drawing, colour));
        EXPECT_EQ(info.width, 31);
        EXPECT_EQ(info.height, 17);
        EXPECT_EQ(info.bitDepth, 8);
        EXPECT_EQ(info.colourType, static_cast<int>(colour));
    }
}

TEST(ReadPNGInfo, NoSignatureIsNoPng) {
    Bytes jpeg = {0xFF, 0xD8, 0xFF, 0xE0, 0, 16, 'J', 'F', 'I', 'F'};
    Bytes almost = PngOfColourType(2);
    almost[7] = 0x0D;
    for (const Bytes& file : {jpeg, almost, Bytes{}, Bytes{0x89, 'P', 'N', 'G'}}) {
        const auto info = Read(file);
        ASSERT_FALSE(info);
        EXPECT_EQ(info.error().kind, ErrorKind::UnknownFile);
        EXPECT_EQ(info.error().detail, "This is not PNG!");
    }
}

TEST(ReadPNGInfo, TheErrorNamesTheFile) {
    const TempFolder temp;
    const auto source = FileSource::Open(WriteFile(temp / "a.png", std::string("no picture")));
    ASSERT_TRUE(source);
    const auto info = ReadPNGInfo(**source);
    ASSERT_FALSE(info);
    EXPECT_EQ(info.error().path, temp / "a.png");
}

TEST(ReadPNGInfo, PixelsPerMetreAreDotsPerInch) {
    const PNGInfo info = ReadWell(PngOfColourType(2, {PhysicalSizeChunk(3780, 7560, 1)}));
    EXPECT_EQ(info.horizontalDpi, 96.0);
    EXPECT_EQ(info.verticalDpi, 192.0);
    EXPECT_EQ(info.note, "Values in inch");
}

TEST(ReadPNGInfo, AMetreKeepsItsOddCountOfInches) {
    const PNGInfo info = ReadWell(PngOfColourType(2, {PhysicalSizeChunk(2835, 1, 1)}));
    EXPECT_EQ(info.horizontalDpi, 72.0);
    EXPECT_EQ(info.verticalDpi, 1 / 39.375);
}

TEST(ReadPNGInfo, PixelsPerMetreAreSigned) {
    const PNGInfo info = ReadWell(PngOfColourType(2, {PhysicalSizeChunk(0xFFFFFFFF, 0x80000000, 1)}));
    EXPECT_EQ(info.horizontalDpi, -1 / 39.375);
    EXPECT_EQ(info.verticalDpi, -2147483648.0 / 39.375);
}

TEST(ReadPNGInfo, AnyOtherUnitTellsTheAspectRatioOnly) {
    for (const std::uint8_t unit : std::initializer_list<std::uint8_t>{0, 2, 255}) {
        const PNGInfo info = ReadWell(PngOfColourType(2, {PhysicalSizeChunk(3780, 3780, unit)}));
        EXPECT_EQ(info.horizontalDpi, 0.0);
        EXPECT_EQ(info.verticalDpi, 0.0);
        EXPECT_EQ(info.note, "Aspect Ratio only..");
    }
}

TEST(ReadPNGInfo, WithoutAPhysicalSizeThereIsNoNote) {
    EXPECT_EQ(ReadWell(PngOfColourType(2)).note, "");
}

TEST(ReadPNGInfo, PaletteOfSixteenEntriesWithTheirAlpha) {
    Bytes colours, alphas;
    for (std::uint8_t i = 0; i < 16; ++i) {
        colours.insert(colours.end(),
                       {i, static_cast<std::uint8_t>(i + 50), static_cast<std::uint8_t>(i + 100)});
        alphas.push_back(static_cast<std::uint8_t>(255 - i));
    }
    const PNGInfo info = ReadWell(PngOfColourType(3, {PngChunk("PLTE", colours), PngChunk("tRNS", alphas)}));
    EXPECT_EQ(info.paletteEntries, 16);
    for (std::uint8_t i = 0; i < 16; ++i) {
        const PaletteEntry expected{i, static_cast<std::uint8_t>(i + 50), static_cast<std::uint8_t>(i + 100),
                                    static_cast<std::uint8_t>(255 - i)};
        EXPECT_EQ(info.palette[i], expected);
    }
    for (std::size_t i = 16; i < info.palette.size(); ++i) EXPECT_EQ(info.palette[i], PaletteEntry()) << i;
}

TEST(ReadPNGInfo, PaletteMayBeFull) {
    const PNGInfo info =
        ReadWell(PngOfColourType(3, {PngChunk("PLTE", Bytes(768, 5)), PngChunk("tRNS", Bytes(256, 6))}));
    EXPECT_EQ(info.paletteEntries, 256);
    EXPECT_EQ(info.palette[255], (PaletteEntry{5, 5, 5, 6}));
}

TEST(ReadPNGInfo, PaletteBeyond256EntriesIsMalformed) {
    EXPECT_EQ(KindOfFailure(PngOfColourType(3, {PngChunk("PLTE", Bytes(771, 5))})), ErrorKind::Malformed);
    EXPECT_EQ(KindOfFailure(PngOfColourType(3, {PngChunk("tRNS", Bytes(257, 5))})), ErrorKind::Malformed);
}

TEST(ReadPNGInfo, BytesThatFillNoPaletteEntryArePassedOver) {
    const PNGInfo info = ReadWell(
        PngOfColourType(3, {PngChunk("PLTE", Bytes{1, 2, 3, 4, 5}), PhysicalSizeChunk(3780, 3780, 1)}));
    EXPECT_EQ(info.paletteEntries, 1);
    EXPECT_EQ(info.palette[1], PaletteEntry());
    EXPECT_EQ(info.note, "Values in inch");
}

TEST(ReadPNGInfo, BackgroundIsOneByteOfAPaletteAndTwoOfAnythingElse) {
    const Bytes chunk = PngChunk("bKGD", Bytes{0x12, 0x34});
    EXPECT_EQ(ReadWell(PngOfColourType(3, {chunk})).background, 0x12);
    for (const std::uint8_t type : std::initializer_list<std::uint8_t>{0, 2, 4, 6})
        EXPECT_EQ(ReadWell(PngOfColourType(type, {chunk})).background, 0x1234);
}

TEST(ReadPNGInfo, BackgroundIsSigned) {
    EXPECT_EQ(ReadWell(PngOfColourType(0, {PngChunk("bKGD", Bytes{0xFF, 0xFF})})).background, -1);
}

TEST(ReadPNGInfo, ChunksBehindATruecolourBackgroundAreStillRead) {
    const PNGInfo info = ReadWell(
        PngOfColourType(2, {PngChunk("bKGD", Bytes{0, 1, 0, 2, 0, 3}), PhysicalSizeChunk(3780, 3780, 1)}));
    EXPECT_EQ(info.background, 1);
    EXPECT_EQ(info.horizontalDpi, 96.0);
}

TEST(ReadPNGInfo, PixelDataStartingWithTheDigitEightGivesTheDeflateNotice) {
    const PNGInfo info = ReadWell(PngOfColourType(2, {PngChunk("IDAT", Bytes{'8', 0xDA})}));
    EXPECT_EQ(info.notices, std::vector<std::string>{"deflate compression method"});
}

TEST(ReadPNGInfo, NoOtherFirstByteGivesANotice) {
    for (int first = 0; first < 256; ++first) {
        if (first == '8') continue;
        const Bytes data{static_cast<std::uint8_t>(first)};
        EXPECT_TRUE(ReadWell(PngOfColourType(2, {PngChunk("IDAT", data)})).notices.empty()) << first;
    }
}

TEST(ReadPNGInfo, ANoticeStandsOnceHoweverManyChunksGiveIt) {
    const Bytes chunk = PngChunk("IDAT", Bytes{'8'});
    EXPECT_EQ(ReadWell(PngOfColourType(2, {chunk, chunk, chunk})).notices.size(), 1U);
}

TEST(ReadPNGInfo, EmptyPixelDataGivesNoNotice) {
    EXPECT_TRUE(ReadWell(PngOfColourType(2, {PngChunk("IDAT", {})})).notices.empty());
}

TEST(ReadPNGInfo, SizesAbove32767Overflow) {
    for (const std::uint32_t size : {32768U, 65536U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(KindOfFailure(Png({size, 1}, {})), ErrorKind::Overflow) << size;
        EXPECT_EQ(KindOfFailure(Png({1, size}, {})), ErrorKind::Overflow) << size;
    }
    EXPECT_EQ(ReadWell(Png({32767, 32767}, {})).width, 32767);
}

TEST(ReadPNGInfo, ChunksOfOtherTypesArePassedOver) {
    const PNGInfo info =
        ReadWell(PngOfColourType(2, {PngChunk("iCCP", Bytes(5000, 'I')), PngChunk("phys", Bytes(9, 1)),
                                     PngChunk("tEXt", {}), PhysicalSizeChunk(3780, 3780, 1)}));
    EXPECT_EQ(info.note, "Values in inch");
}

TEST(ReadPNGInfo, ReadingGoesOnBehindTheEndChunk) {
    Bytes file = Joined({PngOfColourType(2), PhysicalSizeChunk(3780, 3780, 1)});
    EXPECT_EQ(ReadWell(file).note, "Values in inch");
    file.insert(file.end(), {'r', 'e', 's', 't'});
    EXPECT_EQ(ReadWell(file).note, "Values in inch");
}

TEST(ReadPNGInfo, ChecksumsAreNotChecked) {
    Bytes file = Png({5, 6, 8, 2}, {PhysicalSizeChunk(3780, 3780, 1)});
    constexpr std::size_t kHeaderChecksum = 8 + 8 + 13;
    for (std::size_t i = 0; i < 4; ++i) file[kHeaderChecksum + i] ^= 0xFF;
    const PNGInfo info = ReadWell(file);
    EXPECT_EQ(info.width, 5);
    EXPECT_EQ(info.note, "Values in inch");
}

TEST(ReadPNGInfo, AFileCutAnywhereEndsTheReading) {
    const Bytes file =
        Png({0x0102, 0x0304, 8, 3},
            {PhysicalSizeChunk(3780, 3780, 1), PngChunk("PLTE", Bytes(48, 9)), PngChunk("tRNS", Bytes(16, 9)),
             PngChunk("bKGD", Bytes{7}), PngChunk("IDAT", Bytes{'8', 1})});
    const std::size_t headerEnd = 8 + 8 + 13;
    for (std::size_t length = kSignature.size(); length <= file.size(); ++length) {
        const PNGInfo info =
            ReadWell(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length)));
        if (length >= headerEnd) {
            EXPECT_EQ(info.width, 0x0102) << length;
            EXPECT_EQ(info.height, 0x0304) << length;
        }
    }
}

TEST(ReadPNGInfo, HeaderBytesBehindTheEndCountAsZero) {
    Bytes file = Joined({kSignature, HeaderChunk({0x0102, 0x0304, 8, 3})});
    file.resize(8 + 8 + 7);  // the height lacks its last byte
    const PNGInfo info = ReadWell(file);
    EXPECT_EQ(info.width, 0x0102);
    EXPECT_EQ(info.height, 0x0300);
    EXPECT_EQ(info.bitDepth, 0);
}

TEST(ReadPNGInfo, ALengthPastTheEndStopsTheReading) {
    for (const std::uint32_t length : {100U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFF4U, 0xFFFFFFFFU}) {
        Bytes broken;
        AppendBig32(broken, length);
        broken.insert(broken.end(), {'j', 'u', 'n', 'k'});
        Bytes file = Joined({kSignature, HeaderChunk({}), broken, PhysicalSizeChunk(3780, 3780, 1)});
        const PNGInfo info = ReadWell(file);
        EXPECT_EQ(info.width, 16);
        EXPECT_EQ(info.note, "") << length;
    }
}

TEST(ReadPNGInfo, ALongFileOfEmptyChunksEnds) {
    const Bytes chunk = PngChunk("none", {});
    Bytes file = PngOfColourType(2);
    for (int i = 0; i < 100'000; ++i) file.insert(file.end(), chunk.begin(), chunk.end());
    EXPECT_EQ(ReadWell(Joined({file, PhysicalSizeChunk(3780, 3780, 1)})).note, "Values in inch");
}

TEST(ReadPNGInfo, TheTypeIsComparedWithItsCase) {
    Bytes file = PngOfColourType(2);
    file[8 + 4] = 'i';
    EXPECT_EQ(ReadWell(file).width, 0);
}

bool IsWhole(const Bytes& file) {
    const auto isWhole = IsWholePng(MemorySource(file));
    EXPECT_TRUE(isWhole);
    return isWhole.value_or(false);
}

TEST(PngChunks, MoreThanAMillionAreNotWalkedThrough) {
    constexpr std::size_t kEmptyChunk = 12;
    Bytes file(8 + kEmptyChunk * ((1U << 20) + 1));
    const std::string_view signature = "\x89PNG\r\n\x1A\n";
    std::copy(signature.begin(), signature.end(), file.begin());
    const MemorySource source(std::move(file));
    EXPECT_EQ(IsWholePng(source), false);
    const Error error = RefusalOf(ReadPNGInfo(source));
    EXPECT_EQ(error.kind, ErrorKind::Malformed);
    EXPECT_EQ(error.detail, "more than 1048576 chunks, which no PNG file has");
}

TEST(IsWholePng, AFileCutAnywhereIsNot) {
    const Bytes file = samples::MakePng(samples::DrawIcon(5, 4, 1), PngColour::Rgb);
    for (std::size_t length = 0; length < file.size(); ++length)
        EXPECT_FALSE(IsWhole(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length))))
            << length;
    EXPECT_TRUE(IsWhole(file));
    EXPECT_TRUE(IsWhole(Joined({file, {'r', 'e', 's', 't'}})));
}

TEST(IsWholePng, AnythingElseIsNot) {
    Bytes almost = PngOfColourType(2);
    almost[7] = 0x0D;
    EXPECT_FALSE(IsWhole(almost));
    EXPECT_FALSE(IsWhole(Bytes(5000, 'x')));
}

TEST(IsWholePng, ALengthThatLiesOrAnEndThatIsNeverMetIsNot) {
    for (const std::uint32_t length : {100U, 0x7FFFFFFFU, 0xFFFFFFF4U, 0xFFFFFFFFU}) {
        Bytes broken;
        AppendBig32(broken, length);
        broken.insert(broken.end(), {'j', 'u', 'n', 'k'});
        EXPECT_FALSE(IsWhole(Joined({kSignature, HeaderChunk({}), broken, PngChunk("IEND", {})}))) << length;
    }
    EXPECT_FALSE(IsWhole(Joined({kSignature, HeaderChunk({}), PngChunk("IDAT", Bytes(9, 1))})));
}

}  // namespace
}  // namespace pictavo::tests
