#include "tools/PNGcodec.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "codec/PngFormat.h"
#include "core/BasicCalculations_Tarsk.h"

namespace pictavo {

namespace {

constexpr std::size_t kChunkHeadSize = 8;
constexpr std::size_t kIndexedColourType = 3;
constexpr std::size_t kMostEntries = 256;

/// No PNG file has so many chunks; those of a hostile one can be empty, and take gigabytes to walk through.
constexpr int kMostChunks = 1 << 20;

/// Kept: the divisor is 39.375 and not the 39.37 inches of a metre.
constexpr double kInchesOfMetre = 39.375;

struct Chunk {
    std::string type;
    std::uint64_t offset;  // of its data
    std::uint32_t length;
};

std::uint64_t EndOf(const Chunk& chunk) {
    return chunk.offset + chunk.length + kPngChecksumBytes;
}

Result<bool> BeginsWithSignature(const ByteSource& source) {
    std::array<std::uint8_t, kPngSignature.size()> start{};
    PICTAVO_TRY([[maybe_unused]] const std::size_t count, source.ReadAt(0, start));
    return AsText(start) == kPngSignature;
}

/// The chunk at `offset`; nothing when the file ends inside its head.
Result<std::optional<Chunk>> ChunkAt(const ByteSource& source, std::uint64_t offset) {
    std::array<std::uint8_t, kChunkHeadSize> head{};
    PICTAVO_TRY(const std::size_t count, source.ReadAt(offset, head));
    if (count < head.size()) return std::optional<Chunk>();
    return std::optional<Chunk>(
        {std::string(AsText(ByteView(head).subspan(4))), offset + head.size(), BigEndian32(head)});
}

std::string ColourTypeName(std::uint8_t colourType) {
    switch (colourType) {
        case 0:
            return "Greyscale";
        case 2:
            return "Truecolor";
        case 3:
            return "Indexed-color";
        case 4:
            return "Greyscale with alpha";
        case 6:
            return "Truecolor with alpha";
        default:
            return "";
    }
}

/// The chunk's data, at most `most` bytes of them; what the file does not hold is missing.
Result<Bytes> DataOf(const ByteSource& source, const Chunk& chunk, std::size_t most) {
    Bytes data(std::min<std::size_t>(chunk.length, most));
    PICTAVO_TRY(const std::size_t count, source.ReadAt(chunk.offset, data));
    data.resize(count);
    return data;
}

Result<std::int16_t> SizeValue(const ByteSource& source, std::uint64_t offset, std::uint32_t value) {
    if (value > static_cast<std::uint32_t>(std::numeric_limits<std::int16_t>::max()))
        return Fail(ErrorKind::Overflow, source.Path(), offset, "a width or height above 32767");
    return static_cast<std::int16_t>(value);
}

Status ReadHeader(const ByteSource& source, const Chunk& chunk, PNGInfo& info) {
    constexpr std::size_t kHeaderSize = 13;
    PICTAVO_TRY(Bytes data, DataOf(source, chunk, kHeaderSize));
    data.resize(kHeaderSize);
    const ByteView view(data);
    PICTAVO_TRY(info.width, SizeValue(source, chunk.offset, BigEndian32(view)));
    PICTAVO_TRY(info.height, SizeValue(source, chunk.offset + 4, BigEndian32(view.subspan(4))));
    info.bitDepth = data[8];
    info.colourType = data[9];
    info.colourTypeName = ColourTypeName(info.colourType);
    info.compression = data[10];
    info.filter = data[11];
    info.interlace = data[12];
    return {};
}

/// A file may hold any number of IDAT chunks; each notice stands in the record once.
void AddNotice(PNGInfo& info, const char* notice) {
    if (std::find(info.notices.begin(), info.notices.end(), notice) == info.notices.end())
        info.notices.emplace_back(notice);
}

/// Kept: the byte is read as a decimal digit, so that any other byte counts as 0 and real pixel data give no
/// notice.
Status ReadPixelDataStart(const ByteSource& source, const Chunk& chunk, PNGInfo& info) {
    PICTAVO_TRY(const Bytes data, DataOf(source, chunk, 1));
    const bool isDigit = !data.empty() && data[0] >= '0' && data[0] <= '9';
    const std::string bits = ByteToBits(isDigit ? static_cast<std::uint8_t>(data[0] - '0') : std::uint8_t{0});
    if (bits.substr(4) == "1000") AddNotice(info, "deflate compression method");
    if (BitsToNumber(bits.substr(0, 4)) == std::int16_t{7}) AddNotice(info, "with a window size 32K");
    return {};
}

/// Kept: the two numbers are read as signed.
Status ReadPhysicalSize(const ByteSource& source, const Chunk& chunk, PNGInfo& info) {
    constexpr std::size_t kSize = 9;
    constexpr std::uint8_t kMetre = 1;
    PICTAVO_TRY(const Bytes data, DataOf(source, chunk, kSize));
    if (data.size() < kSize) return {};
    if (data[8] != kMetre) {
        info.note = "Aspect Ratio only..";
        return {};
    }
    info.note = "Values in inch";
    info.horizontalDpi = static_cast<std::int32_t>(BigEndian32(data)) / kInchesOfMetre;
    info.verticalDpi = static_cast<std::int32_t>(BigEndian32(ByteView(data).subspan(4))) / kInchesOfMetre;
    return {};
}

Status CheckEntries(const ByteSource& source, const Chunk& chunk, std::size_t entries) {
    if (entries <= kMostEntries) return {};
    return Fail(ErrorKind::Malformed, source.Path(), chunk.offset,
                "a " + chunk.type + " chunk of more than 256 palette entries");
}

Status ReadPalette(const ByteSource& source, const Chunk& chunk, PNGInfo& info) {
    PICTAVO_TRY(CheckEntries(source, chunk, chunk.length / 3));
    PICTAVO_TRY(const Bytes data, DataOf(source, chunk, 3 * kMostEntries));
    const std::size_t entries = data.size() / 3;
    for (std::size_t i = 0; i < entries; ++i) {
        info.palette[i].red = data[3 * i];
        info.palette[i].green = data[3 * i + 1];
        info.palette[i].blue = data[3 * i + 2];
    }
    info.paletteEntries = static_cast<int>(entries);
    return {};
}

Status ReadTransparency(const ByteSource& source, const Chunk& chunk, PNGInfo& info) {
    PICTAVO_TRY(CheckEntries(source, chunk, chunk.length));
    PICTAVO_TRY(const Bytes data, DataOf(source, chunk, kMostEntries));
    for (std::size_t i = 0; i < data.size(); ++i) info.palette[i].alpha = data[i];
    return {};
}

Status ReadBackground(const ByteSource& source, const Chunk& chunk, PNGInfo& info) {
    const std::size_t size = info.colourType == kIndexedColourType ? 1 : 2;
    PICTAVO_TRY(const Bytes data, DataOf(source, chunk, size));
    if (data.size() < size) return {};
    info.background = size == 1 ? data[0] : static_cast<std::int16_t>(BigEndian16(data));
    return {};
}

Status ReadChunk(const ByteSource& source, const Chunk& chunk, PNGInfo& info) {
    if (chunk.type == "IHDR") return ReadHeader(source, chunk, info);
    if (chunk.type == "IDAT") return ReadPixelDataStart(source, chunk, info);
    if (chunk.type == "pHYs") return ReadPhysicalSize(source, chunk, info);
    if (chunk.type == "PLTE") return ReadPalette(source, chunk, info);
    if (chunk.type == "tRNS") return ReadTransparency(source, chunk, info);
    if (chunk.type == "bKGD") return ReadBackground(source, chunk, info);
    return {};
}

}  // namespace

Result<PNGInfo> ReadPNGInfo(const ByteSource& source) {
    PICTAVO_TRY(const bool isPng, BeginsWithSignature(source));
    if (!isPng) return Fail(ErrorKind::UnknownFile, source.Path(), "This is not PNG!");
    PNGInfo info;
    std::uint64_t offset = kPngSignature.size();
    for (int chunks = 0; chunks < kMostChunks; ++chunks) {
        PICTAVO_TRY(const auto chunk, ChunkAt(source, offset));
        if (!chunk) return info;
        PICTAVO_TRY(ReadChunk(source, *chunk, info));
        offset = EndOf(*chunk);
    }
    return Fail(ErrorKind::Malformed, source.Path(), offset,
                "more than " + std::to_string(kMostChunks) + " chunks, which no PNG file has");
}

Result<bool> IsWholePng(const ByteSource& source) {
    PICTAVO_TRY(const bool isPng, BeginsWithSignature(source));
    if (!isPng) return false;
    std::uint64_t offset = kPngSignature.size();
    for (int chunks = 0; chunks < kMostChunks; ++chunks) {
        PICTAVO_TRY(const auto chunk, ChunkAt(source, offset));
        if (!chunk || EndOf(*chunk) > source.Size()) return false;
        if (chunk->type == kPngEndType) return true;
        offset = EndOf(*chunk);
    }
    return false;
}

}  // namespace pictavo
