#include "codec/PictureSignature.h"

#include <algorithm>
#include <array>

namespace pictavo {

namespace {

/// Places in a bitmap's header of the fields that differ between its two forms.
struct BitmapLayout {
    std::size_t width;
    std::size_t height;
    std::size_t bitDepth;  // two bytes; no depth needs the second
};

constexpr std::size_t kBitmapPixelOffsetAt = 10;
constexpr std::size_t kInformationSizeAt = 14;   // of the rest of the header; it tells the form
constexpr std::uint32_t kShortInformation = 12;  // the oldest form: 16-bit width and height
constexpr BitmapLayout kShortLayout{18, 20, 24};
constexpr BitmapLayout kBitmapLayout{18, 22, 28};
constexpr std::size_t kBitmapCompressionAt = 30;

constexpr std::size_t kBitmapHead = kBitmapCompressionAt + 4;
constexpr std::size_t kLeastBitmapHead = kBitmapCompressionAt;  // without one the pixels count as plain

PictureFileInfo ParseShortBitmapHead(ByteView head) {
    PictureFileInfo info;
    info.width = LittleEndian16(head.subspan(kShortLayout.width));
    info.height = LittleEndian16(head.subspan(kShortLayout.height));
    info.bitDepth = head[kShortLayout.bitDepth];
    return info;
}

std::int64_t SignedField(ByteView head, std::size_t at) {
    return static_cast<std::int32_t>(LittleEndian32(head.subspan(at)));
}

PictureFileInfo ParseBitmapHead(ByteView head) {
    constexpr std::uint32_t kPlainPixels = 0;
    constexpr std::uint32_t kPlainPixelsWithMasks = 3;
    PictureFileInfo info;
    info.width = SignedField(head, kBitmapLayout.width);
    const std::int64_t height = SignedField(head, kBitmapLayout.height);
    info.topDown = height < 0;
    info.height = info.topDown ? -height : height;
    info.bitDepth = head[kBitmapLayout.bitDepth];
    const std::uint32_t compression = LittleEndian32(head.subspan(kBitmapCompressionAt));
    info.isCompressed = compression != kPlainPixels && compression != kPlainPixelsWithMasks;
    return info;
}

Result<PictureFileInfo> ReadBitmapInfo(const ByteSource& source) {
    std::array<std::uint8_t, kBitmapHead> head{};
    PICTAVO_TRY(const std::size_t count, source.ReadAt(0, head));
    if (count < kLeastBitmapHead)
        return Fail(ErrorKind::Truncated, source.Path(), count, "the file ends inside its header");
    const ByteView bytes(head);
    const bool isShort = LittleEndian32(bytes.subspan(kInformationSizeAt)) == kShortInformation;
    PictureFileInfo info = isShort ? ParseShortBitmapHead(bytes) : ParseBitmapHead(bytes);
    info.kind = PictureFileKind::Bitmap;
    info.pixelOffset = LittleEndian32(bytes.subspan(kBitmapPixelOffsetAt));
    return info;
}

Result<PictureFileInfo> ReadGifInfo(const ByteSource& source) {
    PICTAVO_TRY(const Bytes head, source.ReadExactly(0, 11));
    const ByteView bytes(head);
    PictureFileInfo info;
    info.kind = PictureFileKind::Gif;
    info.width = LittleEndian16(bytes.subspan(6));
    info.height = LittleEndian16(bytes.subspan(8));
    info.bitDepth = (bytes[10] & 7) + 1;
    return info;
}

constexpr std::uint8_t kMarkerStart = 0xFF;

/// Of a JPEG file. Programs write about ten; each costs a reader a pass over the whole picture.
constexpr int kMostScans = 1000;

bool IsFrameMarker(std::uint8_t marker) {
    return marker == 0xC0 || marker == 0xC2;
}

/// Markers that stand alone, without a length behind them: TEM, RST0 to RST7, SOI.
bool StandsAlone(std::uint8_t marker) {
    return marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8);
}

Result<PictureFileInfo> ReadFrame(const ByteSource& source, std::uint64_t at) {
    PICTAVO_TRY(const Bytes frame, source.ReadExactly(at, 9));
    PictureFileInfo info;
    info.kind = PictureFileKind::Jpeg;
    info.height = BigEndian16(ByteView(frame).subspan(5));
    info.width = BigEndian16(ByteView(frame).subspan(7));
    info.bitDepth = 24;
    return info;
}

/// Walks the markers up to the start of the frame.
Result<PictureFileInfo> ReadJpegInfo(const ByteSource& source) {
    std::uint64_t at = 2;
    for (;;) {
        PICTAVO_TRY(const Bytes marker, source.ReadExactly(at, 2));
        if (marker[0] != kMarkerStart)
            return Fail(ErrorKind::Malformed, source.Path(), at, "no marker stands where one must");
        if (IsFrameMarker(marker[1])) return ReadFrame(source, at);
        if (marker[1] == kMarkerStart) {  // fill byte
            ++at;
        } else if (StandsAlone(marker[1])) {
            at += 2;
        } else {
            PICTAVO_TRY(const Bytes length, source.ReadExactly(at + 2, 2));
            at += 2U + BigEndian16(length);
        }
    }
}

/// The place of the first byte at or behind `at` that may begin a marker; the end of the file without one.
Result<std::uint64_t> FindMarkerStart(const ByteSource& source, std::uint64_t at) {
    while (at < source.Size()) {
        PICTAVO_TRY(const ByteView view, source.ViewAt(at));
        const auto found = std::find(view.begin(), view.end(), kMarkerStart);
        at += static_cast<std::uint64_t>(found - view.begin());
        if (found != view.end()) break;
    }
    return at;
}

/// Bytes of the marker at `at` and of its segment, at least one.
Result<std::uint64_t> LengthOfSegment(const ByteSource& source, std::uint64_t at, std::uint8_t marker) {
    constexpr std::uint8_t kStuffed = 0x00;  // behind a byte of data that would else begin a marker
    if (marker == kMarkerStart) return std::uint64_t{1};
    if (marker == kStuffed || StandsAlone(marker)) return std::uint64_t{2};
    std::array<std::uint8_t, 2> length{};
    PICTAVO_TRY([[maybe_unused]] const std::size_t count, source.ReadAt(at + 2, length));
    return std::uint64_t{2} + BigEndian16(length);
}

Failure RefuseCut(const ByteSource& source, std::uint64_t at) {
    return Fail(ErrorKind::Malformed, source.Path(), at,
                "the picture is cut short: its end marker is missing");
}

Failure RefuseScans(const ByteSource& source, std::uint64_t at) {
    return Fail(ErrorKind::Malformed, source.Path(), at,
                "is no picture: it holds more than " + std::to_string(kMostScans) + " scans");
}

bool TellsNoSize(const PictureFileInfo& info) {
    return info.width <= 0 || info.height <= 0;
}

PictureFileKind KindOf(ByteView firstBytes) {
    const std::string_view text = AsText(firstBytes);
    if (text == "BM") return PictureFileKind::Bitmap;
    if (text == "GI") return PictureFileKind::Gif;
    if (text == "\xFF\xD8") return PictureFileKind::Jpeg;
    if (text == "\x89P") return PictureFileKind::Png;
    return PictureFileKind::Unknown;
}

Result<PictureFileInfo> ReadInfo(const ByteSource& source, PictureFileKind kind) {
    switch (kind) {
        case PictureFileKind::Bitmap:
            return ReadBitmapInfo(source);
        case PictureFileKind::Gif:
            return ReadGifInfo(source);
        case PictureFileKind::Jpeg:
            return ReadJpegInfo(source);
        case PictureFileKind::Png:
        case PictureFileKind::Unknown:
            break;
    }
    PictureFileInfo info;
    info.kind = kind;
    return info;
}

}  // namespace

