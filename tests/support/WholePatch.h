#pragma once

/// A patch, and what of it does not stand in a flash, as a whole.

#include <vector>

#include "patch/PatchReader.h"

namespace pictavo::tests {

inline MemorySource SourceOf(const std::string& text) {
    return MemorySource(Bytes(text.begin(), text.end()));
}

/// Fails as PatchReader does.
inline Result<std::vector<PatchEntry>> ReadWholePatch(const ByteSource& patch) {
    std::vector<PatchEntry> entries;
    PatchReader reader(patch);
    for (;;) {
        PICTAVO_TRY(auto entry, reader.Next());
        if (!entry) return entries;
        entries.push_back(std::move(*entry));
    }
}

/// Fails as CheckPatch does.
inline Result<std::vector<PatchMismatch>> MismatchesOf(const ByteSource& patch, const ByteSource& flash) {
    std::vector<PatchMismatch> mismatches;
    const auto take = [&](const PatchMismatch& mismatch) { mismatches.push_back(mismatch); };
    PICTAVO_TRY([[maybe_unused]] const PatchCheck check, CheckPatch(patch, flash, take));
    return mismatches;
}

}  // namespace pictavo::tests
