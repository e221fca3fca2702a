#pragma once

#include <string>
#include <utility>

namespace pictavo::samples {

/// Whether something was done, and if not, why, in a sentence that names the file.
class [[nodiscard]] Outcome {
  public:
    static Outcome Done() { return Outcome({}); }
    static Outcome Failed(std::string reason) { return Outcome(std::move(reason)); }

    explicit operator bool() const { return reason_.empty(); }
    const std::string& Reason() const { return reason_; }

  private:
    explicit Outcome(std::string reason) : reason_(std::move(reason)) {}

    std::string reason_;
};

}  // namespace pictavo::samples
