#include "ui/Form3.h"

#include <QPushButton>
#include <QTest>

#include "support/BmpFile.h"
#include "support/WindowFixture.h"

namespace pictavo::tests {
namespace {

class Form3Test : public WindowFixture {
  protected:
    /// Opened over a picture of one pixel, 30 20 10 with alpha 40 (hex).
    void OpenFor(ChannelsMode mode) {
        FlashBuilder flash(FlashKind::NewSGold);
        flash.AddPicture(1, 1, 0x0A, {0x10, 0x20, 0x30, 0x40});
        SessionFixture::Open(flash);
        ASSERT_TRUE(ShowRow(session, 0));
        dialog = std::make_unique<Form3>(session, scripted.ports, mode, nullptr);
        dialog->show();
    }

    QCheckBox& Check(const char* name) const { return *dialog->findChild<QCheckBox*>(name); }
    void Perform() const { QTest::mouseClick(dialog->findChild<QPushButton*>("Command1"), Qt::LeftButton); }

    std::unique_ptr<Form3> dialog;
};

TEST_F(Form3Test, HasItsDesignedCaptionsAndTheStoredChoice) {
    session.settings.ChanG = true;
    session.settings.ChanA = true;
    OpenFor(ChannelsMode::Save);
    const std::vector<std::tuple<const char*, const char*, bool>> checks = {{"Check1", "R", false},
                                                                            {"Check2", "G", true},
                                                                            {"Check3", "B", false},
                                                                            {"Check4", "Alpha", true},
                                                                            {"Check5", "Remember", false}};
    for (const auto& [name, caption, isOn] : checks) {
        EXPECT_EQ(PlainCaption(Check(name).text()), caption);
        EXPECT_EQ(Check(name).isChecked(), isOn) << name;
    }
    EXPECT_EQ(dialog->windowTitle(), "Channels");
    EXPECT_EQ(PlainCaption(dialog->findChild<QPushButton*>("Command1")->text()), "OK");
}

TEST_F(Form3Test, EveryButtonAndCheckBoxHasALetterOfItsOwnInWhateverLanguage) {
    for (const char* remember : {"Remember", "Запомнить"}) {
        session.texts.captions = {{"Form3.Check5", remember}};
        OpenFor(ChannelsMode::Save);
        ExpectLettersOfTheirOwn(*dialog, 6);
    }
}

TEST_F(Form3Test, SavesTheChosenChannelsIn32Bits) {
    OpenFor(ChannelsMode::Save);
    Check("Check1").click();
    Check("Check4").click();
    scripted.prompts.Choose(temp / "channels");
    Perform();
    EXPECT_EQ(scripted.prompts.choices.back().suggestedName, "channels");
    const BmpFile file = ReadBmp(temp / "channels.bmp");
    EXPECT_EQ(file.bits, 32);
    EXPECT_EQ(file.shown.pixels.at(0), (samples::Pixel{0x30, 0, 0, 0x40}));
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_TRUE(dialog->Ended().IsClean());
}

TEST_F(Form3Test, LoadsTheChosenChannelsOnly) {
    OpenFor(ChannelsMode::Load);
    const auto other = WriteFile(
        temp / "OTHER.BMP", samples::MakeBmp(samples::DrawOneColour(1, 1, {0xA1, 0xA2, 0xA3, 0xA4}), 32));
    Check("Check2").click();
    scripted.prompts.Choose(other);
    Perform();
    EXPECT_EQ(CellAt(0, 0), (Cell{0x30, 0xA2, 0x10, 0x40}));
}

TEST_F(Form3Test, CancellingTheChooserChangesNothing) {
    OpenFor(ChannelsMode::Load);
    Check("Check2").click();
    scripted.prompts.Choose({});
    const Cell before = CellAt(0, 0);
    Perform();
    EXPECT_EQ(CellAt(0, 0), before);
    EXPECT_EQ(dialog->Ended().end, Outcome::End::Cancelled);
}

TEST_F(Form3Test, RememberStoresTheChoiceAndNothingElse) {
    session.settings.Language = "Test";
    OpenFor(ChannelsMode::Load);
    Check("Check2").click();
    Check("Check5").click();
    scripted.prompts.Choose({});
    Perform();
    const std::string stored = ReadText(temp / "Pictavo.ini");
    EXPECT_NE(stored.find("ChanR=false\r\nChanG=true\r\nChanB=false\r\nChanA=false\r\n"), std::string::npos);
    EXPECT_NE(stored.find("Language=Test\r\n"), std::string::npos);
}

TEST_F(Form3Test, AChoiceThatCanNotBeRememberedIsToldAndHoldsForThisOnce) {
    session.places.settingsFile = temp / "nowhere" / "Pictavo.ini";
    OpenFor(ChannelsMode::Save);
    Check("Check1").click();
    Check("Check5").click();
    scripted.prompts.Choose(temp / "channels");
    Perform();
    EXPECT_EQ(scripted.prompts.notices.size(), 2U);
    EXPECT_FALSE(session.settings.ChanR);
    EXPECT_EQ(ReadBmp(temp / "channels.bmp").shown.pixels.at(0), (samples::Pixel{0x30, 0, 0, 0}));
}

TEST_F(Form3Test, TheTickOfTheWindowsTransparencyIsNotStored) {
    ShowFourIcons();
    form->Start({});
    Select(0);
    Find<QCheckBox>("TransCheck").click();
    WithDialog([&](QWidget& opened) {
        opened.findChild<QCheckBox*>("Check2")->click();
        opened.findChild<QCheckBox*>("Check5")->click();
        scripted.prompts.Choose({});
        opened.findChild<QPushButton*>("Command1")->click();
    });
    Trigger("mnu_PopupPic_LoadChannels");
    const std::string stored = ReadText(temp / "Pictavo.ini");
    EXPECT_NE(stored.find("ChanG=true\r\n"), std::string::npos);
    EXPECT_NE(stored.find("Transparency=false\r\n"), std::string::npos);
    EXPECT_TRUE(Find<QCheckBox>("TransCheck").isChecked());
}

TEST_F(Form3Test, WithoutRememberTheStoredChoiceStays) {
    OpenFor(ChannelsMode::Load);
    Check("Check2").click();
    scripted.prompts.Choose({});
    const Cell before = CellAt(0, 0);
    Perform();
    EXPECT_EQ(CellAt(0, 0), before);
    EXPECT_FALSE(session.settings.ChanG);
    EXPECT_FALSE(std::filesystem::exists(temp / "Pictavo.ini"));
}

}  // namespace
}  // namespace pictavo::tests
