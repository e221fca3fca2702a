#pragma once

/// Cuts a GPN container, which is GPF files laid one behind the other, into its pictures.
/// Layout: docs/formats/gpn.md.

#include <vector>

#include "core/ByteSource.h"
#include "core/FileRange.h"

namespace pictavo {

/// The container is read in blocks of this length; a picture begins at a block's start.
inline constexpr std::uint64_t kGpnBlock = 16;

/// The magic block of a picture and the one behind it, which holds the number.
inline constexpr std::uint64_t kGpnHead = 2 * kGpnBlock;

struct GpnPicture {
    FileRange place;  ///< from its magic block to the next picture, or to the end of the container
    int number = 0;   ///< Kept: signed, from -32768 to 32767
    bool isGPF2 = false;
};

/// The pictures of `container` in their order; none when it holds no magic block. Fails with ReadFailed.
Result<std::vector<GpnPicture>> ReadGpn(const ByteSource& container);

}  // namespace pictavo
