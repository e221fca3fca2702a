#pragma once

/// The chunks of a PNG file, laid out as a list and then asked, as docs/formats/pictures-in.md describes
/// them. What the product's walk over them gives must be the same.

#include <algorithm>
#include <optional>
#include <vector>

#include "tools/PNGcodec.h"

namespace pictavo::fuzz::plain {

struct PngChunk {
    std::string type;
    std::uint32_t toldLength = 0;
    Bytes data;            ///< what the file holds of it
    bool isWhole = false;  ///< with its data and its checksum
};

inline std::uint32_t BigEndian(const Bytes& bytes, std::size_t at, std::size_t count) {
    std::uint32_t number = 0;
    for (std::size_t i = at; i < at + count; ++i) number = number << 8 | (i < bytes.size() ? bytes[i] : 0U);
    return number;
}

/// The signature is taken off; nothing without it.
inline std::optional<Bytes> BehindSignature(const Bytes& file) {
    const Bytes signature{0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A};
    if (file.size() < signature.size() || !std::equal(signature.begin(), signature.end(), file.begin()))
        return std::nullopt;
    return Bytes(file.begin() + 8, file.end());
}

/// Takes the first chunk off; nothing when not even its length and type are there.
inline std::optional<PngChunk> TakeChunk(Bytes& rest) {
    if (rest.size() < 8) return std::nullopt;
    PngChunk chunk{{rest.begin() + 4, rest.begin() + 8}, BigEndian(rest, 0, 4), {}, false};
    rest.erase(rest.begin(), rest.begin() + 8);
    const std::size_t length = std::min<std::size_t>(chunk.toldLength, rest.size());
    chunk.data.assign(rest.begin(), rest.begin() + static_cast<std::ptrdiff_t>(length));
    rest.erase(rest.begin(), rest.begin() + static_cast<std::ptrdiff_t>(length));
    chunk.isWhole = length == chunk.toldLength && rest.size() >= 4;
    rest.erase(rest.begin(), rest.begin() + std::min<std::ptrdiff_t>(4, std::ssize(rest)));
    return chunk;
}

/// All of them; nothing when the file is no PNG.
inline std::optional<std::vector<PngChunk>> ChunksOf(const Bytes& file) {
    auto rest = BehindSignature(file);
    if (!rest) return std::nullopt;
    std::vector<PngChunk> chunks;
    while (auto chunk = TakeChunk(*rest)) chunks.push_back(std::move(*chunk));
    return chunks;
}

inline bool IsWhole(const std::vector<PngChunk>& chunks) {
    return std::any_of(chunks.begin(), chunks.end(),
                       [](const PngChunk& chunk) { return chunk.type == "IEND" && chunk.isWhole; });
}

/// What the chunks say, one after the other; a later one of the same type is heard as well.
class PngReading {
  public:
    /// What the walk comes to; an error for a chunk that is refused.
    std::optional<ErrorKind> Take(const PngChunk& chunk) {
        if (chunk.type == "IHDR") return TakeHeader(chunk.data);
        if (chunk.type == "PLTE") return TakePalette(chunk);
        if (chunk.type == "tRNS") return TakeTransparency(chunk);
        if (chunk.type == "pHYs" && chunk.data.size() >= 9) TakePhysicalSize(chunk.data);
        if (chunk.type == "bKGD") TakeBackground(chunk.data);
        if (chunk.type == "IDAT" && !chunk.data.empty() && chunk.data[0] == '8')
            info_.notices = {"deflate compression method"};
        return std::nullopt;
    }

    const PNGInfo& Info() const { return info_; }

  private:
    std::optional<ErrorKind> TakeHeader(const Bytes& data) {
        const std::uint32_t width = BigEndian(data, 0, 4);
        const std::uint32_t height = BigEndian(data, 4, 4);
        if (width > 32767 || height > 32767) return ErrorKind::Overflow;
        info_.width = static_cast<std::int16_t>(width);
        info_.height = static_cast<std::int16_t>(height);
        const std::vector<std::uint8_t*> fields{&info_.bitDepth, &info_.colourType, &info_.compression,
                                                &info_.filter, &info_.interlace};
        for (std::size_t i = 0; i < fields.size(); ++i)
            *fields[i] = static_cast<std::uint8_t>(BigEndian(data, 8 + i, 1));
        const std::vector<std::string> names{
            "Greyscale",           "", "Truecolor", "Indexed-color", "Greyscale with alpha", "",
            "Truecolor with alpha"};
        info_.colourTypeName = info_.colourType < names.size() ? names[info_.colourType] : "";
        return std::nullopt;
    }

    std::optional<ErrorKind> TakePalette(const PngChunk& chunk) {
        if (chunk.toldLength / 3 > 256) return ErrorKind::Malformed;
        info_.paletteEntries = static_cast<int>(chunk.data.size() / 3);
        for (std::size_t i = 0; i < chunk.data.size() / 3; ++i) {
            info_.palette[i].red = chunk.data[3 * i];
            info_.palette[i].green = chunk.data[3 * i + 1];
            info_.palette[i].blue = chunk.data[3 * i + 2];
        }
        return std::nullopt;
    }

    std::optional<ErrorKind> TakeTransparency(const PngChunk& chunk) {
        if (chunk.toldLength > 256) return ErrorKind::Malformed;
        for (std::size_t i = 0; i < chunk.data.size(); ++i) info_.palette[i].alpha = chunk.data[i];
        return std::nullopt;
    }

    /// Kept: pixels a metre are signed, and an inch is a 39.375th of it.
    void TakePhysicalSize(const Bytes& data) {
        const bool isMetre = data[8] == 1;
        info_.note = isMetre ? "Values in inch" : "Aspect Ratio only..";
        if (!isMetre) return;
        info_.horizontalDpi = static_cast<std::int32_t>(BigEndian(data, 0, 4)) / 39.375;
        info_.verticalDpi = static_cast<std::int32_t>(BigEndian(data, 4, 4)) / 39.375;
    }

    void TakeBackground(const Bytes& data) {
        const std::size_t size = info_.colourType == 3 ? 1 : 2;
        if (data.size() >= size) info_.background = static_cast<std::int16_t>(BigEndian(data, 0, size));
    }

    PNGInfo info_;
};

/// What is to be told of a file.
inline Result<PNGInfo> PngInfoOf(const Bytes& file) {
    const auto chunks = ChunksOf(file);
    if (!chunks) return Fail(ErrorKind::UnknownFile, {});
    PngReading reading;
    for (const PngChunk& chunk : *chunks)
        if (const auto refusal = reading.Take(chunk)) return Fail(*refusal, {});
    return reading.Info();
}

inline bool AreEqual(const PNGInfo& one, const PNGInfo& other) {
    const bool sameHeader = one.width == other.width && one.height == other.height &&
                            one.bitDepth == other.bitDepth && one.colourType == other.colourType &&
                            one.colourTypeName == other.colourTypeName &&
                            one.compression == other.compression && one.filter == other.filter &&
                            one.interlace == other.interlace;
    return sameHeader && one.note == other.note && one.horizontalDpi == other.horizontalDpi &&
           one.verticalDpi == other.verticalDpi && one.palette == other.palette &&
           one.paletteEntries == other.paletteEntries && one.background == other.background &&
           one.notices == other.notices;
}

}  // namespace pictavo::fuzz::plain
