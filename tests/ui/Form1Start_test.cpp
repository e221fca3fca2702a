#include <QTabWidget>

#include "config/LanguageKeys.h"
#include "support/FakeAssociations.h"
#include "support/PassedOnPrompts.h"
#include "support/WindowFixture.h"
#include "ui/Form2.h"

/// What the window does when it starts: what it reads, asks and opens, and in which order.

namespace pictavo::tests {
namespace {

class Form1StartTest : public WindowFixture {
  protected:
    Form1StartTest() { associations = &desktop; }

    /// The window, with no flash open yet and one at hand.
    void ShowWithAFlashAtHand() {
        Open(FourIcons());
        CloseFullflash(session);
        Show();
    }

    /// Associations that need no question.
    void RegisterThisProgram() {
        for (const char* extension : {".gpf", ".gpf2"}) desktop.commands[extension] = "/opt/pictavo \"%1\"";
    }

    std::filesystem::path Gpf2(const std::string& name) {
        return WriteGpf2(name, 2, 3, 0x05, Bytes(6, 0xE0));
    }

    FakeAssociations desktop;
};

TEST_F(Form1StartTest, FirstTheTemporariesGoThenSettingsAndLanguageAreReadThenTheTypesAreAskedAbout) {
    WriteFile(temp / "Pictavo.ini", std::string("Language=Deutsch\r\n"));
    const std::string tooLong(256, 'x');
    WriteFile(temp / "Deutsch.lng", "str_RegExt=Zuordnen\r\n" + tooLong + "\r\n");
    ShowWithAFlashAtHand();
    const WorkFiles& files = State().workFiles;
    for (const auto& path : {files.PngBitmap(), files.Png(), files.PngPatch(), files.Replacement(7)})
        WriteFile(path, std::string("old"));
    std::vector<std::string> order;
    scripted.prompts.whenTold = [&] {
        EXPECT_EQ(ListNames(files.folder), std::vector<std::string>{"0007.gpf2"});
        order.push_back("language");
    };
    desktop.whenAsked = [&] {
        EXPECT_TRUE(State().rows.empty());
        if (order.empty() || order.back() != "types") order.push_back("types");
    };
    scripted.prompts.Expect(Asked::RegisterTypes, true);
    form->Start({flashPath.string()});
    EXPECT_EQ(order, (std::vector<std::string>{"language", "types"}));
    EXPECT_EQ(scripted.prompts.questions.at(0).text, "Zuordnen?");
    EXPECT_EQ(desktop.registered, std::vector<std::string>{"/opt/pictavo \"%1\""});
    EXPECT_EQ(State().rows.size(), 4U);
}

TEST_F(Form1StartTest, NothingIsAskedWhenTheTypesAreThisPrograms) {
    RegisterThisProgram();
    Show();
    form->Start({});
    EXPECT_TRUE(scripted.prompts.questions.empty());
}

/// What cannot be read or written, by its path in the test's folder.
class Form1StartFailure : public Form1StartTest {
  protected:
    void ExpectToldAndGoneOn(const std::filesystem::path& culprit) {
        ShowWithAFlashAtHand();
        scripted.prompts.Expect(Asked::RegisterTypes, false);
        form->Start({flashPath.string()});
        ASSERT_EQ(scripted.prompts.notices.size(), 1U);
        EXPECT_TRUE(scripted.prompts.notices[0].text.starts_with(culprit.string() + "\r"))
            << scripted.prompts.notices[0].text;
        EXPECT_EQ(scripted.prompts.questions.size(), 1U);
        EXPECT_TRUE(FrameCaption().starts_with("0000")) << FrameCaption();
    }
};

TEST_F(Form1StartFailure, SettingsThatCanNotBeRead) {
    std::filesystem::create_symlink(temp / "gone", temp / "Pictavo.ini");
    ExpectToldAndGoneOn(temp / "Pictavo.ini");
}

TEST_F(Form1StartFailure, SettingsThatCanNotBeWritten) {
    session.places.settingsFile = temp / "nowhere" / "Pictavo.ini";
    ExpectToldAndGoneOn(temp / "nowhere" / "Pictavo.ini");
}

TEST_F(Form1StartFailure, ALanguageThatCanNotBeRead) {
    std::filesystem::create_directory(temp / "Test.lng");
    ExpectToldAndGoneOn(temp / "Test.lng");
}

TEST_F(Form1StartFailure, ALineOfTheLanguageThatIsTooLong) {
    WriteLanguage("cap_mnFileR=Datei\r\n" + std::string(256, 'x') + "\r\n");
    ExpectToldAndGoneOn(temp / "Test.lng");
    EXPECT_EQ(CaptionOf("mnu_File"), "Datei");
}

TEST_F(Form1StartTest, WhatWasOpenedLastIsShown) {
    RegisterThisProgram();
    const std::string bitmap = Bitmap("b.bmp").string();
    Open(FourIcons());
    CloseFullflash(session);
    const std::string flash = flashPath.string();
    const std::string missing = (temp / "gone.gpf").string();
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {{{flash, bitmap}, "4 x 4"},
                                                                                 {{bitmap, flash}, "0000"},
                                                                                 {{flash, missing}, "0000"},
                                                                                 {{flash, "x"}, "0000"}};
    const Session start = session;
    for (const auto& [names, caption] : cases) {
        session = start;
        Show();
        const int tried = names[1] == "x" ? 1 : 2;
        for (const std::string& name : names)
            if (name == bitmap) {
                scripted.prompts.Pick(std::nullopt);
                scripted.prompts.Expect(Asked::ApplyToAll, false);
            } else if (name != "x") {
                scripted.prompts.Expect(Asked::ApplyToAll, false);
            }
        scripted.prompts.questions.clear();
        form->Start(names);
        EXPECT_EQ(scripted.prompts.questions.size(), static_cast<std::size_t>(tried));
        EXPECT_TRUE(FrameCaption().starts_with(caption))
            << names[0] << " " << names[1] << ": " << FrameCaption();
    }
}

TEST_F(Form1StartTest, TheFirstPictureIsShownAlsoWhenTheListGotTheFocusMeanwhile) {
    RegisterThisProgram();
    ShowWithAFlashAtHand();
    scripted.prompts.whenTold = [&] {
        if (!State().rows.empty()) Select(0);
    };
    for (int i = 0; i < 2; ++i) scripted.prompts.Expect(Asked::ApplyToAll, false);
    form->Start({flashPath.string(), (temp / "gone.gpf").string()});
    EXPECT_TRUE(FrameCaption().starts_with("0000")) << FrameCaption();
}

TEST_F(Form1StartTest, WhetherItAppliesToAllIsAskedInRussianInEveryLanguage) {
    RegisterThisProgram();
    WriteLanguage("str_all=alle\r\nstr_MultFFound=Mehrere\r\n");
    Show();
    for (int i = 0; i < 2; ++i) {
        scripted.prompts.Pick(std::nullopt);
        scripted.prompts.Expect(Asked::ApplyToAll, false);
    }
    form->Start({Gpf2("a.gpf2").string(), Gpf2("b.gpf2").string()});
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"Mehrere"});
    for (const Question& question : scripted.prompts.questions)
        EXPECT_EQ(question.text, "Применить для всех?");
}

