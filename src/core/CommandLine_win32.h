#pragma once

#include <string>
#include <string_view>

namespace pictavo {

/// A command line without the program and the blanks behind it. A program in quotation marks ends at the
/// second one, any other at a blank.
std::wstring_view WithoutProgram(std::wstring_view line);

/// The running program's own line, so cut, as UTF-8.
std::string CommandLineOfProgram();

}  // namespace pictavo
