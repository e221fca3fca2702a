#include "ui/Busy.h"

#include <QApplication>
#include <QKeyEvent>

namespace pictavo {

namespace {

/// Often enough for the eye and for Esc, seldom enough to cost nothing.
constexpr qint64 kYieldMilliseconds = 25;

/// Longer than anybody takes for a second key press.
constexpr qint64 kLongMilliseconds = 100;

bool IsInput(QEvent::Type type) {
    switch (type) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::ContextMenu:
        case QEvent::DragEnter:
        case QEvent::Drop:
        case QEvent::TouchBegin:
        case QEvent::TouchEnd:
        case QEvent::TabletPress:
            return true;
        default:
            return false;
    }
}

bool IsEscape(QEvent* event) {
    return event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
}

/// Boxes, choosers and menus count as inside the command.
bool AsksTheUser() {
    return QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr;
}

}  // namespace

bool Busy::At(double percent) {
    const bool isTimeToYield = sinceYield_.elapsed() >= kYieldMilliseconds;
    // A bar that is seen paints each value at once, which is too much for every picture.
    if (isTimeToYield || percent >= 100) bar_.setValue(static_cast<int>(percent));
    if (isTimeToYield) {
        bar_.show();  // not for work that is over before the eye has seen it
        QCoreApplication::processEvents();
        sinceYield_.restart();
    }
    return !isStopped_;
}

bool Busy::eventFilter(QObject* object, QEvent* event) {
    if (!IsInput(event->type())) return QObject::eventFilter(object, event);
    if (AsksTheUser()) {
        wasEscapePressedInBox_ |= IsEscape(event);
        return QObject::eventFilter(object, event);
    }
    if (IsEscape(event)) Stop();
    return true;
}

void Busy::Begin() {
    isActive_ = true;
    isStopped_ = false;
    bar_.setValue(0);
    sinceYield_.start();
    sinceBegin_.start();
    qApp->installEventFilter(this);
}

void Busy::End() {
    // What was pressed while a long command ran is dropped with it.
    if (sinceBegin_.elapsed() >= kLongMilliseconds) QCoreApplication::processEvents();
    qApp->removeEventFilter(this);
    bar_.hide();
    isActive_ = false;
}

}  // namespace pictavo
