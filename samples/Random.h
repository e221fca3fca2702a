#pragma once

/// Numbers that look random and are the same on every machine: the standard library leaves the results of its
/// distributions to each implementation.

#include <cstdint>

namespace pictavo::samples {

/// Mixes all bits of `value` into all bits of the result.
constexpr std::uint64_t Mixed(std::uint64_t value) {
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9ULL;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EBULL;
    return value ^ (value >> 31);
}

class Random {
  public:
    explicit constexpr Random(std::uint64_t seed) : state_(Mixed(seed + 1)) {}

    constexpr std::uint64_t Next() { return Mixed(state_ += 0x9E3779B97F4A7C15ULL); }

    /// A number of 0 .. limit - 1; `limit` is not 0.
    constexpr std::uint32_t Below(std::uint32_t limit) {
        return static_cast<std::uint32_t>((Next() >> 32) % limit);
    }

    constexpr std::uint8_t Byte() { return static_cast<std::uint8_t>(Next() >> 56); }

  private:
    std::uint64_t state_;
};

}  // namespace pictavo::samples
