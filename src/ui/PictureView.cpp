#include "ui/PictureView.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/PictureRenderer.h"

namespace pictavo {

namespace {

constexpr int kFrameLine = 1;

/// More than the error of a scale that is computed, less than any step between two scales.
constexpr double kScaleRounding = 1e-6;

/// Where on the device the image goes: in the middle of `box`, each point `factor` pixels wide and high.
QRect PlaceOnDevice(const QRectF& box, int factor) {
    const QSize size(kViewWidth * factor, kViewHeight * factor);
    const int left = static_cast<int>(std::lround(box.x() + (box.width() - size.width()) / 2));
    const int top = static_cast<int>(std::lround(box.y() + (box.height() - size.height()) / 2));
    return {QPoint(left, top), size};
}

}  // namespace

PictureView::PictureView(QWidget* parent) : QWidget(parent) {
    setFixedSize(sizeHint());
    setFocusPolicy(Qt::TabFocus);  // a click leaves the arrow keys with the list
    setAttribute(Qt::WA_OpaquePaintEvent);
}

QSize PictureView::sizeHint() const {
    return {kViewWidth + 2 * kFrameLine, kViewHeight + 2 * kFrameLine};
}

void PictureView::SetImage(QImage image) {
    image_ = std::move(image);
    update();
}

void PictureView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect box = rect().adjusted(kFrameLine, kFrameLine, -kFrameLine, -kFrameLine);
    painter.fillRect(rect(), palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid));
    painter.fillRect(box, Qt::white);
    const QTransform toDevice = painter.deviceTransform();
    const int factor = std::max(1, static_cast<int>(toDevice.m11() + kScaleRounding));
    const QRect place = PlaceOnDevice(toDevice.mapRect(QRectF(box)), factor);
    painter.drawImage(toDevice.inverted().mapRect(QRectF(place)), image_);
}

void PictureView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton) emit ContextMenuWanted(event->globalPosition().toPoint());
}

void PictureView::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Keyboard) emit ContextMenuWanted(mapToGlobal(rect().center()));
}

}  // namespace pictavo
