/// Language files. Every text of the table is one that the file holds, or the one that was there before, and
/// a file that is read twice changes nothing the second time.

#include <array>

#include "Holds.h"
#include "Input.h"
#include "PiecewiseSource.h"
#include "config/LanguageFile.h"

namespace pictavo::fuzz {
namespace {

using Text = std::string LanguageTable::*;

constexpr std::array<Text, 34> kTexts{
    &LanguageTable::str_UNKfile,    &LanguageTable::str_Succes,  &LanguageTable::str_PlSel,
    &LanguageTable::str_CmpgpfF,    &LanguageTable::str_SalCh,   &LanguageTable::str_save,
    &LanguageTable::str_open,       &LanguageTable::str_CntCmp,  &LanguageTable::str_LarPic,
    &LanguageTable::str_mModel,     &LanguageTable::str_firmW,   &LanguageTable::str_lngPa,
    &LanguageTable::str_platf,      &LanguageTable::str_manuf,   &LanguageTable::str_RegExt,
    &LanguageTable::str_fnExi,      &LanguageTable::str_tnx,     &LanguageTable::str_faExi,
    &LanguageTable::str_fChan,      &LanguageTable::str_4save,   &LanguageTable::str_4open,
    &LanguageTable::str_cFold,      &LanguageTable::str_all,     &LanguageTable::str_Def,
    &LanguageTable::str_AdZ,        &LanguageTable::str_HfN,     &LanguageTable::str_RpitLarge,
    &LanguageTable::str_MultFFound, &LanguageTable::cap_mnFileR, &LanguageTable::cap_mnSBMP,
    &LanguageTable::cap_mnSGPF,     &LanguageTable::cap_mnSPNG,  &LanguageTable::cap_mnLoad,
    &LanguageTable::cap_mnSaPa};

constexpr std::size_t kMostCharacters = 255;

/// The text of the file in UTF-8, as it is read.
std::string Utf8Of(const Bytes& file, CodePage codePage) {
    const bool isUtf8 = *IsUtf8(MemorySource(file));
    return isUtf8 ? std::string(AsText(file)) : Utf8FromCodePage(AsText(file), codePage);
}

void CheckTexts(const LanguageTable& table, const std::string& file) {
    const LanguageTable before;
    for (const Text text : kTexts)
        Holds(table.*text == before.*text || file.find(table.*text) != std::string::npos,
              "a text is the file's, or as it was");
    for (const Text text : kTexts)
        Holds(CharacterCount(table.*text) <= kMostCharacters, "a text has its limit");
    for (const auto& [control, caption] : table.captions)
        Holds(!control.empty() && caption.find('\n') == std::string::npos,
              "a caption is one line of a control");
}

void CheckReadAgain(const Bytes& file, CodePage codePage, LanguageTable table) {
    const LanguageTable first = table;
    Holds(ReadLanguageFile(MemorySource(file), "L", codePage, table).has_value(),
          "a file reads as often as wanted");
    for (const Text text : kTexts)
        Holds(table.*text == first.*text, "a file read twice gives the same texts");
    Holds(table.captions.size() == first.captions.size(),
          "a file read twice gives captions to the same controls");
}

void Run(Input input) {
    const std::size_t piece = PieceLength(input.Byte());
    const CodePage codePage = input.Flag() ? CodePage::Windows1251 : CodePage::Windows1252;
    const Bytes file = input.Rest();
    LanguageTable table;
    const Status read = ReadLanguageFile(PiecewiseSource(file, piece), "L", codePage, table);
    CheckTexts(table, Utf8Of(file, codePage));
    if (!read) Holds(read.error().kind == ErrorKind::Overflow, "only a line too long is refused");
    if (read) CheckReadAgain(file, codePage, table);
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
