#pragma once

/// Clearing and comparing the Raster as a whole. Cell by cell, under the sanitizers, it would take most of a
/// target's time, and so would a new Raster for every input.

#include <cstring>

#include "codec/Raster.h"

namespace pictavo::fuzz {

inline constexpr std::size_t kRasterBytes = sizeof(Cell) * Raster::kColumns * Raster::kRows;

inline void Clear(Raster& raster) {
    std::memset(static_cast<void*>(raster.From(0, 0)), 0, kRasterBytes);
}

inline bool SameCells(const Raster& one, const Raster& other) {
    return std::memcmp(one.From(0, 0), other.From(0, 0), kRasterBytes) == 0;
}

/// As a new one is.
inline Picture& Renewed(Picture& picture) {
    Clear(picture.raster);
    picture.width = picture.height = picture.bitDepth = 0;
    picture.RasterHasAlpha = false;
    return picture;
}

}  // namespace pictavo::fuzz
