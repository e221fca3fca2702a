#pragma once

/// Texts as standard output shows them.

#include <string>

namespace pictavo::cli {

/// A line "key: value", the value on one line.
std::string KeyLine(const std::string& key, const std::string& value);

/// JSON as it stands inside of an array or object: two blanks behind each line end.
std::string Indented(const std::string& json);

/// JSON with the control characters escaped that it may hold as they are, since a terminal may act on them,
/// and with a line end.
std::string JsonText(const std::string& json);

}  // namespace pictavo::cli
