#pragma once

#include <functional>

#include "session/Ports.h"

namespace pictavo {

/// Runs the converter as a child process, without a console window of its own. What it prints is thrown away,
/// and its standard input is empty. A relative program is one in the current folder. The bytes of an argument
/// arrive as they stand, but on Windows, whose programs take none that are no UTF-8, and where a batch file
/// is not started.
class ChildProcessRunner final : public ProcessRunner {
  public:
    /// `goesOn` is asked every tenth of a second while a child runs; once it says false, the child has three
    /// seconds to finish what it is at, and is ended then.
    explicit ChildProcessRunner(std::function<bool()> goesOn = [] { return true; })
        : goesOn_(std::move(goesOn)) {}

    std::string RunAndWait(const std::filesystem::path& program,
                           const std::vector<std::string>& arguments) override;

  private:
    std::function<bool()> goesOn_;
};

}  // namespace pictavo
