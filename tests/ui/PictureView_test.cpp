#include "ui/PictureView.h"

#include <QContextMenuEvent>
#include <QTest>
#include <cmath>
#include <gmock/gmock.h>

#include "support/WidgetApplication.h"
#include "ui/PictureRenderer.h"

namespace pictavo::tests {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int kFrameLine = 1;

/// Every point differs from all its neighbours, so that smoothing or a shift shows.
QRgb PointColour(int x, int y) {
    return qRgb(x * 89 % 256, y * 167 % 256, (x + y) % 2 * 200);
}

QImage TellingImage() {
    QImage image(kViewWidth, kViewHeight, QImage::Format_RGB32);
    for (int y = 0; y < kViewHeight; ++y)
        for (int x = 0; x < kViewWidth; ++x) image.setPixel(x, y, PointColour(x, y));
    return image;
}

class PictureViewTest : public ::testing::Test {
  protected:
    PictureViewTest() {
        QObject::connect(&view, &PictureView::ContextMenuWanted,
                         [this](QPoint global) { menus.push_back(global); });
    }

    /// The view as a screen of this scale shows it.
    QImage Shot(double scale) {
        QImage shot(static_cast<int>(std::lround(view.width() * scale)),
                    static_cast<int>(std::lround(view.height() * scale)), QImage::Format_RGB32);
        shot.setDevicePixelRatio(scale);
        shot.fill(Qt::magenta);
        view.render(&shot);
        return shot;
    }

    /// How many pixels of `shot` differ from the image in blocks of `factor` pixels in the middle.
    static int WrongPixels(const QImage& shot, int factor) {
        const int left = (shot.width() - kViewWidth * factor) / 2;
        const int top = (shot.height() - kViewHeight * factor) / 2;
        int wrong = 0;
        for (int y = 0; y < kViewHeight * factor; ++y)
            for (int x = 0; x < kViewWidth * factor; ++x)
                if (shot.pixel(left + x, top + y) != PointColour(x / factor, y / factor)) ++wrong;
        return wrong;
    }

    PictureView view;
    std::vector<QPoint> menus;
};

TEST_F(PictureViewTest, HasTheSizeOfTheImageAndItsFrame) {
    EXPECT_EQ(view.size(), QSize(241 + 2 * kFrameLine, 321 + 2 * kFrameLine));
    EXPECT_EQ(view.sizeHint(), view.size());
    EXPECT_EQ(view.minimumSize(), view.size());
    EXPECT_EQ(view.maximumSize(), view.size());
}

TEST_F(PictureViewTest, IsWhiteWhateverTheTheme) {
    QPalette dark;
    for (const auto role : {QPalette::Window, QPalette::Base}) dark.setColor(role, Qt::black);
    view.setPalette(dark);
    const QImage shot = Shot(1);
    for (const QPoint place : {QPoint(1, 1), QPoint(241, 321), QPoint(200, 200)})
        EXPECT_EQ(shot.pixelColor(place), QColor(Qt::white));
}

TEST_F(PictureViewTest, ShowsEachPointOfTheImage) {
    view.SetImage(TellingImage());
    EXPECT_EQ(WrongPixels(Shot(1), 1), 0);
}

TEST_F(PictureViewTest, ANullImageEmptiesTheBox) {
    view.SetImage(TellingImage());
    view.SetImage(QImage());
    EXPECT_EQ(Shot(1).pixelColor(100, 100), QColor(Qt::white));
}

TEST_F(PictureViewTest, OnFineScreensAPointIsABlockOfWholePixels) {
    view.SetImage(TellingImage());
    EXPECT_EQ(WrongPixels(Shot(2), 2), 0);
    EXPECT_EQ(WrongPixels(Shot(3), 3), 0);
}

TEST_F(PictureViewTest, BetweenWholeScalesTheBlockIsTheSmallerAndTheRestWhite) {
    view.SetImage(TellingImage());
    for (const auto& [scale, factor] :
         {std::pair(1.25, 1), std::pair(1.5, 1), std::pair(1.75, 1), std::pair(2.25, 2), std::pair(2.5, 2)}) {
        const QImage shot = Shot(scale);
        EXPECT_EQ(WrongPixels(shot, factor), 0) << "scale " << scale;
        const int left = (shot.width() - kViewWidth * factor) / 2;
        EXPECT_EQ(shot.pixelColor(left - 1, shot.height() / 2), QColor(Qt::white)) << "scale " << scale;
        EXPECT_EQ(shot.pixelColor(left + kViewWidth * factor, 9), QColor(Qt::white)) << "scale " << scale;
    }
}

TEST_F(PictureViewTest, TheWholeWidgetIsPainted) {
    for (const double scale : {1.0, 1.5, 2.0}) {
        const QImage shot = Shot(scale);
        for (const QPoint place : {QPoint(0, 0), QPoint(shot.width() - 1, shot.height() - 1)})
            EXPECT_NE(shot.pixelColor(place), QColor(Qt::magenta)) << "scale " << scale;
    }
}

TEST_F(PictureViewTest, TheFrameTellsOfTheFocus) {
    QPalette colours;
    colours.setColor(QPalette::Mid, Qt::yellow);
    colours.setColor(QPalette::Highlight, Qt::green);
    view.setPalette(colours);
    EXPECT_EQ(Shot(1).pixelColor(0, 50), QColor(Qt::yellow));
    view.show();
    view.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    EXPECT_EQ(Shot(1).pixelColor(0, 50), QColor(Qt::green));
}

TEST_F(PictureViewTest, TabGivesItTheFocusAndAClickLeavesItWithTheList) {
    EXPECT_EQ(view.focusPolicy(), Qt::TabFocus);
}

TEST_F(PictureViewTest, ARightPressWantsTheMenu) {
    view.show();
    QTest::mousePress(&view, Qt::RightButton, {}, QPoint(30, 40));
    EXPECT_THAT(menus, ElementsAre(view.mapToGlobal(QPoint(30, 40))));
}

TEST_F(PictureViewTest, OtherButtonsWantNothing) {
    view.show();
    QTest::mouseClick(&view, Qt::LeftButton, {}, QPoint(30, 40));
    QTest::mouseClick(&view, Qt::MiddleButton, {}, QPoint(30, 40));
    EXPECT_THAT(menus, IsEmpty());
}

TEST_F(PictureViewTest, TheMenuKeyWantsTheMenuOnceInTheMiddle) {
    view.show();
    QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QApplication::sendEvent(&view, &key);
    QContextMenuEvent mouse(QContextMenuEvent::Mouse, QPoint(30, 40), view.mapToGlobal(QPoint(30, 40)));
    QApplication::sendEvent(&view, &mouse);
    EXPECT_THAT(menus, ElementsAre(view.mapToGlobal(view.rect().center())));
}

}  // namespace
}  // namespace pictavo::tests