Result<PictureFileInfo> ReadPictureFileInfo(const ByteSource& source) {
    std::array<std::uint8_t, 2> firstBytes{};
    PICTAVO_TRY([[maybe_unused]] const std::size_t count, source.ReadAt(0, firstBytes));
    const PictureFileKind kind = KindOf(firstBytes);
    PICTAVO_TRY(const PictureFileInfo info, ReadInfo(source, kind));
    const bool sizeStandsInHeader = kind != PictureFileKind::Png && kind != PictureFileKind::Unknown;
    if (sizeStandsInHeader && TellsNoSize(info))
        return Fail(ErrorKind::Malformed, source.Path(), "its header tells no size of a picture");
    return info;
}

Status CheckJpegScans(const ByteSource& source) {
    constexpr std::uint8_t kStartOfScan = 0xDA;
    constexpr std::uint8_t kEndOfImage = 0xD9;
    int scans = 0;
    for (std::uint64_t at = 2;;) {
        PICTAVO_TRY(at, FindMarkerStart(source, at));
        std::array<std::uint8_t, 2> marker{};
        PICTAVO_TRY(const std::size_t count, source.ReadAt(at, marker));
        const bool isEnd = marker[1] == kEndOfImage;
        if (isEnd && scans > 0) return {};
        if (isEnd || count < marker.size()) return RefuseCut(source, at);
        if (marker[1] == kStartOfScan && ++scans > kMostScans) return RefuseScans(source, at);
        PICTAVO_TRY(const std::uint64_t length, LengthOfSegment(source, at, marker[1]));
        at += length;
    }
}

}  // namespace pictavo
