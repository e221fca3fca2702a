#include <gmock/gmock.h>
#include <set>

#include "config/LanguageFile.h"
#include "core/Version.h"
#include "docs/FormatPage.h"

/// The user's manual, against the texts that its reader sees.

namespace pictavo::tests {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

std::string Manual() {
    return ReadText(SourceTree() / "manual" / "ReadMe.txt");
}

LanguageTable English() {
    LanguageTable table;
    EXPECT_TRUE(LoadLanguage({SourceTree() / "lang"}, "English", CodePage::Windows1252, table));
    EXPECT_FALSE(table.captions.empty());
    return table;
}

TEST(Manual, NamesTheVersionOfTheProgram) {
    EXPECT_THAT(Manual(), StartsWith("Pictavo " + std::string(kVersion) + "\r\n"));
}

TEST(Manual, LinesEndWithCrLfAndFitAWindowOf78Characters) {
    EXPECT_THAT(Manual(), EndsWith("\r\n"));
    for (const std::string& line : LinesOf(Manual())) {
        EXPECT_EQ(line.find('\r'), line.size() - 1) << line;
        EXPECT_LE(CharacterCount(line), 78U + 1) << line;
    }
}

TEST(Manual, ExplainsEveryMessage) {
    const std::string manual = Manual();
    const LanguageTable table = English();
    for (const std::string& message :
         {table.str_UNKfile, table.str_fnExi + "!", table.str_LarPic + "!", table.str_CntCmp + "!",
          "1bit GPF " + table.str_CntCmp, table.str_faExi + "!", table.str_fChan + "?",
          table.str_CmpgpfF + "?", table.cap_mnSGPF + "2?",
          std::string("Can't find free memory in fullflash!"), std::string("error was occupated"),
          table.str_RpitLarge.substr(0, 40)})
        EXPECT_THAT(manual, HasSubstr(message));
}

/// Controls that explain themselves, or whose captions are the manual's own words.
bool NeedsNoWord(const std::string& control) {
    static const std::set<std::string> kPlain{"mnu_FileExit", "mnu_Help", "mnu_Help_About", "mnu_Help_ReadMe",
                                              "mnu_View_Alpha"};
    return kPlain.contains(control);
}

TEST(Manual, ExplainsEveryCommandByItsCaption) {
    const std::string manual = Manual();
    for (const auto& [control, caption] : English().captions) {
        if (NeedsNoWord(control)) continue;
        EXPECT_THAT(manual, HasSubstr(caption)) << control;
    }
}

TEST(Manual, TellsWhatHasNoCaption) {
    const std::string manual = Manual();
    for (const char* fact : {"line at the bottom of the window", "the title of the window has a mark",
                             "    digits               the number of a picture", "pictavo --help",
                             "12 bits that are stored uncompressed are drawn all\r\nblack"})
        EXPECT_THAT(manual, HasSubstr(fact));
}

}  // namespace
}  // namespace pictavo::tests
