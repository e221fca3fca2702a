#pragma once

/// Finds a run of fixed bytes in a source of any size without holding more of it than a window.

#include <functional>
#include <optional>
#include <string_view>

#include "core/ByteSource.h"

namespace pictavo {

struct Signature {
    static constexpr std::size_t kLongest = 16;

    std::string_view bytes;  ///< 1 to kLongest
    /// Index, within `bytes`, of the byte that flash and text hold least of: the search looks for that one
    /// first.
    std::size_t rarest = 0;
};

/// Told now and then of the offset that a search has reached; false stops it.
using SearchStep = std::function<bool(std::uint64_t offset)>;

/// The first place in `source` at which all of `signature` stands, at or behind `from` and before `limit`;
/// nothing when there is none. What lies past the end of the source completes no signature. Fails with
/// Stopped when `step` wants it, and with ReadFailed.
Result<std::optional<std::uint64_t>> FindSignature(const ByteSource& source, const Signature& signature,
                                                   std::uint64_t from, std::uint64_t limit,
                                                   const SearchStep& step);

}  // namespace pictavo
