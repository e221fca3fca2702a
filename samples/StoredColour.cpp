#include "samples/StoredColour.h"

namespace pictavo::samples {

bool IsBlackInOneBit(Pixel pixel) {
    return !IsTransparent(pixel) && pixel.r + pixel.g + pixel.b < 3 * 127;
}

std::uint32_t Stored8(Pixel pixel) {
    if (IsTransparent(pixel)) return kTransparent8;
    return Scaled(pixel.r, 255, 7) * 32 + Scaled(pixel.g, 255, 7) * 4 + Scaled(pixel.b, 255, 3);
}

std::uint32_t Stored12(Pixel pixel) {
    if (IsTransparent(pixel)) return kTransparent12;
    return 0xF000 + Scaled(pixel.r, 255, 15) * 256 + Scaled(pixel.g, 255, 15) * 16 + Scaled(pixel.b, 255, 15);
}

std::uint32_t Stored16(Pixel pixel) {
    if (IsTransparent(pixel)) return kTransparent16;
    return Scaled(pixel.r, 255, 31) * 2048 + Scaled(pixel.g, 255, 63) * 32 + Scaled(pixel.b, 255, 31);
}

std::uint32_t Stored24(Pixel pixel) {
    const std::uint32_t red = pixel.r, green = pixel.g, blue = pixel.b, alpha = pixel.a;
    return alpha << 24 | red << 16 | green << 8 | blue;
}

std::uint32_t StoredPixel(Pixel pixel, std::uint8_t typeCode) {
    switch (typeCode & 0x0F) {
        case 0x5:
            return Stored8(pixel);
        case 0x7:
            return Stored12(pixel);
        case 0x8:
            return Stored16(pixel);
        default:
            return Stored24(pixel);
    }
}

int StoredLength(std::uint8_t typeCode) {
    switch (typeCode & 0x0F) {
        case 0x5:
            return 1;
        case 0x7:
        case 0x8:
            return 2;
        default:
            return 4;
    }
}

}  // namespace pictavo::samples
