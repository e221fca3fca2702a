#pragma once

/// What a fuzz target makes of the bytes that it is given: first a few numbers, then the rest. Read from the
/// front, so that a corpus can be made by putting bytes one behind the other.

#include <algorithm>
#include <string>

#include "core/Bytes.h"

namespace pictavo::fuzz {

class Input {
  public:
    Input(const std::uint8_t* data, std::size_t size) : bytes_(data, size) {}

    bool IsUsedUp() const { return bytes_.empty(); }

    /// The next byte; 0 when all are used up.
    std::uint8_t Byte() {
        if (bytes_.empty()) return 0;
        const std::uint8_t byte = bytes_.front();
        bytes_ = bytes_.subspan(1);
        return byte;
    }

    std::uint16_t Number16() {
        const std::uint8_t low = Byte();
        return static_cast<std::uint16_t>(low | Byte() << 8);
    }

    std::uint32_t Number32() {
        const std::uint16_t low = Number16();
        return low | static_cast<std::uint32_t>(Number16()) << 16;
    }

    bool Flag() { return Byte() % 2 != 0; }

    /// The next `length` bytes, or as many as there are.
    Bytes Take(std::size_t length) {
        const ByteView taken = bytes_.first(std::min(length, bytes_.size()));
        bytes_ = bytes_.subspan(taken.size());
        return Bytes(taken.begin(), taken.end());
    }

    Bytes Rest() { return Take(bytes_.size()); }

    /// A text of a length that stands before it.
    std::string Text() {
        const std::size_t length = Byte();
        return std::string(AsText(Take(length)));
    }

  private:
    ByteView bytes_;
};

}  // namespace pictavo::fuzz
