#pragma once

/// Reads a ViKlay patch, holds it against a flash, and applies it to a copy. One line at a time, so that a
/// patch of any length takes no memory. Layout: docs/formats/patch.md.

#include <functional>

#include "core/LineReader.h"
#include "patch/PatchLine.h"

namespace pictavo {

class PatchReader {
  public:
    /// `patch` must outlive the reader, and nothing else may read it meanwhile.
    explicit PatchReader(const ByteSource& patch) : patch_(patch), lines_(patch) {}

    /// The next patch line; nothing behind the last one. Comments (";" first) and empty lines are passed
    /// over; hex digits may be of either case. Fails with Malformed, naming the line, on any other line, and
    /// with ReadFailed.
    Result<std::optional<PatchEntry>> Next();

  private:
    const ByteSource& patch_;
    LineReader lines_;
};

/// A line whose old bytes do not stand in the flash.
struct PatchMismatch {
    std::size_t line = 0;
    std::uint64_t offset = 0;
    Bytes expected;
    Bytes found;  ///< fewer bytes where the flash ends first
};

using TakeMismatch = std::function<void(const PatchMismatch& mismatch)>;

/// How many patch lines there are, and how many of them are mismatches.
struct PatchCheck {
    std::size_t lines = 0;
    std::size_t mismatches = 0;
};

/// Holds every line's old bytes against the flash, and gives out the mismatches in their order. Fails as
/// PatchReader does; the mismatches before that line were given out.
Result<PatchCheck> CheckPatch(const ByteSource& patch, const ByteSource& flash, const TakeMismatch& take);

/// Writes a copy of the flash with the new bytes put in, in the order of the lines. Fails as PatchReader
/// does, with Truncated when a line reaches past the end of the flash, both before anything is written, and
/// as OutputFile does.
Status ApplyPatch(const ByteSource& patch, const ByteSource& flash, const std::filesystem::path& copy,
                  bool replaceExisting);

}  // namespace pictavo
