#pragma once

#include <optional>
#include <string>
#include <vector>

namespace pictavo {

/// What --help or --version as the only argument prints in place of the window; nothing for all other
/// arguments, which are names of files.
std::optional<std::string> InformationAskedFor(const std::vector<std::string>& arguments);

}  // namespace pictavo
