#pragma once

#include "session/Ports.h"

namespace pictavo {

/// Runs the converter as a child process. What it prints is thrown away, and its standard input is empty. A
/// relative program is one in the current folder. Bytes of an argument that are no UTF-8 arrive as U+FFFD,
/// the toolkit's limit. To be used while a QCoreApplication exists, which the program's main creates.
class QtProcessRunner final : public ProcessRunner {
  public:
    void RunAndWait(const std::filesystem::path& program, const std::vector<std::string>& arguments) override;
};

}  // namespace pictavo
