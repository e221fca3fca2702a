#pragma once

/// Every key of a language file, and what a line of it must set: told a second time, for comparison.

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "config/LanguageTable.h"

namespace pictavo::tests {

/// A control, and its caption where V stands for the text, A for str_all and L for the language.
struct ExpectedCaption {
    const char* control;
    const char* pattern = "V";
};

struct ExpectedKey {
    std::string name;
    std::string LanguageTable::*text;
    std::vector<ExpectedCaption> captions;
};

inline const std::vector<ExpectedKey>& ExpectedKeys() {
    using T = LanguageTable;
    static const std::vector<ExpectedKey> keys = {
        {"str_UNKfile", &T::str_UNKfile, {}},
        {"str_Succes", &T::str_Succes, {}},
        {"str_PlSel", &T::str_PlSel, {{"Form2.Frame2", "V nConvert.exe"}, {"Form2.Frame1", "V L"}}},
        {"str_CmpgpfF", &T::str_CmpgpfF, {{"Form2.Check2"}}},
        {"str_SalCh", &T::str_SalCh, {}},
        {"str_save", &T::str_save, {}},
        {"str_open", &T::str_open, {}},
        {"str_CntCmp", &T::str_CntCmp, {}},
        {"str_LarPic", &T::str_LarPic, {}},
        {"cap_FFinfo", nullptr, {{"FFinfo"}}},
        {"cap_TrCh", nullptr, {{"TransCheck"}, {"Form2.Check1"}}},
        {"cap_mnFileR", &T::cap_mnFileR, {{"mnu_File"}}},
        {"cap_mnFileOp", nullptr, {{"mnu_FileOpen"}}},
        {"cap_mnFileEx", nullptr, {{"mnu_FileExit"}}},
        {"cap_tStr1tab1", nullptr, {{"TabStrip1"}}},
        {"str_mModel", &T::str_mModel, {}},
        {"str_firmW", &T::str_firmW, {}},
        {"str_lngPa", &T::str_lngPa, {}},
        {"str_platf", &T::str_platf, {}},
        {"str_manuf", &T::str_manuf, {}},
        {"str_RegExt", &T::str_RegExt, {}},
        {"cap_mnSBMP",
         &T::cap_mnSBMP,
         {{"mnu_PopupPic_SaveAsBMP"},
          {"mnu_PopupPictures_SaveAsBMP"},
          {"mnu_PopupPictures_SaveAsBMPs", "V (A)"}}},
        {"cap_mnSGPF",
         &T::cap_mnSGPF,
         {{"mnu_PopupPic_SaveAsGPF"},
          {"mnu_PopupPictures_SaveAsGPF"},
          {"mnu_PopupPictures_SaveAsGPFs", "V (A)"}}},
        {"cap_mnSPNG", &T::cap_mnSPNG, {{"mnu_PopupPic_SaveAsPNG"}, {"mnu_PopupPictures_SaveAsPNG"}}},
        {"cap_mnSChnls", nullptr, {{"mnu_PopupPic_SaveChannels"}}},
        {"cap_mnLChnls", nullptr, {{"mnu_PopupPic_LoadChannels"}}},
        {"str_fnExi", &T::str_fnExi, {}},
        {"cap_mnHelp", nullptr, {{"mnu_Help"}}},
        {"cap_mnHAbout", nullptr, {{"mnu_Help_About"}}},
        {"str_tnx", &T::str_tnx, {}},
        {"str_faExi", &T::str_faExi, {}},
        {"str_fChan", &T::str_fChan, {}},
        {"str_4save", &T::str_4save, {}},
        {"str_4open", &T::str_4open, {}},
        {"str_cFold", &T::str_cFold, {}},
        {"cap_mnLoad", &T::cap_mnLoad, {{"mnu_PopupPictures_Load"}}},
        {"cap_mnSaPa", &T::cap_mnSaPa, {{"mnu_PopupPictures_SavePatch"}, {"mnu_Fullflash_SavePatch"}}},
        {"cap_mnSett", nullptr, {{"mnu_Settings"}, {"Form2"}}},
        {"cap_Browse", nullptr, {{"Form2.Command5"}, {"Form2.Command1"}}},
        {"cap_btnApl", nullptr, {{"Form2.Command3"}}},
        {"cap_btnCan", nullptr, {{"Form2.Command4"}}},
        {"cap_mnTools", nullptr, {{"mnu_Tools"}}},
        {"cap_mnTsf",
         nullptr,
         {{"mnu_Tools_FindGIF", "V GIF (A)"},
          {"mnu_Tools_FindPNG", "V PNG (A)"},
          {"mnu_Tools_FindXML", "V XML (A)"}}},
        {"cap_mnPPcP", nullptr, {{"mnu_Fullflash_Change_PNG"}}},
        {"str_all", &T::str_all, {}},
        {"cap_mnFileCl", nullptr, {{"mnu_FileClose"}}},
        {"cap_mnFFlash", nullptr, {{"mnu_FullFlash"}}},
        {"cap_mnTExtrFgrP", nullptr, {{"mnu_Tools_ExtractFgrP"}}},
        {"str_Def", &T::str_Def, {{"Form2.Check3", "GPF2 V"}}},
        {"cap_mnLods", nullptr, {{"mnu_PopupPictures_Loads"}}},
        {"str_AdZ", &T::str_AdZ, {{"Form2.Check4"}}},
        {"str_HfN", &T::str_HfN, {{"Form2.Check5"}}},
        {"cap_mnTExtrFGPN", nullptr, {{"mnu_Tools_ExtractFGPN"}}},
        {"cap_mnFbPIT", nullptr, {{"mnu_Fullflash_BuckUpPIT"}}},
        {"cap_mnFrPIT", nullptr, {{"mnu_Fullflash_RebuildPIT"}}},
        {"str_RpitLarge", &T::str_RpitLarge, {}},
        {"str_MultFFound", &T::str_MultFFound, {}},
        {"cap_Chnls", nullptr, {{"Form3"}}},
        {"cap_Rmbr", nullptr, {{"Form3.Check5"}}},
        {"cap_mnView", nullptr, {{"mnu_View"}}},
    };
    return keys;
}

/// The pattern with its letters replaced.
inline std::string CaptionOf(const ExpectedCaption& caption, const std::string& value, const std::string& all,
                             const std::string& language) {
    std::string text;
    const std::string_view pattern = caption.pattern;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const bool isAlone = (i == 0 || pattern[i - 1] == ' ' || pattern[i - 1] == '(') &&
                             (i + 1 == pattern.size() || pattern[i + 1] == ' ' || pattern[i + 1] == ')');
        if (isAlone && pattern[i] == 'V')
            text += value;
        else if (isAlone && pattern[i] == 'A')
            text += all;
        else if (isAlone && pattern[i] == 'L')
            text += language;
        else
            text += pattern[i];
    }
    return text;
}

}  // namespace pictavo::tests
