#include "config/AppSettings.h"

#include <gtest/gtest.h>

#include "support/FileSizeLimit.h"
#include "support/Refusal.h"
#include "support/SettingsFlags.h"
#include "support/SystemMeans.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

AppSettings Read(const std::string& text, const AppSettings& initial = {}) {
    const ByteView bytes = AsBytes(text);
    const auto settings = ReadAppSettings(MemorySource(Bytes(bytes.begin(), bytes.end())), initial);
    EXPECT_TRUE(settings) << settings.error().detail;
    return settings.value_or(AppSettings());
}

AppSettings AllOn() {
    AppSettings settings;
    for (const Flag& flag : kFlags) settings.*flag.member = true;
    return settings;
}

TEST(AppSettings, EverythingIsOffAndEmptyAtFirst) {
    const AppSettings settings;
    EXPECT_EQ(settings.nConvert, "");
    EXPECT_EQ(settings.Language, "");
    for (const Flag& flag : kFlags) EXPECT_FALSE(settings.*flag.member) << flag.key;
    for (const auto& recent : settings.MRU) EXPECT_FALSE(recent);
}

TEST(AppSettings, TheWholeFileIsReadWithBothKindsOfLineEnd) {
    AppSettings expected;
    expected.nConvert = "C:\\tools\\nconvert.exe";
    expected.Language = "My own German";
    expected.Transparency = expected.DefaultGPF2 = expected.HEXFilename = expected.ChanG = true;
    expected.MRU = {"/home/a/one.bin", "/home/a/two.bin", "/home/a/three.bin"};
    const std::vector<std::string> lines = {"nConvert=C:\\tools\\nconvert.exe",
                                            "Language=My own German",
                                            "Transparency=true",
                                            "CompressGPF=false",
                                            "DefaultGPF2=true",
                                            "ZeroFilename=false",
                                            "HEXFilename=true",
                                            "ChanR=false",
                                            "ChanG=true",
                                            "ChanB=false",
                                            "ChanA=false",
                                            "MRU1=/home/a/one.bin",
                                            "MRU2=/home/a/two.bin",
                                            "MRU3=/home/a/three.bin"};
    for (const std::string end : {"\r\n", "\n"}) {
        std::string text;
        for (const std::string& line : lines) text += line + end;
        EXPECT_EQ(Read(text), expected);
        text.resize(text.size() - end.size());
        EXPECT_EQ(Read(text), expected) << "without the last line's end";
    }
}

TEST(AppSettings, EachCheckBoxHasItsKey) {
    for (const Flag& flag : kFlags) {
        AppSettings expected;
        expected.*flag.member = true;
        EXPECT_EQ(Read(std::string(flag.key) + "=true\r\n"), expected) << flag.key;
    }
}

TEST(AppSettings, FalseAndABareKeyClearACheckBox) {
    for (const Flag& flag : kFlags) {
        AppSettings expected = AllOn();
        expected.*flag.member = false;
        EXPECT_EQ(Read(std::string(flag.key) + "=false", AllOn()), expected) << flag.key;
        EXPECT_EQ(Read(flag.key, AllOn()), expected) << flag.key;
    }
}

TEST(AppSettings, OnlyTrueInSmallLettersIsTrue) {
    for (const std::string value : {"TRUE", "True", "1", "yes", "true ", "tru", ""})
        EXPECT_FALSE(Read("ChanR=" + value, AllOn()).ChanR) << value;
}

TEST(AppSettings, TheLastFourCharactersDecide) {
    EXPECT_TRUE(Read("ChanR=untrue").ChanR);
    EXPECT_TRUE(Read("ChanRtrue").ChanR);
    EXPECT_TRUE(Read("ChanR = true").ChanR);
}

TEST(AppSettings, ALongerKeySetsTheKeyThatItBeginsWith) {
    EXPECT_TRUE(Read("ChanRx=true").ChanR);
    EXPECT_EQ(Read("MRU12=x").MRU[0], "=x");
    EXPECT_EQ(Read("nConverter=x").nConvert, "r=x");
}

TEST(AppSettings, TheTextIsWhatStandsBehindTheKeyAndOneCharacter) {
    EXPECT_EQ(Read("nConvert= /a b /c=d ").nConvert, " /a b /c=d ");
    EXPECT_EQ(Read("nConvert:x").nConvert, "x");
    EXPECT_EQ(Read("Language=\"quoted\"").Language, "\"quoted\"");
    EXPECT_EQ(Read("MRU3=\xD0\x96.bin").MRU[2], "\xD0\x96.bin");
}

