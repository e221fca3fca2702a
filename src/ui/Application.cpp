#include "ui/Application.h"

#include <QMessageBox>
#include <new>

namespace pictavo {

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::bad_alloc&) {
        QMessageBox::critical(activeWindow(), applicationName(),
                              "There is not enough memory for this. Close other programs and try again.");
        return false;
    }
}

}  // namespace pictavo
