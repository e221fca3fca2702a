#include "config/LanguageFile.h"

#include <gmock/gmock.h>

#include "config/LanguageKeys.h"
#include "support/Refusal.h"
#include "support/SystemMeans.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* kLanguage = "Klingon";

Status ReadInto(LanguageTable& table, const std::string& text, CodePage codePage = CodePage::Windows1252) {
    const ByteView bytes = AsBytes(text);
    return ReadLanguageFile(MemorySource(Bytes(bytes.begin(), bytes.end())), kLanguage, codePage, table);
}

LanguageTable TableOf(const std::string& text, CodePage codePage = CodePage::Windows1252) {
    LanguageTable table;
    const Status status = ReadInto(table, text, codePage);
    EXPECT_TRUE(status) << status.error().detail;
    return table;
}

// ------------------------------------------------------------------------------------------------ the keys

TEST(LanguageFile, ThereAreSixtyKeys) {
    EXPECT_THAT(ExpectedKeys(), SizeIs(60));
}

TEST(LanguageFile, EachKeySetsItsTextAndItsCaptionsAndNothingElse) {
    for (const ExpectedKey& key : ExpectedKeys()) {
        const LanguageTable read = TableOf(key.name + "=the text\r\n");
        LanguageTable expected;
        if (key.text != nullptr) expected.*key.text = "the text";
        for (const ExpectedCaption& caption : key.captions)
            expected.captions[caption.control] = CaptionOf(caption, "the text", "", kLanguage);
        for (const ExpectedKey& other : ExpectedKeys())
            if (other.text != nullptr) {
                EXPECT_EQ(read.*other.text, expected.*other.text) << key.name << " and " << other.name;
            }
        EXPECT_EQ(read.captions, expected.captions) << key.name;
    }
}

TEST(LanguageFile, MessagesAreEmptyAndTitlesAsDesignedWithoutAFile) {
    const LanguageTable table;
    for (const ExpectedKey& key : ExpectedKeys())
        if (key.name.starts_with("str_")) {
            EXPECT_EQ(table.*key.text, "") << key.name;
        }
    EXPECT_EQ(table.cap_mnFileR, "File");
    EXPECT_EQ(table.cap_mnSBMP, "Save as BMP");
    EXPECT_EQ(table.cap_mnSGPF, "Save as GPF");
    EXPECT_EQ(table.cap_mnSPNG, "Save as PNG");
    EXPECT_EQ(table.cap_mnLoad, "Load picture");
    EXPECT_EQ(table.cap_mnSaPa, "Save Patch");
    EXPECT_THAT(table.captions, IsEmpty());
}

TEST(LanguageFile, TheChoiceOfTheDialogNamesTheConverterAndTheLanguage) {
    const LanguageTable table = TableOf("str_PlSel=Choose");
    EXPECT_EQ(table.captions.at("Form2.Frame2"), "Choose nConvert.exe");
    EXPECT_EQ(table.captions.at("Form2.Frame1"), "Choose Klingon");
}

TEST(LanguageFile, TheDefaultIsCalledGpf2InFront) {
    EXPECT_EQ(TableOf("str_Def=first").captions.at("Form2.Check3"), "GPF2 first");
}

// ----------------------------------------------------------------------------------------------- the lines

TEST(LanguageFile, TheOneCharacterBehindTheKeyIsDroppedWhateverItIs) {
    EXPECT_EQ(TableOf("str_Succes=Done").str_Succes, "Done");
    EXPECT_EQ(TableOf("str_Succes:Done").str_Succes, "Done");
    EXPECT_EQ(TableOf("str_SuccesDone").str_Succes, "one");
    EXPECT_EQ(TableOf("str_Succes = Done").str_Succes, "= Done");
    EXPECT_EQ(TableOf("str_Succes\xE2\x80\x94"
                      "Done")
                  .str_Succes,
              "Done")
        << "a dash is one character";
}

TEST(LanguageFile, TheTextIsTakenAsItStands) {
    EXPECT_EQ(TableOf("str_Succes= a = b ; c & d\t ").str_Succes, " a = b ; c & d\t ");
    EXPECT_EQ(TableOf("str_Succes=\"quoted\"").str_Succes, "\"quoted\"");
}

