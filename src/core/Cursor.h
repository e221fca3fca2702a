#pragma once

/// Reads a ByteSource forwards, a few bytes at a time, without copying them where they lie together. Bytes
/// past the end read as 0x00, and the position moves on over them all the same. While a cursor is in use,
/// nothing else may read its source: the cursor holds a view into it.

#include <array>
#include <cassert>

#include "core/ByteSource.h"

namespace pictavo {

class Cursor {
  public:
    static constexpr std::size_t kLongestTake = 1024;

    Cursor(const ByteSource& source, std::uint64_t offset)
        : source_(source), start_(offset), viewStart_(offset) {}

    /// The next byte.
    std::uint8_t Byte() { return *Take(1); }

    /// The next `length` bytes (at most kLongestTake), valid until the next call.
    const std::uint8_t* Take(std::size_t length) {
        assert(length <= kLongestTake);
        if (view_.size() - next_ < length) return TakeAcross(length);
        const std::uint8_t* bytes = view_.data() + next_;
        next_ += length;
        return bytes;
    }

    /// Passes over `length` bytes.
    void Skip(std::uint64_t length);

    std::uint64_t Position() const { return viewStart_ + next_; }
    std::uint64_t Consumed() const { return Position() - start_; }
    bool AtEnd() const { return Position() >= source_.Size(); }

    /// The first read that the system failed; reads after it gave 0x00.
    const Status& Health() const { return health_; }

  private:
    const std::uint8_t* TakeAcross(std::size_t length);

    const ByteSource& source_;
    std::uint64_t start_;
    std::uint64_t viewStart_;  // offset of the view's first byte
    ByteView view_;
    std::size_t next_ = 0;  // within the view
    std::array<std::uint8_t, kLongestTake> gathered_{};
    Status health_;
};

}  // namespace pictavo
