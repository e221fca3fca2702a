#pragma once

/// What the benchmarks have in common: the programs, the flashes that they are run on, and memory beside
/// time.

#include <filesystem>
#include <string>
#include <vector>

namespace pictavo::bench {

inline constexpr int kRounds = 15;

inline const std::string kCli = std::string(PICTAVO_BIN_DIR) + "/pictavo-cli";

/// Ends the benchmark when something that has nothing to do with speed fails.
void Check(bool holds, const char* what);

/// A flash of 128 MiB with these options of pictavo-sample. Made by another process: what a program has used
/// at most counts for the programs that it starts as well.
std::filesystem::path MakeFlash(const std::filesystem::path& folder, const char* name,
                                const std::vector<std::string>& options);

/// One with 2000 pictures.
std::filesystem::path FlashOf2000(const std::filesystem::path& folder);

/// A folder in `folder` that was never there, each time: where many files were just removed, some file
/// systems are slow to make new ones.
std::string Fresh(const std::filesystem::path& folder);

/// Prints one line of peak memory in KiB, which may be 8 MiB more than the peer's; whether it is.
bool PrintMemory(const std::string& what, long used, long peer);

}  // namespace pictavo::bench
