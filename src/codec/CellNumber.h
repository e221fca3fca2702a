#pragma once

/// Cells as numbers, red lowest, as they lie in memory. Loops over rows of cells are written with these: the
/// compiler then takes several cells at once, which it does not do with the four bytes of a Cell.

#include <cstring>

#include "codec/Raster.h"

namespace pictavo {

static_assert(std::endian::native == std::endian::little, "cells are little-endian numbers here");

inline constexpr std::uint32_t kColourBits = 0x00FFFFFF;
inline constexpr std::uint32_t kAlphaBits = 0xFF000000;
inline constexpr std::uint32_t kMarkerNumber = std::bit_cast<std::uint32_t>(kTransparentMarker);

inline std::uint32_t CellNumber(const Cell* cell) {
    std::uint32_t number = 0;
    std::memcpy(&number, cell, sizeof number);
    return number;
}

inline void StoreCellNumber(Cell* cell, std::uint32_t number) {
    std::memcpy(static_cast<void*>(cell), &number, sizeof number);
}

/// True for the marker's colour, whatever the alpha.
constexpr bool IsMarkerNumber(std::uint32_t number) {
    return (number & kColourBits) == kMarkerNumber;
}

}  // namespace pictavo
