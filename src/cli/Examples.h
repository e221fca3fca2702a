#pragma once

#include <string>

namespace pictavo::cli {

/// A command line that shows what the command of this name is for; empty for a name that is none.
std::string ExampleOf(const std::string& command);

}  // namespace pictavo::cli
