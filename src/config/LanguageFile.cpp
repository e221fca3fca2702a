#include "config/LanguageFile.h"

#include <algorithm>
#include <array>
#include <optional>

#include "core/LineReader.h"
#include "core/NoOtherValue.h"
#include "core/OutputFile.h"
#include "core/PathText.h"
#include "core/SystemNames.h"

namespace pictavo {

namespace {

constexpr std::size_t kMostCharacters = 255;

/// A hundred times what all the keys can take; the window would wait for more to be read.
constexpr std::uint64_t kMostBytes = 1 << 20;

constexpr const char* kExtension = ".lng";

/// What stands at the end of a caption.
enum class Last {
    Nothing,
    All,       ///< the text str_all, as read so far, in parentheses
    Language,  ///< the name of the language
};

/// A caption that a key sets: `before`, the key's text, `after`, and what stands last.
struct Caption {
    const char* control = nullptr;  ///< null where a key sets fewer captions than there is room for
    const char* before = "";
    const char* after = "";
    Last last = Last::Nothing;
};

struct TextKey {
    std::string_view name;
    std::string LanguageTable::*text = nullptr;
    std::array<Caption, 3> captions = {};
};

/// All keys, in the order in which a line is held against them.
constexpr std::array<TextKey, 60> kTextKeys = {{
    {"str_UNKfile", &LanguageTable::str_UNKfile},
    {"str_Succes", &LanguageTable::str_Succes},
    {"str_PlSel",
     &LanguageTable::str_PlSel,
     {{{"Form2.Frame2", "", " nConvert.exe"}, {"Form2.Frame1", "", " ", Last::Language}}}},
    {"str_CmpgpfF", &LanguageTable::str_CmpgpfF, {{{"Form2.Check2"}}}},
    {"str_SalCh", &LanguageTable::str_SalCh},
    {"str_save", &LanguageTable::str_save},
    {"str_open", &LanguageTable::str_open},
    {"str_CntCmp", &LanguageTable::str_CntCmp},
    {"str_LarPic", &LanguageTable::str_LarPic},
    {"cap_FFinfo", nullptr, {{{"FFinfo"}}}},
    {"cap_TrCh", nullptr, {{{"TransCheck"}, {"Form2.Check1"}}}},
    {"cap_mnFileR", &LanguageTable::cap_mnFileR, {{{"mnu_File"}}}},
    {"cap_mnFileOp", nullptr, {{{"mnu_FileOpen"}}}},
    {"cap_mnFileEx", nullptr, {{{"mnu_FileExit"}}}},
    {"cap_tStr1tab1", nullptr, {{{"TabStrip1"}}}},
    {"str_mModel", &LanguageTable::str_mModel},
    {"str_firmW", &LanguageTable::str_firmW},
    {"str_lngPa", &LanguageTable::str_lngPa},
    {"str_platf", &LanguageTable::str_platf},
    {"str_manuf", &LanguageTable::str_manuf},
    {"str_RegExt", &LanguageTable::str_RegExt},
    {"cap_mnSBMP",
     &LanguageTable::cap_mnSBMP,
     {{{"mnu_PopupPic_SaveAsBMP"},
       {"mnu_PopupPictures_SaveAsBMP"},
       {"mnu_PopupPictures_SaveAsBMPs", "", " ", Last::All}}}},
    {"cap_mnSGPF",
     &LanguageTable::cap_mnSGPF,
     {{{"mnu_PopupPic_SaveAsGPF"},
       {"mnu_PopupPictures_SaveAsGPF"},
       {"mnu_PopupPictures_SaveAsGPFs", "", " ", Last::All}}}},
    {"cap_mnSPNG",
     &LanguageTable::cap_mnSPNG,
     {{{"mnu_PopupPic_SaveAsPNG"}, {"mnu_PopupPictures_SaveAsPNG"}}}},
    {"cap_mnSChnls", nullptr, {{{"mnu_PopupPic_SaveChannels"}}}},
    {"cap_mnLChnls", nullptr, {{{"mnu_PopupPic_LoadChannels"}}}},
    {"str_fnExi", &LanguageTable::str_fnExi},
    {"cap_mnHelp", nullptr, {{{"mnu_Help"}}}},
    {"cap_mnHAbout", nullptr, {{{"mnu_Help_About"}}}},
    {"str_tnx", &LanguageTable::str_tnx},
    {"str_faExi", &LanguageTable::str_faExi},
    {"str_fChan", &LanguageTable::str_fChan},
    {"str_4save", &LanguageTable::str_4save},
    {"str_4open", &LanguageTable::str_4open},
    {"str_cFold", &LanguageTable::str_cFold},
    {"cap_mnLoad", &LanguageTable::cap_mnLoad, {{{"mnu_PopupPictures_Load"}}}},
    {"cap_mnSaPa",
     &LanguageTable::cap_mnSaPa,
     {{{"mnu_PopupPictures_SavePatch"}, {"mnu_Fullflash_SavePatch"}}}},
    {"cap_mnSett", nullptr, {{{"mnu_Settings"}, {"Form2"}}}},
    {"cap_Browse", nullptr, {{{"Form2.Command5"}, {"Form2.Command1"}}}},
    {"cap_btnApl", nullptr, {{{"Form2.Command3"}}}},
    {"cap_btnCan", nullptr, {{{"Form2.Command4"}}}},
    {"cap_mnTools", nullptr, {{{"mnu_Tools"}}}},
    {"cap_mnTsf",
     nullptr,
     {{{"mnu_Tools_FindGIF", "", " GIF ", Last::All},
       {"mnu_Tools_FindPNG", "", " PNG ", Last::All},
       {"mnu_Tools_FindXML", "", " XML ", Last::All}}}},
    {"cap_mnPPcP", nullptr, {{{"mnu_Fullflash_Change_PNG"}}}},
    {"str_all", &LanguageTable::str_all},
    {"cap_mnFileCl", nullptr, {{{"mnu_FileClose"}}}},
    {"cap_mnFFlash", nullptr, {{{"mnu_FullFlash"}}}},
    {"cap_mnTExtrFgrP", nullptr, {{{"mnu_Tools_ExtractFgrP"}}}},
    {"str_Def", &LanguageTable::str_Def, {{{"Form2.Check3", "GPF2 "}}}},
    {"cap_mnLods", nullptr, {{{"mnu_PopupPictures_Loads"}}}},
    {"str_AdZ", &LanguageTable::str_AdZ, {{{"Form2.Check4"}}}},
    {"str_HfN", &LanguageTable::str_HfN, {{{"Form2.Check5"}}}},
    {"cap_mnTExtrFGPN", nullptr, {{{"mnu_Tools_ExtractFGPN"}}}},
    {"cap_mnFbPIT", nullptr, {{{"mnu_Fullflash_BuckUpPIT"}}}},
    {"cap_mnFrPIT", nullptr, {{{"mnu_Fullflash_RebuildPIT"}}}},
    {"str_RpitLarge", &LanguageTable::str_RpitLarge},
    {"str_MultFFound", &LanguageTable::str_MultFFound},
    {"cap_Chnls", nullptr, {{{"Form3"}}}},
    {"cap_Rmbr", nullptr, {{{"Form3.Check5"}}}},
    {"cap_mnView", nullptr, {{{"mnu_View"}}}},
}};

/// The lines of a file in UTF-8, whatever it is written in.
class DecodedLines {
  public:
    DecodedLines(const ByteSource& source, std::optional<CodePage> codePage)
        : source_(source), reader_(source), codePage_(codePage) {}

