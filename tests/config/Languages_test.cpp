#include <gmock/gmock.h>
#include <set>

#include "config/LanguageFile.h"
#include "config/LanguageKeys.h"
#include "support/TempFolder.h"

/// The language files that come with the program: whole, well formed, and written for where their texts
/// appear.

namespace pictavo::tests {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

std::filesystem::path Folder() {
    return std::filesystem::path(PICTAVO_SOURCE_DIR) / "lang";
}

const ExpectedKey* KeyOf(const std::string& line) {
    for (const ExpectedKey& key : ExpectedKeys())
        if (line.starts_with(key.name)) return &key;
    return nullptr;
}

class Languages : public ::testing::TestWithParam<std::string> {
  protected:
    std::string Text() const { return ReadText(Folder() / (GetParam() + ".lng")); }

    /// Without their CR LF.
    std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        const std::string text = Text();
        for (std::size_t begin = 0; begin < text.size();) {
            const std::size_t end = std::min(text.find("\r\n", begin), text.size());
            lines.push_back(text.substr(begin, end - begin));
            begin = end + 2;
        }
        return lines;
    }

    /// The text of each key, by a reading of the test's own.
    std::map<std::string, std::string> Values() const {
        std::map<std::string, std::string> values;
        for (const std::string& line : Lines())
            if (const ExpectedKey* key = KeyOf(line)) values[key->name] = line.substr(key->name.size() + 1);
        return values;
    }
};

std::string NameOf(const ::testing::TestParamInfo<std::string>& language) {
    return language.param;
}

INSTANTIATE_TEST_SUITE_P(Shipped, Languages,
                         ::testing::Values("English", "German", "Polish", "Russian", "Ukrainian"), NameOf);

class Translations : public Languages {};

INSTANTIATE_TEST_SUITE_P(Shipped, Translations, ::testing::Values("German", "Polish", "Russian", "Ukrainian"),
                         NameOf);

TEST(LanguageFiles, TheseFiveAreShipped) {
    std::vector<std::string> names = ListNames(Folder());
    std::erase(names, "CMakeLists.txt");
    EXPECT_THAT(names,
                ElementsAre("English.lng", "German.lng", "Polish.lng", "Russian.lng", "Ukrainian.lng"));
}

TEST_P(Languages, EveryKeyStandsOnceAndIsFollowedByAnEqualsSign) {
    std::multiset<std::string> found;
    for (const std::string& line : Lines()) {
        const ExpectedKey* key = KeyOf(line);
        if (key == nullptr) continue;
        found.insert(key->name);
        EXPECT_THAT(line.substr(key->name.size()), StartsWith("="));
    }
    for (const ExpectedKey& key : ExpectedKeys()) EXPECT_EQ(found.count(key.name), 1U) << key.name;
}

TEST_P(Languages, EveryOtherLineIsAComment) {
    for (const std::string& line : Lines())
        EXPECT_TRUE(line.empty() || KeyOf(line) != nullptr || line.starts_with("; ")) << line;
}

TEST_P(Languages, ItsFirstLinesSayWhatItIs) {
    EXPECT_THAT(Lines().front(), StartsWith("; "));
    EXPECT_THAT(Lines().front(), ::testing::HasSubstr("Pictavo"));
}

TEST_P(Languages, AllStandsAheadOfTheCaptionsThatShowIt) {
    const std::string text = Text();
    const std::size_t all = text.find("\r\nstr_all=");
    ASSERT_NE(all, std::string::npos);
    for (const std::string key : {"cap_mnTsf", "cap_mnSBMP", "cap_mnSGPF"})
        EXPECT_LT(all, text.find("\r\n" + key + "=")) << key;
}

TEST_P(Languages, LinesEndWithCrLfAndHaveAtMost255Characters) {
    EXPECT_THAT(Text(), EndsWith("\r\n"));
    for (const std::string& line : Lines()) {
        EXPECT_EQ(line.find_first_of("\r\n"), std::string::npos) << line;
        EXPECT_LE(CharacterCount(line), 255U) << line;
    }
}

