#pragma once

/// Windows bitmaps: the Raster written as one, and the 32-bit ones read directly. Layout:
/// docs/formats/bitmap.md.

#include "codec/ImportedPixels.h"
#include "codec/PictureSignature.h"
#include "codec/Raster.h"
#include "core/ByteSource.h"

namespace pictavo {

/// The picture as a bitmap of 24 bits, or of 32 with `withAlpha`. The fourth byte of a 32-bit pixel is its
/// alpha when RasterHasAlpha, else 0 for the transparent marker and 255 for any other colour. A width or
/// height below 0 counts as 0.
///
/// With channel flags, colours that are not flagged become 00, and so does the fourth byte without the alpha
/// flag. Kept: with flags a 24-bit file holds four bytes a pixel all the same, and its row padding behind
/// them.
Bytes ComposeBitmap(const Picture& picture, bool withAlpha, const ChannelFlags& flags = {});

/// Bits per pixel of the bitmaps that ReadBitmap32 reads: the systems' readers would drop their alpha.
inline constexpr int kDirectlyReadDepth = 32;

/// The pixels of a 32-bit bitmap, alpha included. `info` is what ReadPictureFileInfo says of `source`. Fails
/// with Truncated when the file ends before its last row, and with ReadFailed.
Result<ImportedPixels> ReadBitmap32(const ByteSource& source, const PictureFileInfo& info);

/// Fails with Truncated when an uncompressed bitmap ends before its last row. A
/// compressed one is left to whoever reads it, and so is one of 0 bits per pixel.
Status CheckBitmapFilled(const ByteSource& source, const PictureFileInfo& info);

}  // namespace pictavo
