/// Ordinary picture files: telling their kind and size, and bitmaps of 32 bits. A bitmap that is read, stored
/// in the Raster and composed again gives the same pixels.

#include "Holds.h"
#include "Input.h"
#include "PiecewiseSource.h"
#include "codec/Bitmap.h"

namespace pictavo::fuzz {
namespace {

constexpr int kDirectlyReadDepth = 32;

bool FitsRaster(const PictureFileInfo& info) {
    return info.width < Raster::kColumns && info.height < Raster::kRows;
}

void CheckInfo(const PictureFileInfo& info) {
    const bool hasSize = info.kind != PictureFileKind::Png && info.kind != PictureFileKind::Unknown;
    Holds(hasSize == (info.width > 0 && info.height > 0), "the kinds that tell a size tell a good one");
}

void CheckComposedAnew(const ImportedPixels& pixels) {
    Picture picture;
    StoreImportedPixels(pixels, kDirectlyReadDepth, {}, picture);
    Holds(picture.RasterHasAlpha, "a bitmap of 32 bits has alpha");
    const MemorySource composed(ComposeBitmap(picture, true));
    const auto info = ReadPictureFileInfo(composed);
    Holds(info && info->bitDepth == kDirectlyReadDepth &&
              info->pixelOffset + 4 * pixels.cells.size() == composed.Size(),
          "a composed bitmap is one of 32 bits, filled to its end");
    Holds(CheckBitmapFilled(composed, *info).has_value(), "a composed bitmap is filled");
    const auto again = ReadBitmap32(composed, *info);
    Holds(again && again->width == pixels.width && again->height == pixels.height &&
              again->cells == pixels.cells,
          "a bitmap composed of pixels reads as those pixels");
}

void CheckBitmap(const ByteSource& source, const PictureFileInfo& info) {
    const bool isFilled = CheckBitmapFilled(source, info).has_value();
    if (info.bitDepth != kDirectlyReadDepth || !FitsRaster(info)) return;
    const auto pixels = ReadBitmap32(source, info);
    Holds(info.isCompressed || pixels.has_value() == isFilled, "a filled bitmap, and no other, can be read");
    if (!pixels) return;
    Holds(pixels->cells.size() == static_cast<std::size_t>(info.width * info.height),
          "a bitmap gives all its pixels");
    CheckComposedAnew(*pixels);
}

void Run(Input input) {
    const std::size_t piece = PieceLength(input.Byte());
    const PiecewiseSource source(input.Rest(), piece);
    const auto info = ReadPictureFileInfo(source);
    if (!info) return;
    CheckInfo(*info);
    if (info->kind == PictureFileKind::Bitmap) CheckBitmap(source, *info);
    if (info->kind == PictureFileKind::Jpeg) {
        const Status whole = CheckJpegScans(source);
        Holds(whole || whole.error().kind == ErrorKind::Malformed, "a JPEG without its scans is malformed");
    }
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
