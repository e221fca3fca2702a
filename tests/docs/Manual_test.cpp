#include <gmock/gmock.h>

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

TEST(Manual, ExplainsEveryCommandByItsCaption) {
    const std::string manual = Manual();
    const LanguageTable table = English();
    for (const std::string control : {"mnu_File",
                                      "mnu_FileOpen",
                                      "mnu_FileClose",
                                      "mnu_FullFlash",
                                      "mnu_Fullflash_SavePatch",
                                      "mnu_Fullflash_BuckUpPIT",
                                      "mnu_Fullflash_RebuildPIT",
                                      "mnu_View",
                                      "mnu_Settings",
                                      "mnu_PopupPictures_Load",
                                      "mnu_PopupPictures_Loads",
                                      "mnu_PopupPictures_SaveAsBMPs",
                                      "mnu_PopupPictures_SaveAsGPFs",
                                      "mnu_PopupPic_SaveAsBMP",
                                      "mnu_PopupPic_SaveAsGPF",
                                      "mnu_PopupPic_SaveAsPNG",
                                      "mnu_PopupPic_SaveChannels",
                                      "mnu_PopupPic_LoadChannels",
                                      "TransCheck",
                                      "Form2.Check2",
                                      "Form2.Check3",
                                      "Form2.Check4",
                                      "Form2.Check5",
                                      "Form2.Frame1",
                                      "Form2.Frame2",
                                      "Form2.Command1",
                                      "Form2.Command3",
                                      "Form2.Command4",
                                      "Form3",
                                      "Form3.Check5"})
        EXPECT_THAT(manual, HasSubstr(table.captions.at(control))) << control;
}

}  // namespace
}  // namespace pictavo::tests
