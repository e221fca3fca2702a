#pragma once

/// What pictavo-convert does: exactly the conversions that Pictavo asks a converter for.

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "core/Result.h"

namespace pictavo {

struct Conversion {
    enum class Format { Png, Bmp };

    Format format = Format::Png;
    bool withAlpha = false;
    std::filesystem::path output;
    std::filesystem::path input;
};

/// The conversion that the arguments (UTF-8, without the program's name) ask for; nothing when they are not
/// one of the command lines in use.
std::optional<Conversion> ParseConversion(const std::vector<std::string>& arguments);

/// Reads the input, a PNG file or a bitmap of at most 240 x 320 pixels, and writes the output, replacing a
/// file of that name. With alpha every pixel keeps its colour and alpha exactly; without, transparent parts
/// are laid over white. Fails with FileMissing, UnknownFile, Malformed, TooLarge, Truncated, ReadFailed and
/// WriteFailed.
Status RunConversion(const Conversion& conversion);

}  // namespace pictavo