TEST_P(Languages, ItIsUtf8WithoutAByteOrderMark) {
    const Bytes bytes = ReadFile(Folder() / (GetParam() + ".lng"));
    EXPECT_TRUE(IsUtf8(MemorySource(bytes)).value_or(false));
    EXPECT_THAT(Text(), Not(StartsWith(std::string(kByteOrderMark))));
}

TEST_P(Languages, NoTextIsEmptyOrHasBlanksAroundItOrAMnemonicSign) {
    for (const auto& [key, value] : Values()) {
        ASSERT_THAT(value, Not(IsEmpty())) << key;
        EXPECT_NE(value.front(), ' ') << key;
        EXPECT_NE(value.back(), ' ') << key;
        EXPECT_EQ(value.find_first_of("&\t"), std::string::npos) << key;
    }
}

constexpr std::string_view kClosingSigns = ".,:;!?";

TEST_P(Languages, TextsThatGetASignBehindThemEndWithoutOne) {
    const auto values = Values();
    for (const std::string key :
         {"str_CmpgpfF", "str_SalCh", "str_RegExt", "str_fChan", "str_faExi", "str_fnExi", "str_CntCmp",
          "str_LarPic", "str_tnx", "str_mModel", "str_firmW", "str_lngPa", "str_platf", "str_manuf"})
        EXPECT_EQ(kClosingSigns.find(values.at(key).back()), std::string_view::npos) << key;
}

TEST_P(Languages, TheCaptionOfSavingAsGpfEndsInGpf) {
    EXPECT_THAT(Values().at("cap_mnSGPF"), EndsWith(" GPF")) << "\"2?\" is put behind it";
}

TEST_P(Languages, MessagesThatStandAloneAreSentences) {
    for (const std::string key : {"str_UNKfile", "str_Succes", "str_RpitLarge", "str_MultFFound"})
        EXPECT_THAT(Values().at(key), EndsWith(".")) << key;
}

TEST_P(Languages, CaptionsOfOneMenuDiffer) {
    const auto values = Values();
    for (const std::vector<std::string>& menu : std::vector<std::vector<std::string>>{
             {"cap_mnFileR", "cap_mnFFlash", "cap_mnView", "cap_mnTools", "cap_mnSett", "cap_mnHelp"},
             {"cap_mnFileOp", "cap_mnFileCl", "cap_mnFileEx"},
             {"cap_mnSaPa", "cap_mnFbPIT", "cap_mnFrPIT", "cap_mnPPcP"},
             {"cap_mnTsf", "cap_mnTExtrFgrP", "cap_mnTExtrFGPN"},
             {"cap_mnLoad", "cap_mnLods", "cap_mnSBMP", "cap_mnSGPF", "cap_mnSPNG", "cap_mnSaPa",
              "cap_mnSChnls", "cap_mnLChnls"},
             {"cap_btnApl", "cap_btnCan", "cap_Browse"}}) {
        std::set<std::string> captions;
        for (const std::string& key : menu) EXPECT_TRUE(captions.insert(values.at(key)).second) << key;
    }
}

/// Words that some languages share with English.
const std::set<std::string> kShared = {"cap_mnFFlash", "str_cFold", "str_firmW", "str_mModel"};

TEST_P(Translations, NothingIsLeftInEnglish) {
    const std::string english = ReadText(Folder() / "English.lng");
    for (const auto& [key, value] : Values()) {
        const bool isEnglish = english.find("\r\n" + key + "=" + value + "\r\n") != std::string::npos;
        EXPECT_TRUE(!isEnglish || kShared.contains(key)) << key;
    }
}

TEST_P(Languages, TheProgramTakesEveryText) {
    LanguageTable table;
    ASSERT_TRUE(LoadLanguage({Folder()}, GetParam(), CodePage::Windows1252, table));
    const auto values = Values();
    std::map<std::string, std::string> captions;
    for (const ExpectedKey& key : ExpectedKeys()) {
        if (key.text != nullptr) {
            EXPECT_EQ(table.*key.text, values.at(key.name)) << key.name;
        }
        for (const ExpectedCaption& caption : key.captions)
            captions[caption.control] =
                CaptionOf(caption, values.at(key.name), values.at("str_all"), GetParam());
    }
    EXPECT_EQ(table.captions, captions);
}

}  // namespace
}  // namespace pictavo::tests