    /// Fails with Overflow at a line of too many characters, and as LineReader does.
    Result<std::optional<std::string>> Next() {
        PICTAVO_TRY(auto line, reader_.Next());
        if (!line) return line;
        std::string text = codePage_ ? Utf8FromCodePage(*line, *codePage_) : WithoutMark(std::move(*line));
        if (CharacterCount(text) > kMostCharacters) return LineTooLong();
        return std::optional<std::string>(std::move(text));
    }

  private:
    std::string WithoutMark(std::string line) const {
        if (reader_.Number() == 1 && line.starts_with(kByteOrderMark)) line.erase(0, kByteOrderMark.size());
        return line;
    }

    Failure LineTooLong() const {
        return Fail(ErrorKind::Overflow, source_.Path(),
                    "line " + std::to_string(reader_.Number()) + " has more than " +
                        std::to_string(kMostCharacters) + " characters");
    }

    const ByteSource& source_;
    LineReader reader_;
    std::optional<CodePage> codePage_;  // nothing for UTF-8
};

/// The line without the key and the one character behind it, whatever that is and however many bytes it has.
std::string ValueOf(const std::string& line, const TextKey& key) {
    std::size_t begin = key.name.size();
    if (begin < line.size()) ++begin;
    while (begin < line.size() && IsFollowingByte(line[begin])) ++begin;
    return line.substr(begin);
}

std::string Compose(const Caption& caption, const std::string& value, const std::string& language,
                    const LanguageTable& table) {
    const std::string text = caption.before + value + caption.after;
    switch (caption.last) {
        case Last::Nothing:
            return text;
        case Last::All:
            return text + "(" + table.str_all + ")";
        case Last::Language:
            return text + language;
    }
    NoOtherValue();
}

void Take(const std::string& line, const TextKey& key, const std::string& language, LanguageTable& table) {
    if (!line.starts_with(key.name)) return;
    const std::string value = ValueOf(line, key);
    if (key.text != nullptr) table.*key.text = value;
    for (const Caption& caption : key.captions)
        if (caption.control != nullptr)
            table.captions[caption.control] = Compose(caption, value, language, table);
}

std::filesystem::path LanguagePath(const std::filesystem::path& folder, const std::string& language) {
    std::filesystem::path path = folder / "";
    return path += PathOf(language + kExtension);
}

bool HoldsLanguageFile(const std::filesystem::path& folder) {
    const auto names = system_file::FileNamesIn(folder);
    return names && std::any_of(names->begin(), names->end(), [](const std::filesystem::path& name) {
               return name.extension() == kExtension;
           });
}

}  // namespace

Status ReadLanguageFile(const ByteSource& source, const std::string& language, CodePage codePage,
                        LanguageTable& table) {
    if (source.Size() > kMostBytes)
        return Fail(ErrorKind::Overflow, source.Path(), "is larger than 1 MiB, as no language file is");
    PICTAVO_TRY(const bool isUtf8, IsUtf8(source));
    DecodedLines lines(source, isUtf8 ? std::nullopt : std::optional(codePage));
    for (;;) {
        PICTAVO_TRY(const auto line, lines.Next());
        if (!line) return {};
        for (const TextKey& key : kTextKeys) Take(*line, key, language, table);
    }
}

Status LoadLanguage(const std::vector<std::filesystem::path>& folders, const std::string& language,
                    CodePage codePage, LanguageTable& table) {
    for (const std::filesystem::path& folder : folders) {
        const std::filesystem::path path = LanguagePath(folder, language);
        if (NameIsFree(path)) continue;
        PICTAVO_TRY(const auto source, FileSource::Open(path));
        return ReadLanguageFile(*source, language, codePage, table);
    }
    return {};
}

bool HasLanguageFile(const std::vector<std::filesystem::path>& folders, const std::string& language) {
    return std::any_of(folders.begin(), folders.end(), [&](const std::filesystem::path& folder) {
        return !NameIsFree(LanguagePath(folder, language));
    });
}

std::filesystem::path LanguageFolder(const std::vector<std::filesystem::path>& folders) {
    const auto found = std::find_if(folders.begin(), folders.end(), HoldsLanguageFile);
    if (found != folders.end()) return *found;
    return folders.empty() ? std::filesystem::path() : folders.front();
}

}  // namespace pictavo
