#pragma once

#include <CLI/App.hpp>
#include <filesystem>
#include <string>

namespace pictavo::cli {

/// Declares an argument or option that names a file or folder. Its text is UTF-8, also where the system's
/// narrow texts are not. `path` outlives the parsing.
CLI::Option* AddPath(CLI::App& app, const std::string& name, std::filesystem::path& path,
                     const std::string& description);

}  // namespace pictavo::cli