TEST(LanguageFile, AKeyWithoutATextEmptiesIt) {
    for (const std::string line : {"str_Succes=", "str_Succes"}) {
        LanguageTable table;
        table.str_Succes = "before";
        EXPECT_TRUE(ReadInto(table, line));
        EXPECT_EQ(table.str_Succes, "") << line;
    }
}

TEST(LanguageFile, ALineBelongsToTheKeyThatItBeginsWith) {
    EXPECT_EQ(TableOf("str_allowed=x").str_all, "wed=x");
}

TEST(LanguageFile, TheLastLineOfAKeyWins) {
    const LanguageTable table =
        TableOf("str_Succes=one\r\ncap_mnView=one\r\nstr_Succes=two\r\ncap_mnView=two\r\n");
    EXPECT_EQ(table.str_Succes, "two");
    EXPECT_EQ(table.captions.at("mnu_View"), "two");
}

TEST(LanguageFile, LinesOfNoKeyArePassedOver) {
    const LanguageTable table = TableOf(
        "; str_Succes=no\r\n\r\n str_Succes=no\r\nSTR_SUCCES=no\r\nstr_Succe=no\r\nstr_Thanks=no\r\n");
    EXPECT_EQ(table.str_Succes, "");
    EXPECT_THAT(table.captions, IsEmpty());
}

TEST(LanguageFile, BothKindsOfLineEndAreReadAndTheLastMayBeMissing) {
    for (const std::string end : {"\r\n", "\n"}) {
        const LanguageTable table = TableOf("str_save=Save" + end + "str_open=Open");
        EXPECT_EQ(table.str_save, "Save");
        EXPECT_EQ(table.str_open, "Open");
    }
}

TEST(LanguageFile, WhatItDoesNotNameKeepsTheTextOfTheLanguageBefore) {
    LanguageTable table = TableOf("str_Succes=Fertig\r\ncap_mnView=Ansicht\r\ncap_mnFileR=Datei\r\n");
    EXPECT_TRUE(ReadInto(table, "str_save=Zapisz\r\ncap_mnFileR=Plik\r\n"));
    EXPECT_EQ(table.str_Succes, "Fertig");
    EXPECT_EQ(table.captions.at("mnu_View"), "Ansicht");
    EXPECT_EQ(table.cap_mnFileR, "Plik");
    EXPECT_EQ(table.captions.at("mnu_File"), "Plik");
}

// ------------------------------------------------------------------------------------------------- str_all

constexpr const char* kThreeKeys = "cap_mnTsf=Extract\r\ncap_mnSBMP=Save\r\ncap_mnSGPF=Keep\r\n";

void ExpectAll(const LanguageTable& table, const std::string& all) {
    EXPECT_EQ(table.captions.at("mnu_Tools_FindGIF"), "Extract GIF (" + all + ")");
    EXPECT_EQ(table.captions.at("mnu_Tools_FindPNG"), "Extract PNG (" + all + ")");
    EXPECT_EQ(table.captions.at("mnu_Tools_FindXML"), "Extract XML (" + all + ")");
    EXPECT_EQ(table.captions.at("mnu_PopupPictures_SaveAsBMPs"), "Save (" + all + ")");
    EXPECT_EQ(table.captions.at("mnu_PopupPictures_SaveAsGPFs"), "Keep (" + all + ")");
    EXPECT_EQ(table.captions.at("mnu_PopupPictures_SaveAsBMP"), "Save");
}

TEST(LanguageFile, AllStandsInTheCaptionsBehindIt) {
    ExpectAll(TableOf(std::string("str_all=all\r\n") + kThreeKeys), "all");
}

TEST(LanguageFile, AllComesTooLateForTheCaptionsBeforeIt) {
    const std::string late = std::string(kThreeKeys) + "str_all=all\r\n";
    LanguageTable table = TableOf(late);
    ExpectAll(table, "");
    EXPECT_EQ(table.str_all, "all");
    EXPECT_TRUE(ReadInto(table, std::string(kThreeKeys) + "str_all=alle\r\n"));
    ExpectAll(table, "all");
}

// ---------------------------------------------------------------------------------------------- characters

TEST(LanguageFile, TextThatIsNotUtf8IsOfTheCodePage) {
    const std::string succes = "str_Succes=\xC3\xEE\xF2\xEE\xE2\xEE\r\n";
    EXPECT_EQ(TableOf(succes, CodePage::Windows1251).str_Succes, "Готово");
    EXPECT_EQ(TableOf(succes, CodePage::Windows1252).str_Succes, "Ãîòîâî");
}

