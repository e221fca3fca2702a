#pragma once

/// Drawings as the phone stores them, for every type code, and what a right reader must show of them. Written
/// as plainly as possible and on purpose without a line in common with the product, so that an error of the
/// product cannot hide in its own test data.
///
/// Type codes: the high hexadecimal digit 8 means compressed; the low digit 1, 5, 7, 8 or A means 1, 8, 12,
/// 16 or 24 bits (the last with alpha).

#include <array>
#include <cstdint>
#include <vector>

#include "samples/Bytes.h"
#include "samples/Drawing.h"

namespace pictavo::samples {

inline constexpr std::array<std::uint8_t, 10> kTypeCodes{0x01, 0x05, 0x07, 0x08, 0x0A,
                                                         0x81, 0x85, 0x87, 0x88, 0x8A};

/// What the 8, 12 and 16 bit types show of a transparent pixel.
inline constexpr Pixel kMarker{169, 171, 169, 0};

/// The stored bytes of `drawing`. A pixel of alpha under 127 takes the transparent value of the 8, 12 and 16
/// bit types and is white in one bit. Compressed streams take runs of up to 127 pixels (63 in one bit) and
/// literal stretches of up to 128 (groups of seven in one bit) and end exactly with the last pixel.
/// `typeCode` is one of kTypeCodes.
Bytes EncodeForPhone(const Drawing& drawing, std::uint8_t typeCode);

/// The pixels that a reader must show for EncodeForPhone(drawing, typeCode), row by row. Alpha is 0 in all
/// types but 0A and 8A. Opaque colours that happen to be stored as the transparent value show as kMarker.
/// An uncompressed 12 bit picture shows black in every pixel: the phone formats' reader works that way, and
/// it stays.
std::vector<Pixel> ExpectedPixels(const Drawing& drawing, std::uint8_t typeCode);

}  // namespace pictavo::samples
