#pragma once

#include <algorithm>
#include <cstdint>

namespace pictavo::samples {

/// A stretch of flash that a known number of things has to share. Each begins on a step of 16 bytes. `least`
/// bytes (a multiple of 16) are kept for each that is still to come, so that the stretch never runs out.
class Room {
  public:
    Room(std::uint64_t start, std::uint64_t end, int count, std::uint64_t least)
        : next_(start), end_(end), left_(static_cast<std::uint64_t>(count)), least_(least) {}

    std::uint64_t Next() const { return next_; }

    /// Whether the next thing may have `length` bytes: up to `shares` even shares of what is free.
    bool Allows(std::uint64_t length, std::uint64_t shares) const {
        const std::uint64_t spare = end_ - next_ - left_ * least_;
        return RoundedUp(length) <= least_ + std::min(shares * spare / left_, spare);
    }

    /// Gives `length` bytes to the next thing.
    void Take(std::uint64_t length) {
        next_ += RoundedUp(length);
        --left_;
    }

  private:
    static std::uint64_t RoundedUp(std::uint64_t length) { return (length + 15) / 16 * 16; }

    std::uint64_t next_;
    std::uint64_t end_;
    std::uint64_t left_;
    std::uint64_t least_;
};

}  // namespace pictavo::samples
