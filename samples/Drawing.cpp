#include "samples/Drawing.h"

#include <algorithm>

#include "samples/Bytes.h"
#include "samples/Random.h"

namespace pictavo::samples {

namespace {

constexpr Pixel kClear{0, 0, 0, 0};
constexpr Pixel kWhite{255, 255, 255, 255};
constexpr Pixel kBlack{0, 0, 0, 255};

std::uint8_t Clamped(int value) {
    return static_cast<std::uint8_t>(std::clamp(value, 0, 255));
}

Pixel ColourOf(Random& random) {
    return {random.Byte(), random.Byte(), random.Byte(), 255};
}

/// `part` / `whole` of the way from `from` to `to`.
std::uint8_t Between(int from, int to, int part, int whole) {
    return Clamped(from + (to - from) * part / std::max(whole, 1));
}

Pixel Between(Pixel from, Pixel to, int part, int whole) {
    return {Between(from.r, to.r, part, whole), Between(from.g, to.g, part, whole),
            Between(from.b, to.b, part, whole), 255};
}

Pixel Lighter(Pixel colour) {
    return Between(colour, kWhite, 1, 2);
}
Pixel Darker(Pixel colour) {
    return Between(colour, kBlack, 1, 2);
}

template <typename PixelAt>
Drawing DrawEach(int width, int height, PixelAt pixelAt) {
    Drawing drawing = DrawOneColour(width, height, kClear);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) drawing.At(x, y) = pixelAt(x, y);
    }
    return drawing;
}

/// How far the pixel's middle lies from the drawing's, as thousandths of the ellipse that fills it, squared.
int EllipseShare(int x, int y, int width, int height) {
    const int across = (2 * x + 1 - width) * 1000 / width;
    const int down = (2 * y + 1 - height) * 1000 / height;
    return (across * across + down * down) / 1000;
}

int LatticeHeight(std::uint32_t seed, int column, int row) {
    const auto place = static_cast<std::uint64_t>(column) * 4096 + static_cast<std::uint64_t>(row);
    return static_cast<int>(Mixed((static_cast<std::uint64_t>(seed) << 32) + place + 1) & 0xFF);
}

/// Heights of 0 .. 255 on a lattice of `cell` pixels, joined by straight lines.
int Hills(std::uint32_t seed, int x, int y, int cell) {
    const int column = x / cell, row = y / cell, right = x % cell, down = y % cell;
    const int upper =
        LatticeHeight(seed, column, row) * (cell - right) + LatticeHeight(seed, column + 1, row) * right;
    const int lower = LatticeHeight(seed, column, row + 1) * (cell - right) +
                      LatticeHeight(seed, column + 1, row + 1) * right;
    return (upper * (cell - down) + lower * down) / (cell * cell);
}

/// The places of a ball that moves to the end and back again.
int BouncePlace(int frame, int frames, int room) {
    const int half = std::max(frames / 2, 1);
    const int step = frame % (2 * half);
    return room * (step < half ? step : 2 * half - step) / half;
}

}  // namespace

Drawing DrawOneColour(int width, int height, Pixel colour) {
    const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    return {width, height, std::vector<Pixel>(count, colour)};
}

Drawing DrawIcon(int width, int height, std::uint32_t seed) {
    Random random(seed);
    const Pixel colour = ColourOf(random);
    const auto pixelAt = [&](int x, int y) {
        const int share = EllipseShare(x, y, width, height);
        if (share > 1000) return kClear;
        if (share > 700) return Darker(colour);
        return y < height / 2 ? Lighter(colour) : colour;
    };
    return DrawEach(width, height, pixelAt);
}

Drawing DrawGradient(int width, int height, std::uint32_t seed) {
    Random random(seed);
    const Pixel from = ColourOf(random), to = ColourOf(random);
    return DrawEach(width, height,
                    [&](int x, int y) { return Between(from, to, x + y, width + height - 2); });
}

