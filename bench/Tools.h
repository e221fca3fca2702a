#pragma once

#include <filesystem>

namespace pictavo::bench {

/// Files carved out of 128 MiB: PNGs of a flash, GIFs of random bytes and of zeros, and the memory it takes.
bool BenchCarve(const std::filesystem::path& folder);

/// A container of 2000 pictures taken apart.
bool BenchGpn(const std::filesystem::path& folder);

}  // namespace pictavo::bench
