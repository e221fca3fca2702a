#include "ui/PictureRenderer.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <string>

#include "core/BasicCalculations_Tarsk.h"

namespace pictavo {

namespace {

/// A point's colour with alpha 255, or kUndrawn.
using Ink = QRgb;
constexpr Ink kUndrawn = 0;

constexpr std::uint8_t kOpaque = 255;

bool IsKeyPixel(const Cell& cell) {
    return cell.r == kTransparentMarker.r || cell.g == kTransparentMarker.g || cell.b == kTransparentMarker.b;
}

/// All bits of the channels that are shown, and of alpha.
QRgb ShownChannels(const ViewState& view) {
    return qRgb(view.showsRed ? 0xFF : 0, view.showsGreen ? 0xFF : 0, view.showsBlue ? 0xFF : 0);
}

std::int16_t Component(const std::string& digits) {
    return static_cast<std::int16_t>(HexToNumber(digits).value_or(0));
}

struct Components {
    std::int16_t red = 0;
    std::int16_t green = 0;
    std::int16_t blue = 0;
};

/// Kept: fewer than six digits are split as they fall.
Components SplitBackground(QRgb background) {
    const std::string hex = UpperHex(
        static_cast<std::uint64_t>(qBlue(background) << 16 | qGreen(background) << 8 | qRed(background)));
    const std::size_t end = hex.size();
    return {.red = Component(hex.substr(end - std::min<std::size_t>(end, 2))),
            .green = Component(hex.substr(std::min<std::size_t>(end, 2), 2)),
            .blue = Component(hex.substr(0, 2))};
}

/// Kept: no blending. Negative under a strong alpha over a dark background.
std::int16_t OverBackground(std::uint8_t component, std::uint8_t alpha, std::int16_t background) {
    const auto sum = static_cast<std::int16_t>(component - alpha + background);
    return std::min(sum, background);
}

struct PlainInk {
    QRgb shown;

    Ink operator()(const Cell& cell) const { return qRgb(cell.r, cell.g, cell.b) & shown; }
};

struct KeyedInk {
    QRgb shown;

    Ink operator()(const Cell& cell) const {
        return IsKeyPixel(cell) ? kUndrawn : qRgb(cell.r, cell.g, cell.b) & shown;
    }
};

struct OverBackgroundInk {
    QRgb shown;
    Components background;

    Ink operator()(const Cell& cell) const {
        const std::int16_t red = OverBackground(cell.r, cell.a, background.red);
        const std::int16_t green = OverBackground(cell.g, cell.a, background.green);
        const std::int16_t blue = OverBackground(cell.b, cell.a, background.blue);
        if (red == background.red && green == background.green && blue == background.blue) return kUndrawn;
        return qRgb(std::max<int>(red, 0), std::max<int>(green, 0), std::max<int>(blue, 0)) & shown;
    }
};

struct AlphaInk {
    bool hasAlpha;
    bool drawsTransparency;

    std::uint8_t AlphaOf(const Cell& cell) const {
        if (hasAlpha) return cell.a;
        return IsKeyPixel(cell) ? 0 : kOpaque;
    }

    Ink operator()(const Cell& cell) const {
        const std::uint8_t alpha = AlphaOf(cell);
        return alpha == 0 && drawsTransparency ? kUndrawn : qRgb(alpha, alpha, alpha);
    }
};

/// A row of pixels, as points of one line. The last pixel may reach beyond the view.
using Line = std::array<Ink, kViewWidth + kMostMagnify>;

// What begins inside the view is inside the Raster.
static_assert(kViewWidth <= Raster::kColumns && kViewHeight <= Raster::kRows);

/// How many pixels from the first one on begin inside `points`.
int PixelsInside(int points, int magnify) {
    return (points - 1) / magnify + 1;
}

template <typename InkOf>
void ComposeLine(const Cell* cells, int count, int magnify, const InkOf& inkOf, Line& line) {
    line.fill(kUndrawn);
    Ink* to = line.data();
    for (int x = 0; x < count; ++x, to += magnify) {
        const Ink ink = inkOf(cells[x]);
        if (ink != kUndrawn) std::fill_n(to, magnify + 1, ink);
    }
}

void DrawLine(const Line& line, QRgb* to) {
    for (std::size_t x = 0; x < kViewWidth; ++x) to[x] = line[x] == kUndrawn ? to[x] : line[x];
}

QRgb* PointsOf(QImage& image, int y) {
    return reinterpret_cast<QRgb*>(image.scanLine(y));
}

template <typename InkOf>
void Draw(const Picture& picture, int magnify, const InkOf& inkOf, QImage& image) {
    const int columns = std::min(picture.width, PixelsInside(kViewWidth, magnify));
    const int rows = std::min(picture.height, PixelsInside(kViewHeight, magnify));
    Line line;
    for (int y = 0; y < rows; ++y) {
        ComposeLine(picture.raster.From(0, y), columns, magnify, inkOf, line);
        const int end = std::min((y + 1) * magnify + 1, kViewHeight);
        for (int at = y * magnify; at < end; ++at) DrawLine(line, PointsOf(image, at));
    }
}

}  // namespace

QImage RenderPicture(const Picture& picture, const ViewState& view, QRgb background) {
    assert(view.Magnify >= 1 && view.Magnify <= kMostMagnify);
    QImage image(kViewWidth, kViewHeight, QImage::Format_RGB32);
    image.fill(background | qRgb(0, 0, 0));
    const QRgb shown = ShownChannels(view);
    if (view.showsAlpha)
        Draw(picture, view.Magnify, AlphaInk{picture.RasterHasAlpha, view.drawsTransparency}, image);
    else if (!view.drawsTransparency)
        Draw(picture, view.Magnify, PlainInk{shown}, image);
    else if (picture.RasterHasAlpha)
        Draw(picture, view.Magnify, OverBackgroundInk{shown, SplitBackground(background)}, image);
    else
        Draw(picture, view.Magnify, KeyedInk{shown}, image);
    return image;
}

}  // namespace pictavo
