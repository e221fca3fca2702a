#pragma once

/// Drawings as entries of a colour table, for the file formats that have one.

#include <cstdint>
#include <vector>

#include "samples/Drawing.h"

namespace pictavo::samples {

/// `entries` holds one index into `colours` for each pixel.
struct IndexedDrawing {
    std::vector<Pixel> colours;
    std::vector<std::uint8_t> entries;
};

/// The drawing's own colours in the order of their first use when there are no more than `limit` (2, 16 or
/// 256); else a fixed table of opaque colours: black and white, two shades of red and blue with four of
/// green, or eight shades of red and green with four of blue.
IndexedDrawing Indexed(const Drawing& drawing, int limit);

}  // namespace pictavo::samples