// ------------------------------------------------------------------------------------------- the real popup

/// Scripted answers, but for the popup menu, which is the window's own.
class WithRealPopup final : public PassedOnPrompts {
  public:
    using PassedOnPrompts::PassedOnPrompts;

    std::optional<SaveCommand> ChooseSaveCommand() override { return popup(); }

    std::function<std::optional<SaveCommand>()> popup;
};

class SavePopupTest : public WindowFixture {
  protected:
    void ShowWithPopup() {
        prompts.popup = [this] {
            QTimer::singleShot(0, form.get(), [this] { ActInPopup(); });
            return form->PickSaveCommand();
        };
        form = std::make_unique<Form1>(std::move(session),
                                       WindowServices{prompts, scripted.processes, scripted.pictures});
        form->show();
    }

    bool AreChannelsOffered() const {
        return Entry("mnu_PopupPic_SaveChannels").isVisible() ||
               Entry("mnu_PopupPic_LoadChannels").isVisible();
    }

    void ActInPopup() {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        EXPECT_EQ(menu->objectName(), "mnu_PopupPic");
        wereChannelsOffered = AreChannelsOffered();
        act(*menu);
    }

    void Start() {
        scripted.prompts.Expect(Asked::ApplyToAll, false);
        form->Start({WriteGpf2("a.gpf2", 2, 3, 0x05, Bytes(6, 0xE0)).string(), "x"});
    }

