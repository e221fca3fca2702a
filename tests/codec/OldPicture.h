#pragma once

/// A picture whose cells tell whether they were written.

#include <algorithm>

#include "codec/Raster.h"

namespace pictavo::tests {

/// What every cell holds until it is written.
inline constexpr Cell kOld{1, 2, 3, 4};

inline void FillWithOld(Raster& raster) {
    std::fill_n(raster.From(0, 0), std::size_t{Raster::kColumns} * Raster::kRows, kOld);
}

}  // namespace pictavo::tests