Drawing DrawPhoto(int width, int height, std::uint32_t seed) {
    Random random(seed);
    const Pixel shade = ColourOf(random), light = ColourOf(random);
    const auto pixelAt = [&](int x, int y) {
        const int grain = static_cast<int>(random.Below(17)) - 8;
        const Pixel pixel =
            Between(shade, light, Hills(seed, x, y, 24) * 2 + Hills(seed + 1, x, y, 7), 3 * 255);
        return Pixel{Clamped(pixel.r + grain), Clamped(pixel.g + grain), Clamped(pixel.b + grain), 255};
    };
    return DrawEach(width, height, pixelAt);
}

Drawing DrawAnimationFrame(int width, int height, int frame, int frames) {
    const int side = std::max(std::min(width, height) / 2, 1);
    const int left = BouncePlace(frame, frames, width - side), top = (height - side) / 2;
    const auto pixelAt = [&](int x, int y) {
        const bool near = x >= left && x < left + side && y >= top && y < top + side;
        const bool onBall = near && EllipseShare(x - left, y - top, side, side) <= 1000;
        return onBall ? Pixel{230, 120, 20, 255} : Pixel{20, 40, 110, 255};
    };
    return DrawEach(width, height, pixelAt);
}

Drawing DrawTransparencyChecker(int width, int height, std::uint32_t seed) {
    Random random(seed);
    const Pixel colour = ColourOf(random);
    return DrawEach(width, height, [&](int x, int y) { return (x / 4 + y / 4) % 2 == 0 ? colour : kClear; });
}

Drawing DrawSoftDisc(int width, int height, std::uint32_t seed) {
    Random random(seed);
    const Pixel colour = ColourOf(random);
    const auto pixelAt = [&](int x, int y) {
        const int alpha = 255 - EllipseShare(x, y, width, height) * 255 / 1000;
        return Pixel{colour.r, colour.g, colour.b, Clamped(alpha)};
    };
    return DrawEach(width, height, pixelAt);
}

Drawing DrawGlyphs(int width, int height, std::uint32_t seed) {
    const auto pixelAt = [&](int x, int y) {
        const int column = x % 6, row = y % 9;
        if (column == 5 || row >= 7) return kWhite;
        const int sign = LatticeHeight(seed, x / 6, y / 9) % 32;
        const int mirrored = std::min(column, 4 - column);
        return LatticeHeight(static_cast<std::uint32_t>(sign), mirrored, row) % 2 == 0 ? kWhite : kBlack;
    };
    return DrawEach(width, height, pixelAt);
}

Drawing DrawNoise(int width, int height, std::uint32_t seed) {
    Random random(seed);
    const auto pixelAt = [&](int, int) {
        const auto bits = static_cast<std::uint32_t>(random.Next() >> 32);
        return Pixel{LowByte(bits), LowByte(bits >> 8), LowByte(bits >> 16), LowByte(bits >> 24)};
    };
    return DrawEach(width, height, pixelAt);
}

Drawing Draw(const DrawingRecipe& recipe) {
    const auto [kind, width, height, seed] = recipe;
    switch (kind) {
        case DrawingKind::Icon:
            return DrawIcon(width, height, seed);
        case DrawingKind::Gradient:
            return DrawGradient(width, height, seed);
        case DrawingKind::Photo:
            return DrawPhoto(width, height, seed);
        case DrawingKind::AnimationFrame:
            return DrawAnimationFrame(width, height, static_cast<int>(seed % 8), 8);
        case DrawingKind::TransparencyChecker:
            return DrawTransparencyChecker(width, height, seed);
        case DrawingKind::SoftDisc:
            return DrawSoftDisc(width, height, seed);
        case DrawingKind::OneColour:
            return DrawOneColour(width, height, {LowByte(seed * 37), LowByte(seed * 11), 128, 255});
        case DrawingKind::Glyphs:
            return DrawGlyphs(width, height, seed);
        case DrawingKind::Noise:
            return DrawNoise(width, height, seed);
    }
    return {};
}

}  // namespace pictavo::samples
