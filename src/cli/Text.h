#pragma once

/// Texts as standard output shows them.

#include <string>

namespace pictavo::cli {

/// A line "key: value", the value on one line.
std::string KeyLine(const std::string& key, const std::string& value);

}  // namespace pictavo::cli
