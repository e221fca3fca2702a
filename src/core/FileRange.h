#pragma once

#include <cstdint>

namespace pictavo {

/// File offsets `begin` to `end`, the end not included.
struct FileRange {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;

    std::uint64_t Length() const { return end - begin; }
    bool Touches(const FileRange& other) const { return begin < other.end && other.begin < end; }
    bool operator==(const FileRange&) const = default;
};

}  // namespace pictavo
