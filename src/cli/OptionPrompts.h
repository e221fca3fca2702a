#pragma once

#include <filesystem>
#include <vector>

#include "session/Ports.h"

namespace pictavo::cli {

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
    std::filesystem::path BrowseForFolder(const std::string&) override { return {}; }
    std::optional<SaveCommand> ChooseSaveCommand() override { return std::nullopt; }

  private:
    std::vector<std::filesystem::path> kept_;
};

}  // namespace pictavo::cli
