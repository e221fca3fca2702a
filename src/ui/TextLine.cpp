#include "ui/TextLine.h"

#include <QPainter>
#include <QStyle>

namespace pictavo {

TextLine::TextLine(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void TextLine::SetText(const QString& text) {
    if (text == text_) return;
    text_ = text;
    setToolTip(text);
    setAccessibleName(text);
    update();
}

QSize TextLine::sizeHint() const {
    return {0, fontMetrics().height()};
}

void TextLine::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    style()->drawItemText(&painter, rect(), Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(),
                          fontMetrics().elidedText(text_, Qt::ElideRight, width()), QPalette::WindowText);
}

}  // namespace pictavo
