#include "ui/Form2.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "config/LanguageFile.h"
#include "core/BasicCalculations_Tarsk.h"
#include "session/Messages.h"
#include "session/Names.h"
#include "session/Report.h"
#include "session/Settings.h"
#include "shell/ProgramFolder.h"
#include "shell/QtPath.h"
#include "ui/Captions.h"
#include "ui/MenuParts.h"
#include "ui/QtText.h"

namespace pictavo {

namespace {

struct Switch {
    const char* name;
    const char* caption;
    bool AppSettings::*member;
};

constexpr std::array kSwitches = {
    Switch{"Check1", "Transparency", &AppSettings::Transparency},
    Switch{"Check2", "Compress GPF", &AppSettings::CompressGPF},
    Switch{"Check3", "GPF2 as Default", &AppSettings::DefaultGPF2},
    Switch{"Check4", "Zero in filename", &AppSettings::ZeroFilename},
    Switch{"Check5", "HEX filename", &AppSettings::HEXFilename},
};

constexpr int kPathWidth = 380;

/// What stands before the last dot of the file's name; the folder is dropped, since the file is always looked
/// for beside the program.
std::string Stem(const std::filesystem::path& path) {
    const std::string name = PathText(path.filename());
    return name.substr(0, name.rfind('.'));
}

}  // namespace

Form2::Form2(Session& session, Ports& ports, std::function<void()> applied, QWidget* parent)
    : QDialog(parent), session_(session), ports_(ports), applied_(std::move(applied)) {
    setObjectName("Form2");
    setModal(true);
    setWindowTitle("Settings");
    MakeWidgets();
    RefreshCaptions();
    ShowSettings();
    Connect();
    Button("Command3").setEnabled(false);
}

void Form2::MakeWidgets() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(MakePathFrame("Frame1", "Select a language file", "Text2", "Command1"));
    layout->addWidget(MakePathFrame("Frame2", "Select nConvert.exe path", "Text1", "Command5"));
    layout->addWidget(MakeChecks());
    layout->addStretch();
    layout->addWidget(MakeButtons());
}

QWidget* Form2::MakePathFrame(const char* frame, const char* caption, const char* text, const char* button) {
    auto* box = new QGroupBox(caption);
    box->setObjectName(frame);
    auto* edit = new QLineEdit;
    edit->setObjectName(text);
    edit->setMinimumWidth(kPathWidth);
    auto* browse = new QPushButton("Browse");
    browse->setObjectName(button);
    browse->setAutoDefault(false);
    auto* layout = new QHBoxLayout(box);
    layout->addWidget(edit, 1);
    layout->addWidget(browse);
    return box;
}

QWidget* Form2::MakeChecks() {
    auto* side = new QWidget;
    auto* layout = new QVBoxLayout(side);
    for (const Switch& entry : kSwitches) {
        auto* check = new QCheckBox(entry.caption);
        check->setObjectName(entry.name);
        layout->addWidget(check);
    }
    return side;
}

QWidget* Form2::MakeButtons() {
    auto* side = new QWidget;
    auto* layout = new QHBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch();
    for (const auto& [name, caption] :
         {std::pair("Command2", "OK"), {"Command3", "Apply"}, {"Command4", "Cancel"}}) {
        auto* button = new QPushButton(caption);
        button->setObjectName(name);
        button->setAutoDefault(false);
        layout->addWidget(button);
    }
    side->findChild<QPushButton*>("Command2")->setDefault(true);
    return side;
}

void Form2::Connect() {
    const auto changed = [this] { Button("Command3").setEnabled(true); };
    for (const Switch& entry : kSwitches) connect(&Check(entry.name), &QCheckBox::clicked, this, changed);
    for (const char* name : {"Text1", "Text2"}) connect(&Text(name), &QLineEdit::textChanged, this, changed);
    connect(&Button("Command1"), &QPushButton::clicked, this, [this] { ChooseLanguage(); });
    connect(&Button("Command5"), &QPushButton::clicked, this, [this] { ChooseConverter(); });
    connect(&Button("Command3"), &QPushButton::clicked, this, [this] { Apply(); });
    connect(&Button("Command2"), &QPushButton::clicked, this, [this] {
        if (Apply()) accept();
    });
    connect(&Button("Command4"), &QPushButton::clicked, this, [this] { reject(); });
}

/// A text box is called what the frame around it is.
void Form2::RefreshCaptions() {
    ApplyCaptions(*this, session_.texts.captions);
    AssignMnemonics(findChildren<QAbstractButton*>());
    for (const auto& [text, frame] : {std::pair("Text2", "Frame1"), {"Text1", "Frame2"}})
        Text(text).setAccessibleName(PlainText(findChild<QGroupBox*>(frame)->title()));
}

void Form2::ShowSettings() {
    Text("Text1").setText(Shown(session_.settings.nConvert));
    Text("Text2").setText(Shown(session_.settings.Language));
    for (const Switch& entry : kSwitches) Check(entry.name).setChecked(session_.settings.*entry.member);
}

/// A text that stands as it was shown keeps its bytes, which need be no UTF-8.
std::string Form2::TextOf(const char* box, const std::string& shown) const {
    const QString text = Text(box).text();
    return text == Shown(shown) ? shown : text.toStdString();
}

AppSettings Form2::Chosen() const {
    AppSettings settings = session_.settings;
    settings.nConvert = TextOf("Text1", settings.nConvert);
    settings.Language = TextOf("Text2", settings.Language);
    for (const Switch& entry : kSwitches) settings.*entry.member = Check(entry.name).isChecked();
    return settings;
}

bool Form2::Apply() {
    if (const Status stored = ChangeSettings(session_, Chosen()); !stored) {
        Tell(session_, ports_, stored.error());
        return false;
    }
    if (const Status loaded = LoadSettings(session_); !loaded) Tell(session_, ports_, loaded.error());
    applied_();
    RefreshCaptions();
    Button("Command3").setEnabled(false);
    return true;
}

std::filesystem::path Form2::Readable(const std::filesystem::path& answer) {
    const std::filesystem::path path = WithoutTail(answer);
    if (path.empty() || !FileMissing(path)) return path;
    ports_.prompts.Tell(MissingFile(session_.texts, path, MissingForm::PathThenText));
    return {};
}

/// Kept: a save dialog, which never asks about overwriting.
void Form2::ChooseLanguage() {
    const LanguageTable& texts = session_.texts;
    const auto path = Readable(ports_.prompts.ChooseSave({OpenTitle(texts, texts.cap_mnFileR),
                                                          {{"Pictavo Language File", {"*.lng"}}},
                                                          "",
                                                          "lng",
                                                          LanguageFolder(session_.places.languageFolders)}));
    if (!path.empty()) Text("Text2").setText(Shown(Stem(path)));
}

void Form2::ChooseConverter() {
    const LanguageTable& texts = session_.texts;
    const auto path = Readable(ports_.prompts.ChooseOpen({OpenTitle(texts, texts.cap_mnFileR),
                                                          {{"nConvert File", {ConverterPattern()}}},
                                                          "",
                                                          ConverterExtension(),
                                                          {}}));
    if (!path.empty()) Text("Text1").setText(QtPath(path));
}

}  // namespace pictavo
