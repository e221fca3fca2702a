#pragma once

/// The time a command takes. While one runs, nothing else can start: the window's input is dropped, Esc asks
/// the command to stop, and boxes, choosers and menus of the command itself go on working.

#include <QElapsedTimer>
#include <QObject>
#include <QProgressBar>
#include <utility>

#include "session/Ports.h"

namespace pictavo {

class Busy final : public QObject, public Progress {
  public:
    /// `bar` shows how far a command is, and is seen only while one is at work.
    explicit Busy(QProgressBar& bar) : bar_(bar) {}

    bool IsActive() const { return isActive_; }

    /// Asks the command at hand to end after the picture it is at.
    void Stop() { isStopped_ = true; }

    /// True when Esc was pressed in a box of the command since the last call.
    bool TakeEscapeOfBox() { return std::exchange(wasEscapePressedInBox_, false); }

    /// Moves the bar, and now and then lets the window repaint and take in Esc. False once stopped.
    bool At(double percent) override;

    /// A command runs as long as one of these stands.
    class Scope {
      public:
        explicit Scope(Busy& busy) : busy_(busy) { busy_.Begin(); }
        ~Scope() { busy_.End(); }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

      private:
        Busy& busy_;
    };

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void Begin();
    void End();

    QProgressBar& bar_;
    QElapsedTimer sinceYield_;
    QElapsedTimer sinceBegin_;
    bool isActive_ = false;
    bool isStopped_ = false;
    bool wasEscapePressedInBox_ = false;
};

}  // namespace pictavo
