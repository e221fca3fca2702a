#pragma once

/// Carves files of a known kind out of any file, typically a flash: from a signature that starts them to one
/// that ends them, whatever lies between. Rules and kept oddities: docs/formats/embedded-files.md.

#include <functional>
#include <optional>

#include "codec/PngFormat.h"
#include "core/FileRange.h"
#include "core/SignatureSearch.h"

namespace pictavo {

struct EmbeddedKind {
    Signature start;
    Signature end;
    int endAdjustment = 0;  ///< bytes from the end of the end signature to the end of the file
    std::string_view extension;
};

/// Kept: version 87a pictures are not found.
inline constexpr EmbeddedKind kEmbeddedGif{{"GIF89a", 0}, {{"\x00\x3B", 2}, 1}, 0, ".gif"};

/// The file takes in the checksum behind "IEND".
inline constexpr EmbeddedKind kEmbeddedPng{{kPngSignature, 0}, {kPngEndType, 0}, kPngChecksumBytes, ".png"};

/// Kept: a document must have a blank behind "<?xml", and ends before the first blank that a zero byte
/// follows, be it that very blank.
inline constexpr EmbeddedKind kEmbeddedXml{{"<?xml ", 1}, {{"\x20\x00", 2}, 0}, -2, ".xml"};

/// Takes each file that was found, in ascending order.
using EmbeddedFileTaker = std::function<void(const FileRange& file)>;

/// Finds all files of `kind` in `source`. A file that the source cuts off ends with the source; one whose end
/// signature never comes is none. `step` is told of the offset reached, which never goes back, and may stop
/// the work. `take` may read the source. Fails with Stopped and with ReadFailed; what was found before was
/// taken.
/// Kept: the source is looked at in blocks of 255 bytes, the first of them at the start found, each later one
/// before the end of the one before by the length of the start signature and one. A second start before the
/// end signature takes the first one's place, but not when it lies within that first block.
Status CarveEmbeddedFiles(const ByteSource& source, const EmbeddedKind& kind, const EmbeddedFileTaker& take,
                          const SearchStep& step);

}  // namespace pictavo
