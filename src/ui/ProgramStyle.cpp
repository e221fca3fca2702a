#include "ui/ProgramStyle.h"

#include <QApplication>
#include <QIcon>
#include <QPainter>
#include <QPalette>

namespace pictavo {

namespace {

constexpr int kSide = 16;

/// Two arrowheads that point to the right, in the colour of text on buttons.
QIcon MoreIcon() {
    QPixmap pixmap(QSize(kSide, kSide) * qApp->devicePixelRatio());
    pixmap.setDevicePixelRatio(qApp->devicePixelRatio());
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QApplication::palette().color(QPalette::ButtonText), 1.5));
    for (const qreal x : {4.0, 8.5}) painter.drawPolyline(QPolygonF({{x, 4.5}, {x + 3.5, 8.0}, {x, 11.5}}));
    return pixmap;
}

}  // namespace

QIcon ProgramStyle::standardIcon(StandardPixmap icon, const QStyleOption* option,
                                 const QWidget* widget) const {
    if (icon == SP_ToolBarHorizontalExtensionButton) return MoreIcon();
    return QProxyStyle::standardIcon(icon, option, widget);
}

}  // namespace pictavo
