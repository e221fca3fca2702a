#pragma once

#include "session/Ports.h"

namespace pictavo {

/// Runs the converter as a child process. What it prints is thrown away, and its standard input is empty.
class QtProcessRunner final : public ProcessRunner {
  public:
    void RunAndWait(const std::filesystem::path& program, const std::vector<std::string>& arguments) override;
};

}  // namespace pictavo
