#pragma once

/// One command of pictavo-cli. Each is a thin shell over a command of the session: it turns arguments into
/// answers and outcomes into lines.

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <vector>

#include "cli/Front.h"

namespace pictavo::cli {

/// Keys stay in the order in which they are set.
using Json = nlohmann::ordered_json;

class Command {
  public:
    Command(std::string name, std::string description)
        : name_(std::move(name)), description_(std::move(description)) {}
    virtual ~Command() = default;

    const std::string& Name() const { return name_; }
    const std::string& Description() const { return description_; }

    /// Declares arguments and options.
    virtual void Declare(CLI::App& app) = 0;

    /// Wrong usage that the declaration cannot say; empty when all is well.
    virtual std::string UsageError() const { return {}; }

    /// Runs with what was parsed; the exit status.
    virtual int Run(Front& front) = 0;

  private:
    std::string name_;
    std::string description_;
};

std::unique_ptr<Command> MakeInfoCommand();
std::unique_ptr<Command> MakeListCommand();
std::unique_ptr<Command> MakeExportCommand();
std::unique_ptr<Command> MakeConvertCommand();
std::unique_ptr<Command> MakePatchCommand();
std::unique_ptr<Command> MakeCheckCommand();
std::unique_ptr<Command> MakeApplyCommand();
std::unique_ptr<Command> MakeBackupPitCommand();
std::unique_ptr<Command> MakeRebuildPitCommand();
std::unique_ptr<Command> MakeExtractPatchCommand();
std::unique_ptr<Command> MakeExtractGpnCommand();
std::unique_ptr<Command> MakeCarveCommand();
std::unique_ptr<Command> MakePngInfoCommand();

}  // namespace pictavo::cli
