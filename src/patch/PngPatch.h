#pragma once

/// Puts a new PNG file in the place of one that lies in the flash outside the picture table, as a section of
/// a patch. Layout and kept oddities: docs/formats/patch.md.

#include <string>

#include "core/ByteSource.h"
#include "core/FileRange.h"

namespace pictavo {

/// The PNG file that begins at `start` in the flash: through the checksum behind its first "IEND". Fails with
/// Malformed when none begins there or its end is missing, with Truncated when the flash ends inside the
/// checksum, and with ReadFailed.
Result<FileRange> FindPngInFlash(const ByteSource& flash, std::uint64_t start);

/// Fails with PngTooLarge when a new file of `length` bytes does not fit. Kept: it may be up to two bytes
/// longer than the old one.
Status CheckPngFits(const ByteSource& flash, const FileRange& place, std::uint64_t length);

/// The bytes that a new file of `length` bytes, which must fit, writes: all of the old one's.
FileRange PngSectionRange(const FileRange& place, std::uint64_t length);

/// A section that writes `newPng`, which must fit, over the file at `place`. What is left of a longer old
/// file is overwritten with FF. Fails with Truncated when the flash ends first, and with ReadFailed.
Result<std::string> PngSection(const ByteSource& flash, const FileRange& place, const std::string& name,
                               ByteView newPng);

}  // namespace pictavo
