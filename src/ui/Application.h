#pragma once

#include <QApplication>

namespace pictavo {

/// The window's application. Where the memory ends inside a command, it tells so and goes on with the next
/// event; what the command had not done yet is not done.
class Application final : public QApplication {
  public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override;
};

}  // namespace pictavo
