#pragma once

#include <chrono>
#include <iosfwd>

#include "session/Ports.h"

namespace pictavo::cli {

/// A bar on standard error, only on a terminal and only when the work takes longer than half a second. Asks
/// the work to stop when the user interrupted the program.
class TerminalProgress final : public Progress {
  public:
    explicit TerminalProgress(std::ostream& err);
    ~TerminalProgress() override;
    TerminalProgress(const TerminalProgress&) = delete;
    TerminalProgress& operator=(const TerminalProgress&) = delete;

    bool At(double percent) override;

  private:
    bool IsLong() const;
    void Draw(int percent);

    std::ostream& err_;
    bool isTerminal_;
    bool isDrawn_ = false;
    int drawnPercent_ = -1;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace pictavo::cli
