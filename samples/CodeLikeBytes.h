#pragma once

/// Bytes that look like the program code, tables and texts which fill most of a flash. They never hold a long
/// stretch of 0xFF, which would count as erased.

#include <array>
#include <cstdint>

namespace pictavo::samples {

inline constexpr std::uint64_t kCodeBlockLength = 4096;

/// Block number `block` of the endless stream that `seed` names; blocks can be asked for in any order.
std::array<std::uint8_t, kCodeBlockLength> CodeLikeBlock(std::uint64_t seed, std::uint64_t block);

}  // namespace pictavo::samples
