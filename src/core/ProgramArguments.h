#pragma once

#include <string>
#include <vector>

namespace pictavo {

/// What the running program was called with, without its own name; the arguments of main are given. The bytes
/// as they came; on Windows UTF-8, whatever the code page, made from the line that the program was started
/// with, and wildcards are not replaced by names of files.
std::vector<std::string> ProgramArguments(int count, char** arguments);

}  // namespace pictavo
