#pragma once

/// The Settings dialog: edits the settings, which hold from "Apply" or OK on.

#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <array>
#include <functional>

#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

class Form2 final : public QDialog {
  public:
    /// `applied` is called each time the settings were written and read back.
    Form2(Session& session, Ports& ports, std::function<void()> applied, QWidget* parent);

  private:
    void MakeWidgets();
    QWidget* MakePathFrame(const char* frame, const char* caption, const char* text, const char* button);
    QWidget* MakeChecks();
    QWidget* MakeButtons();
    void Connect();

    void RefreshCaptions();
    void ShowSettings();
    std::string TextOf(const char* box, const std::string& shown) const;
    AppSettings Chosen() const;
    bool Apply();  ///< false when the settings could not be written, which is told
    void ChooseLanguage();
    void ChooseConverter();

    /// The chosen path; empty when cancelled, or when it cannot be read, which is told.
    std::filesystem::path Readable(const std::filesystem::path& answer);

    QLineEdit& Text(const char* name) const { return *findChild<QLineEdit*>(name); }
    QPushButton& Button(const char* name) const { return *findChild<QPushButton*>(name); }
    QCheckBox& Check(const char* name) const { return *findChild<QCheckBox*>(name); }

    Session& session_;
    Ports& ports_;
    std::function<void()> applied_;
};

}  // namespace pictavo
