#pragma once

/// The two check sums that a PNG file holds.

#include <cstdint>

#include "samples/Bytes.h"

namespace pictavo::samples {

std::uint32_t Crc32(ByteView bytes);
std::uint32_t Adler32(ByteView bytes);

}  // namespace pictavo::samples
