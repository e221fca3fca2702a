/// Patches as text. Every line that is read is written and read again as the same, the lines make the bytes
/// and only the bytes that they say, and the sections give out no more data than the text holds.

#include "Holds.h"
#include "Input.h"
#include "PiecewiseSource.h"
#include "patch/PatchReader.h"
#include "patch/PatchSections.h"

namespace pictavo::fuzz {
namespace {

MemorySource SourceOf(const std::string& text) {
    const ByteView bytes = AsBytes(text);
    return MemorySource(Bytes(bytes.begin(), bytes.end()));
}

void CheckWrittenAnew(const std::vector<PatchEntry>& entries) {
    std::string text;
    for (const PatchEntry& entry : entries) text += PatchLine(entry.offset, entry.oldBytes, entry.newBytes);
    const auto again = ReadPatch(SourceOf(text));
    Holds(again && again->size() == entries.size(), "the lines of a patch, written, are read");
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const PatchEntry& entry = (*again)[i];
        Holds(entry.line == i + 1 && entry.offset == entries[i].offset &&
                  entry.oldBytes == entries[i].oldBytes && entry.newBytes == entries[i].newBytes,
              "a line written and read is the same");
    }
}

/// The flash holds the old bytes of the last line: that one must not be a mismatch.
void CheckAgainstFlash(const std::vector<PatchEntry>& entries, const Bytes& flash) {
    const auto mismatches = CheckPatch(entries, MemorySource(flash));
    Holds(mismatches && mismatches->size() <= entries.size(), "each line mismatches at most once");
    for (const PatchMismatch& mismatch : *mismatches) {
        Holds(mismatch.found != mismatch.expected, "what mismatches differs");
        const std::uint64_t size = flash.size();
        const std::uint64_t there = mismatch.offset < size ? size - mismatch.offset : 0;
        Holds(mismatch.found.size() == std::min<std::uint64_t>(there, mismatch.expected.size()),
              "what is found lies in the flash");
    }
}

/// How often a text holds another one.
std::size_t CountIn(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

void CheckSections(const Bytes& patch, std::size_t piece) {
    const PiecewiseSource source(patch, piece);
    PatchSectionReader sections(source);
    std::size_t parts = 0;
    std::size_t bytes = 0;
    for (;;) {
        const auto part = sections.NextSection();
        Holds(part.has_value(), "memory can be read");
        if (!*part) break;
        ++parts;
        for (;;) {
            const auto data = sections.NextData();
            Holds(data.has_value(), "memory can be read");
            if (!*data) break;
            bytes += (*data)->size();
        }
    }
    Holds(sections.Position() == patch.size(), "sections are read to the end of the patch");
    Holds(parts <= CountIn(AsText(patch), "Picture"), "each section has its title");
    Holds(4 * bytes <= patch.size(), "each byte takes four digits, two of them the old one's");
}

void Run(Input input) {
    const std::size_t piece = PieceLength(input.Byte());
    const Bytes flash(input.Number16(), input.Byte());
    const Bytes patch = input.Rest();
    CheckSections(patch, piece);
    const auto entries = ReadPatch(PiecewiseSource(patch, piece));
    Holds(entries || entries.error().kind == ErrorKind::Malformed, "a patch that is not read is malformed");
    if (!entries) return;
    CheckWrittenAnew(*entries);
    CheckAgainstFlash(*entries, flash);
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
