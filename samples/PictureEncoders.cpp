#include "samples/PictureEncoders.h"

#include <cstddef>

#include "samples/StoredColour.h"

namespace pictavo::samples {

namespace {

constexpr std::size_t kLongestRun = 127;
constexpr std::size_t kLongestLiteral = 128;
constexpr std::size_t kLongestBitRun = 63;
constexpr std::size_t kBitGroup = 7;

/// The stored numbers of all pixels, and in how many bytes each is stored.
struct Units {
    std::vector<std::uint32_t> numbers;
    int length;
};

Units StoredPixels(const Drawing& drawing, std::uint8_t typeCode) {
    Units units{{}, StoredLength(typeCode)};
    for (const Pixel pixel : drawing.pixels) units.numbers.push_back(StoredPixel(pixel, typeCode));
    return units;
}

void AppendUnits(Bytes& bytes, const Units& units, std::size_t start, std::size_t count) {
    for (std::size_t i = start; i < start + count; ++i) {
        for (int k = 0; k < units.length; ++k) bytes.push_back(LowByte(units.numbers[i] >> (8 * k)));
    }
}

Bytes Joined(const Units& units) {
    Bytes bytes;
    AppendUnits(bytes, units, 0, units.numbers.size());
    return bytes;
}

/// How many of the values from `start` on are equal, at most `limit`.
template <typename Values>
std::size_t RunLength(const Values& values, std::size_t start, std::size_t limit) {
    std::size_t length = 0;
    while (length < limit && start + length < values.size() && values[start + length] == values[start])
        ++length;
    return length;
}

/// How many numbers from `start` on stand before the next two equal ones.
std::size_t LiteralLength(const std::vector<std::uint32_t>& numbers, std::size_t start) {
    std::size_t length = 0;
    while (length < kLongestLiteral && start + length < numbers.size() &&
           RunLength(numbers, start + length, 2) == 1) {
        ++length;
    }
    return length;
}

Bytes CompressUnits(const Units& units) {
    Bytes bytes;
    for (std::size_t at = 0; at < units.numbers.size();) {
        const std::size_t run = RunLength(units.numbers, at, kLongestRun);
        const std::size_t literal = run > 1 ? 0 : LiteralLength(units.numbers, at);
        bytes.push_back(static_cast<std::uint8_t>(run > 1 ? run : 256 - literal));
        AppendUnits(bytes, units, at, run > 1 ? 1 : literal);
        at += run > 1 ? run : literal;
    }
    return bytes;
}

/// Rows from the most significant bit down, each filled up to whole bytes with 0.
Bytes BitRows(const Drawing& drawing) {
    const int rowBytes = (drawing.width + 7) / 8;
    Bytes bytes(static_cast<std::size_t>(rowBytes) * static_cast<std::size_t>(drawing.height), 0);
    for (int y = 0; y < drawing.height; ++y) {
        for (int x = 0; x < drawing.width; ++x) {
            if (!IsBlackInOneBit(drawing.At(x, y))) continue;
            bytes[static_cast<std::size_t>(y) * static_cast<std::size_t>(rowBytes) +
                  static_cast<std::size_t>(x / 8)] |= LowByte(0x80U >> (x % 8));
        }
    }
    return bytes;
}

std::uint8_t BitGroup(const std::vector<bool>& bits, std::size_t start) {
    std::uint32_t group = 0;
    for (std::size_t i = 0; i < kBitGroup; ++i) group = group * 2 + (bits[start + i] ? 1 : 0);
    return LowByte(group);
}

Bytes CompressBits(const std::vector<bool>& bits) {
    Bytes bytes;
    for (std::size_t at = 0; at < bits.size();) {
        const std::size_t run = RunLength(bits, at, kLongestBitRun);
        const bool asRun = run >= kBitGroup || bits.size() - at < kBitGroup;
        const std::size_t control = 0x80U + (bits[at] ? 0x40U : 0U) + run;
        bytes.push_back(asRun ? static_cast<std::uint8_t>(control) : BitGroup(bits, at));
        at += asRun ? run : kBitGroup;
    }
    return bytes;
}

std::vector<bool> BitsOf(const Drawing& drawing) {
    std::vector<bool> bits;
    for (const Pixel pixel : drawing.pixels) bits.push_back(IsBlackInOneBit(pixel));
    return bits;
}

}  // namespace

Bytes EncodeForPhone(const Drawing& drawing, std::uint8_t typeCode) {
    const bool compressed = typeCode >= 0x80;
    if ((typeCode & 0x0F) == 0x01) return compressed ? CompressBits(BitsOf(drawing)) : BitRows(drawing);
    const Units units = StoredPixels(drawing, typeCode);
    return compressed ? CompressUnits(units) : Joined(units);
}

}  // namespace pictavo::samples
