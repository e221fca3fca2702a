#pragma once

#include <string>
#include <vector>

namespace pictavo {

/// The names of files to open that the program was called with; the arguments of main are given. On Windows
/// its command line is split as SplitCommandLine does it, and the arguments do not count.
std::vector<std::string> GivenNames(int count, char** arguments);

}  // namespace pictavo