    WithRealPopup prompts{scripted.prompts};
    std::function<void(QMenu&)> act;  ///< what is done once the popup stands
    bool wereChannelsOffered = true;
};

TEST_F(SavePopupTest, OffersTheSaveCommandsOnlyAndWhatIsPickedIsDone) {
    ShowWithPopup();
    act = [this](QMenu& menu) {
        menu.setActiveAction(&Entry("mnu_PopupPic_SaveAsBMP"));
        QTest::keyClick(&menu, Qt::Key_Return);
    };
    Start();
    EXPECT_FALSE(wereChannelsOffered);
    EXPECT_TRUE(AreChannelsOffered());
    EXPECT_TRUE(std::filesystem::exists(temp / "a.bmp"));
    EXPECT_TRUE(scripted.prompts.choices.empty());
}

TEST_F(SavePopupTest, ClosedItSavesNothing) {
    ShowWithPopup();
    act = [](QMenu& menu) { QTest::keyClick(&menu, Qt::Key_Escape); };
    Start();
    EXPECT_FALSE(wereChannelsOffered);
    EXPECT_TRUE(AreChannelsOffered());
    EXPECT_FALSE(std::filesystem::exists(temp / "a.bmp"));
}

// ---------------------------------------------------------------------------------------- the language file

/// The caption that a control of this name shows.
QString CaptionIn(const QWidget& window, const QString& name) {
    if (name == window.objectName()) return window.windowTitle();
    if (const QAction* entry = FindEntry(window, name)) return PlainText(entry->text());
    auto* control = window.findChild<QWidget*>(name);
    if (const auto* button = qobject_cast<QAbstractButton*>(control)) return PlainText(button->text());
    if (const auto* frame = qobject_cast<QGroupBox*>(control)) return PlainText(frame->title());
    if (const auto* tabs = qobject_cast<QTabWidget*>(control)) return PlainText(tabs->tabText(0));
    ADD_FAILURE() << "no control " << name.toStdString();
    return {};
}

TEST_F(Form1StartTest, EveryCaptionOfTheLanguageFileReachesItsControl) {
    RegisterThisProgram();
    std::string lines = "str_all=alle\r\n";
    for (const ExpectedKey& key : ExpectedKeys())
        if (key.name != "str_all") lines += key.name + "=<" + key.name + ">\r\n";
    WriteLanguage(lines);
    ASSERT_TRUE(LoadSettings(session));
    const Form2 settings(
        session, scripted.ports, [] {}, nullptr);
    const Form3 channels(session, scripted.ports, ChannelsMode::Save, nullptr);
    Show();
    form->Start({});
    for (const ExpectedKey& key : ExpectedKeys())
        for (const ExpectedCaption& caption : key.captions) {
            const QString control = caption.control;
            const QWidget& window = control.startsWith("Form2")   ? static_cast<const QWidget&>(settings)
                                    : control.startsWith("Form3") ? static_cast<const QWidget&>(channels)
                                                                  : *form;
            EXPECT_EQ(CaptionIn(window, control.section('.', -1)).toStdString(),
                      tests::CaptionOf(caption, "<" + key.name + ">", "alle", "Test"))
                << key.name;
        }
}

}  // namespace
}  // namespace pictavo::tests
