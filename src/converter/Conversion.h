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

/// Reads the input, a PNG file or a bitmap of at most 240 x 320 pixels (its content decides which, not its
/// name), and writes the output, replacing a file of that name. With alpha every pixel of 8 bits a channel
/// keeps its colour and alpha exactly, also where alpha is 0; without, transparent parts are laid over white.
/// 16 bits a channel are rounded to 8. Fails with FileMissing, OutputIsInput, UnknownFile, Malformed,
/// TooLarge, Truncated, ReadFailed and WriteFailed; the output is then as it was.
Status RunConversion(const Conversion& conversion);

}  // namespace pictavo
