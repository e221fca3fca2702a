#pragma once

#include <filesystem>

namespace pictavo {

/// The path that a variable of the environment holds, whatever letters are in it; empty when it is not set.
std::filesystem::path PathOfVariable(const char* name);

}  // namespace pictavo
