#pragma once

/// A twin of the picture's drawing that sets one point after the other, in the order in which the rules say
/// so, without any of the product's shortcuts. What it and the product draw must be the same in every point.

#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "ui/PictureRenderer.h"

namespace pictavo::tests {

class PlainView {
  public:
    PlainView(const Picture& picture, const ViewState& view, QRgb background)
        : picture_(picture), view_(view), points_(241 * 321, background | 0xFF000000U) {
        TakeApart(points_[200 * 241 + 200]);
    }

    /// The points row by row.
    std::vector<QRgb> Draw() {
        for (int y = 0; y <= picture_.height - 1; ++y) {
            for (int x = 0; x <= picture_.width - 1; ++x) {
                if (x < 241 && y < 321) DrawPixel(x, y, picture_.raster.At(x, y));
                if (x * view_.Magnify > 240) break;
            }
            if (y * view_.Magnify > 320) break;
        }
        return points_;
    }

  private:
    static int Value(const std::string& digits) {
        return digits.empty() ? 0 : std::stoi(digits, nullptr, 16);
    }

    void TakeApart(QRgb sampled) {
        std::array<char, 9> text{};
        const auto asPlatform = static_cast<unsigned>((sampled & 0xFF) * 65536 + (sampled >> 8 & 0xFF) * 256 +
                                                      (sampled >> 16 & 0xFF));
        std::snprintf(text.data(), text.size(), "%X", asPlatform);
        const std::string hex = text.data();
        const std::string four = hex.substr(0, 4);
        red_ = Value(hex.size() <= 2 ? hex : hex.substr(hex.size() - 2));
        green_ = Value(four.size() <= 2 ? "" : four.substr(2));
        blue_ = Value(hex.substr(0, 2));
    }

    static int Capped(int component, int background) {
        if (component >= 0 && component > background) return background;
        return component;
    }

    void DrawPixel(int x, int y, const Cell& p) {
        const bool isKey = p.r == 169 || p.g == 171 || p.b == 169;
        int a = 0;
        if (picture_.RasterHasAlpha)
            a = p.a;
        else if (!isKey)
            a = 255;
        if (view_.showsAlpha) {
            if (!(view_.drawsTransparency && a == 0)) DrawBlock(x, y, a, a, a);
            return;
        }
        if (view_.drawsTransparency && picture_.RasterHasAlpha) {
            const int c0 = Capped(p.r - p.a + red_, red_);
            const int c1 = Capped(p.g - p.a + green_, green_);
            const int c2 = Capped(p.b - p.a + blue_, blue_);
            if (!(c0 == red_ && c1 == green_ && c2 == blue_)) DrawChannels(x, y, c0, c1, c2);
            return;
        }
        if (view_.drawsTransparency && isKey) return;
        DrawChannels(x, y, p.r, p.g, p.b);
    }

    void DrawChannels(int x, int y, int c0, int c1, int c2) {
        DrawBlock(x, y, view_.showsRed ? c0 : 0, view_.showsGreen ? c1 : 0, view_.showsBlue ? c2 : 0);
    }

    void DrawBlock(int x, int y, int c0, int c1, int c2) {
        for (int i = 0; i <= view_.Magnify; ++i)
            for (int j = 0; j <= view_.Magnify; ++j)
                SetPoint(x * view_.Magnify + i, y * view_.Magnify + j, c0, c1, c2);
    }

    void SetPoint(int x, int y, int c0, int c1, int c2) {
        if (x > 240 || y > 320) return;
        points_[static_cast<std::size_t>(y * 241 + x)] =
            qRgb(c0 < 0 ? 0 : c0, c1 < 0 ? 0 : c1, c2 < 0 ? 0 : c2);
    }

    const Picture& picture_;
    const ViewState& view_;
    std::vector<QRgb> points_;
    int red_ = 0;
    int green_ = 0;
    int blue_ = 0;
};

}  // namespace pictavo::tests
