#include "ui/Form1.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QTabWidget>

#include "core/Version.h"
#include "session/OpenFiles.h"
#include "session/OpenFullflash.h"
#include "session/OpenNames.h"
#include "session/Report.h"
#include "session/Settings.h"
#include "session/ShowPicture.h"
#include "session/StartUp.h"
#include "session/StatusText.h"
#include "shell/QtPath.h"
#include "ui/Captions.h"
#include "ui/MenuParts.h"
#include "ui/QtText.h"

namespace pictavo {

namespace {

/// Whatever the desktop's theme: the transparency rules compute against it.
constexpr QRgb kBackground = 0xFFFFFFFF;

/// Where Qt shows that something is not saved; twice it stands for itself.
constexpr QLatin1String kModifiedMark("[*]");
constexpr QLatin1String kShownMark("[*][*]");

QString Title(const FullflashImage& flash) {
    const QString caption = QString(kCaption);
    if (!flash.IsOpen()) return caption;
    const QString name = QtPath(flash.source->Path().filename()).replace(kModifiedMark, kShownMark);
    return name + kModifiedMark + " - " + caption;
}

}  // namespace

Form1::Form1(Session session, const WindowServices& services)
    : session_(std::move(session)), services_(services), model_(session_) {
    setObjectName("Form1");
    setAcceptDrops(true);
    MakeWidgets();
    busy_.emplace(*progress_);
    prompts_.emplace(services_.prompts, *busy_, isClosing_);
    ports_.emplace(Ports{*prompts_, *busy_, services_.processes, services_.pictures, services_.associations});
    MakeMenus();
    Connect();
    RefreshAll();
}

void Form1::Start(const std::vector<std::string>& names) {
    Run([&](Session& session, Ports& ports) {
        RemoveTemporaries(session);
        ReadSettings(session, ports);
        return CheckAssociation(session, ports, services_.executable);
    });
    if (!names.empty() && !isClosing_) OpenAll(names);
}

void Form1::ReadSettings(Session& session, Ports& ports) {
    const Status loaded = LoadSettings(session);
    Settled();
    if (!loaded) Tell(session, ports, loaded.error());
}

Outcome Form1::Perform(const Command& command, const QString& atStart) {
    Outcome outcome;
    {
        const Busy::Scope scope(*busy_);
        ShowLine(atStart);
        outcome = command(session_, *ports_);
    }
    RefreshAll();
    return outcome;
}

/// What the first picture says about itself stands in the line unless the command has something to say.
void Form1::Conclude(const Outcome& outcome, bool showsFirst) {
    const bool goesToFirst = showsFirst && !session_.rows.empty();
    if (goesToFirst) SelectFirstPicture();
    if (!goesToFirst || !outcome.problems.empty() || line_->Text().isEmpty()) ShowOutcome(outcome);
    if (isClosing_) close();
}

void Form1::Run(const Command& command) {
    if (!busy_->IsActive()) Conclude(Perform(command), false);
}

void Form1::RunLong(const Command& command) {
    if (!busy_->IsActive()) Conclude(Perform(command, kStopText), false);
}

/// A command over all rows leaves the last one in the view; what is saved next must be the selected one.
void Form1::RunOverRows(const Command& command) {
    if (busy_->IsActive()) return;
    const Outcome outcome = Perform(command, kStopText);
    if (outcome.end != Outcome::End::Cancelled) ShowSelectedRowAgain();
    Conclude(outcome, false);
}

void Form1::Open(const Command& command) {
    if (busy_->IsActive()) return;
    const auto flashBefore = session_.flash.source;
    const Outcome outcome = Perform(command);
    Conclude(outcome, session_.flash.source != flashBefore);
}

void Form1::OpenAll(const std::vector<std::string>& names) {
    bool isFlashLast = false;
    const auto note = [&](FileKind opened) {
        RefreshAll();
        if (opened != FileKind::Unknown) isFlashLast = opened == FileKind::Fullflash;
    };
    const auto open = [&](Session& session, Ports& ports) { return OpenNames(session, ports, names, note); };
    const Outcome outcome = Perform(open);  // which sets isFlashLast
    Conclude(outcome, isFlashLast);
}

void Form1::closeEvent(QCloseEvent* event) {
    if (!busy_->IsActive()) return QMainWindow::closeEvent(event);
    isClosing_ = true;
    busy_->Stop();
    event->ignore();
}

void Form1::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void Form1::dropEvent(QDropEvent* event) {
    for (const QUrl& url : event->mimeData()->urls())
        if (url.isLocalFile() && !isClosing_)
            Open([&](Session& session, Ports& ports) {
                return OpenDropped(session, ports, StdPath(url.toLocalFile()));
            });
}

void Form1::ShowSelectedRow(int row) {
    if (busy_->IsActive() || row < 0 || row >= static_cast<int>(session_.rows.size())) return;
    const Status shown = ShowRow(session_, static_cast<std::size_t>(row));
    RefreshView();
    RefreshMenus();
    ShowLine(shown ? QString() : Shown(ProblemText(session_.texts, {shown.error(), row})));
    // The one reason that has a box of its own; the others stop nobody who moves through the list.
    if (!shown && shown.error().kind == ErrorKind::BadBitDepth) Tell(session_, *ports_, shown.error());
}

/// Whatever keeps it from being shown stands in the frame; the line is the command's.
void Form1::ShowSelectedRowAgain() {
    if (!list_->currentIndex().isValid()) return;
    [[maybe_unused]] const Status shown = ShowRow(session_, SelectedRow());
    RefreshView();
    RefreshMenus();
}

/// A list that got the focus while the command ran made its first row the current one then, and nothing was
/// shown.
void Form1::SelectFirstPicture() {
    list_->setCurrentIndex({});
    list_->setCurrentIndex(model_.index(0, 0));
    list_->setFocus();
}

void Form1::ShowOutcome(const Outcome& outcome) {
    ShowLine(Shown(OutcomeText(session_.texts, outcome)));
}

void Form1::ShowLine(const QString& text) {
    line_->SetText(text);
}

void Form1::RefreshAll() {
    RefreshList();
    RefreshInfo();
    setWindowTitle(Title(session_.flash));
    setWindowModified(session_.pngPatchPending || WaitingPictures(session_) > 0);
    RefreshRecentFiles();
    RefreshView();
    RefreshMenus();
}

void Form1::Connect() {
    connect(list_, &PictureList::RowShown, this, [this](int row) { ShowSelectedRow(row); });
    connect(list_, &PictureList::ContextMenuWanted, this, [this](QPoint at) { ShowPicturesPopup(at); });
    connect(&pictureFrame_->View(), &PictureView::ContextMenuWanted, this,
            [this](QPoint at) { ShowPicPopup(at); });
    connect(transparency_, &QCheckBox::toggled, this, [this] { RefreshView(); });
}

std::size_t Form1::SelectedRow() const {
    return static_cast<std::size_t>(std::max(list_->currentIndex().row(), 0));
}

QString Form1::CancelCaption() const {
    const auto caption = session_.texts.captions.find("Form2.Command4");
    return caption == session_.texts.captions.end() ? QString() : Shown(caption->second);
}

void Form1::RefreshInfo() {
    info_->setText(session_.flash.IsOpen() ? Shown(IdentificationText(session_.texts, session_.flash))
                                           : QString());
}

/// Another flash has other rows; the same one at most other bold ones.
void Form1::RefreshList() {
    if (std::exchange(listed_, session_.flash.source) == session_.flash.source)
        model_.RowsChanged();
    else
        model_.Reset();
}

void Form1::RefreshView() {
    view_.drawsTransparency = transparency_->isChecked();
    pictureFrame_->SetCaption(Shown(session_.shown.caption).simplified());
    pictureFrame_->View().SetImage(
        session_.shown.isShown ? RenderPicture(session_.picture, view_, kBackground) : QImage());
}

/// What the settings and the language file say comes to the window.
void Form1::Settled() {
    transparency_->setChecked(session_.settings.Transparency);
    RefreshCaptions();
    RefreshInfo();
    ShowLine(Shown(MissingLanguageText(session_)));
}

void Form1::RefreshCaptions() {
    ApplyCaptions(*this, session_.texts.captions);
    list_->setAccessibleName(PlainText(tabs_->tabText(0)));
    AssignMnemonics({transparency_}, AssignMnemonics(menuBar()->actions()));
    AssignMnemonics(picturesPopup_->actions());
    AssignMnemonics(picPopup_->actions());
}

}  // namespace pictavo
