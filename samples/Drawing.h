#pragma once

/// The pictures that samples and tests are made of, drawn by the program itself. The same arguments give the
/// same pixels on every machine. Widths and heights are pixels and at least 1.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace pictavo::samples {

/// Alpha 0 is fully transparent, 255 opaque.
struct Pixel {
    std::uint8_t r = 0;
    std::uint8_t g = 0;
    std::uint8_t b = 0;
    std::uint8_t a = 255;

    bool operator==(const Pixel&) const = default;
};

/// Rows from the top, each from the left.
struct Drawing {
    int width = 0;
    int height = 0;
    std::vector<Pixel> pixels;

    Pixel& At(int x, int y) { return pixels[Index(x, y)]; }
    const Pixel& At(int x, int y) const { return pixels[Index(x, y)]; }
    bool operator==(const Drawing&) const = default;

  private:
    std::size_t Index(int x, int y) const {
        return static_cast<std::size_t>(x) + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    }
};

Drawing DrawOneColour(int width, int height, Pixel colour);

/// A coloured button with a dark rim and a light upper half on a fully transparent ground: few colours.
Drawing DrawIcon(int width, int height, std::uint32_t seed);

/// From one opaque colour in the upper left corner to another in the lower right one.
Drawing DrawGradient(int width, int height, std::uint32_t seed);

/// Opaque, soft patches of light under fine grain: hardly two neighbours are equal.
Drawing DrawPhoto(int width, int height, std::uint32_t seed);

/// Frame `frame` of `frames` (at least 1) of a ball that crosses the picture on an opaque ground.
Drawing DrawAnimationFrame(int width, int height, int frame, int frames);

/// Squares of 4 x 4 pixels, by turns one opaque colour and fully transparent; the first is opaque.
Drawing DrawTransparencyChecker(int width, int height, std::uint32_t seed);

/// A disc whose alpha falls from 255 in the middle to 0 at the rim.
Drawing DrawSoftDisc(int width, int height, std::uint32_t seed);

/// Black signs of 5 x 7 pixels in lines on opaque white, as a one-bit picture would show text.
Drawing DrawGlyphs(int width, int height, std::uint32_t seed);

/// All four bytes of each pixel at random: the least compressible picture.
Drawing DrawNoise(int width, int height, std::uint32_t seed);

enum class DrawingKind {
    Icon,
    Gradient,
    Photo,
    AnimationFrame,
    TransparencyChecker,
    SoftDisc,
    OneColour,
    Glyphs,
    Noise,
};
inline constexpr int kDrawingKindCount = 9;

/// All that it takes to draw a picture again.
struct DrawingRecipe {
    DrawingKind kind = DrawingKind::Icon;
    int width = 1;
    int height = 1;
    std::uint32_t seed = 0;
};

/// Animation frames take their number (of 8) from the seed, one-colour pictures a colour other than white.
Drawing Draw(const DrawingRecipe& recipe);

}  // namespace pictavo::samples
