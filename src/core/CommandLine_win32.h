#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace pictavo {

/// A command line without the program and the blanks behind it. A program in quotation marks ends at the
/// second one, any other at a blank.
std::wstring_view WithoutProgram(std::wstring_view line);

/// The running program's own line, so cut, as UTF-8.
std::string CommandLineOfProgram();

/// The command line that hands these arguments to a program that parts it as Microsoft's libraries do.
std::wstring CommandLineOf(const std::filesystem::path& program, const std::vector<std::string>& arguments);

}  // namespace pictavo
