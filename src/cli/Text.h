#pragma once

/// Texts as standard output shows them.

#include <string>
#include <string_view>

namespace pictavo::cli {

/// UTF-8 text with a blank for each control character, so that it breaks no line and steers no terminal.
std::string OnOneLine(std::string_view text);

/// A line "key: value", the value on one line.
std::string KeyLine(const std::string& key, const std::string& value);

}  // namespace pictavo::cli