TEST(LanguageFile, Utf8IsToldWhateverTheCodePage) {
    for (const CodePage codePage : {CodePage::Windows1251, CodePage::Windows1252})
        EXPECT_EQ(TableOf("str_Succes=Готово\r\n", codePage).str_Succes, "Готово");
}

TEST(LanguageFile, AByteOrderMarkIsNoPartOfTheFirstLine) {
    const LanguageTable table = TableOf("\xEF\xBB\xBFstr_Succes=Готово\r\n\xEF\xBB\xBFstr_save=x\r\n");
    EXPECT_EQ(table.str_Succes, "Готово");
    EXPECT_EQ(table.str_save, "") << "a mark further on is a character like others";
}

TEST(LanguageFile, OneByteThatIsNoUtf8MakesTheWholeFileTextOfTheCodePage) {
    const LanguageTable table =
        TableOf("str_save=Готово\r\nstr_open=\xC3\xEE\xF2\xEE\xE2\xEE\r\n", CodePage::Windows1251);
    EXPECT_EQ(table.str_open, "Готово");
    EXPECT_EQ(table.str_save, "Р“РѕС‚РѕРІРѕ");
}

// -------------------------------------------------------------------------------------------- long lines

std::string Times(std::size_t count, const std::string& text) {
    std::string times;
    while (count-- > 0) times += text;
    return times;
}

constexpr std::size_t kKeyLength = 11;  // "str_Succes="

TEST(LanguageFile, ALineOf255CharactersIsRead) {
    for (const std::string letter : {"x", "Ж", "\xF0\x9F\x93\xB1"}) {
        const std::string text = Times(255 - kKeyLength, letter);
        EXPECT_EQ(TableOf("str_Succes=" + text + "\r\nstr_save=s").str_Succes, text);
        EXPECT_EQ(TableOf("\xEF\xBB\xBFstr_Succes=" + text).str_Succes, text)
            << "a byte order mark is not counted";
    }
}

TEST(LanguageFile, ALineOf256CharactersEndsTheReadingAndTheLinesBeforeAreTaken) {
    for (const std::string letter : {"x", "Ж"}) {
        LanguageTable table;
        const std::string line = "str_Succes=" + Times(256 - kKeyLength, letter) + "\r\n";
        const Status status = ReadInto(table, "str_save=s\r\n" + line + "str_open=o\r\n");
        EXPECT_EQ(RefusalOf(status),
                  (Error{ErrorKind::Overflow, {}, std::nullopt, "line 2 has more than 255 characters"}));
        EXPECT_EQ(table.str_save, "s");
        EXPECT_EQ(table.str_Succes, "");
        EXPECT_EQ(table.str_open, "");
    }
}

TEST(LanguageFile, ALineOfNoKeyMayBeNoLongerEither) {
    LanguageTable table;
    EXPECT_EQ(RefusalOf(ReadInto(table, ";" + Times(255, "-"))).kind, ErrorKind::Overflow);
}

TEST(LanguageFile, AFileOfMoreThanOneMiBIsRefusedBeforeItIsRead) {
    LanguageTable table;
    Bytes bytes(1U << 20, '\n');
    std::copy_n("str_open=Open", 13, bytes.begin());
    ASSERT_TRUE(ReadLanguageFile(MemorySource(bytes), "English", CodePage::Windows1252, table));
    EXPECT_EQ(table.str_open, "Open");
    table = {};
    bytes.push_back('\n');
    const Status read = ReadLanguageFile(MemorySource(bytes), "English", CodePage::Windows1252, table);
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().kind, ErrorKind::Overflow);
    EXPECT_EQ(read.error().detail, "is larger than 1 MiB, as no language file is");
    EXPECT_EQ(table.str_open, "");
}

TEST(LanguageFile, CharactersOfACodePageAreCountedAsOneEach) {
    EXPECT_EQ(
        TableOf("str_Succes=" + Times(255 - kKeyLength, "\xC3") + "\r\n", CodePage::Windows1251).str_Succes,
        Times(255 - kKeyLength, "Г"));
}

