#pragma once

/// The small fullflash that most tests open.

#include "samples/FlashBuilder.h"
#include "samples/PictureEncoders.h"

namespace pictavo::tests {

using samples::FlashBuilder;
using samples::FlashKind;

/// Four icons of 16 x 16: types 05, 85, 88 and 8A.
inline FlashBuilder FourIcons(FlashKind kind = FlashKind::NewSGold) {
    FlashBuilder flash(kind);
    flash.Size(2U << 20);
    std::uint32_t seed = 1;
    for (const std::uint8_t type : std::initializer_list<std::uint8_t>{0x05, 0x85, 0x88, 0x8A})
        flash.AddDrawing(samples::DrawIcon(16, 16, seed++), type);
    return flash;
}

}  // namespace pictavo::tests
