#pragma once

/// The first 54 bytes of a bitmap, telling whatever a test wants them to tell.

#include <algorithm>
#include <limits>

#include "core/Bytes.h"

namespace pictavo::tests {

/// The ends of what it can tell of a width or height.
inline constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
inline constexpr std::int32_t kSmallest = std::numeric_limits<std::int32_t>::min();

struct BitmapFields {
    std::int32_t width = 1;
    std::int32_t height = 1;
    std::uint8_t bits = 32;
    std::uint32_t compression = 0;
    std::uint32_t pixelOffset = 54;
};

inline Bytes BitmapHeader(const BitmapFields& fields) {
    Bytes header(54);
    const MutableByteView view(header);
    std::copy_n("BM", 2, header.begin());
    PutLittleEndian32(view.subspan(10), fields.pixelOffset);
    PutLittleEndian32(view.subspan(14), 40);
    PutLittleEndian32(view.subspan(18), static_cast<std::uint32_t>(fields.width));
    PutLittleEndian32(view.subspan(22), static_cast<std::uint32_t>(fields.height));
    PutLittleEndian16(view.subspan(26), 1);
    header[28] = fields.bits;
    PutLittleEndian32(view.subspan(30), fields.compression);
    return header;
}

}  // namespace pictavo::tests
