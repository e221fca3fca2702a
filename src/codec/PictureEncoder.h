#pragma once

/// Turns the Raster into a phone picture's stored bytes. Formats: docs/formats/phone-pictures.md.

#include "codec/PictureType.h"
#include "codec/Raster.h"
#include "core/Bytes.h"

namespace pictavo {

/// True for the types the encoder writes: 01, 05, 08, 0A, 85, 88, 8A. There is none for 12 bits, nor for
/// compressed 1 bit.
bool CanEncode(std::uint8_t typeCode);

/// The stored bytes of the picture in the top left corner of the Raster, in its width and height, without
/// header or padding. `typeCode` must be one that CanEncode.
///
/// Kept, of the compressed types: groups are found on full colours, before they are reduced, so neighbours
/// that become equal only then stand in a literal stretch. Kept: the scan covers one extra row, read from the
/// Raster below the picture (row 321 and column 241 count as zero cells), and its closing group may lose the
/// last pixel of a picture one pixel wide: a over b over c, 1 x 2, gives FF a c.
Bytes EncodePicture(const Picture& picture, std::uint8_t typeCode);

}  // namespace pictavo
