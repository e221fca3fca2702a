#include "codec/ImportedPixels.h"

#include <algorithm>
#include <cassert>

namespace pictavo {

namespace {

Cell Merged(const Cell& old, const Cell& imported, const ChannelFlags& flags) {
    return {flags.red ? imported.r : old.r, flags.green ? imported.g : old.g, flags.blue ? imported.b : old.b,
            flags.alpha ? imported.a : old.a};
}

std::uint8_t OverWhite(int colour, int alpha) {
    return static_cast<std::uint8_t>((colour * alpha + 255 * (255 - alpha) + 127) / 255);
}

}  // namespace

Status CheckPictureSize(const std::filesystem::path& path, std::int64_t width, std::int64_t height) {
    if (!IsTooLarge(width, height)) return {};
    return Fail(ErrorKind::TooLarge, path,
                "a picture of " + SizeText(width, height) + " is too large (at most " +
                    SizeText(kMostWidth, kMostHeight) + ")");
}

void LayOverWhite(ImportedPixels& pixels) {
    for (Cell& cell : pixels.cells)
        cell = {OverWhite(cell.r, cell.a), OverWhite(cell.g, cell.a), OverWhite(cell.b, cell.a), 0};
    pixels.hasAlpha = false;
}

void StoreImportedPixels(const ImportedPixels& pixels, int bitDepth, const ChannelFlags& flags,
                         Picture& picture) {
    assert(!IsTooLarge(pixels.width, pixels.height));
    auto next = pixels.cells.begin();
    for (int y = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x, ++next) {
            Cell& cell = picture.raster.At(x, y);
            cell = flags.Any() ? Merged(cell, *next, flags) : *next;
        }
    }
    picture.width = flags.Any() ? std::max(picture.width, pixels.width) : pixels.width;
    picture.height = flags.Any() ? std::max(picture.height, pixels.height) : pixels.height;
    picture.bitDepth = bitDepth;
    picture.RasterHasAlpha = pixels.hasAlpha;
}

}  // namespace pictavo
