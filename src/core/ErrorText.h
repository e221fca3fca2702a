#pragma once

/// Errors as text, in English, for the fronts that show them.

#include <string>
#include <string_view>

#include "core/Result.h"

namespace pictavo {

/// The reason, behind the place where there is one: "at 0x1F: ...".
std::string DetailText(const Error& error);

/// The file, where there is one, and the reason: "name: at 0x1F: ...".
std::string ErrorText(const Error& error);

/// The bytes of the control character at the start of `text`, which is UTF-8 and not empty; 0 when there is
/// none. Those of 80h to 9Fh take two, of which the first is C2h.
std::size_t ControlLength(std::string_view text);

/// UTF-8 text with a blank for each control character, so that it breaks no line and steers no terminal.
std::string OnOneLine(std::string_view text);

}  // namespace pictavo
