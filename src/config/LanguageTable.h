#pragma once

/// The texts of the messages and captions, as a language file supplies them. A message without a text is
/// empty; what is composed around it (a path, "!", "?") still appears.

#include <map>
#include <string>

namespace pictavo {

/// Members are named as the keys of the language file are.
struct LanguageTable {
    std::string str_UNKfile;  ///< a file of unknown kind
    std::string str_Succes;   ///< completion of a command
    std::string str_PlSel;    ///< first word of every chooser title
    std::string str_CmpgpfF;  ///< question, with "?": compress?
    std::string str_SalCh;    ///< question, with "?": save with the alpha channel?
    std::string str_save;     ///< kept, used by no command
    std::string str_open;     ///< kept, used by no command
    std::string str_CntCmp;  ///< a picture that a format cannot hold; behind "1bit GPF " for compressed 1 bit
    std::string str_LarPic;  ///< a picture too large to show
    std::string str_mModel;  ///< labels of the identification text
    std::string str_firmW;
    std::string str_lngPa;
    std::string str_platf;
    std::string str_manuf;
    std::string str_RegExt;  ///< question, with "?": register the file type?
    std::string str_fnExi;   ///< a file that cannot be opened; a missing converter
    std::string str_tnx;     ///< thanks in the About box
    std::string str_faExi;   ///< title, with "!", of the overwrite question
    std::string str_fChan;   ///< overwrite question, with "?"
    std::string str_4save;   ///< last words of chooser titles
    std::string str_4open;
    std::string str_cFold;  ///< the word for folder in chooser titles
    std::string str_all;    ///< in the captions of commands on all pictures
    std::string str_Def;
    std::string str_AdZ;
    std::string str_HfN;
    std::string str_RpitLarge;   ///< a rebuilt picture block that does not fit
    std::string str_MultFFound;  ///< more than one file on the command line

    // Captions that messages and titles can be made with; these have a text of their own.
    std::string cap_mnFileR = "File";
    std::string cap_mnSBMP = "Save as BMP";
    std::string cap_mnSGPF = "Save as GPF";
    std::string cap_mnSPNG = "Save as PNG";
    std::string cap_mnLoad = "Load picture";
    std::string cap_mnSaPa = "Save Patch";

    /// The caption that each control got from a language file, by the control's object name ("mnu_FileOpen",
    /// "TransCheck"); those of the dialogs with the dialog's name before ("Form2.Check1"), the dialogs' own
    /// by their name alone ("Form2"). A control that is not here keeps its designed caption.
    std::map<std::string, std::string> captions;
};

}  // namespace pictavo
