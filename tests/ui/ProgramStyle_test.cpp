#include "ui/ProgramStyle.h"

#include <QIcon>
#include <QPalette>

#include "support/WidgetApplication.h"

namespace pictavo::tests {
namespace {

QImage Drawn(const QIcon& icon) {
    return icon.pixmap(QSize(16, 16), 1.0).toImage().convertToFormat(QImage::Format_ARGB32);
}

/// Restores the application's palette.
class PaletteOf {
  public:
    explicit PaletteOf(const QColor& buttonText) {
        QPalette palette = before_;
        palette.setColor(QPalette::ButtonText, buttonText);
        QApplication::setPalette(palette);
    }
    ~PaletteOf() { QApplication::setPalette(before_); }
    PaletteOf(const PaletteOf&) = delete;
    PaletteOf& operator=(const PaletteOf&) = delete;

  private:
    const QPalette before_ = QApplication::palette();
};

TEST(ProgramStyle, TheButtonOfANarrowMenuBarShowsTwoArrowheadsInTheColourOfButtonTexts) {
    const PaletteOf palette(Qt::white);
    const ProgramStyle style;
    const QImage image = Drawn(style.standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton));
    for (const QPoint tip : {QPoint(7, 7), QPoint(11, 7)}) {
        EXPECT_GT(image.pixelColor(tip).alpha(), 100) << tip.x();
        EXPECT_EQ(image.pixelColor(tip).rgb(), QColor(Qt::white).rgb()) << tip.x();
    }
    for (const QPoint beside : {QPoint(0, 0), QPoint(2, 7), QPoint(14, 7), QPoint(15, 15)})
        EXPECT_EQ(image.pixelColor(beside).alpha(), 0) << beside.x();
}

TEST(ProgramStyle, AllOtherIconsAreThoseOfTheDesktop) {
    const ProgramStyle style;
    for (const auto icon :
         {QStyle::SP_ToolBarVerticalExtensionButton, QStyle::SP_MessageBoxWarning, QStyle::SP_DirIcon})
        EXPECT_EQ(Drawn(style.standardIcon(icon)), Drawn(QApplication::style()->standardIcon(icon))) << icon;
}

}  // namespace
}  // namespace pictavo::tests
