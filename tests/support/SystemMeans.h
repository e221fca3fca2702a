#pragma once

/// What a test can make on most systems and not on Windows.

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace pictavo::tests {

/// Stands at the start of a test that needs the means named, such as "symbolic links": on Windows, where
/// links take a privilege that tests do not have, the test is reported as skipped.
#ifdef _WIN32
#define PICTAVO_NEEDS_POSIX(means) GTEST_SKIP() << "Windows gives a test no " << (means)
#else
#define PICTAVO_NEEDS_POSIX(means) static_cast<void>(means)
#endif

/// A name that can be opened and is no file.
#ifdef _WIN32
inline constexpr const char* kNullDevice = "NUL";
#else
inline constexpr const char* kNullDevice = "/dev/null";
#endif

/// `name`, with apostrophes for the quotation marks where the system allows none in names.
inline std::string AllowedName(std::string name) {
#ifdef _WIN32
    std::replace(name.begin(), name.end(), '"', '\'');
#endif
    return name;
}

/// False when the system has no pipes among its files.
inline bool MakePipe([[maybe_unused]] const std::filesystem::path& path) {
#ifdef _WIN32
    return false;
#else
    return mkfifo(path.c_str(), 0600) == 0;
#endif
}

}  // namespace pictavo::tests
