#pragma once

/// Turns a phone picture's stored bytes into the Raster. Formats: docs/formats/phone-pictures.md.

#include "codec/Raster.h"
#include "core/ByteSource.h"
#include "core/PictureTable.h"

namespace pictavo {

/// What the decoder must be told of a picture; the stored bytes do not say it.
struct PictureFormat {
    int width = 0;   ///< pixels
    int height = 0;  ///< pixels
    int bitDepth = 0;
    bool compressed = false;
};

/// The format of a picture of the table. `depthOfUnknown` is taken where the type code names no bit depth.
PictureFormat FormatOf(const PictureRecord& record, int depthOfUnknown);

struct DecodedPicture {
    std::uint64_t consumed = 0;  ///< stored bytes; of an uncompressed picture always its full size
    bool complete = true;        ///< false when the source ended inside the picture's data
};

/// Decodes the picture at `offset` of `source` into `picture`, from cell (0, 0) on. Bytes past the end of the
/// source read as 0x00, and a compressed picture ends at the control byte that meets the end.
///
/// Kept: a compressed picture stops at the first control byte after which the row is at or below the height,
/// so that extra pixels of its last group spill into the rows below. Kept: an uncompressed picture of 12 bits
/// comes out black. Kept: a compressed picture of a height of 0 or less takes one group all the same.
///
/// Fails with BadBitDepth, touching nothing, unless the depth is 1, 8, 12, 16 or 24; the detail is the text
/// of the box: " 0bit". Fails with TooLarge when the picture is larger than the Raster, where its data end
/// inside it too, or a pixel would lie outside of it, with Malformed when more than 65536 groups hold no
/// pixel, and with ReadFailed when the system fails a read: cells written so far stay, and all else of
/// `picture` is as it was. Otherwise width, height and bit depth are set, and RasterHasAlpha is (bit depth =
/// 24).
Result<DecodedPicture> DecodePicture(const ByteSource& source, std::uint64_t offset,
                                     const PictureFormat& format, Picture& picture);

}  // namespace pictavo
