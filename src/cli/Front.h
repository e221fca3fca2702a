#pragma once

/// The command line as a front of the commands: what they ask is answered by the options, what they meet goes
/// to standard error, and the exit status says how it ended.

#include <chrono>
#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "session/Outcome.h"
#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo::cli {

enum ExitStatus { kDone = 0, kFailed = 1, kWrongUsage = 2 };

/// Answers questions by rule; shows no box, since the outcome of a command says the same.
class OptionPrompts final : public Prompts {
  public:
    bool overwrite = false;  ///< --overwrite
    bool compress = false;   ///< --compress

    /// Files that exist and were left alone.
    const std::vector<std::filesystem::path>& Kept() const { return kept_; }

    bool Confirm(const Question& question) override;
    void Tell(const Notice&) override {}
    std::filesystem::path ChooseOpen(const FileChoice&) override { return {}; }
    std::filesystem::path ChooseSave(const FileChoice&) override { return {}; }
    std::filesystem::path ChooseFolder(const std::string&) override { return {}; }
    std::optional<SaveCommand> ChooseSaveCommand() override { return std::nullopt; }

  private:
    std::vector<std::filesystem::path> kept_;
};

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
    std::ostream& err_;
    bool isTerminal_;
    bool isDrawn_ = false;
    int drawnPercent_ = -1;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

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

    /// Sends results to standard output; the exit status, kFailed when they could not be written.
    int Print(const std::string& text);
};

/// A folder of temporary files of this run's own, removed with all in it at the run's end.
class RunFolder {
  public:
    static Result<RunFolder> Create();
    RunFolder(RunFolder&& other) noexcept : path_(std::move(other.path_)) { other.path_.clear(); }
    RunFolder& operator=(RunFolder&&) = delete;
    ~RunFolder();

    const std::filesystem::path& Path() const { return path_; }

  private:
    explicit RunFolder(std::filesystem::path path) : path_(std::move(path)) {}
    std::filesystem::path path_;
};

}  // namespace pictavo::cli
