#include "patch/PatchReader.h"

#include "core/OutputFile.h"

namespace pictavo {

namespace {

Failure RefuseLine(const ByteSource& patch, std::size_t number) {
    return Fail(ErrorKind::Malformed, patch.Path(),
                "line " + std::to_string(number) +
                    " is no patch line (ADDRESS: OLD NEW, with old and new bytes alike in number)");
}

bool SaysNothing(std::string_view line) {
    return line.find_first_not_of(" \t") == std::string_view::npos || line.front() == ';';
}

/// Calls `take` for each patch line until it fails.
template <typename Take>
Status ForEachEntry(const ByteSource& patch, Take take) {
    PatchReader reader(patch);
    for (;;) {
        PICTAVO_TRY(const auto entry, reader.Next());
        if (!entry) return {};
        PICTAVO_TRY(take(*entry));
    }
}

Status CheckWithin(const PatchEntry& entry, const ByteSource& flash) {
    if (entry.offset <= flash.Size() && entry.newBytes.size() <= flash.Size() - entry.offset) return {};
    return Fail(ErrorKind::Truncated, flash.Path(), entry.offset,
                "line " + std::to_string(entry.line) + " of the patch reaches past the end of the flash");
}

/// What stands in the flash where the line's bytes belong, as far as the flash reaches.
Result<Bytes> BytesUnder(const PatchEntry& entry, const ByteSource& flash) {
    Bytes found(entry.oldBytes.size());
    PICTAVO_TRY(const std::size_t count, flash.ReadAt(entry.offset, found));
    found.resize(count);
    return found;
}

}  // namespace

Result<std::optional<PatchEntry>> PatchReader::Next() {
    for (;;) {
        PICTAVO_TRY(const auto line, lines_.Next());
        if (!line) return std::optional<PatchEntry>();
        if (SaysNothing(*line)) continue;
        auto entry = ParsePatchLine(*line, lines_.Number());
        if (!entry) return RefuseLine(patch_, lines_.Number());
        return entry;
    }
}

Result<PatchCheck> CheckPatch(const ByteSource& patch, const ByteSource& flash, const TakeMismatch& take) {
    PatchCheck check;
    const auto compare = [&](const PatchEntry& entry) -> Status {
        ++check.lines;
        PICTAVO_TRY(Bytes found, BytesUnder(entry, flash));
        if (found == entry.oldBytes) return {};
        ++check.mismatches;
        take({entry.line, entry.offset, entry.oldBytes, std::move(found)});
        return {};
    };
    PICTAVO_TRY(ForEachEntry(patch, compare));
    return check;
}

/// All lines are looked at before the first is written. They are again as they are written, for the patch may
/// have been changed since.
Status ApplyPatch(const ByteSource& patch, const ByteSource& flash, const std::filesystem::path& copy,
                  bool replaceExisting) {
    const auto check = [&](const PatchEntry& entry) { return CheckWithin(entry, flash); };
    PICTAVO_TRY(ForEachEntry(patch, check));
    PICTAVO_TRY(OutputFile file, OutputFile::Create(copy));
    PICTAVO_TRY(CopyRange(flash, 0, flash.Size(), file));
    const auto write = [&](const PatchEntry& entry) -> Status {
        PICTAVO_TRY(CheckWithin(entry, flash));
        return file.WriteAt(entry.offset, entry.newBytes);
    };
    PICTAVO_TRY(ForEachEntry(patch, write));
    return file.Commit(replaceExisting ? CommitMode::Replace : CommitMode::KeepExisting, Durability::Synced);
}

}  // namespace pictavo
