#pragma once

/// Reads a ViKlay patch as the pictures that it puts into a flash: section after section, and in each the new
/// bytes. Layout and kept oddities: docs/formats/patch.md.

#include <optional>
#include <string>
#include <variant>

#include "codec/GPFcodec.h"
#include "core/LineReader.h"

namespace pictavo {

/// A section of a picture of the table.
struct PicturePart {
    std::string name;  ///< the number as the section line has it
    GpfHeader header;  ///< size, type and variant as the new table record says; the number is 0
};

/// A section of a PNG file.
struct PngPart {
    std::string name;
};

using PatchPart = std::variant<PicturePart, PngPart>;

class PatchSectionReader {
  public:
    /// `patch` must outlive the reader, and nothing else may read it meanwhile.
    explicit PatchSectionReader(const ByteSource& patch) : lines_(patch, LongLines::Cut) {}

    /// The next section, passing over what is left of the one before and over lines that open none; nothing
    /// at the end of the patch. A picture's section that holds no table record is passed over too. Fails with
    /// ReadFailed.
    Result<std::optional<PatchPart>> NextSection();

    /// The new bytes of the section's next data line; nothing behind its last one. Kept: a data line of
    /// sixteen bytes FF, which is free flash, ends the picture. Fails as NextSection does.
    Result<std::optional<Bytes>> NextData();

    /// Offset in the patch up to which lines were read.
    std::uint64_t Position() const { return lines_.Position(); }

  private:
    using Line = std::optional<std::string>;

    Result<Line> NextLine();
    Result<std::optional<PatchPart>> ReadPicture(std::string name);

    LineReader lines_;
    Line returned_;  // a line to be looked at again
};

}  // namespace pictavo
