#include "session/Settings.h"

#include "support/SessionFixture.h"
#include "support/SystemMeans.h"

namespace pictavo::tests {
namespace {

class SettingsTest : public SessionFixture {
  protected:
    SettingsTest() {
        std::filesystem::create_directory(temp / "languages");
        session.places = {temp / "Pictavo.ini", {temp / "languages"}, CodePage::Windows1252};
        session.settings.Language = "English";
    }

    void WriteSettings(const std::string& lines) { WriteFile(session.places.settingsFile, lines); }

    void WriteLanguage(const std::string& name, const std::string& lines) {
        WriteFile(temp / "languages" / (name + ".lng"), lines);
    }
};

TEST_F(SettingsTest, AMissingFileIsCreatedFromTheSessionsSettingsAndThenRead) {
    session.settings.nConvert = "/converter";
    session.settings.CompressGPF = true;
    session.settings.MRU[1] = "/b.bin";
    const AppSettings before = session.settings;
    ASSERT_TRUE(LoadSettings(session));
    EXPECT_EQ(ReadText(temp / "Pictavo.ini"),
              "nConvert=/converter\r\nLanguage=English\r\nTransparency=false\r\nCompressGPF=true\r\n"
              "DefaultGPF2=false\r\nZeroFilename=false\r\nHEXFilename=false\r\nChanR=false\r\nChanG=false\r\n"
              "ChanB=false\r\nChanA=false\r\nMRU2=/b.bin\r\n");
    EXPECT_EQ(session.settings, before);
}

TEST_F(SettingsTest, AFileIsReadOverWhatTheSessionHas) {
    session.settings.HEXFilename = true;
    WriteSettings("ChanG=true\r\nMRU3=/c.bin\r\n");
    ASSERT_TRUE(LoadSettings(session));
    EXPECT_TRUE(session.settings.HEXFilename);
    EXPECT_TRUE(session.settings.ChanG);
    EXPECT_EQ(session.settings.MRU[2], "/c.bin");
    EXPECT_EQ(ReadText(temp / "Pictavo.ini"), "ChanG=true\r\nMRU3=/c.bin\r\n");
}

TEST_F(SettingsTest, ThenTheLanguageIsReadThatTheFileNames) {
    WriteSettings("Language=German\r\n");
    WriteLanguage("English", "str_Succes=Done\r\n");
    WriteLanguage("German", "str_Succes=Fertig\r\n");
    ASSERT_TRUE(LoadSettings(session));
    EXPECT_EQ(session.texts.str_Succes, "Fertig");
}

TEST_F(SettingsTest, LanguageFilesAreReadInTheCodePageOfThePlaces) {
    WriteSettings("Language=Russian\r\n");
    WriteLanguage("Russian", "str_Succes=\xC4\xE0\r\n");
    session.places.codePage = CodePage::Windows1251;
    ASSERT_TRUE(LoadSettings(session));
    EXPECT_EQ(session.texts.str_Succes, "Да");
}

TEST_F(SettingsTest, WithoutAPlaceNothingIsStoredAndTheLanguageIsReadAllTheSame) {
    session.places.settingsFile.clear();
    WriteLanguage("English", "str_Succes=Done\r\n");
    const auto before = ListNames(temp.Path());
    ASSERT_TRUE(LoadSettings(session));
    ASSERT_TRUE(SaveSettings(session));
    EXPECT_EQ(session.texts.str_Succes, "Done");
    EXPECT_EQ(ListNames(temp.Path()), before);
}

TEST_F(SettingsTest, AFileThatCanNotBeCreatedIsToldAndTheLanguageIsReadAllTheSame) {
    session.places.settingsFile = temp / "nowhere" / "Pictavo.ini";
    WriteLanguage("English", "str_Succes=Done\r\n");
    const AppSettings before = session.settings;
    const Status loaded = LoadSettings(session);
    ASSERT_FALSE(loaded);
    EXPECT_EQ(loaded.error().kind, ErrorKind::WriteFailed);
    EXPECT_EQ(loaded.error().path, session.places.settingsFile);
    EXPECT_EQ(session.settings, before);
    EXPECT_EQ(session.texts.str_Succes, "Done");
}

TEST_F(SettingsTest, WhatStandsInTheFilesPlaceAndCanNotBeReadIsToldAndLeftAlone) {
    PICTAVO_NEEDS_POSIX("symbolic links");
    std::filesystem::create_symlink(temp / "gone", session.places.settingsFile);
    const AppSettings before = session.settings;
    const Status loaded = LoadSettings(session);
    ASSERT_FALSE(loaded);
    EXPECT_EQ(loaded.error().kind, ErrorKind::FileMissing);
    EXPECT_EQ(session.settings, before);
    EXPECT_TRUE(std::filesystem::is_symlink(session.places.settingsFile));
}

TEST_F(SettingsTest, AFailureOfTheLanguageIsToldAndTheSettingsStay) {
    WriteSettings("ChanR=true\r\n");
    WriteLanguage("English", "str_Succes=Done\r\n" + std::string(256, 'x') + "\r\nstr_all=all\r\n");
    const Status loaded = LoadSettings(session);
    ASSERT_FALSE(loaded);
    EXPECT_EQ(loaded.error().kind, ErrorKind::Overflow);
    EXPECT_TRUE(session.settings.ChanR);
    EXPECT_EQ(session.texts.str_Succes, "Done");
    EXPECT_EQ(session.texts.str_all, "");
}

TEST_F(SettingsTest, OfTwoFailuresTheFirstIsTold) {
    session.places.settingsFile = temp / "nowhere" / "Pictavo.ini";
    WriteLanguage("English", std::string(256, 'x') + "\r\n");
    const Status loaded = LoadSettings(session);
    ASSERT_FALSE(loaded);
    EXPECT_EQ(loaded.error().kind, ErrorKind::WriteFailed);
}

TEST_F(SettingsTest, ALanguageThatIsThereAndCanNotBeOpenedIsTold) {
    WriteSettings("ChanR=true\r\n");
    std::filesystem::create_directory(temp / "languages" / "English.lng");
    const Status loaded = LoadSettings(session);
    ASSERT_FALSE(loaded);
    EXPECT_EQ(loaded.error().path, temp / "languages" / "English.lng");
    EXPECT_TRUE(session.settings.ChanR);
}

TEST_F(SettingsTest, ChangedSettingsHoldOnceTheyAreWritten) {
    AppSettings changed = session.settings;
    changed.HEXFilename = true;
    ASSERT_TRUE(ChangeSettings(session, changed));
    EXPECT_EQ(session.settings, changed);
    EXPECT_NE(ReadText(session.places.settingsFile).find("HEXFilename=true\r\n"), std::string::npos);
}

TEST_F(SettingsTest, ChangedSettingsThatCanNotBeWrittenLeaveWhatTheSessionHad) {
    session.places.settingsFile = temp / "nowhere" / "Pictavo.ini";
    const AppSettings before = session.settings;
    AppSettings changed = before;
    changed.HEXFilename = true;
    const Status stored = ChangeSettings(session, changed);
    ASSERT_FALSE(stored);
    EXPECT_EQ(stored.error().kind, ErrorKind::WriteFailed);
    EXPECT_EQ(session.settings, before);
}

TEST_F(SettingsTest, SavingIntoAFolderThatIsNotThereFails) {
    session.places.settingsFile = temp / "nowhere" / "Pictavo.ini";
    const Status saved = SaveSettings(session);
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error().kind, ErrorKind::WriteFailed);
}

}  // namespace
}  // namespace pictavo::tests
