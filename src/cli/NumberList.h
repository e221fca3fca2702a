#pragma once

/// A comma-separated list of decimal picture numbers and ranges: "0,5,7-20".

#include <optional>
#include <set>
#include <string_view>

namespace pictavo::cli {

/// The numbers, or nothing when the text is no such list. Numbers have at most five digits.
std::optional<std::set<int>> ParseNumberList(std::string_view text);

/// A decimal number of at most five digits and nothing else.
std::optional<int> ParsePictureNumber(std::string_view text);

}  // namespace pictavo::cli
