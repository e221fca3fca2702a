#pragma once

#include "session/Ports.h"
#include "ui/Busy.h"

namespace pictavo {

/// The prompts of a window that may be closing: from then on nothing is asked or told any more, every
/// question counts as answered with Cancel, and the command at hand can end. Esc in a question that comes
/// again with the next file or picture answers it with Cancel and stops the command.
class PromptsWhileOpen final : public Prompts {
  public:
    /// All outlive this; `isClosing` is looked at each time.
    PromptsWhileOpen(Prompts& prompts, Busy& busy, const bool& isClosing)
        : prompts_(prompts), busy_(busy), isClosing_(isClosing) {}

    bool Confirm(const Question& question) override {
        if (isClosing_) return false;
        busy_.TakeEscapeOfBox();
        const bool isConfirmed = prompts_.Confirm(question);
        if (busy_.TakeEscapeOfBox() && ComesAgain(question.about)) busy_.Stop();
        return isConfirmed;
    }

    void Tell(const Notice& notice) override {
        if (!isClosing_) prompts_.Tell(notice);
    }

    std::filesystem::path ChooseOpen(const FileChoice& choice) override {
        return isClosing_ ? std::filesystem::path() : prompts_.ChooseOpen(choice);
    }

    std::filesystem::path ChooseSave(const FileChoice& choice) override {
        return isClosing_ ? std::filesystem::path() : prompts_.ChooseSave(choice);
    }

    std::filesystem::path BrowseForFolder(const std::string& title) override {
        return isClosing_ ? std::filesystem::path() : prompts_.BrowseForFolder(title);
    }

    std::optional<SaveCommand> ChooseSaveCommand() override {
        return isClosing_ ? std::nullopt : prompts_.ChooseSaveCommand();
    }

  private:
    static bool ComesAgain(Asked about) { return about == Asked::Overwrite || about == Asked::Compress; }

    Prompts& prompts_;
    Busy& busy_;
    const bool& isClosing_;
};

}  // namespace pictavo
