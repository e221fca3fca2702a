#pragma once

/// What the picture view shows, drawn into an image. Needs no window and no QGuiApplication.

#include <QImage>

#include "codec/Raster.h"

namespace pictavo {

/// Points of the view.
inline constexpr int kViewWidth = 241;
inline constexpr int kViewHeight = 321;

/// The largest factor that a picture is shown with.
inline constexpr int kMostMagnify = 4;

/// How the user wants the picture shown.
struct ViewState {
    int Magnify = 1;  ///< 1 to kMostMagnify: a pixel begins this many points after its neighbour
    bool showsRed = true;
    bool showsGreen = true;
    bool showsBlue = true;
    bool showsAlpha = false;         ///< alpha as grey, in place of the colours
    bool drawsTransparency = false;  ///< transparent pixels let the background through
};

/// `picture` on a view filled with `background`, whose alpha is ignored: kViewWidth x kViewHeight points of
/// Format_RGB32. What lies beyond the view or the Raster is cut; a width or height below 1 gives the empty
/// view.
///
/// Kept: a pixel covers Magnify + 1 points each way, one of its neighbour's to the right and below, which the
/// neighbour covers again if it is drawn. So the last column and row are a point larger than the others, and
/// an undrawn pixel shows its neighbours' overlap; at Magnify 1 it is covered by that as a whole.
///
/// A channel that is not shown is 0. With `drawsTransparency`:
/// - a picture with alpha has its alpha subtracted from the colour and the background added to it (kept: this
///   is no blending). A component is at most the background's; one below 0 is drawn as 0. A pixel that comes
///   out as the background is not drawn.
/// - in any other picture a key pixel is not drawn. Kept: one component of the transparent marker's three is
///   enough to make one, so (169, 0, 0) is a key pixel.
/// Kept: for these sums the background's components are cut out of its hexadecimal text without leading
/// zeros (blue, green, red): the last two digits, digits 3 and 4, the first two digits. A background whose
/// blue is under 16 is split wrongly.
///
/// With `showsAlpha` a pixel is the grey of its alpha; without alpha of its own that is 0 for a key pixel and
/// 255 for any other. With `drawsTransparency` an alpha of 0 is not drawn.
QImage RenderPicture(const Picture& picture, const ViewState& view, QRgb background);

}  // namespace pictavo
