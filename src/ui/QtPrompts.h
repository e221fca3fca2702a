#pragma once

/// Boxes and choosers of the window. Choosers open in the folder used last, which is kept in mind for the
/// whole run.

#include <QWidget>
#include <functional>

#include "session/Ports.h"

namespace pictavo {

class QtPrompts final : public Prompts {
  public:
    /// Boxes stand over `window`; `popup` shows the picture's popup menu; `cancelCaption` is what Cancel is
    /// called, empty for Qt's own word. Must be called before the first question.
    void Attach(
        QWidget* window, std::function<std::optional<SaveCommand>()> popup,
        std::function<QString()> cancelCaption = [] { return QString(); });

    bool Confirm(const Question& question) override;
    void Tell(const Notice& notice) override;
    std::filesystem::path ChooseOpen(const FileChoice& choice) override;
    std::filesystem::path ChooseSave(const FileChoice& choice) override;
    std::filesystem::path BrowseForFolder(const std::string& title) override;
    std::optional<SaveCommand> ChooseSaveCommand() override;

  private:
    QWidget* Parent() const;
    QString FolderFor(const FileChoice& choice) const;

    QWidget* window_ = nullptr;
    std::function<std::optional<SaveCommand>()> popup_;
    std::function<QString()> cancelCaption_ = [] { return QString(); };
    QString folder_;  // used last; empty for the current one
};

}  // namespace pictavo
