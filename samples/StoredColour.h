#pragma once

/// One pixel on its way into the phone and out again.

#include <cstdint>

#include "samples/Drawing.h"

namespace pictavo::samples {

inline constexpr std::uint32_t kTransparent8 = 0xC0;
inline constexpr std::uint32_t kTransparent12 = 0x0FFF;
inline constexpr std::uint32_t kTransparent16 = 0xE000;

/// `value` of 0 .. `from` scaled to 0 .. `to`, to the nearest.
constexpr std::uint32_t Scaled(std::uint32_t value, std::uint32_t from, std::uint32_t to) {
    return (2 * value * to + from) / (2 * from);
}

constexpr bool IsTransparent(Pixel pixel) {
    return pixel.a < 127;
}

bool IsBlackInOneBit(Pixel pixel);

/// The stored number of a pixel. Opaque pixels of 12 bits have the unused top four bits set, which keeps
/// white apart from the transparent value.
std::uint32_t Stored8(Pixel pixel);
std::uint32_t Stored12(Pixel pixel);
std::uint32_t Stored16(Pixel pixel);

/// Alpha in the top byte, blue in the lowest.
std::uint32_t Stored24(Pixel pixel);

/// The stored number of a pixel of a type of 8, 12, 16 or 24 bits, and in how many bytes it is stored, the
/// lowest first.
std::uint32_t StoredPixel(Pixel pixel, std::uint8_t typeCode);
int StoredLength(std::uint8_t typeCode);

}  // namespace pictavo::samples
