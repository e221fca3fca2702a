#include "samples/PictureEncoders.h"
#include "samples/StoredColour.h"

namespace pictavo::samples {

namespace {

/// Of `bits` bits of `word` from `shift` on, stretched to 0 .. 255.
std::uint8_t Channel(std::uint32_t word, int shift, int bits) {
    const std::uint32_t top = (1U << bits) - 1;
    return LowByte(Scaled((word >> shift) & top, top, 255));
}

Pixel Shown8(std::uint32_t word) {
    if (word == kTransparent8) return kMarker;
    return {Channel(word, 5, 3), Channel(word, 2, 3), Channel(word, 0, 2), 0};
}

Pixel Shown12(std::uint32_t word) {
    if (word == kTransparent12) return kMarker;
    return {Channel(word, 8, 4), Channel(word, 4, 4), Channel(word, 0, 4), 0};
}

Pixel Shown16(std::uint32_t word) {
    if (word == kTransparent16) return kMarker;
    return {Channel(word, 11, 5), Channel(word, 5, 6), Channel(word, 0, 5), 0};
}

Pixel Shown1(Pixel pixel) {
    return IsBlackInOneBit(pixel) ? Pixel{0, 0, 0, 0} : Pixel{255, 255, 255, 0};
}

Pixel Shown(Pixel pixel, std::uint8_t typeCode) {
    switch (typeCode & 0x0F) {
        case 0x1:
            return Shown1(pixel);
        case 0x5:
            return Shown8(Stored8(pixel));
        case 0x7:
            return typeCode == 0x07 ? Pixel{0, 0, 0, 0} : Shown12(Stored12(pixel));
        case 0x8:
            return Shown16(Stored16(pixel));
        default:
            return pixel;
    }
}

}  // namespace

std::vector<Pixel> ExpectedPixels(const Drawing& drawing, std::uint8_t typeCode) {
    std::vector<Pixel> pixels;
    for (const Pixel pixel : drawing.pixels) pixels.push_back(Shown(pixel, typeCode));
    return pixels;
}

}  // namespace pictavo::samples
