/// Language files. The texts, the captions and the refusal must be those of the plain reader, also when a
/// file is read over another one, or a second time.

#include "Input.h"
#include "PiecewiseSource.h"
#include "PlainLanguage.h"
#include "config/LanguageFile.h"

namespace pictavo::fuzz {
namespace {

constexpr const char* kLanguage = "Nederlands";

/// The texts of the language before, by which is seen what a file leaves alone.
LanguageTable TableBefore() {
    LanguageTable table;
    for (const tests::ExpectedKey& key : tests::ExpectedKeys())
        if (key.text != nullptr) table.*key.text = "old " + key.name;
    return table;
}

void CheckRead(const Bytes& file, std::size_t piece, CodePage codePage, LanguageTable& table) {
    LanguageTable expected = table;
    const Status read = ReadLanguageFile(PiecewiseSource(file, piece), kLanguage, codePage, table);
    const bool isRead = plain::ReadInto(expected, file, codePage, kLanguage);
    Holds(read.has_value() == isRead, "a file is refused when the plain reader refuses it");
    Holds(read || read.error().kind == ErrorKind::Overflow, "only a line too long is refused");
    Holds(plain::AreEqual(table, expected), "texts and captions are those of the plain reader");
}

void Run(Input input) {
    const std::size_t piece = PieceLength(input.Byte());
    const CodePage codePage = input.Flag() ? CodePage::Windows1251 : CodePage::Windows1252;
    const Bytes file = input.Rest();
    LanguageTable table = TableBefore();
    CheckRead(file, piece, codePage, table);
    CheckRead(file, piece, codePage, table);
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
