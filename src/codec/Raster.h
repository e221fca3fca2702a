#pragma once

/// The one picture buffer, and the picture that it shows.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace pictavo {

/// One pixel. Only pictures of 24 bits carry a real alpha; all others leave it 0.
struct Cell {
    std::uint8_t r = 0;
    std::uint8_t g = 0;
    std::uint8_t b = 0;
    std::uint8_t a = 0;
};
static_assert(sizeof(Cell) == 4);

/// One comparison of four bytes.
constexpr bool operator==(const Cell& one, const Cell& other) {
    return std::bit_cast<std::uint32_t>(one) == std::bit_cast<std::uint32_t>(other);
}

/// Stands for a transparent pixel in a picture without alpha. No stored value of the 8-, 12- and 16-bit types
/// but the transparent one gives this colour: it is on none of their ramps.
inline constexpr Cell kTransparentMarker{169, 171, 169, 0};

constexpr bool IsMarkerColour(const Cell& cell) {
    return cell.r == kTransparentMarker.r && cell.g == kTransparentMarker.g && cell.b == kTransparentMarker.b;
}

/// The largest picture, in pixels: the screens of these phones are no larger.
inline constexpr int kMostWidth = 240;
inline constexpr int kMostHeight = 320;

constexpr bool IsTooLarge(std::int64_t width, std::int64_t height) {
    return width > kMostWidth || height > kMostHeight;
}

/// A size as messages and captions give it: "132 x 176".
inline std::string SizeText(std::int64_t width, std::int64_t height) {
    return std::to_string(width) + " x " + std::to_string(height);
}

/// 241 columns x 321 rows: pictures of up to 240 x 320, and a spare column and row. Never cleared by a
/// decode: cells outside the decoded picture keep what an earlier one left there.
class Raster {
  public:
    static constexpr int kColumns = kMostWidth + 1;
    static constexpr int kRows = kMostHeight + 1;

    /// Cell (x, y) is element x + 241 * y. Both must be in range.
    Cell& At(int x, int y) { return cells_[Index(x, y)]; }
    const Cell& At(int x, int y) const { return cells_[Index(x, y)]; }

    /// The cells of row y from column x on.
    Cell* From(int x, int y) { return &cells_[Index(x, y)]; }
    const Cell* From(int x, int y) const { return &cells_[Index(x, y)]; }

  private:
    static constexpr std::size_t Index(int x, int y) {
        return static_cast<std::size_t>(x) + static_cast<std::size_t>(kColumns) * static_cast<std::size_t>(y);
    }

    std::vector<Cell> cells_ = std::vector<Cell>(static_cast<std::size_t>(kColumns) * kRows);
};

/// The Raster and what is known of the picture in its top left corner.
struct Picture {
    Raster raster;
    int width = 0;     ///< pixels
    int height = 0;    ///< pixels
    int bitDepth = 0;  ///< 1, 8, 12, 16, 24 of a phone picture; that of the file of an imported one
    bool RasterHasAlpha = false;
};

/// The channels that one load or save is limited to; none flagged means whole pixels.
struct ChannelFlags {
    bool red = false;
    bool green = false;
    bool blue = false;
    bool alpha = false;

    constexpr bool Any() const { return red || green || blue || alpha; }
};

}  // namespace pictavo
