#pragma once

#include "session/Ports.h"

namespace pictavo {

/// Runs the converter as a child process, without a console window of its own. What it prints is thrown away,
/// and its standard input is empty. A relative program is one in the current folder. Everywhere but on
/// Windows bytes of an argument that are no UTF-8 arrive as U+FFFD, the toolkit's limit, and a
/// QCoreApplication must exist, which the program's main creates.
class ChildProcessRunner final : public ProcessRunner {
  public:
    void RunAndWait(const std::filesystem::path& program, const std::vector<std::string>& arguments) override;
};

}  // namespace pictavo
