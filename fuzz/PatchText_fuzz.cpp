/// Patches as text. The lines that are read, and those that do not fit a flash, must be those of the plain
/// reader; written, they are read again as the same; and the sections give out no more data than the text
/// holds.

#include "Holds.h"
#include "Input.h"
#include "PiecewiseSource.h"
#include "PlainPatch.h"
#include "patch/PatchSections.h"
#include "tests/support/WholePatch.h"

namespace pictavo::fuzz {
namespace {

MemorySource SourceOf(const std::string& text) {
    const ByteView bytes = AsBytes(text);
    return MemorySource(Bytes(bytes.begin(), bytes.end()));
}

void CheckWrittenAnew(const std::vector<PatchEntry>& entries) {
    std::string text;
    for (const PatchEntry& entry : entries) text += PatchLine(entry.offset, entry.oldBytes, entry.newBytes);
    const auto again = tests::ReadWholePatch(SourceOf(text));
    Holds(again && again->size() == entries.size(), "the lines of a patch, written, are read");
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const PatchEntry& entry = (*again)[i];
        Holds(entry.line == i + 1 && entry.offset == entries[i].offset &&
                  entry.oldBytes == entries[i].oldBytes && entry.newBytes == entries[i].newBytes,
              "a line written and read is the same");
    }
}

/// Of eight lines those that `held` flags have their old bytes put into the flash, as far as it reaches.
Bytes Holding(const std::vector<PatchEntry>& entries, std::uint8_t held, Bytes flash) {
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if ((held >> i % 8 & 1) == 0) continue;
        std::uint64_t at = entries[i].offset;
        for (const std::uint8_t byte : entries[i].oldBytes) {
            if (at < flash.size()) flash[static_cast<std::size_t>(at)] = byte;
            ++at;
        }
    }
    return flash;
}

void CheckAgainstFlash(const ByteSource& patch, const std::vector<PatchEntry>& entries, const Bytes& flash,
                       std::size_t piece) {
    const auto mismatches = tests::MismatchesOf(patch, PiecewiseSource(flash, piece));
    Holds(mismatches && plain::AreEqual(*mismatches, plain::MismatchesOf(entries, flash)),
          "the lines that do not fit the flash are those of the plain comparison");
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
    const std::size_t flashSize = input.Number16();
    const std::uint8_t filling = input.Byte();
    const std::uint8_t held = input.Byte();
    const Bytes patch = input.Rest();
    CheckSections(patch, piece);
    const PiecewiseSource source(patch, piece);
    const auto entries = tests::ReadWholePatch(source);
    const auto expected = plain::EntriesOf(AsText(patch));
    Holds(entries.has_value() == expected.has_value(), "a patch is refused when the plain reader refuses it");
    if (!entries)
        return Holds(entries.error().kind == ErrorKind::Malformed, "a patch that is not read is malformed");
    Holds(plain::AreEqual(*entries, *expected), "the lines are those of the plain reader");
    CheckWrittenAnew(*entries);
    CheckAgainstFlash(source, *entries, Holding(*entries, held, Bytes(flashSize, filling)), piece);
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
