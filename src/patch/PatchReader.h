#pragma once

/// Reads a ViKlay patch, holds it against a flash, and applies it to a copy. Layout: docs/formats/patch.md.

#include <vector>

#include "core/ByteSource.h"
#include "patch/PatchLine.h"

namespace pictavo {

/// The patch lines of a patch, in their order. Comments (";" first) and empty lines are passed over; hex
/// digits may be of either case. Fails with Malformed, naming the line, on any other line, and with
/// ReadFailed.
Result<std::vector<PatchEntry>> ReadPatch(const ByteSource& patch);

/// A line whose old bytes do not stand in the flash.
struct PatchMismatch {
    std::size_t line = 0;
    std::uint64_t offset = 0;
    Bytes expected;
    Bytes found;  ///< fewer bytes where the flash ends first
};

/// Holds every line's old bytes against the flash. Fails with ReadFailed.
Result<std::vector<PatchMismatch>> CheckPatch(const std::vector<PatchEntry>& entries,
                                              const ByteSource& flash);

/// Writes a copy of the flash with the new bytes put in, in the order of the lines. Fails with Truncated,
/// before anything is written, when a line reaches past the end of the flash; else as OutputFile does.
Status ApplyPatch(const std::vector<PatchEntry>& entries, const ByteSource& flash,
                  const std::filesystem::path& copy, bool replaceExisting);

}  // namespace pictavo
