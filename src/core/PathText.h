#pragma once

/// Names of files as text: the one place where a path becomes text or a text a path. Wherever the program
/// holds or writes a path as text, it is UTF-8; on systems whose names are bytes, the bytes as they are.

#include <filesystem>
#include <string>
#include <string_view>

namespace pictavo {

/// On Windows, half of a surrogate pair becomes U+FFFD: such a name has no text that leads back to it.
std::string PathText(const std::filesystem::path& path);

/// On Windows, what is no UTF-8 becomes U+FFFD.
std::filesystem::path PathOf(std::string_view text);

/// The same file by its short name, which programs that know neither Unicode nor long paths can open, where
/// the system keeps one; else, and on all systems but Windows, the path as it is.
std::filesystem::path ShortPath(const std::filesystem::path& path);

}  // namespace pictavo
