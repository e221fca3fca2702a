#pragma once

#include "session/Ports.h"

namespace pictavo {

/// The prompts of a window that may be closing: from then on nothing is asked or told any more, every
/// question counts as answered with Cancel, and the command at hand can end.
class PromptsWhileOpen final : public Prompts {
  public:
    /// Both outlive this; `isClosing` is looked at each time.
    PromptsWhileOpen(Prompts& prompts, const bool& isClosing) : prompts_(prompts), isClosing_(isClosing) {}

    bool Confirm(const Question& question) override { return !isClosing_ && prompts_.Confirm(question); }

    void Tell(const Notice& notice) override {
        if (!isClosing_) prompts_.Tell(notice);
    }

    std::filesystem::path ChooseOpen(const FileChoice& choice) override {
        return isClosing_ ? std::filesystem::path() : prompts_.ChooseOpen(choice);
    }

    std::filesystem::path ChooseSave(const FileChoice& choice) override {
        return isClosing_ ? std::filesystem::path() : prompts_.ChooseSave(choice);
    }

    std::filesystem::path ChooseFolder(const std::string& title) override {
        return isClosing_ ? std::filesystem::path() : prompts_.ChooseFolder(title);
    }

    std::optional<SaveCommand> ChooseSaveCommand() override {
        return isClosing_ ? std::nullopt : prompts_.ChooseSaveCommand();
    }

  private:
    Prompts& prompts_;
    const bool& isClosing_;
};

}  // namespace pictavo
