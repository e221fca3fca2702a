#include "ui/Form2.h"

#include <QApplication>
#include <QTest>

#include "support/WindowFixture.h"

namespace pictavo::tests {
namespace {

class Form2Test : public WindowFixture {
  protected:
    void Open() {
        dialog = std::make_unique<Form2>(
            session, scripted.ports, [this] { ++applied; }, nullptr);
        dialog->show();
    }

    template <typename Control>
    Control& In(const char* name) const {
        return *dialog->findChild<Control*>(name);
    }

    void Click(const char* button) const { QTest::mouseClick(&In<QPushButton>(button), Qt::LeftButton); }
    bool CanApply() const { return In<QPushButton>("Command3").isEnabled(); }
    std::string Stored() const { return ReadText(temp / "Pictavo.ini"); }

    std::unique_ptr<Form2> dialog;
    int applied = 0;
};

TEST_F(Form2Test, APathThatIsNoUtf8KeepsItsBytesUnlessItIsChanged) {
    session.settings.nConvert = "/opt/caf\xE9/convert";
    Open();
    In<QCheckBox>("Check1").click();
    Click("Command3");
    EXPECT_EQ(session.settings.nConvert, "/opt/caf\xE9/convert");
    EXPECT_TRUE(Stored().starts_with("nConvert=/opt/caf\xE9/convert\r\n"));
    In<QLineEdit>("Text1").setText("/opt/convert");
    Click("Command3");
    EXPECT_EQ(session.settings.nConvert, "/opt/convert");
}

TEST_F(Form2Test, ShowsTheSettingsUnderTheDesignedCaptions) {
    session.settings.CompressGPF = true;
    session.settings.HEXFilename = true;
    Open();
    EXPECT_EQ(dialog->windowTitle(), "Settings");
    EXPECT_EQ(In<QLineEdit>("Text1").text().toStdString(), session.settings.nConvert);
    EXPECT_EQ(In<QLineEdit>("Text2").text(), "Test");
    const std::vector<std::tuple<const char*, const char*, bool>> checks = {
        {"Check1", "Transparency", false},
        {"Check2", "Compress GPF", true},
        {"Check3", "GPF2 as Default", false},
        {"Check4", "Zero in filename", false},
        {"Check5", "HEX filename", true}};
    for (const auto& [name, caption, isOn] : checks) {
        EXPECT_EQ(PlainCaption(In<QCheckBox>(name).text()), caption);
        EXPECT_EQ(In<QCheckBox>(name).isChecked(), isOn) << name;
    }
    const std::vector<std::pair<const char*, const char*>> buttons = {{"Command1", "Browse"},
                                                                      {"Command2", "OK"},
                                                                      {"Command3", "Apply"},
                                                                      {"Command4", "Cancel"},
                                                                      {"Command5", "Browse"}};
    for (const auto& [name, caption] : buttons)
        EXPECT_EQ(PlainCaption(In<QPushButton>(name).text()), caption) << name;
    EXPECT_EQ(In<QGroupBox>("Frame1").title(), "Select a language file");
    EXPECT_EQ(In<QGroupBox>("Frame2").title(), "Select nConvert.exe path");
}

TEST_F(Form2Test, EveryButtonAndCheckBoxHasALetterOfItsOwnInWhateverLanguage) {
    const std::vector<std::map<std::string, std::string>> languages = {
        {}, {{"Form2.Check1", "Прозрачность"}, {"Form2.Check2", "Сжимать"}, {"Form2.Command4", "Отмена"}}};
    for (const auto& captions : languages) {
        session.texts.captions = captions;
        Open();
        ExpectLettersOfTheirOwn(*dialog, 10);
    }
}

TEST_F(Form2Test, TheTextBoxesAreCalledWhatTheirFramesAreAlsoInAnotherLanguage) {
    Open();
    EXPECT_EQ(In<QLineEdit>("Text1").accessibleName(), "Select nConvert.exe path");
    EXPECT_EQ(In<QLineEdit>("Text2").accessibleName(), "Select a language file");
    WriteFile(temp / "Deutsch.lng", std::string("str_PlSel=Bitte\r\n"));
    In<QLineEdit>("Text2").setText("Deutsch");
    Click("Command3");
    EXPECT_EQ(In<QLineEdit>("Text1").accessibleName(), "Bitte nConvert.exe");
    EXPECT_EQ(In<QLineEdit>("Text2").accessibleName(), "Bitte Deutsch");
}

TEST_F(Form2Test, ALanguageFileNamesItsControls) {
    session.texts.captions = {{"Form2", "Einstellungen"},
                              {"Form2.Check4", "Nullen"},
                              {"Form2.Frame1", "Sprache"},
                              {"Form2.Command3", "Uebernehmen"},
                              {"TransCheck", "nicht hier"}};
    Open();
    EXPECT_EQ(dialog->windowTitle(), "Einstellungen");
    EXPECT_EQ(PlainCaption(In<QCheckBox>("Check4").text()), "Nullen");
    EXPECT_EQ(PlainCaption(In<QPushButton>("Command3").text()), "Uebernehmen");
    EXPECT_EQ(PlainCaption(In<QCheckBox>("Check5").text()), "HEX filename");
}

TEST_F(Form2Test, ApplyIsDisabledUntilSomethingChanges) {
    for (const char* check : {"Check1", "Check2", "Check3", "Check4", "Check5"}) {
        Open();
        EXPECT_FALSE(CanApply());
        In<QCheckBox>(check).click();
        EXPECT_TRUE(CanApply()) << check;
    }
    for (const char* text : {"Text1", "Text2"}) {
        Open();
        In<QLineEdit>(text).setText("other");
        EXPECT_TRUE(CanApply()) << text;
    }
}

TEST_F(Form2Test, ApplyWritesTheFileReadsItBackAndDisablesItself) {
    WriteFile(temp / "Deutsch.lng", std::string("str_Succes=Fertig\r\n"));
    Open();
    In<QCheckBox>("Check4").click();
    In<QLineEdit>("Text2").setText("Deutsch");
    Click("Command3");
    EXPECT_NE(Stored().find("Language=Deutsch\r\n"), std::string::npos);
    EXPECT_NE(Stored().find("ZeroFilename=true\r\n"), std::string::npos);
    EXPECT_EQ(session.texts.str_Succes, "Fertig");
    EXPECT_TRUE(session.settings.ZeroFilename);
    EXPECT_EQ(applied, 1);
    EXPECT_FALSE(CanApply());
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(Form2Test, AnotherLanguageKeepsTheTextsThatItLacks) {
    WriteFile(temp / "Deutsch.lng", std::string("str_Succes=Fertig\r\n"));
    Open();
    In<QLineEdit>("Text2").setText("Deutsch");
    Click("Command3");
    EXPECT_EQ(session.texts.str_fnExi, "fnExi");
}

TEST_F(Form2Test, OkAppliesAndCloses) {
    Open();
    In<QCheckBox>("Check3").click();
    Click("Command2");
    EXPECT_NE(Stored().find("DefaultGPF2=true\r\n"), std::string::npos);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(Form2Test, CancelLeavesTheFileAndTheSettings) {
    WriteFile(temp / "Pictavo.ini", std::string("Language=Test\r\n"));
    Open();
    In<QCheckBox>("Check3").click();
    Click("Command4");
    EXPECT_EQ(Stored(), "Language=Test\r\n");
    EXPECT_FALSE(session.settings.DefaultGPF2);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(Form2Test, SettingsThatCanNotBeWrittenAreToldAndCanBeTriedAgain) {
    session.places.settingsFile = temp / "later" / "Pictavo.ini";
    const AppSettings before = session.settings;
    Open();
    In<QCheckBox>("Check3").click();
    In<QLineEdit>("Text2").setText("Deutsch");
    for (const char* button : {"Command3", "Command2"}) {
        scripted.prompts.notices.clear();
        Click(button);
        EXPECT_EQ(scripted.prompts.notices.size(), 1U) << button;
        EXPECT_EQ(session.settings, before);
        EXPECT_EQ(applied, 0);
        EXPECT_TRUE(In<QCheckBox>("Check3").isChecked());
        EXPECT_EQ(In<QLineEdit>("Text2").text(), "Deutsch");
        EXPECT_TRUE(CanApply());
        EXPECT_TRUE(dialog->isVisible());
    }
    std::filesystem::create_directory(temp / "later");
    Click("Command2");
    EXPECT_TRUE(session.settings.DefaultGPF2);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(Form2Test, ALanguageThatCanNotBeReadIsToldAndTheSettingsHold) {
    std::filesystem::create_directory(temp / "Deutsch.lng");
    Open();
    In<QLineEdit>("Text2").setText("Deutsch");
    Click("Command3");
    EXPECT_EQ(scripted.prompts.NoticeTexts(),
              std::vector<std::string>{(temp / "Deutsch.lng").string() + "\rfnExi!"});
    EXPECT_EQ(session.settings.Language, "Deutsch");
    EXPECT_FALSE(CanApply());
}

TEST_F(Form2Test, TheLanguageChooserBeginsWhereLanguagesLie) {
    for (const char* folder : {"program", "share"}) std::filesystem::create_directory(temp / folder);
    WriteFile(temp / "share" / "English.lng", std::string());
    session.places.languageFolders = {temp / "program", temp / "share"};
    Open();
    scripted.prompts.Choose({});
    Click("Command1");
    EXPECT_EQ(scripted.prompts.choices.back().folder, temp / "share");
}

TEST_F(Form2Test, TheLanguageIsChosenInASaveDialogAndOnlyItsBaseNameIsKept) {
    std::filesystem::create_directory(temp / "elsewhere");
    const auto file = WriteFile(temp / "elsewhere" / "My.German.lng", std::string());
    Open();
    scripted.prompts.Choose(file);
    Click("Command1");
    const FileChoice& choice = scripted.prompts.choices.back();
    EXPECT_EQ(choice.title, "PlSel File 4open");
    EXPECT_EQ(choice.filters.at(0).name, "Pictavo Language File");
    EXPECT_EQ(choice.defaultExtension, "lng");
    EXPECT_EQ(choice.folder, temp.Path());
    EXPECT_EQ(In<QLineEdit>("Text2").text(), "My.German");
    EXPECT_EQ(session.settings.Language, "Test");  // until it is applied
    EXPECT_TRUE(CanApply());
}

TEST_F(Form2Test, ALanguageFileThatCanNotBeReadIsToldAndNotTaken) {
    Open();
    scripted.prompts.Choose(temp / "none.lng");
    Click("Command1");
    EXPECT_EQ(scripted.prompts.NoticeTexts(),
              std::vector<std::string>{(temp / "none.lng").string() + "\rfnExi!"});
    EXPECT_EQ(In<QLineEdit>("Text2").text(), "Test");
}

TEST_F(Form2Test, TheConverterIsTakenWithItsFullPath) {
    const auto converter = WriteFile(temp / "nconvert", std::string("x"));
    Open();
    scripted.prompts.Choose(converter);
    Click("Command5");
    EXPECT_EQ(scripted.prompts.choices.back().filters.at(0).name, "nConvert File");
    EXPECT_EQ(In<QLineEdit>("Text1").text().toStdString(), converter.string());
    scripted.prompts.Choose({});
    Click("Command5");
    EXPECT_EQ(In<QLineEdit>("Text1").text().toStdString(), converter.string());
}

TEST_F(Form2Test, OpeningReadsTheSettingsAndTheLanguageAgain) {
    Show();
    form->Start({});
    WriteFile(temp / "Pictavo.ini",
              std::string("ZeroFilename=true\r\nTransparency=true\r\nLanguage=Deutsch\r\n"));
    WriteFile(temp / "Deutsch.lng", std::string("str_AdZ=Nullen\r\ncap_mnFileR=Datei\r\n"));
    bool wasChecked = false;
    std::string caption;
    WithDialog([&](QWidget& opened) {
        wasChecked = opened.findChild<QCheckBox*>("Check4")->isChecked();
        caption = PlainCaption(opened.findChild<QCheckBox*>("Check4")->text());
    });
    Trigger("mnu_Settings");
    EXPECT_TRUE(wasChecked);
    EXPECT_EQ(caption, "Nullen");
    EXPECT_EQ(CaptionOf("mnu_File"), "Datei");
    EXPECT_TRUE(Find<QCheckBox>("TransCheck").isChecked());
}

TEST_F(Form2Test, WhatCanNotBeReadAtTheOpeningIsToldBeforeTheDialogOpens) {
    WriteLanguage(std::string(256, 'x') + "\r\n");
    Show();
    std::size_t toldBefore = 0;
    WithDialog([&](QWidget&) { toldBefore = scripted.prompts.notices.size(); });
    Trigger("mnu_Settings");
    EXPECT_EQ(toldBefore, 1U);
    EXPECT_EQ(scripted.prompts.notices.size(), 1U);
}

}  // namespace
}  // namespace pictavo::tests
