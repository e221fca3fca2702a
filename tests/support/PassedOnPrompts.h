#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "session/Ports.h"

namespace pictavo::tests {

/// Passes every prompt on: what a test wants otherwise, it overrides. `behind` must outlive it.
class PassedOnPrompts : public Prompts {
  public:
    explicit PassedOnPrompts(Prompts& behind) : behind_(behind) {}

    bool Confirm(const Question& question) override { return behind_.Confirm(question); }
    void Tell(const Notice& notice) override { behind_.Tell(notice); }
    std::filesystem::path ChooseOpen(const FileChoice& choice) override { return behind_.ChooseOpen(choice); }
    std::filesystem::path ChooseSave(const FileChoice& choice) override { return behind_.ChooseSave(choice); }
    std::filesystem::path BrowseForFolder(const std::string& title) override {
        return behind_.BrowseForFolder(title);
    }
    std::optional<SaveCommand> ChooseSaveCommand() override { return behind_.ChooseSaveCommand(); }

  private:
    Prompts& behind_;
};

}  // namespace pictavo::tests
