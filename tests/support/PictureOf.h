#pragma once

#include <vector>

#include "codec/Raster.h"

namespace pictavo::tests {

/// A picture of these cells, row by row, over black ones.
inline Picture PictureOf(int width, int height, const std::vector<Cell>& cells, bool hasAlpha = false) {
    Picture picture;
    picture.width = width;
    picture.height = height;
    picture.RasterHasAlpha = hasAlpha;
    for (std::size_t i = 0; i < cells.size(); ++i)
        picture.raster.At(static_cast<int>(i) % width, static_cast<int>(i) / width) = cells[i];
    return picture;
}

}  // namespace pictavo::tests
