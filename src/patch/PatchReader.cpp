#include "patch/PatchReader.h"

#include <algorithm>

#include "core/BasicCalculations_Tarsk.h"
#include "core/LineReader.h"
#include "core/OutputFile.h"

namespace pictavo {

namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEFabcdef";
constexpr std::size_t kMostAddressDigits = 8;

bool IsHex(std::string_view text) {
    return !text.empty() && text.find_first_not_of(kHexDigits) == std::string_view::npos;
}

bool IsHexBytes(std::string_view text) {
    return IsHex(text) && text.size() % 2 == 0;
}

std::string_view WithoutTrailingBlanks(std::string_view line) {
    const std::size_t last = line.find_last_not_of(" \t");
    return line.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

std::uint64_t AddressValue(std::string_view digits) {
    std::uint64_t value = 0;
    for (const std::uint8_t byte : HexToBytes(digits, false)) value = value << 8 | byte;
    return value;
}

/// The three fields of a line "ADDRESS: OLD NEW"; empty ones when it is none.
struct Fields {
    std::string_view address;
    std::string_view oldBytes;
    std::string_view newBytes;
};

Fields Split(std::string_view line) {
    const std::size_t colon = line.find(": ");
    if (colon == std::string_view::npos) return {};
    const std::string_view bytes = line.substr(colon + 2);
    const std::size_t blank = bytes.find(' ');
    if (blank == std::string_view::npos) return {};
    return {line.substr(0, colon), bytes.substr(0, blank), bytes.substr(blank + 1)};
}

bool IsPatchLine(const Fields& fields) {
    return IsHex(fields.address) && fields.address.size() <= kMostAddressDigits &&
           IsHexBytes(fields.oldBytes) && IsHexBytes(fields.newBytes) &&
           fields.oldBytes.size() == fields.newBytes.size();
}

Failure RefuseLine(const ByteSource& patch, std::size_t number) {
    return Fail(ErrorKind::Malformed, patch.Path(),
                "line " + std::to_string(number) +
                    " is no patch line (ADDRESS: OLD NEW, with old and new bytes alike in number)");
}

Status ReadEntry(const ByteSource& patch, std::size_t number, std::string_view line,
                 std::vector<PatchEntry>& entries) {
    if (line.empty() || line.front() == ';') return {};
    const Fields fields = Split(line);
    if (!IsPatchLine(fields)) return RefuseLine(patch, number);
    entries.push_back({number, AddressValue(fields.address), HexToBytes(fields.oldBytes, false),
                       HexToBytes(fields.newBytes, false)});
    return {};
}

Status CheckWithin(const std::vector<PatchEntry>& entries, const ByteSource& flash) {
    for (const PatchEntry& entry : entries) {
        if (entry.offset <= flash.Size() && entry.newBytes.size() <= flash.Size() - entry.offset) continue;
        return Fail(ErrorKind::Truncated, flash.Path(), entry.offset,
                    "line " + std::to_string(entry.line) + " of the patch reaches past the end of the flash");
    }
    return {};
}

}  // namespace

Result<std::vector<PatchEntry>> ReadPatch(const ByteSource& patch) {
    std::vector<PatchEntry> entries;
    LineReader reader(patch);
    for (;;) {
        PICTAVO_TRY(const auto line, reader.Next());
        if (!line) return entries;
        PICTAVO_TRY(ReadEntry(patch, reader.Number(), WithoutTrailingBlanks(*line), entries));
    }
}

Result<std::vector<PatchMismatch>> CheckPatch(const std::vector<PatchEntry>& entries,
                                              const ByteSource& flash) {
    std::vector<PatchMismatch> mismatches;
    for (const PatchEntry& entry : entries) {
        Bytes found(entry.oldBytes.size());
        PICTAVO_TRY(const std::size_t count, flash.ReadAt(entry.offset, found));
        found.resize(count);
        if (found != entry.oldBytes)
            mismatches.push_back({entry.line, entry.offset, entry.oldBytes, std::move(found)});
    }
    return mismatches;
}

Status ApplyPatch(const std::vector<PatchEntry>& entries, const ByteSource& flash,
                  const std::filesystem::path& copy, bool replaceExisting) {
    PICTAVO_TRY(CheckWithin(entries, flash));
    PICTAVO_TRY(OutputFile file, OutputFile::Create(copy));
    PICTAVO_TRY(CopyRange(flash, 0, flash.Size(), file));
    for (const PatchEntry& entry : entries) PICTAVO_TRY(file.WriteAt(entry.offset, entry.newBytes));
    return file.Commit(replaceExisting ? CommitMode::Replace : CommitMode::KeepExisting, Durability::Synced);
}

}  // namespace pictavo
