#pragma once

/// Walks the chunks of a PNG file for its size, colour type, palette and physical size; decodes no pixels.
/// Layout: docs/formats/pictures-in.md.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/ByteSource.h"

namespace pictavo {

struct PaletteEntry {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 0;

    bool operator==(const PaletteEntry&) const = default;
};

struct PNGInfo {
    std::int16_t width = 0;   ///< pixels
    std::int16_t height = 0;  ///< pixels
    std::uint8_t bitDepth = 0;
    std::uint8_t colourType = 0;
    std::string colourTypeName;  ///< empty for a type that PNG does not have
    std::uint8_t compression = 0;
    std::uint8_t filter = 0;
    std::uint8_t interlace = 0;
    std::string note;  ///< of the physical size: "Aspect Ratio only.." or "Values in inch"
    double horizontalDpi = 0;
    double verticalDpi = 0;
    std::array<PaletteEntry, 256> palette{};
    int paletteEntries = 0;  ///< those that PLTE gave
    std::int16_t background = 0;
    std::vector<std::string>
        notices;  ///< what the first bytes of pixel data say of its compression, each once
};

/// Reads the chunks from the start of `source` to its end. Checksums are not checked; a chunk that reaches
/// past the end gives what the file holds of it and ends the reading. Fails with UnknownFile and "This is not
/// PNG!" without the signature, with Overflow when a size is above 32767, with Malformed when PLTE or tRNS
/// holds more than 256 entries or when there are more than a million chunks, and with ReadFailed.
Result<PNGInfo> ReadPNGInfo(const ByteSource& source);

/// True when the file begins with the signature and holds its chunks up to IEND, that one included; false
/// with more than a million chunks before it. Fails with ReadFailed.
Result<bool> IsWholePng(const ByteSource& source);

}  // namespace pictavo
