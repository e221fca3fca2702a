#pragma once

/// Small text files of a desktop, which other programs change as well.

#include <filesystem>
#include <string>
#include <string_view>

#include "core/Result.h"

namespace pictavo {

/// True for anything of this name, a link that leads nowhere included. What the system does not tell of, as
/// in a folder that cannot be entered, counts as not there.
bool IsThere(const std::filesystem::path& path);

/// Empty for a file that does not exist. Fails as FileSource does with one that is there and cannot be read,
/// or of which the system does not tell: its lines must not be lost when it is written anew.
Result<std::string> WholeText(const std::filesystem::path& path);

/// The same, empty as well for a file that cannot be read.
std::string TextOrNone(const std::filesystem::path& path);

/// A link stays one, and the file that it leads to is written.
std::filesystem::path BehindLinks(const std::filesystem::path& path);

/// Both return whether the file had to be changed, and fail with WriteFailed.
Result<bool> RemoveText(const std::filesystem::path& path);

/// Makes the file hold this text, its folder being made where it is missing; an empty text stands for no
/// file. Fails also when the file is there and cannot be read.
Result<bool> PutText(const std::filesystem::path& path, std::string_view text);

}  // namespace pictavo
