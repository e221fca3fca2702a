#pragma once

/// The command line as a front of the commands: what they ask is answered by the options, what they meet goes
/// to standard error, and the exit status says how it ended.

#include <filesystem>
#include <iosfwd>
#include <string>

#include "cli/OptionPrompts.h"
#include "session/Outcome.h"

namespace pictavo::cli {

enum ExitStatus { kDone = 0, kFailed = 1, kWrongUsage = 2 };

/// What a command runs with: the streams, the folder of the executable, and the answers.
struct Front {
    std::ostream& out;
    std::ostream& err;
    std::filesystem::path programFolder;
    OptionPrompts prompts;

    /// One line on standard error: "pictavo-cli: ...".
    void Complain(const std::string& message);
    void Complain(const Error& error);
    void Complain(const Problem& problem);

    /// Complains of everything an outcome, and the questions answered on its way, left; the exit status of it
    /// all.
    int Report(const Outcome& outcome);

    /// Complains of an error; the exit status of it.
    int Fail(const Error& error);

    /// Complains of arguments that make no sense, followed by a line on how they should be; the exit status
    /// of it.
    int WrongUsage(const std::string& message, const std::string& usage);

    /// Sends results to standard output; the exit status, kFailed when they could not be written.
    int Print(const std::string& text);
};

}  // namespace pictavo::cli
