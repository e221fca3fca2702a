#include "ui/AppIcon.h"

#include <QBuffer>
#include <QPainter>

namespace pictavo {

namespace {

constexpr QColor kCase(38, 50, 72);
constexpr QColor kSky(120, 190, 240);
constexpr QColor kSun(255, 205, 70);
constexpr QColor kHill(70, 160, 90);
constexpr QColor kKeys(150, 170, 200);

void DrawScreen(QPainter& painter) {
    painter.setClipRect(QRectF(19, 9, 26, 30));
    painter.fillRect(QRectF(19, 9, 26, 30), kSky);
    painter.setBrush(kSun);
    painter.drawEllipse(QPointF(37, 18), 5, 5);
    painter.setBrush(kHill);
    painter.drawEllipse(QPointF(24, 42), 16, 14);
    painter.drawEllipse(QPointF(44, 44), 14, 13);
    painter.setClipping(false);
}

void DrawKeys(QPainter& painter) {
    painter.setBrush(kKeys);
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            painter.drawRoundedRect(QRectF(19 + 9.5 * column, 43 + 5 * row, 7, 3.2), 1, 1);
}

QPixmap Drawn(int size) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.scale(size / 64.0, size / 64.0);
    painter.setBrush(kCase);
    painter.drawRoundedRect(QRectF(14, 2, 36, 60), 7, 7);
    DrawScreen(painter);
    DrawKeys(painter);
    return pixmap;
}

}  // namespace

QIcon AppIcon() {
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) icon.addPixmap(Drawn(size));
    return icon;
}

Bytes AppIconPng(int size) {
    QByteArray file;
    QBuffer buffer(&file);
    Drawn(size).save(&buffer, "PNG");
    return {file.begin(), file.end()};
}

}  // namespace pictavo
