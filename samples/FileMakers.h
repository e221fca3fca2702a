#pragma once

/// Ordinary picture and text files, written as plainly as their formats allow: nothing is compressed.

#include <cstdint>
#include <string_view>

#include "samples/Bytes.h"
#include "samples/Drawing.h"

namespace pictavo::samples {

/// A GIF89a file of one frame. Pixels of alpha under 127 are transparent, all others opaque. Up to 256
/// different colours (transparent is one) are kept exactly, more are reduced to eight shades of red and green
/// with four of blue.
Bytes MakeGif(const Drawing& drawing);

/// Stored in the file, do not change.
enum class PngColour : std::uint8_t { Grey = 0, Rgb = 2, Palette = 3, GreyAlpha = 4, Rgba = 6 };

/// A PNG file of 8 bits a channel, without interlace. Grey is the rounded mean of red, green and blue. A
/// palette keeps up to 256 different colours with their alpha exactly, more are reduced to 256 fixed opaque
/// ones. `ancillary` (whole chunks made by PngChunk) stands between the header and the palette or data.
Bytes MakePng(const Drawing& drawing, PngColour colour, ByteView ancillary = {});

/// Length, type (four letters), data and check sum of one chunk.
Bytes PngChunk(std::string_view type, ByteView data);

/// A bitmap of 1, 4, 8 (with a colour table of 2, 16, 256 entries), 24 or 32 bits per pixel; 32 bits carry
/// alpha in the fourth byte. Tables keep up to 2, 16 or 256 different colours exactly (but not their alpha),
/// more are reduced to fixed ones. `topDown` stores the rows from the top, which the format says by a
/// negative height.
Bytes MakeBmp(const Drawing& drawing, int bits, bool topDown = false);

/// A small document of plain ASCII, without a 0x00 byte.
Bytes MakeXml(std::uint32_t seed);

}  // namespace pictavo::samples
