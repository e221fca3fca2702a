#pragma once

/// Pixels of an ordinary picture file on their way into the Raster.

#include <vector>

#include "codec/Raster.h"
#include "core/Result.h"

namespace pictavo {

struct ImportedPixels {
    int width = 0;            ///< pixels
    int height = 0;           ///< pixels
    std::vector<Cell> cells;  ///< row by row from the top, width * height of them
    bool hasAlpha = false;    ///< when false every A is 0
};

/// Fails with TooLarge, naming the file at `path`, when a picture of this size, in pixels, does not fit into
/// the Raster.
Status CheckPictureSize(const std::filesystem::path& path, std::int64_t width, std::int64_t height);

/// Lays every pixel over white; the pixels then have no alpha.
void LayOverWhite(ImportedPixels& pixels);

/// Puts the pixels into the top left corner of the Raster and sets width, height, bit depth and
/// RasterHasAlpha. They must not be larger than 240 x 320. With channel flags only the flagged bytes of each
/// cell change (kept: the alpha flag takes the A 0 of a file without alpha), and width and height are the
/// larger of old and new.
void StoreImportedPixels(const ImportedPixels& pixels, int bitDepth, const ChannelFlags& flags,
                         Picture& picture);

}  // namespace pictavo
