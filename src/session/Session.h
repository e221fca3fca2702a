#pragma once

/// The state of one window, or of one run of the command line. Commands receive it by reference; nothing is
/// global.

#include <string>
#include <vector>

#include "codec/PictureDecoder.h"
#include "config/AppSettings.h"
#include "config/LanguageTable.h"
#include "config/TextEncoding.h"
#include "core/PictureTable.h"
#include "patch/WorkFiles.h"

namespace pictavo {

/// What the view shows.
struct ShownPicture {
    bool isShown = false;        ///< the Raster holds a whole picture, which may be saved
    bool isComplete = true;      ///< false when the file ended inside the picture's data
    std::string caption;         ///< information line, or why nothing is shown
    std::uint64_t consumed = 0;  ///< stored bytes of a phone picture

    bool operator==(const ShownPicture&) const = default;
};

/// Where the program's own files lie.
struct Places {
    std::filesystem::path settingsFile;                  ///< empty where there is none: nothing is stored
    std::vector<std::filesystem::path> languageFolders;  ///< searched in this order
    CodePage codePage = CodePage::Windows1252;           ///< of language files that are not UTF-8
};

struct Session {
    Places places;
    AppSettings settings;
    LanguageTable texts;
    WorkFiles workFiles;

    FullflashImage flash;
    std::vector<PictureRecord> rows;
    std::vector<bool> replaced;  ///< for each row whether it is bold: a replacement was made of it

    Picture picture;
    ShownPicture shown;
    int pictureNumber = 0;  ///< of the row shown last; goes into the header of a GPF

    bool pngPatchPending = false;   ///< the work folder holds a patch of replaced PNG files
    bool savePatchEnabled = false;  ///< something was replaced since the last patch
};

}  // namespace pictavo
