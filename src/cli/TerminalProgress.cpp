#include "cli/TerminalProgress.h"

#include <algorithm>
#include <ostream>

#include "cli/Terminal.h"

namespace pictavo::cli {

namespace {

constexpr int kBarWidth = 40;
constexpr std::chrono::milliseconds kPatience{500};

}  // namespace

TerminalProgress::TerminalProgress(std::ostream& err) : err_(err), isTerminal_(IsErrorTerminal()) {}

TerminalProgress::~TerminalProgress() {
    if (isDrawn_) err_ << '\r' << std::string(kBarWidth + 8, ' ') << '\r' << std::flush;
}

bool TerminalProgress::At(double percent) {
    const int whole = static_cast<int>(std::clamp(percent, 0.0, 100.0));
    if (isTerminal_ && whole != drawnPercent_ && IsLong()) Draw(whole);
    return !WasInterrupted();
}

bool TerminalProgress::IsLong() const {
    return std::chrono::steady_clock::now() - start_ > kPatience;
}

void TerminalProgress::Draw(int percent) {
    const auto filled = static_cast<std::size_t>(percent * kBarWidth / 100);
    err_ << "\r[" << std::string(filled, '#') << std::string(kBarWidth - filled, ' ') << "] " << percent
         << '%' << std::flush;
    drawnPercent_ = percent;
    isDrawn_ = true;
}

}  // namespace pictavo::cli
