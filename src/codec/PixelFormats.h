#pragma once

/// The phone's stored pixels, and their way to a Cell and back. One struct a format, all of one shape: the
/// bytes a pixel takes, those bytes as one number, Expand (stored bytes to cells) and, where the encoder
/// writes the format, Quantise (cells to stored bytes). Layouts: docs/formats/phone-pictures.md.

#include <array>
#include <bit>
#include <cstring>

#include "codec/Raster.h"
#include "core/Bytes.h"

namespace pictavo {

namespace ramp {

/// value * to / from, to the nearest whole number; no value of the ramps here falls on a half.
constexpr int Scale(int value, int from, int to) {
    return (2 * value * to + from) / (2 * from);
}

}  // namespace ramp

/// RGB 3-3-2 in one byte.
struct Pixels8 {
    static constexpr std::size_t kBytes = 1;
    using Unit = std::uint8_t;
    static constexpr std::uint8_t kTransparent = 0xC0;

    static constexpr Cell ExpandOne(std::uint8_t stored) {
        if (stored == kTransparent) return kTransparentMarker;
        return {static_cast<std::uint8_t>(ramp::Scale(stored >> 5, 7, 255)),
                static_cast<std::uint8_t>(ramp::Scale(stored >> 2 & 7, 7, 255)),
                static_cast<std::uint8_t>(ramp::Scale(stored & 3, 3, 255)), 0};
    }

    /// Kept: an ordinary colour that comes to 0xC0 reads back as transparent.
    static constexpr std::uint8_t QuantiseOne(const Cell& cell) {
        if (IsMarkerColour(cell)) return kTransparent;
        return static_cast<std::uint8_t>(ramp::Scale(cell.r, 255, 7) << 5 | ramp::Scale(cell.g, 255, 7) << 2 |
                                         ramp::Scale(cell.b, 255, 3));
    }

    static void Expand(const std::uint8_t* stored, Cell* cells, std::size_t count);
    static void Quantise(const Cell* cells, std::uint8_t* stored, std::size_t count);
};

/// RGB 4-4-4 in a little-endian 16-bit word whose top four bits are ignored. Read only.
struct Pixels12 {
    static constexpr std::size_t kBytes = 2;
    using Unit = std::uint16_t;
    static constexpr std::uint16_t kTransparent = 0x0FFF;

    static void Expand(const std::uint8_t* stored, Cell* cells, std::size_t count);
};

/// RGB 5-6-5 in a little-endian 16-bit word.
struct Pixels16 {
    static constexpr std::size_t kBytes = 2;
    using Unit = std::uint16_t;
    static constexpr std::uint16_t kTransparent = 0xE000;

    /// Kept: an ordinary colour that comes to 0xE000 reads back as transparent.
    static constexpr std::uint16_t QuantiseOne(const Cell& cell) {
        if (IsMarkerColour(cell)) return kTransparent;
        return static_cast<std::uint16_t>(ramp::Scale(cell.r, 255, 31) << 11 |
                                          ramp::Scale(cell.g, 255, 63) << 5 | ramp::Scale(cell.b, 255, 31));
    }

    static void Expand(const std::uint8_t* stored, Cell* cells, std::size_t count);
    static void Quantise(const Cell* cells, std::uint8_t* stored, std::size_t count);
};

/// B, G, R, A bytes; called 24 bit throughout. No value is transparent: alpha is.
struct Pixels24 {
    static constexpr std::size_t kBytes = 4;
    using Unit = std::uint32_t;

    static constexpr std::uint32_t QuantiseOne(const Cell& cell) {
        return cell.b | static_cast<std::uint32_t>(cell.g) << 8 | static_cast<std::uint32_t>(cell.r) << 16 |
               static_cast<std::uint32_t>(cell.a) << 24;
    }

    static void Expand(const std::uint8_t* stored, Cell* cells, std::size_t count);
    static void Quantise(const Cell* cells, std::uint8_t* stored, std::size_t count);
};

/// One bit, the most significant first: "1" is black, "0" white.
struct Pixels1 {
    static constexpr Cell kBlack{0, 0, 0, 0};
    static constexpr Cell kWhite{255, 255, 255, 0};

    static constexpr const Cell& ExpandBit(unsigned bit) { return bit != 0 ? kBlack : kWhite; }

    /// The eight pixels of a byte.
    static const std::array<Cell, 8>& ExpandByte(std::uint8_t stored);

    /// Black where the mean of the colours is below 127. Kept: it is the sum of three thirds, left to right
    /// in double precision, so (34, 253, 94) comes to 126.99999999999999 and is black.
    static constexpr unsigned QuantiseOne(const Cell& cell) {
        return cell.r / 3.0 + cell.g / 3.0 + cell.b / 3.0 >= 127 ? 0 : 1;
    }
};

}  // namespace pictavo
