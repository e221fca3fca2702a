#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "support/TempFolder.h"

namespace pictavo::tests {

/// The arguments that a test's program wrote into the file, each ended by a zero byte.
inline std::vector<std::string> ToldArguments(const std::filesystem::path& file) {
    std::vector<std::string> arguments;
    std::string text = ReadText(file);
    for (std::size_t end; (end = text.find('\0')) != std::string::npos; text.erase(0, end + 1))
        arguments.push_back(text.substr(0, end));
    return arguments;
}

}  // namespace pictavo::tests
