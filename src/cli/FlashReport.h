#pragma once

/// A command that tells what a fullflash holds, as lines or, with --json, as JSON. A file that is none is
/// told of as well, and then refused.

#include "cli/Command.h"
#include "session/Session.h"

namespace pictavo::cli {

class FlashReport : public Command {
  public:
    /// `jsonKind` is what --json prints: "object" or "array".
    FlashReport(std::string name, std::string description, std::string jsonKind);

    void Declare(CLI::App& app) final;
    int Run(Front& front) final;

  protected:
    virtual std::string Lines(const Session& session) const = 0;
    virtual Json AsJson(const Session& session) const = 0;

  private:
    std::string jsonKind_;
    std::filesystem::path flash_;
    bool json_ = false;
};

}  // namespace pictavo::cli
