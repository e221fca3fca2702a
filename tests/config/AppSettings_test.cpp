#include "config/AppSettings.h"

#include <gtest/gtest.h>

#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

AppSettings Read(const std::string& text, const AppSettings& initial = {}) {
    const ByteView bytes = AsBytes(text);
    const auto settings = ReadAppSettings(MemorySource(Bytes(bytes.begin(), bytes.end())), initial);
    EXPECT_TRUE(settings) << settings.error().detail;
    return settings.value_or(AppSettings());
}

struct Flag {
    const char* key;
    bool AppSettings::*member;
};

constexpr std::array<Flag, 9> kFlags = {{
    {"Transparency", &AppSettings::Transparency},
    {"CompressGPF", &AppSettings::CompressGPF},
    {"DefaultGPF2", &AppSettings::DefaultGPF2},
    {"ZeroFilename", &AppSettings::ZeroFilename},
    {"HEXFilename", &AppSettings::HEXFilename},
    {"ChanR", &AppSettings::ChanR},
    {"ChanG", &AppSettings::ChanG},
    {"ChanB", &AppSettings::ChanB},
    {"ChanA", &AppSettings::ChanA},
}};

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
    expected.Language = "/usr/share/pictavo/lang/de.lng";
    expected.Transparency = expected.DefaultGPF2 = expected.HEXFilename = expected.ChanG = true;
    expected.MRU = {"/home/a/one.bin", "/home/a/two.bin", "/home/a/three.bin"};
    const std::vector<std::string> lines = {"nConvert=C:\\tools\\nconvert.exe",
                                            "Language=/usr/share/pictavo/lang/de.lng",
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

TEST(LoadAppSettings, AMissingFileOrAFolderGivesTheInitialSettings) {
    const TempFolder temp;
    AppSettings initial;
    initial.nConvert = "x";
    for (const auto& path : {temp / "Pictavo.ini", temp.Path()}) {
        const auto settings = LoadAppSettings(path, initial);
        ASSERT_TRUE(settings) << path;
        EXPECT_EQ(*settings, initial);
    }
    EXPECT_TRUE(ListNames(temp.Path()).empty());
}

}  // namespace
}  // namespace pictavo::tests