TEST(LanguageFile, BytesOfEveryKindAreHarmless) {
    std::string text;
    for (int i = 0; i < 4096; ++i) text += std::string(1, static_cast<char>(i * 37 % 256)) + "\n";
    EXPECT_EQ(TableOf(text + "str_Succes=Done").str_Succes, "Done");
}

// ------------------------------------------------------------------------------------------------- folders

class LoadLanguageTest : public ::testing::Test {
  protected:
    Status Load(const std::string& language) {
        return LoadLanguage({first.Path(), second.Path()}, language, CodePage::Windows1252, table);
    }

    TempFolder first;
    TempFolder second;
    LanguageTable table;
};

TEST_F(LoadLanguageTest, TheFileIsTheLanguagesNameWithItsEnding) {
    WriteFile(first / "My.own Deutsch.lng", std::string("str_Succes=Fertig\r\nstr_PlSel=Bitte\r\n"));
    EXPECT_TRUE(Load("My.own Deutsch"));
    EXPECT_EQ(table.str_Succes, "Fertig");
    EXPECT_EQ(table.captions.at("Form2.Frame1"), "Bitte My.own Deutsch");
}

TEST_F(LoadLanguageTest, ANameInAnyAlphabetIsFound) {
    WriteFile(second / "Русский.lng", std::string("str_Succes=Готово\r\n"));
    EXPECT_TRUE(Load("Русский"));
    EXPECT_EQ(table.str_Succes, "Готово");
}

TEST_F(LoadLanguageTest, TheFirstFolderThatHasItIsReadAndNoOther) {
    WriteFile(first / "English.lng", std::string("str_Succes=first\r\n"));
    WriteFile(second / "English.lng", std::string("str_Succes=second\r\nstr_save=second\r\n"));
    EXPECT_TRUE(Load("English"));
    EXPECT_EQ(table.str_Succes, "first");
    EXPECT_EQ(table.str_save, "");
}

TEST_F(LoadLanguageTest, WhereNoFolderHasItNothingChanges) {
    table.str_Succes = "before";
    for (const std::string language : {"English", "", "..", "/"}) EXPECT_TRUE(Load(language)) << language;
    EXPECT_TRUE(LoadLanguage({}, "English", CodePage::Windows1252, table));
    EXPECT_EQ(table.str_Succes, "before");
    EXPECT_THAT(table.captions, IsEmpty());
}

TEST_F(LoadLanguageTest, AFullPathIsLookedForInTheFolder) {
    WriteFile(first / "English.lng", std::string("str_Succes=outside\r\n"));
    EXPECT_TRUE(LoadLanguage({second.Path()}, (first / "English").string(), CodePage::Windows1252, table));
    EXPECT_EQ(table.str_Succes, "");
}

TEST_F(LoadLanguageTest, WhatStandsThereAndCanNotBeOpenedIsAFailureThatNamesIt) {
    PICTAVO_NEEDS_POSIX("symbolic links");
    std::filesystem::create_directory(first / "Folder.lng");
    std::filesystem::create_symlink(first / "gone", first / "Link.lng");
    for (const std::string language : {"Folder", "Link"}) {
        WriteFile(second / (language + ".lng"), std::string("str_Succes=second\r\n"));
        const Error refusal = RefusalOf(Load(language));
        EXPECT_EQ(refusal.kind, ErrorKind::FileMissing) << language;
        EXPECT_EQ(refusal.path, first / (language + ".lng"));
        EXPECT_EQ(table.str_Succes, "") << language;
    }
}

TEST_F(LoadLanguageTest, LanguagesAreChosenFromTheFirstFolderThatHoldsAFileOfOne) {
    const std::vector<std::filesystem::path> folders = {first / "gone", first.Path(), second.Path()};
    EXPECT_EQ(LanguageFolder(folders), first / "gone");
    WriteFile(first / "English.txt", std::string());
    WriteFile(second / "English.lng", std::string());
    EXPECT_EQ(LanguageFolder(folders), second.Path());
    WriteFile(first / "German.lng", std::string());
    EXPECT_EQ(LanguageFolder(folders), first.Path());
    EXPECT_EQ(LanguageFolder({}), "");
}

TEST_F(LoadLanguageTest, AFailureNamesTheFile) {
    const auto path = WriteFile(first / "Long.lng", Times(256, "x"));
    EXPECT_EQ(RefusalOf(Load("Long")).path, path);
}

}  // namespace
}  // namespace pictavo::tests