TEST(AppSettings, AnEmptyTextIsTaken) {
    AppSettings initial;
    initial.nConvert = "before";
    EXPECT_EQ(Read("nConvert=", initial).nConvert, "");
    EXPECT_EQ(Read("nConvert", initial).nConvert, "");
    EXPECT_EQ(Read("MRU1").MRU[0], "");
}

TEST(AppSettings, ASecondRecentFileMayStandAlone) {
    const AppSettings settings = Read("MRU2=/x/y.bin\r\n");
    EXPECT_FALSE(settings.MRU[0]);
    EXPECT_EQ(settings.MRU[1], "/x/y.bin");
    EXPECT_FALSE(settings.MRU[2]);
}

TEST(AppSettings, TheLastLineOfAKeyWins) {
    EXPECT_FALSE(Read("ChanB=true\nChanB=false\n").ChanB);
    EXPECT_EQ(Read("MRU1=a\nMRU1=b\n").MRU[0], "b");
    EXPECT_EQ(Read("nConvert=a\nnConvert=\n").nConvert, "");
}

TEST(AppSettings, LinesOfNoKeyArePassedOver) {
    EXPECT_EQ(Read("\n; ChanR=true\n ChanR=true\nchanr=true\nCHANR=true\nMRU4=x\nMRU=x\n[ChanR]\n"),
              AppSettings());
}

TEST(AppSettings, TheOrderOfTheLinesDoesNotMatter) {
    const AppSettings settings = Read("MRU3=c\nChanA=true\nnConvert=n\n");
    EXPECT_EQ(settings.MRU[2], "c");
    EXPECT_TRUE(settings.ChanA);
    EXPECT_EQ(settings.nConvert, "n");
}

TEST(AppSettings, KeysWithoutALineKeepTheInitialValue) {
    AppSettings initial = AllOn();
    initial.nConvert = "/opt/pictavo-convert";
    AppSettings expected = initial;
    expected.ChanG = false;
    EXPECT_EQ(Read("ChanG=false", initial), expected);
    EXPECT_EQ(Read("", initial), initial);
}

TEST(AppSettings, BytesOfEveryKindAreHarmless) {
    std::string text;
    for (int i = 0; i < 4096; ++i) text.push_back(static_cast<char>(i * 37 % 256));
    EXPECT_TRUE(Read(text + "\nChanR=true").ChanR);
}

TEST(LoadAppSettings, ReadsTheFile) {
    const TempFolder temp;
    const auto settings =
        LoadAppSettings(WriteFile(temp / "Pictavo.ini", std::string("ChanR=true\r\n")), AppSettings());
    ASSERT_TRUE(settings);
    EXPECT_TRUE(settings->ChanR);
}

TEST(LoadAppSettings, AMissingFileGivesTheInitialSettings) {
    const TempFolder temp;
    AppSettings initial;
    initial.nConvert = "x";
    const auto settings = LoadAppSettings(temp / "Pictavo.ini", initial);
    ASSERT_TRUE(settings);
    EXPECT_EQ(*settings, initial);
    EXPECT_TRUE(ListNames(temp.Path()).empty());
}

TEST(LoadAppSettings, WhatIsThereAndCannotBeOpenedIsAFailureThatNamesIt) {
    const TempFolder temp;
    const auto settings = LoadAppSettings(temp.Path(), {});
    ASSERT_FALSE(settings);
    EXPECT_EQ(settings.error().kind, ErrorKind::FileMissing);
    EXPECT_EQ(settings.error().path, temp.Path());
}

class SaveAppSettingsTest : public ::testing::Test {
  protected:
    std::string Saved(const AppSettings& settings) const {
        const Status status = SaveAppSettings(path, settings);
        EXPECT_TRUE(status) << status.error().detail;
        return ReadText(path);
    }

    const TempFolder temp;
    const std::filesystem::path path = temp / "Pictavo.ini";
};

constexpr const char* kNothingSet =
    "nConvert=\r\nLanguage=\r\nTransparency=false\r\nCompressGPF=false\r\nDefaultGPF2=false\r\n"
    "ZeroFilename=false\r\nHEXFilename=false\r\nChanR=false\r\nChanG=false\r\nChanB=false\r\nChanA=false\r\n";

