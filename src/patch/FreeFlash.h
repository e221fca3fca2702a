#pragma once

/// The search for free flash memory: whole chunks of sixteen bytes FF, on the grid that begins where the
/// search starts.

#include <vector>

#include "core/ByteSource.h"
#include "core/FileRange.h"

namespace pictavo {

inline constexpr std::uint64_t kFreeFlashChunk = 16;

/// What is told of `flash` when it has no free memory for a picture.
Error NoFreeMemoryError(const std::filesystem::path& flash);

/// The same bytes as ranges in ascending order that neither touch nor overlap.
std::vector<FileRange> Merged(std::vector<FileRange> ranges);

/// The first run of free chunks of at least `needed` bytes at or behind `start`; its end is that of its last
/// chunk. A chunk that touches one of the `taken` ranges, which are Merged, is not free, nor is a short one
/// at the end of the flash, nor one that has no phone address (kAddressableBytes). Kept: a run of FF that
/// begins inside a chunk counts from the next chunk on. Fails with NoFreeMemory when the flash ends first,
/// and with ReadFailed.
Result<FileRange> FindFreeFlash(const ByteSource& flash, std::uint64_t start, std::uint64_t needed,
                                const std::vector<FileRange>& taken = {});

}  // namespace pictavo
