#include "patch/PatchReader.h"

#include "core/LineReader.h"
#include "core/OutputFile.h"

namespace pictavo {

namespace {

Failure RefuseLine(const ByteSource& patch, std::size_t number) {
    return Fail(ErrorKind::Malformed, patch.Path(),
                "line " + std::to_string(number) +
                    " is no patch line (ADDRESS: OLD NEW, with old and new bytes alike in number)");
}

Status ReadEntry(const ByteSource& patch, std::size_t number, std::string_view line,
                 std::vector<PatchEntry>& entries) {
    if (line.find_first_not_of(" \t") == std::string_view::npos || line.front() == ';') return {};
    auto entry = ParsePatchLine(line, number);
    if (!entry) return RefuseLine(patch, number);
    entries.push_back(std::move(*entry));
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
        PICTAVO_TRY(ReadEntry(patch, reader.Number(), *line, entries));
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