TEST_F(SaveAppSettingsTest, WritesTheKeysInTheirOrderWithoutHiddenRecentFiles) {
    EXPECT_EQ(Saved({}), kNothingSet);
    EXPECT_EQ(ListNames(temp.Path()), std::vector<std::string>{"Pictavo.ini"});
}

TEST_F(SaveAppSettingsTest, WritesEverySettingThatIsOn) {
    AppSettings settings = AllOn();
    settings.nConvert = "/opt/a b/convert";
    settings.Language = "Русский";
    settings.MRU = {"/c.bin", "/b.bin", "/a.bin"};
    EXPECT_EQ(Saved(settings),
              "nConvert=/opt/a b/convert\r\nLanguage=Русский\r\nTransparency=true\r\nCompressGPF=true\r\n"
              "DefaultGPF2=true\r\nZeroFilename=true\r\nHEXFilename=true\r\nChanR=true\r\nChanG=true\r\n"
              "ChanB=true\r\nChanA=true\r\nMRU1=/c.bin\r\nMRU2=/b.bin\r\nMRU3=/a.bin\r\n");
}

TEST_F(SaveAppSettingsTest, EachCheckBoxIsWrittenUnderItsKey) {
    for (const Flag& flag : kFlags) {
        AppSettings settings;
        settings.*flag.member = true;
        std::string expected = kNothingSet;
        const std::string line = std::string(flag.key) + "=";
        expected.replace(expected.find(line) + line.size(), 5, "true");
        EXPECT_EQ(Saved(settings), expected);
    }
}

TEST_F(SaveAppSettingsTest, ASecondRecentFileThatStoodAloneIsSavedAlone) {
    EXPECT_EQ(Saved(Read("MRU2=/x/y.bin\r\n")), std::string(kNothingSet) + "MRU2=/x/y.bin\r\n");
}

TEST_F(SaveAppSettingsTest, WhatWasSavedIsReadBack) {
    AppSettings settings;
    settings.nConvert = " /c=d ";
    settings.Language = "true";
    settings.ZeroFilename = settings.ChanA = true;
    settings.MRU = {"", std::nullopt, "\xFF.bin"};
    ASSERT_TRUE(SaveAppSettings(path, settings));
    const auto read = LoadAppSettings(path, AllOn());
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, settings);
}

TEST_F(SaveAppSettingsTest, TheOldFileIsReplacedWhole) {
    WriteFile(path, std::string("; old\r\nMRU1=a\r\nMRU1=b\r\n") + std::string(5000, 'x'));
    EXPECT_EQ(Saved({}), kNothingSet);
}

TEST_F(SaveAppSettingsTest, ALineEndInATextBeginsNoSetting) {
    AppSettings settings;
    settings.MRU = {"/a\nnConvert=/evil", "/b\r", "/c.bin"};
    EXPECT_EQ(Saved(settings), std::string(kNothingSet) + "MRU3=/c.bin\r\n");
    ASSERT_TRUE(AppendRecentFiles(path, settings));
    EXPECT_EQ(ReadText(path), std::string(kNothingSet) + "MRU3=/c.bin\r\nMRU3=/c.bin\r\n");
}

TEST_F(SaveAppSettingsTest, OnAFullDiskTheOldFileStays) {
    PICTAVO_NEEDS_POSIX("full disks");
    WriteFile(path, std::string("ChanR=true\r\n"));
    {
        const FileSizeLimit full(20);
        EXPECT_EQ(RefusalOf(SaveAppSettings(path, {})).kind, ErrorKind::WriteFailed);
    }
    EXPECT_EQ(ReadText(path), "ChanR=true\r\n");
    EXPECT_EQ(ListNames(temp.Path()), std::vector<std::string>{"Pictavo.ini"});
}

TEST_F(SaveAppSettingsTest, AFolderThatIsNotThereIsAnError) {
    const Error error = RefusalOf(SaveAppSettings(temp / "none" / "Pictavo.ini", {}));
    EXPECT_EQ(error.kind, ErrorKind::WriteFailed);
    EXPECT_EQ(error.path, temp / "none" / "Pictavo.ini");
}

}  // namespace
}  // namespace pictavo::tests
