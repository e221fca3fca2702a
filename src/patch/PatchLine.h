#pragma once

/// One line of a ViKlay patch, "ADDRESS: OLD NEW", written and read. Layout: docs/formats/patch.md.

#include <optional>
#include <string>
#include <string_view>

#include "core/Bytes.h"

namespace pictavo {

/// Bytes of data in a line.
inline constexpr std::size_t kPatchLineBytes = 16;

inline constexpr const char* kPatchLineEnd = "\r\n";

struct PatchEntry {
    std::size_t line = 0;      ///< counted from 1
    std::uint64_t offset = 0;  ///< in the flash
    Bytes oldBytes;
    Bytes newBytes;  ///< as many as the old ones
};

/// A patch line with its end; old and new bytes must be equally many.
std::string PatchLine(std::uint64_t offset, ByteView oldBytes, ByteView newBytes);

/// A run of bytes as lines of kPatchLineBytes, the last one as long as the rest; old and new bytes must be
/// equally many.
std::string PatchLines(std::uint64_t offset, ByteView oldBytes, ByteView newBytes);

/// What the text of line number `line` says, blanks behind it aside; nothing when it is no patch line. Hex
/// digits may be of either case.
std::optional<PatchEntry> ParsePatchLine(std::string_view text, std::size_t line);

}  // namespace pictavo
