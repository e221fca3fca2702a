#pragma once

/// Bytes to hold against parts of what was made.

#include <string_view>

#include "samples/FileMakers.h"

namespace pictavo::samples {

inline Bytes Text(std::string_view text) {
    return {text.begin(), text.end()};
}

inline Bytes Part(const Bytes& bytes, std::uint64_t offset, std::uint64_t length) {
    const ByteView part = ByteView(bytes).subspan(offset, length);
    return {part.begin(), part.end()};
}

}  // namespace pictavo::samples
