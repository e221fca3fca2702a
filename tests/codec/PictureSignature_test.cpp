#include "codec/PictureSignature.h"

#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "BitmapHeader.h"
#include "samples/FileMakers.h"
#include "support/Refusal.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

const Error kNoSize{ErrorKind::Malformed, {}, std::nullopt, "its header tells no size of a picture"};

Result<PictureFileInfo> Tell(const Bytes& file) {
    return ReadPictureFileInfo(MemorySource(file));
}

PictureFileInfo Told(const Bytes& file) {
    const auto info = Tell(file);
    EXPECT_TRUE(info) << info.error().detail;
    return info.value_or(PictureFileInfo{});
}

Error Refusal(const Bytes& file) {
    return RefusalOf(Tell(file));
}

Bytes First(const Bytes& file, std::size_t length) {
    return {file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length)};
}

Bytes Joined(std::initializer_list<Bytes> parts) {
    Bytes all;
    for (const Bytes& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

void ExpectSize(const PictureFileInfo& info, std::int64_t width, std::int64_t height) {
    EXPECT_EQ(info.width, width);
    EXPECT_EQ(info.height, height);
}

TEST(PictureSignature, OtherFirstBytesAreUnknownAndNoError) {
    for (const std::string_view text :
         {"", "B", "G", "\xFF", "\x89", "bM", "Bm", "MB", "GJ", "gi", "\xFF\xD9", "\xD8\xFF", "\x89p",
          "P\x89", "II", "RIFF", "GraphicPatchFile"}) {
        const PictureFileInfo info = Told(Bytes(text.begin(), text.end()));
        EXPECT_EQ(info.kind, PictureFileKind::Unknown) << text;
        ExpectSize(info, 0, 0);
    }
}

TEST(PictureSignature, OfAPngOnlyTheKindIsTold) {
    for (const Bytes& file :
         {Bytes{0x89, 'P'}, samples::MakePng(samples::DrawIcon(8, 8, 1), samples::PngColour::Rgb)}) {
        const PictureFileInfo info = Told(file);
        EXPECT_EQ(info.kind, PictureFileKind::Png);
        ExpectSize(info, 0, 0);
    }
}

TEST(PictureSignature, TheNameOfTheFileSaysNothing) {
    const TempFolder temp;
    const auto path = WriteFile(temp / "a.png", samples::MakeBmp(samples::DrawIcon(9, 7, 1), 24));
    const auto source = FileSource::Open(path);
    ASSERT_TRUE(source);
    const auto info = ReadPictureFileInfo(**source);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->kind, PictureFileKind::Bitmap);
    ExpectSize(*info, 9, 7);
}

TEST(PictureSignature, AnErrorNamesTheFile) {
    const TempFolder temp;
    const auto path = WriteFile(temp / "a.bmp", BitmapHeader({0, 0}));
    const auto source = FileSource::Open(path);
    ASSERT_TRUE(source);
    EXPECT_EQ(RefusalOf(ReadPictureFileInfo(**source)).path, path);
}

TEST(PictureSignature, AFileThatShrinksAfterItWasOpenedIsAReadError) {
    const TempFolder temp;
    const auto path = WriteFile(temp / "a.bmp", BitmapHeader({}));
    const auto source = FileSource::Open(path);
    ASSERT_TRUE(source);
    std::filesystem::resize_file(path, 0);
    EXPECT_EQ(RefusalOf(ReadPictureFileInfo(**source)).kind, ErrorKind::ReadFailed);
}

// ------------------------------------------------------------------------------------------------- bitmaps

TEST(BitmapSignature, TellsSizeDepthAndWhereThePixelsAre) {
    for (const int bits : {1, 4, 8, 24, 32}) {
        const PictureFileInfo info = Told(samples::MakeBmp(samples::DrawIcon(47, 33, 1), bits));
        EXPECT_EQ(info.kind, PictureFileKind::Bitmap);
        ExpectSize(info, 47, 33);
        EXPECT_EQ(info.bitDepth, bits);
        EXPECT_EQ(info.pixelOffset, 54U + (bits <= 8 ? 4U << bits : 0U));
        EXPECT_FALSE(info.topDown);
        EXPECT_FALSE(info.isCompressed);
    }
}

TEST(BitmapSignature, SizesAndOffsetHave32Bits) {
    const PictureFileInfo info = Told(BitmapHeader({0x10010, kLargest, 24, 0, 0xFFFFFFFF}));
    ExpectSize(info, 0x10010, kLargest);
    EXPECT_EQ(info.pixelOffset, 0xFFFFFFFFU);
}

TEST(BitmapSignature, ANegativeHeightMeansRowsFromTheTop) {
    for (const std::int32_t height : {-1, -320, -kLargest, kSmallest}) {
        const PictureFileInfo info = Told(BitmapHeader({16, height}));
        ExpectSize(info, 16, -std::int64_t{height});
        EXPECT_TRUE(info.topDown);
    }
}

TEST(BitmapSignature, ASideOfNothingAndANegativeWidthAreNoSize) {
    for (const auto& [width, height] :
         {std::pair{0, 1}, {1, 0}, {0, 0}, {-1, 1}, {-1, -1}, {kSmallest, kSmallest}})
        EXPECT_EQ(Refusal(BitmapHeader({width, height})), kNoSize) << width << " x " << height;
}

TEST(BitmapSignature, OnlyPlainPixelsAndMasksAreUncompressed) {
    for (const std::uint32_t compression : {0U, 3U})
        EXPECT_FALSE(Told(BitmapHeader({1, 1, 32, compression})).isCompressed);
    for (const std::uint32_t compression : {1U, 2U, 4U, 5U, 6U, 0x100U, 0xFFFFFFFFU})
        EXPECT_TRUE(Told(BitmapHeader({1, 1, 32, compression})).isCompressed) << compression;
}

TEST(BitmapSignature, AFileCutBeforeItsDepthIsTruncatedWhereItEnds) {
    const Bytes header = BitmapHeader({16, 8});
    for (std::size_t length = 2; length < 30; ++length)
        EXPECT_EQ(Refusal(First(header, length)),
                  (Error{ErrorKind::Truncated, {}, length, "the file ends inside its header"}));
    for (std::size_t length = 30; length <= 54; ++length) ExpectSize(Told(First(header, length)), 16, 8);
}

/// A header of the oldest form, filled up to `length`.
Bytes ShortHeader(std::uint16_t width, std::uint16_t height, std::uint8_t bits, std::size_t length = 30) {
    Bytes header(length, 0xEE);
    const MutableByteView view(header);
    std::copy_n("BM", 2, header.begin());
    PutLittleEndian32(view.subspan(10), 26);
    PutLittleEndian32(view.subspan(14), 12);
    PutLittleEndian16(view.subspan(18), width);
    PutLittleEndian16(view.subspan(20), height);
    PutLittleEndian16(view.subspan(22), 1);
    header[24] = bits;
    return header;
}

TEST(BitmapSignature, TheOldestFormHas16BitsForEachSide) {
    const PictureFileInfo info = Told(ShortHeader(0xFFFE, 0x8000, 24));
    ExpectSize(info, 0xFFFE, 0x8000);
    EXPECT_EQ(info.bitDepth, 24);
    EXPECT_EQ(info.pixelOffset, 26U);
    EXPECT_FALSE(info.topDown);
    EXPECT_FALSE(Told(ShortHeader(1, 1, 24, 60)).isCompressed);
    EXPECT_EQ(Refusal(ShortHeader(0, 1, 24)), kNoSize);
    EXPECT_EQ(Refusal(ShortHeader(1, 0, 24)), kNoSize);
}

// ---------------------------------------------------------------------------------------------------- GIFs

Bytes Gif(std::uint16_t width, std::uint16_t height, std::uint8_t packed) {
    Bytes file(13);
    std::copy_n("GIF89a", 6, file.begin());
    PutLittleEndian16(MutableByteView(file).subspan(6), width);
    PutLittleEndian16(MutableByteView(file).subspan(8), height);
    file[10] = packed;
    return file;
}

TEST(GifSignature, TellsItsSize) {
    const PictureFileInfo info = Told(Gif(0xFFFF, 0x0102, 0));
    EXPECT_EQ(info.kind, PictureFileKind::Gif);
    ExpectSize(info, 0xFFFF, 0x0102);
}

TEST(GifSignature, ADepthIsTheLowThreeBitsOfThePackedByteAndOne) {
    for (int packed = 0; packed < 256; ++packed)
        EXPECT_EQ(Told(Gif(1, 1, static_cast<std::uint8_t>(packed))).bitDepth, packed % 8 + 1) << packed;
}

TEST(GifSignature, ASideOfNothingIsNoSize) {
    EXPECT_EQ(Refusal(Gif(0, 1, 0)), kNoSize);
    EXPECT_EQ(Refusal(Gif(1, 0, 0)), kNoSize);
}

TEST(GifSignature, AFileCutBeforeThePackedByteIsTruncated) {
    const Bytes gif = Gif(16, 8, 0x87);
    for (std::size_t length = 2; length < 11; ++length)
        EXPECT_EQ(Refusal(First(gif, length)).kind, ErrorKind::Truncated) << length;
    EXPECT_EQ(Told(First(gif, 11)).bitDepth, 8);
}

// --------------------------------------------------------------------------------------------------- JPEGs

const Bytes kStart{0xFF, 0xD8};

/// A segment whose length field holds `length`, with `data` behind it.
Bytes Segment(std::uint8_t marker, std::uint16_t length, const Bytes& data = {}) {
    return Joined(
        {{0xFF, marker, static_cast<std::uint8_t>(length >> 8), static_cast<std::uint8_t>(length & 0xFF)},
         data});
}

/// The part of a frame's segment that is read: up to the width.
Bytes Frame(std::uint8_t marker = 0xC0, std::uint16_t width = 0x0132, std::uint16_t height = 0x0298) {
    return Segment(marker, 11,
                   {8, static_cast<std::uint8_t>(height >> 8), static_cast<std::uint8_t>(height & 0xFF),
                    static_cast<std::uint8_t>(width >> 8), static_cast<std::uint8_t>(width & 0xFF)});
}

/// The place of the fault that ends the walk over the markers.
std::uint64_t PlaceOfNoMarker(const Bytes& file) {
    const Error error = Refusal(file);
    EXPECT_EQ(error.kind, ErrorKind::Malformed);
    EXPECT_EQ(error.detail, "no marker stands where one must");
    return error.offset.value_or(0);
}

TEST(JpegSignature, TheSizeStandsInTheFrameHeightFirst) {
    for (const std::uint8_t marker : std::initializer_list<std::uint8_t>{0xC0, 0xC2}) {
        const PictureFileInfo info = Told(Joined({kStart, Frame(marker)}));
        EXPECT_EQ(info.kind, PictureFileKind::Jpeg);
        ExpectSize(info, 0x0132, 0x0298);
        EXPECT_EQ(info.bitDepth, 24);
    }
}

TEST(JpegSignature, OtherSegmentsArePassedOverByTheirLength) {
    const Bytes decoy = Frame(0xC0, 1, 1);
    const auto length = static_cast<std::uint16_t>(2 + decoy.size());
    for (const std::uint8_t marker :
         std::initializer_list<std::uint8_t>{0xC1, 0xC3, 0xC4, 0xCC, 0xDB, 0xDD, 0xE0, 0xE1, 0xEF, 0xFE})
        ExpectSize(Told(Joined({kStart, Segment(marker, length, decoy), Frame()})), 0x0132, 0x0298);
}

TEST(JpegSignature, TheLongestSegmentIsPassedOver) {
    const Bytes data(0xFFFF - 2, 0xFF);
    ExpectSize(Told(Joined({kStart, Segment(0xE1, 0xFFFF, data), Segment(0xE1, 0xFFFF, data), Frame()})),
               0x0132, 0x0298);
}

TEST(JpegSignature, MarkersThatStandAloneHaveNoLength) {
    for (const std::uint8_t marker : std::initializer_list<std::uint8_t>{0x01, 0xD0, 0xD7, 0xD8})
        ExpectSize(Told(Joined({kStart, {0xFF, marker}, Frame()})), 0x0132, 0x0298);
}

TEST(JpegSignature, FillBytesBeforeAMarkerAreSkipped) {
    ExpectSize(Told(Joined({kStart, Bytes(5, 0xFF), Frame()})), 0x0132, 0x0298);
}

TEST(JpegSignature, ASideOfNothingIsNoSize) {
    EXPECT_EQ(Refusal(Joined({kStart, Frame(0xC0, 0, 1)})), kNoSize);
    EXPECT_EQ(Refusal(Joined({kStart, Frame(0xC2, 1, 0)})), kNoSize);
}

TEST(JpegSignature, SidesHave16Bits) {
    ExpectSize(Told(Joined({kStart, Frame(0xC0, 0xFFFF, 0xFFFE)})), 0xFFFF, 0xFFFE);
}

TEST(JpegSignature, AFileCutAnywhereBeforeTheEndOfTheWidthIsTruncated) {
    const Bytes whole = Joined({kStart, Segment(0xE0, 4, {'J', 'F'}), {0xFF, 0x01, 0xFF}, Frame()});
    for (std::size_t length = 2; length < whole.size(); ++length)
        EXPECT_EQ(Refusal(First(whole, length)).kind, ErrorKind::Truncated) << length;
    ExpectSize(Told(whole), 0x0132, 0x0298);
}

TEST(JpegSignature, ASegmentThatReachesPastTheEndIsTruncated) {
    EXPECT_EQ(
        Refusal(Joined({kStart, Segment(0xE0, 0xFFFF, {1, 2, 3}), Frame()})),
        (Error{ErrorKind::Truncated, {}, 2 + 2 + 0xFFFF, "the file ends inside what is to be read here"}));
}

TEST(JpegSignature, AByteThatIsNoMarkerIsNamedByItsPlace) {
    EXPECT_EQ(PlaceOfNoMarker(Joined({kStart, {0x00, 0xC0}, Frame()})), 2U);
    EXPECT_EQ(PlaceOfNoMarker(Joined({kStart, Segment(0xE0, 3, {1, 2, 3}), Frame()})), 7U);
}

TEST(JpegSignature, ALengthThatDoesNotEvenCountItselfStillEndsTheWalk) {
    EXPECT_EQ(PlaceOfNoMarker(Joined({kStart, Segment(0xE0, 0), Frame()})), 4U);
    EXPECT_EQ(PlaceOfNoMarker(Joined({kStart, Segment(0xE0, 1), Frame()})), 5U);
}

TEST(JpegSignature, TheWalkOverALongFileWithoutAFrameEnds) {
    EXPECT_EQ(Refusal(Joined({kStart, Bytes(200'000, 0xFF)})).kind, ErrorKind::Truncated);
    Bytes restarts = kStart;
    while (restarts.size() < 200'000) restarts.insert(restarts.end(), {0xFF, 0xD0});
    EXPECT_EQ(Refusal(restarts).kind, ErrorKind::Truncated);
}

TEST(PictureSignature, RandomHeadersTellASizeOrAreRefused) {
    std::mt19937 random(9);
    const std::array<Bytes, 3> starts{Bytes{'B', 'M'}, Bytes{'G', 'I'}, kStart};
    std::size_t told = 0;
    for (int round = 0; round < 20'000; ++round) {
        Bytes file = starts[random() % starts.size()];
        const std::size_t length = file.size() + random() % 80;
        while (file.size() < length)
            file.push_back(random() % 3 == 0 ? std::uint8_t{0xFF} : static_cast<std::uint8_t>(random()));
        const auto info = Tell(file);
        if (!info) continue;
        ++told;
        ASSERT_GT(info->width, 0);
        ASSERT_GT(info->height, 0);
        ASSERT_LE(info->height, std::int64_t{1} << 31);
    }
    EXPECT_GT(told, 0U);
}

}  // namespace
}  // namespace pictavo::tests
