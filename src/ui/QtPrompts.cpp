#include "ui/QtPrompts.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QMessageBox>
#include <QPushButton>

#include "core/Version.h"
#include "shell/QtPath.h"
#include "ui/QtText.h"

namespace pictavo {

namespace {

/// The title can tell how many files were written, and a window has it beside its buttons.
constexpr int kTitleWidth = 240;

/// A box heeds no least width of its own, but that of what lies in it.
void WidenForTitle(QMessageBox& box) {
    auto* grid = qobject_cast<QGridLayout*>(box.layout());
    if (grid == nullptr) return;
    auto* room = new QSpacerItem(kTitleWidth, 0, QSizePolicy::Minimum, QSizePolicy::Fixed);
    grid->addItem(room, grid->rowCount(), 0, 1, grid->columnCount());
}

QString BoxTitle(const std::string& title) {
    return title.empty() ? QString("Pictavo") : Shown(title);
}

/// As Qt wants it: "Graphic Patch Files (*.gpf *.gpf2)".
QString NameFilter(const FileFilter& filter) {
    QStringList patterns;
    for (const std::string& pattern : filter.patterns) patterns.append(QString::fromStdString(pattern));
    return QString::fromStdString(filter.name) + " (" + patterns.join(' ') + ")";
}

void Describe(QFileDialog& dialog, const FileChoice& choice) {
    QStringList filters;
    for (const FileFilter& filter : choice.filters) filters.append(NameFilter(filter));
    dialog.setNameFilters(filters);
    dialog.setDefaultSuffix(QString::fromStdString(choice.defaultExtension));
    if (!choice.suggestedName.empty()) dialog.selectFile(QString::fromStdString(choice.suggestedName));
}

/// The chosen path; empty when cancelled. Its folder, which a typed path may name anew, is kept for the next
/// time.
std::filesystem::path Ask(QFileDialog& dialog, QString& folder) {
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    const QFileInfo chosen(dialog.selectedFiles().constFirst());
    const bool isFolder = dialog.fileMode() == QFileDialog::Directory;
    folder = isFolder ? chosen.absoluteFilePath() : chosen.absolutePath();
    return StdPath(chosen.filePath());
}

}  // namespace

void QtPrompts::Attach(QWidget* window, std::function<std::optional<SaveCommand>()> popup,
                       std::function<QString()> cancelCaption) {
    window_ = window;
    popup_ = std::move(popup);
    cancelCaption_ = std::move(cancelCaption);
}

QWidget* QtPrompts::Parent() const {
    QWidget* dialog = QApplication::activeModalWidget();
    return dialog != nullptr ? dialog : window_;
}

QString QtPrompts::FolderFor(const FileChoice& choice) const {
    return choice.folder.empty() ? folder_ : QtPath(choice.folder);
}

bool QtPrompts::Confirm(const Question& question) {
    QMessageBox box(QMessageBox::Question, BoxTitle(question.title), Shown(question.text),
                    QMessageBox::Ok | QMessageBox::Cancel, Parent());
    box.setTextFormat(Qt::PlainText);
    const QString cancel = cancelCaption_();
    if (!cancel.isEmpty()) box.button(QMessageBox::Cancel)->setText(WithoutMnemonic(cancel));
    const bool losesSomething = question.about == Asked::Overwrite;
    box.setDefaultButton(losesSomething ? QMessageBox::Cancel : QMessageBox::Ok);
    return box.exec() == QMessageBox::Ok;
}

void QtPrompts::Tell(const Notice& notice) {
    QMessageBox box(QMessageBox::Information, BoxTitle(notice.title), Shown(notice.text), QMessageBox::Ok,
                    Parent());
    box.setTextFormat(Qt::PlainText);
    WidenForTitle(box);
    box.exec();
}

std::filesystem::path QtPrompts::ChooseOpen(const FileChoice& choice) {
    QFileDialog dialog(Parent(), Shown(choice.title), FolderFor(choice));
    dialog.setFileMode(QFileDialog::ExistingFile);
    Describe(dialog, choice);
    return Ask(dialog, folder_);
}

std::filesystem::path QtPrompts::ChooseSave(const FileChoice& choice) {
    QFileDialog dialog(Parent(), Shown(choice.title), FolderFor(choice));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);  // the command asks, in its own words
    Describe(dialog, choice);
    return Ask(dialog, folder_);
}

std::filesystem::path QtPrompts::BrowseForFolder(const std::string& title) {
    QFileDialog dialog(Parent(), Shown(title), folder_);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    return Ask(dialog, folder_);
}

std::optional<SaveCommand> QtPrompts::ChooseSaveCommand() {
    return popup_();
}

}  // namespace pictavo
