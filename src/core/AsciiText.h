#pragma once

/// Letters and digits of ASCII, whatever the locale says of them and of other letters.

#include <string>
#include <string_view>

namespace pictavo {

/// With small letters for A to Z; every other byte stays.
std::string Lowered(std::string text);

/// Nothing but 0 to 9, and not empty.
bool IsDecimal(std::string_view text);

/// Nothing but 0 to 9, A to F and a to f, and not empty.
bool IsHex(std::string_view text);

}  // namespace pictavo
