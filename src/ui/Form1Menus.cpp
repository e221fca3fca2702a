#include <QCheckBox>
#include <QMenuBar>
#include <array>

#include "core/BasicCalculations_Tarsk.h"
#include "session/ChangePng.h"
#include "session/Compression.h"
#include "session/ExtractEmbedded.h"
#include "session/ExtractFromGpn.h"
#include "session/ExtractFromPatch.h"
#include "session/OpenFiles.h"
#include "session/OpenFullflash.h"
#include "session/PitCommands.h"
#include "session/ReplacePictures.h"
#include "session/SaveAllPictures.h"
#include "session/SavePatch.h"
#include "session/SavePicture.h"
#include "session/StatusText.h"
#include "shell/QtPath.h"
#include "ui/AboutText.h"
#include "ui/Form1.h"
#include "ui/Form2.h"
#include "ui/Form3.h"
#include "ui/MenuParts.h"
#include "ui/QtText.h"

namespace pictavo {

namespace {

struct Depth {
    const char* suffix;
    const char* caption;
    SaveCommand saveCommand;
};

/// The four depths under each Load, Loads and Save as GPF. Their captions stay in every language.
constexpr std::array kDepths = {
    Depth{"_1bit", "1 bit", SaveCommand::Gpf1Bit},
    Depth{"_8bit", "8 bit", SaveCommand::Gpf8Bit},
    Depth{"_16bit", "16 bit", SaveCommand::Gpf16Bit},
    Depth{"_24bit", "24 bit", SaveCommand::Gpf24Bit},
};

constexpr std::array kRecentFiles = {"mnu_File_MRU1", "mnu_File_MRU2", "mnu_File_MRU3"};

struct ChannelEntry {
    const char* name;
    const char* caption;
    bool ViewState::*shown;
};

constexpr std::array kChannels = {
    ChannelEntry{"mnu_View_R", "R", &ViewState::showsRed},
    ChannelEntry{"mnu_View_G", "G", &ViewState::showsGreen},
    ChannelEntry{"mnu_View_B", "B", &ViewState::showsBlue},
};

struct EmbeddedEntry {
    const char* name;
    const char* caption;
    const EmbeddedKind* kind;
};

constexpr std::array kEmbeddedEntries = {
    EmbeddedEntry{"mnu_Tools_FindGIF", "Extract GIFs", &kEmbeddedGif},
    EmbeddedEntry{"mnu_Tools_FindPNG", "Extract PNGs", &kEmbeddedPng},
    EmbeddedEntry{"mnu_Tools_FindXML", "Extract XMLs", &kEmbeddedXml},
};

Outcome SaveShownAsGpf(Session& session, Ports& ports, std::size_t, std::uint8_t typeCode) {
    return SaveAsGpf(session, ports, typeCode);
}

Problem MissingReadMe(const std::filesystem::path& path) {
    return {{ErrorKind::FileMissing, path, std::nullopt, "cannot be opened"}, std::nullopt};
}

Outcome SaveThePatch(Session& session, Ports& ports) {
    return SavePatch(session, ports).outcome;
}

}  // namespace

void Form1::MakeMenus() {
    MakeFileMenu();
    MakeFullFlashMenu();
    MakeViewMenu();
    MakeToolsMenu();
    MakeOtherMenus();
    MakePicturesPopup();
    MakePicPopup();
}

QAction& Form1::Entry(const QString& name) {
    QAction*& entry = entries_[name];
    if (entry == nullptr) entry = FindEntry(*this, name);
    return *entry;
}

QAction& Form1::AddCommand(QMenu& menu, const QString& name, const QString& caption, Command command,
                           Way way) {
    QAction& entry = AddEntry(menu, name, caption);
    connect(&entry, &QAction::triggered, this,
            [this, way, command = std::move(command)] { (this->*way)(command); });
    return entry;
}

void Form1::MakeFileMenu() {
    QMenu& menu = AddMenu(*menuBar(), "mnu_File", "File");
    QAction& open = AddEntry(menu, "mnu_FileOpen", "Open");
    open.setShortcut(QKeySequence::Open);
    connect(&open, &QAction::triggered, this, [this] { Open(OpenFile); });
    for (std::size_t i = 0; i < kRecentFiles.size(); ++i) {
        QAction& recent = AddEntry(menu, kRecentFiles[i], "");
        connect(&recent, &QAction::triggered, this, [this, i] {
            Open([i](Session& session, Ports& ports) { return OpenRecent(session, ports, i); });
        });
    }
    AddCommand(menu, "mnu_FileClose", "Close", [](Session& session, Ports&) {
        CloseFullflash(session);
        return Outcome();
    });
    menu.addSeparator();
    QAction& exit = AddEntry(menu, "mnu_FileExit", "Exit");
    exit.setShortcut(Qt::CTRL | Qt::Key_Q);  // Windows has no key of its own for it
    connect(&exit, &QAction::triggered, this, [this] { close(); });
}

void Form1::MakeFullFlashMenu() {
    QMenu& menu = AddMenu(*menuBar(), "mnu_FullFlash", "FullFlash");
    AddCommand(menu, "mnu_Fullflash_SavePatch", "Save Patch", SaveThePatch).setShortcut(QKeySequence::Save);
    AddCommand(menu, "mnu_Fullflash_BuckUpPIT", "BuckUp PIT", BackupPit);
    AddCommand(menu, "mnu_Fullflash_RebuildPIT", "Rebuild PIT", RebuildPit, &Form1::RunOverRows);
    AddCommand(menu, "mnu_Fullflash_Change_PNG", "Change PNG", ChangePng);
}

void Form1::MakeViewMenu() {
    QMenu& menu = AddMenu(*menuBar(), "mnu_View", "View");
    for (const ChannelEntry& channel : kChannels) {
        QAction& entry = AddEntry(menu, channel.name, channel.caption);
        entry.setCheckable(true);
        connect(&entry, &QAction::triggered, this, [this, shown = channel.shown] { ToggleChannel(shown); });
    }
    QAction& alpha = AddEntry(menu, "mnu_View_Alpha", "Alpha");
    alpha.setCheckable(true);
    connect(&alpha, &QAction::triggered, this, [this] { ToggleAlpha(); });
    menu.addSeparator();
    for (int factor = 1; factor <= kMostMagnify; ++factor) {
        QAction& entry = AddEntry(menu, QString("mnu_View_X%1").arg(factor), QString("X%1").arg(factor));
        entry.setCheckable(true);
        entry.setShortcut(QKeySequence(QString("Ctrl+%1").arg(factor)));
        connect(&entry, &QAction::triggered, this, [this, factor] { Magnify(factor); });
    }
}

void Form1::MakeToolsMenu() {
    QMenu& menu = AddMenu(*menuBar(), "mnu_Tools", "Tools");
    for (const EmbeddedEntry& entry : kEmbeddedEntries)
        AddCommand(
            menu, entry.name, entry.caption,
            [&kind = *entry.kind](Session& session, Ports& ports) {
                return ExtractEmbedded(session, ports, kind);
            },
            &Form1::RunLong);
    menu.addSeparator();
    AddCommand(menu, "mnu_Tools_ExtractFgrP", "Extract from Graph.Patch", ExtractFromPatch, &Form1::RunLong);
    AddCommand(menu, "mnu_Tools_ExtractFGPN", "Extract from GPN", ExtractFromGpn, &Form1::RunLong);
}

void Form1::MakeOtherMenus() {
    QAction* settings = menuBar()->addAction("Settings", this, [this] { ShowSettings(); });
    settings->setObjectName("mnu_Settings");
    settings->setMenuRole(QAction::PreferencesRole);
    QMenu& help = AddMenu(*menuBar(), "mnu_Help", "Help");
    QAction& readMe = AddEntry(help, "mnu_Help_ReadMe", "ReadMe");
    readMe.setShortcut(QKeySequence::HelpContents);
    connect(&readMe, &QAction::triggered, this, [this] { ShowReadMe(); });
    QAction& about = AddEntry(help, "mnu_Help_About", "About");
    connect(&about, &QAction::triggered, this, [this] { ShowAbout(); });
}

void Form1::AddDepthMenu(QMenu& menu, const QString& name, const QString& caption, DepthCommand command,
                         Way way) {
    QMenu& depths = AddMenu(menu, name, caption);
    for (const Depth& depth : kDepths) {
        QAction& entry = AddCommand(
            depths, name + depth.suffix, depth.caption,
            [this, command, type = TypeOf(depth.saveCommand).value()](Session& session, Ports& ports) {
                return command(session, ports, SelectedRow(), type);
            },
            way);
        entry.setData(static_cast<int>(depth.saveCommand));
    }
}

void Form1::MakePicturesPopup() {
    picturesPopup_ = &AddPopup(*this, "mnu_PopupPictures");
    AddDepthMenu(*picturesPopup_, "mnu_PopupPictures_Load", "Load picture", ReplacePicture);
    const auto replaceAll = [](Session& session, Ports& ports, std::size_t /*row*/, std::uint8_t type) {
        return ReplacePictures(session, ports, type);
    };
    AddDepthMenu(*picturesPopup_, "mnu_PopupPictures_Loads", "Load pictures", replaceAll,
                 &Form1::RunOverRows);
    picturesPopup_->addSeparator();
    AddDepthMenu(*picturesPopup_, "mnu_PopupPictures_SaveAsGPF", "Save as GPF", SaveShownAsGpf);
    AddCommand(*picturesPopup_, "mnu_PopupPictures_SaveAsGPFs", "Save as GPFs", SaveAsGpfs,
               &Form1::RunOverRows);
    AddCommand(*picturesPopup_, "mnu_PopupPictures_SaveAsBMP", "Save as BMP", SaveAsBmp);
    AddCommand(*picturesPopup_, "mnu_PopupPictures_SaveAsBMPs", "Save as BMPs", SaveAsBmps,
               &Form1::RunOverRows);
    AddCommand(*picturesPopup_, "mnu_PopupPictures_SaveAsPNG", "Save as PNG", SaveAsPng);
    picturesPopup_->addSeparator();
    AddCommand(*picturesPopup_, "mnu_PopupPictures_SavePatch", "Save Patch", SaveThePatch);
}

void Form1::MakePicPopup() {
    picPopup_ = &AddPopup(*this, "mnu_PopupPic");
    AddDepthMenu(*picPopup_, "mnu_PopupPic_SaveAsGPF", "Save as GPF", SaveShownAsGpf);
    AddCommand(*picPopup_, "mnu_PopupPic_SaveAsBMP", "Save as BMP", SaveAsBmp)
        .setData(static_cast<int>(SaveCommand::Bmp));
    AddCommand(*picPopup_, "mnu_PopupPic_SaveAsPNG", "Save as PNG", SaveAsPng)
        .setData(static_cast<int>(SaveCommand::Png));
    picPopup_->addSeparator();
    QAction& save = AddEntry(*picPopup_, "mnu_PopupPic_SaveChannels", "Save channels");
    connect(&save, &QAction::triggered, this, [this] { ShowChannels(ChannelsMode::Save); });
    QAction& load = AddEntry(*picPopup_, "mnu_PopupPic_LoadChannels", "Load channels");
    connect(&load, &QAction::triggered, this, [this] { ShowChannels(ChannelsMode::Load); });
}

void Form1::RefreshMenus() {
    const bool hasRows = !session_.rows.empty();
    const bool isOpen = session_.flash.IsOpen();
    const auto enable = [this](const char* name, bool isEnabled) { Entry(name).setEnabled(isEnabled); };
    enable("mnu_FileClose", isOpen);
    enable("mnu_FullFlash", isOpen);
    for (const char* name : {"mnu_Fullflash_SavePatch", "mnu_PopupPictures_SavePatch"})
        enable(name, isOpen && session_.savePatchEnabled);
    for (const char* name :
         {"mnu_Fullflash_BuckUpPIT", "mnu_Fullflash_RebuildPIT", "mnu_PopupPictures_Load",
          "mnu_PopupPictures_Loads", "mnu_PopupPictures_SaveAsGPFs", "mnu_PopupPictures_SaveAsBMPs"})
        enable(name, hasRows);
    for (const char* name : {"mnu_PopupPictures_SaveAsGPF", "mnu_PopupPictures_SaveAsBMP",
                             "mnu_PopupPictures_SaveAsPNG", "mnu_PopupPic_SaveAsGPF",
                             "mnu_PopupPic_SaveAsBMP", "mnu_PopupPic_SaveAsPNG", "mnu_PopupPic_SaveChannels"})
        enable(name, session_.shown.isShown);
    RefreshViewMenu();
}

void Form1::RefreshViewMenu() {
    for (const ChannelEntry& channel : kChannels) Entry(channel.name).setChecked(view_.*(channel.shown));
    Entry("mnu_View_Alpha").setChecked(view_.showsAlpha);
    for (int factor = 1; factor <= kMostMagnify; ++factor)
        Entry(QString("mnu_View_X%1").arg(factor)).setChecked(view_.Magnify == factor);
}

void Form1::RefreshRecentFiles() {
    for (std::size_t i = 0; i < kRecentFiles.size(); ++i) {
        const auto& path = session_.settings.MRU[i];
        QAction& entry = Entry(kRecentFiles[i]);
        entry.setVisible(path.has_value());
        if (path) entry.setText(WithoutMnemonic(Shown(*path)));
    }
}

void Form1::Magnify(int factor) {
    view_.Magnify = factor;
    RefreshView();
    RefreshViewMenu();
}

void Form1::ToggleChannel(bool ViewState::*shown) {
    view_.*shown = !(view_.*shown);
    view_.showsAlpha = false;
    RefreshView();
    RefreshViewMenu();
}

/// The alpha channel is shown alone: the colours go when it comes, and come when it goes.
void Form1::ToggleAlpha() {
    for (const ChannelEntry& channel : kChannels) view_.*(channel.shown) = view_.showsAlpha;
    view_.showsAlpha = !view_.showsAlpha;
    RefreshView();
    RefreshViewMenu();
}

void Form1::ShowPicturesPopup(const QPoint& position) {
    if (!busy_->IsActive() && !session_.rows.empty()) picturesPopup_->popup(position);
}

void Form1::ShowPicPopup(const QPoint& position) {
    if (!busy_->IsActive() && !session_.shown.caption.empty()) picPopup_->popup(position);
}

std::optional<SaveCommand> Form1::PickSaveCommand() {
    for (const char* name : {"mnu_PopupPic_SaveChannels", "mnu_PopupPic_LoadChannels"})
        Entry(name).setVisible(false);
    const PictureView& view = pictureFrame_->View();
    const QAction* picked = picPopup_->exec(view.mapToGlobal(view.rect().center()));
    for (const char* name : {"mnu_PopupPic_SaveChannels", "mnu_PopupPic_LoadChannels"})
        Entry(name).setVisible(true);
    if (picked == nullptr || !picked->data().isValid()) return std::nullopt;
    return static_cast<SaveCommand>(picked->data().toInt());
}

void Form1::ShowSettings() {
    Run([this](Session& session, Ports& ports) {
        ReadSettings(session, ports);
        Form2 dialog(
            session, ports, [this] { Settled(); }, this);
        dialog.exec();
        Outcome outcome;
        outcome.note = MissingLanguageText(session);
        return outcome;
    });
}

/// Whether a program for text files came up is not known, so the line tells where the text stands.
void Form1::ShowReadMe() {
    services_.showReadMe();
    ShowLine(FileMissing(services_.readMe)
                 ? Shown(ProblemText(session_.texts, MissingReadMe(services_.readMe)))
                 : QtPath(services_.readMe));
}

void Form1::ShowChannels(ChannelsMode mode) {
    Run([this, mode](Session& session, Ports& ports) {
        Form3 dialog(session, ports, mode, this);
        dialog.exec();
        return dialog.Ended();
    });
}

void Form1::ShowAbout() {
    Run([this](Session& session, Ports& ports) {
        ports.prompts.Tell({PlainCaption(Entry("mnu_Help_About").text()), AboutText(session.texts)});
        return Outcome();
    });
}

}  // namespace pictavo
