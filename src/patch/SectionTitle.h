#pragma once

/// The line that opens a section of a patch, and says what the section puts into the flash. Layout:
/// docs/formats/patch.md.

#include <optional>
#include <string>
#include <string_view>

namespace pictavo {

enum class SectionKind { Picture, Png };

/// The line, without its end. `name` is a picture's number, or a PNG file's base name.
std::string SectionTitle(SectionKind kind, std::string_view name);

/// The name that such a line holds; nothing for any line but one that opens a section of this kind. The line
/// has no end and no blanks before it. Whatever stands in the place of the closing marks is taken for them.
std::optional<std::string> NameIn(std::string_view line, SectionKind kind);

}  // namespace pictavo
