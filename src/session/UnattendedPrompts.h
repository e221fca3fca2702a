#pragma once

#include <map>

#include "session/Ports.h"

namespace pictavo {

/// Lets the save commands run over many files: the name is settled beforehand, a question answered once is
/// not asked again, and no box tells of each file. Only whether a file may be replaced is asked every time.
class UnattendedPrompts final : public Prompts {
  public:
    /// `user` is asked what must be asked, and outlives this.
    explicit UnattendedPrompts(Prompts& user) : user_(user) {}

    /// The next file's name up to and with the dot; each chooser's own extension is put behind it.
    void SetBaseName(std::filesystem::path baseName) { baseName_ = std::move(baseName); }

    /// From now on everything is asked anew.
    void ForgetAnswers() { answers_.clear(); }

    bool Confirm(const Question& question) override;
    void Tell(const Notice&) override {}
    std::filesystem::path ChooseOpen(const FileChoice&) override { return {}; }
    std::filesystem::path ChooseSave(const FileChoice& choice) override;
    std::filesystem::path BrowseForFolder(const std::string&) override { return {}; }
    std::optional<SaveCommand> ChooseSaveCommand() override { return std::nullopt; }

  private:
    Prompts& user_;
    std::filesystem::path baseName_;
    std::map<Asked, bool> answers_;
};

}  // namespace pictavo
