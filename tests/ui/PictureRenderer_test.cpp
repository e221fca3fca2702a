#include "ui/PictureRenderer.h"

#include <gtest/gtest.h>
#include <random>

#include "PlainView.h"

namespace pictavo::tests {
namespace {

constexpr QRgb kWhite = qRgb(255, 255, 255);
constexpr QRgb kGrey = qRgb(192, 192, 192);
constexpr QRgb kBlack = qRgb(0, 0, 0);
constexpr QRgb kRed = qRgb(255, 0, 0);
constexpr QRgb kGreen = qRgb(0, 255, 0);
constexpr QRgb kBlue = qRgb(0, 0, 255);

constexpr Cell kRedCell{255, 0, 0, 0};
constexpr Cell kGreenCell{0, 255, 0, 0};
constexpr Cell kBlueCell{0, 0, 255, 0};

/// A picture of one row, or of `width` cells a row.
Picture PictureOf(const std::vector<Cell>& cells, int width = 0, bool hasAlpha = false) {
    Picture picture;
    picture.width = width == 0 ? static_cast<int>(cells.size()) : width;
    picture.height = static_cast<int>(cells.size()) / picture.width;
    picture.RasterHasAlpha = hasAlpha;
    for (int i = 0; i < static_cast<int>(cells.size()); ++i)
        picture.raster.At(i % picture.width, i / picture.width) = cells[static_cast<std::size_t>(i)];
    return picture;
}

Picture WithAlpha(const Cell& cell) {
    return PictureOf({cell}, 1, true);
}

ViewState At(int magnify) {
    ViewState view;
    view.Magnify = magnify;
    return view;
}

ViewState Transparent(int magnify = 1) {
    ViewState view = At(magnify);
    view.drawsTransparency = true;
    return view;
}

/// As the window sets it: the alpha view hides the colours.
ViewState Alpha(bool drawsTransparency = false) {
    ViewState view;
    view.showsRed = view.showsGreen = view.showsBlue = false;
    view.showsAlpha = true;
    view.drawsTransparency = drawsTransparency;
    return view;
}

QRgb FirstPoint(const Picture& picture, const ViewState& view, QRgb background = kWhite) {
    return RenderPicture(picture, view, background).pixel(0, 0);
}

/// Fills the Raster with cells of few and telling values, so that key pixels, fully opaque and fully
/// transparent ones are frequent.
void FillAtRandom(Raster& raster, std::mt19937& random) {
    constexpr std::array<std::uint8_t, 12> kTelling{0, 1, 127, 128, 168, 169, 170, 171, 172, 200, 254, 255};
    const auto any = [&] {
        const auto drawn = random();
        return drawn % 3 == 0 ? static_cast<std::uint8_t>(drawn >> 8) : kTelling[(drawn >> 8) % 12];
    };
    for (int y = 0; y < Raster::kRows; ++y)
        for (int x = 0; x < Raster::kColumns; ++x) raster.At(x, y) = {any(), any(), any(), any()};
}

ViewState StateNumber(unsigned bits) {
    return {.Magnify = static_cast<int>(bits & 3) + 1,
            .showsRed = (bits & 4) != 0,
            .showsGreen = (bits & 8) != 0,
            .showsBlue = (bits & 16) != 0,
            .showsAlpha = (bits & 32) != 0,
            .drawsTransparency = (bits & 64) != 0};
}
constexpr unsigned kStates = 128;

std::vector<QRgb> PointsOf(const QImage& image) {
    std::vector<QRgb> points;
    for (int y = 0; y < image.height(); ++y) {
        const auto* const line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        points.insert(points.end(), line, line + image.width());
    }
    return points;
}

TEST(PictureRenderer, DrawsWhatThePlainTwinDrawsInEveryState) {
    std::mt19937 random(20);
    constexpr std::array<int, 14> kWidths{-1, 0, 1, 2, 16, 59, 60, 61, 62, 120, 240, 241, 242, 255};
    constexpr std::array<int, 14> kHeights{-9, 0, 1, 3, 20, 79, 80, 81, 82, 160, 255, 320, 321, 400};
    constexpr std::array<QRgb, 6> kBackgrounds{kWhite, kGrey,           kBlack,
                                               kRed,   qRgb(18, 52, 5), qRgb(200, 100, 90)};
    Picture picture;
    for (unsigned bits = 0; bits < 2 * kStates; ++bits) {
        const ViewState view = StateNumber(bits);
        if (bits % 8 == 0) FillAtRandom(picture.raster, random);
        picture.RasterHasAlpha = bits >= kStates;
        for (int round = 0; round < 4; ++round) {
            picture.width = round == 0 ? 241 : kWidths[random() % kWidths.size()];
            picture.height = round == 0 ? 321 : kHeights[random() % kHeights.size()];
            const QRgb background = kBackgrounds[random() % kBackgrounds.size()];
            ASSERT_TRUE(PointsOf(RenderPicture(picture, view, background)) ==
                        PlainView(picture, view, background).Draw())
                << "state " << bits << ", " << picture.width << " x " << picture.height << ", background "
                << std::hex << background;
        }
    }
}

TEST(PictureRenderer, TheViewIs241By321PointsOfTheBackground) {
    const QImage image = RenderPicture(Picture(), ViewState(), kGrey);
    EXPECT_EQ(image.size(), QSize(241, 321));
    EXPECT_EQ(image.format(), QImage::Format_RGB32);
    EXPECT_EQ(image.pixel(0, 0), kGrey);
    EXPECT_EQ(image.pixel(240, 320), kGrey);
}

TEST(PictureRenderer, APictureWithoutPixelsGivesTheEmptyView) {
    Picture picture = PictureOf({kRedCell});
    for (const auto& [width, height] :
         {std::pair(0, 5), std::pair(5, 0), std::pair(-1, 5), std::pair(5, -1)}) {
        picture.width = width;
        picture.height = height;
        EXPECT_EQ(RenderPicture(picture, ViewState(), kWhite), RenderPicture(Picture(), ViewState(), kWhite));
    }
}

TEST(PictureRenderer, APixelCoversMagnifyAndOnePoints) {
    for (int magnify = 1; magnify <= 4; ++magnify) {
        const QImage image = RenderPicture(PictureOf({kRedCell}), At(magnify), kWhite);
        for (int y = 0; y < 8; ++y)
            for (int x = 0; x < 8; ++x)
                EXPECT_EQ(image.pixel(x, y), x <= magnify && y <= magnify ? kRed : kWhite)
                    << "at " << x << ", " << y << ", magnified " << magnify;
    }
}

TEST(PictureRenderer, LaterPixelsCoverTheOverlapOfEarlierOnes) {
    const QImage image =
        RenderPicture(PictureOf({kRedCell, kGreenCell, kBlueCell, kRedCell}, 2), At(3), kWhite);
    EXPECT_EQ(image.pixel(2, 2), kRed);
    EXPECT_EQ(image.pixel(3, 2), kGreen);
    EXPECT_EQ(image.pixel(2, 3), kBlue);
    EXPECT_EQ(image.pixel(3, 3), kRed);
}

TEST(PictureRenderer, TheLastColumnAndRowAreAPointLarger) {
    const QImage image =
        RenderPicture(PictureOf({kRedCell, kGreenCell, kBlueCell, kRedCell}, 2), At(3), kWhite);
    EXPECT_EQ(image.pixel(6, 0), kGreen);
    EXPECT_EQ(image.pixel(7, 0), kWhite);
    EXPECT_EQ(image.pixel(0, 6), kBlue);
    EXPECT_EQ(image.pixel(6, 6), kRed);
    EXPECT_EQ(image.pixel(0, 7), kWhite);
}

TEST(PictureRenderer, AtX1AnUndrawnPixelShowsItsNeighboursOverlap) {
    const Picture picture = PictureOf({kRedCell, kTransparentMarker, kGreenCell, kTransparentMarker}, 2);
    const QImage image = RenderPicture(picture, Transparent(), kWhite);
    EXPECT_EQ(image.pixel(0, 0), kRed);
    EXPECT_EQ(image.pixel(1, 0), kRed);
    EXPECT_EQ(image.pixel(0, 1), kGreen);
    EXPECT_EQ(image.pixel(1, 1), kGreen);
    EXPECT_EQ(image.pixel(1, 2), kGreen);
    EXPECT_EQ(image.pixel(2, 0), kWhite);
}

TEST(PictureRenderer, AnUndrawnPixelShowsOnlyTheOverlapWhenMagnified) {
    const QImage image = RenderPicture(PictureOf({kRedCell, kTransparentMarker}), Transparent(4), kWhite);
    EXPECT_EQ(image.pixel(4, 4), kRed);
    EXPECT_EQ(image.pixel(5, 4), kWhite);
    EXPECT_EQ(image.pixel(4, 5), kWhite);
}

TEST(PictureRenderer, AtX4TheViewEndsInsideColumn60AndRow80) {
    Picture picture;
    picture.width = picture.height = 100;
    picture.raster.At(59, 0) = kRedCell;
    picture.raster.At(60, 0) = kGreenCell;
    picture.raster.At(0, 79) = kRedCell;
    picture.raster.At(0, 80) = kGreenCell;
    const QImage image = RenderPicture(picture, At(4), kWhite);
    EXPECT_EQ(image.pixel(239, 0), kRed);
    EXPECT_EQ(image.pixel(240, 0), kGreen);
    EXPECT_EQ(image.pixel(0, 319), kRed);
    EXPECT_EQ(image.pixel(0, 320), kGreen);
}

TEST(PictureRenderer, APictureLargerThanTheRasterIsCut) {
    Picture picture;
    picture.width = 255;
    picture.height = 400;
    for (int y = 0; y < Raster::kRows; ++y) picture.raster.At(240, y) = kRedCell;
    picture.raster.At(0, 320) = kGreenCell;
    const QImage image = RenderPicture(picture, ViewState(), kWhite);
    EXPECT_EQ(image.pixel(239, 0), kBlack);
    EXPECT_EQ(image.pixel(240, 0), kRed);
    EXPECT_EQ(image.pixel(240, 320), kRed);
    EXPECT_EQ(image.pixel(0, 320), kGreen);
}

TEST(PictureRenderer, CellsOutsideThePictureAreNotDrawn) {
    Picture picture = PictureOf({kRedCell});
    picture.raster.At(3, 0) = kGreenCell;
    EXPECT_EQ(RenderPicture(picture, ViewState(), kWhite).pixel(3, 0), kWhite);
}

TEST(PictureRenderer, AChannelThatIsNotShownIs0) {
    const Picture picture = PictureOf({{10, 20, 30, 0}});
    ViewState view;
    view.showsRed = false;
    EXPECT_EQ(FirstPoint(picture, view), qRgb(0, 20, 30));
    view.showsGreen = false;
    EXPECT_EQ(FirstPoint(picture, view), qRgb(0, 0, 30));
    view.showsBlue = false;
    EXPECT_EQ(FirstPoint(picture, view), kBlack);
}

TEST(PictureRenderer, AChannelThatIsNotShownIs0OverTheBackgroundToo) {
    ViewState view = Transparent();
    view.showsRed = false;
    EXPECT_EQ(FirstPoint(WithAlpha({200, 100, 50, 128}), view), qRgb(0, 227, 177));
    EXPECT_EQ(FirstPoint(PictureOf({{200, 100, 50, 0}}), view), qRgb(0, 100, 50));
}

TEST(PictureRenderer, AnyComponentOfTheMarkerMakesAKeyPixel) {
    for (const Cell& cell :
         {Cell{169, 0, 0, 0}, Cell{0, 171, 0, 0}, Cell{0, 0, 169, 0}, Cell{169, 171, 169, 0}})
        EXPECT_EQ(FirstPoint(PictureOf({cell}), Transparent()), kWhite);
    EXPECT_EQ(FirstPoint(PictureOf({{171, 169, 171, 0}}), Transparent()), qRgb(171, 169, 171));
}

TEST(PictureRenderer, AKeyPixelIsDrawnInItsColourWithoutTransparency) {
    EXPECT_EQ(FirstPoint(PictureOf({{169, 0, 0, 0}}), ViewState()), qRgb(169, 0, 0));
    EXPECT_EQ(FirstPoint(PictureOf({kTransparentMarker}), ViewState()), qRgb(169, 171, 169));
}

TEST(PictureRenderer, AHiddenChannelMakesAKeyPixelAllTheSame) {
    ViewState view = Transparent();
    view.showsRed = false;
    EXPECT_EQ(FirstPoint(PictureOf({{169, 50, 50, 0}}), view), kWhite);
}

TEST(PictureRenderer, APictureWithAlphaHasNoKeyPixels) {
    EXPECT_EQ(FirstPoint(WithAlpha({169, 171, 169, 255}), Transparent()), qRgb(169, 171, 169));
}

TEST(PictureRenderer, AlphaIsSubtractedAndTheBackgroundAdded) {
    EXPECT_EQ(FirstPoint(WithAlpha({100, 50, 0, 110}), Transparent(), kGrey), qRgb(182, 132, 82));
}

TEST(PictureRenderer, AComponentIsAtMostTheBackgrounds) {
    EXPECT_EQ(FirstPoint(WithAlpha({255, 10, 100, 100}), Transparent(), kGrey), qRgb(192, 102, 192));
}

TEST(PictureRenderer, ANegativeComponentIsDrawnAs0) {
    EXPECT_EQ(FirstPoint(WithAlpha({0, 100, 255, 255}), Transparent(), kGrey), qRgb(0, 37, 192));
}

TEST(PictureRenderer, APixelThatComesOutAsTheBackgroundIsNotDrawn) {
    const Picture picture = PictureOf({{0, 0, 0, 200}, {255, 255, 255, 40}}, 2, true);
    const QImage image = RenderPicture(picture, Transparent(), kWhite);
    const QRgb shade = qRgb(55, 55, 55);
    EXPECT_EQ(image.pixel(0, 0), shade);
    EXPECT_EQ(image.pixel(1, 0), shade) << "the neighbour's overlap";
    EXPECT_EQ(image.pixel(2, 0), kWhite);
}

TEST(PictureRenderer, APixelThatIsNotDrawnIsNotDarkenedByAHiddenChannel) {
    ViewState view = Transparent();
    view.showsRed = view.showsGreen = view.showsBlue = false;
    EXPECT_EQ(FirstPoint(WithAlpha({9, 9, 9, 0}), view), kWhite);
}

TEST(PictureRenderer, OnWhiteOpaqueColoursStayAsTheyAre) {
    for (int value = 0; value < 255; ++value) {
        const auto v = static_cast<std::uint8_t>(value);
        EXPECT_EQ(FirstPoint(WithAlpha({v, 30, v, 255}), Transparent()), qRgb(value, 30, value));
    }
}

TEST(PictureRenderer, TheAlphaViewShowsAlphaAsGrey) {
    EXPECT_EQ(FirstPoint(WithAlpha({1, 2, 3, 77}), Alpha()), qRgb(77, 77, 77));
    EXPECT_EQ(FirstPoint(WithAlpha({169, 171, 169, 77}), Alpha()), qRgb(77, 77, 77));
}

TEST(PictureRenderer, TheAlphaViewIsWhiteWithoutAlphaButForKeyPixels) {
    EXPECT_EQ(FirstPoint(PictureOf({{1, 2, 3, 0}}), Alpha(), kGrey), kWhite);
    EXPECT_EQ(FirstPoint(PictureOf({{169, 2, 3, 0}}), Alpha(), kGrey), kBlack);
}

TEST(PictureRenderer, TheAlphaViewLeavesOutAnAlphaOf0WithTransparency) {
    EXPECT_EQ(FirstPoint(WithAlpha({1, 2, 3, 0}), Alpha(), kGrey), kBlack);
    EXPECT_EQ(FirstPoint(WithAlpha({1, 2, 3, 0}), Alpha(true), kGrey), kGrey);
    EXPECT_EQ(FirstPoint(WithAlpha({1, 2, 3, 1}), Alpha(true), kGrey), qRgb(1, 1, 1));
    EXPECT_EQ(FirstPoint(PictureOf({{1, 2, 169, 0}}), Alpha(true), kGrey), kGrey);
    EXPECT_EQ(FirstPoint(PictureOf({{1, 2, 3, 0}}), Alpha(true), kGrey), kWhite);
}

TEST(PictureRenderer, TheAlphaViewShowsAlphaWhateverChannelsAreShown) {
    ViewState view;
    view.showsAlpha = true;
    EXPECT_EQ(FirstPoint(WithAlpha({1, 2, 3, 77}), view), qRgb(77, 77, 77));
}

/// Each component of the background as it was split, less 1.
QRgb SplitShown(QRgb background) {
    return FirstPoint(WithAlpha({254, 254, 254, 255}), Transparent(), background);
}

TEST(PictureRenderer, ABackgroundOfSixDigitsIsSplitIntoItsComponents) {
    EXPECT_EQ(SplitShown(qRgb(0x12, 0x34, 0x56)), qRgb(0x11, 0x33, 0x55));
}

TEST(PictureRenderer, ABackgroundOfFewerDigitsIsSplitAsTheyFall) {
    EXPECT_EQ(SplitShown(qRgb(0x12, 0x34, 0x05)), qRgb(0x11, 0x40, 0x52)) << "53412";
    EXPECT_EQ(SplitShown(qRgb(0x12, 0x34, 0x00)), qRgb(0x11, 0x11, 0x33)) << "3412";
    EXPECT_EQ(SplitShown(qRgb(0x12, 0x03, 0x00)), qRgb(0x11, 0x01, 0x30)) << "312";
    EXPECT_EQ(SplitShown(qRgb(0x12, 0x00, 0x00)), qRgb(0x11, 0x00, 0x11)) << "12";
    EXPECT_EQ(SplitShown(qRgb(0x02, 0x00, 0x00)), qRgb(0x01, 0x00, 0x01)) << "2";
}

}  // namespace
}  // namespace pictavo::tests
