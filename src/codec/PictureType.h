#pragma once

/// The phone's picture type codes. Table: docs/formats/phone-pictures.md.

#include <cstdint>
#include <optional>

namespace pictavo {

/// Added to an uncompressed type code it gives the compressed one.
inline constexpr std::uint8_t kCompressedBit = 0x80;

inline constexpr std::uint8_t kType1Bit = 0x01;
inline constexpr std::uint8_t kType8Bit = 0x05;
inline constexpr std::uint8_t kType16Bit = 0x08;
inline constexpr std::uint8_t kType24Bit = 0x0A;
inline constexpr std::uint8_t kType1BitCompressed = kType1Bit | kCompressedBit;  // read, never written
inline constexpr std::uint8_t kType8BitCompressed = kType8Bit | kCompressedBit;
inline constexpr std::uint8_t kType16BitCompressed = kType16Bit | kCompressedBit;
inline constexpr std::uint8_t kType24BitCompressed = kType24Bit | kCompressedBit;

/// The bit depth that a type code's low hex digit names: 1, 8, 12, 16 or 24; nothing for any other digit.
constexpr std::optional<int> BitDepthOf(unsigned typeCode) {
    switch (typeCode & 0x0F) {
        case 0x01:
            return 1;
        case 0x05:
            return 8;
        case 0x07:
            return 12;
        case 0x08:
            return 16;
        case 0x0A:
            return 24;
        default:
            return std::nullopt;
    }
}

/// Kept: only the high digit 8 of a one-byte code means compressed; 0x18 and 0x98 are not.
constexpr bool IsCompressed(std::uint8_t typeCode) {
    return (typeCode & 0xF0) == kCompressedBit;
}

/// The compressed type code of a bit depth that a user can pick (1, 8, 16, 24).
constexpr std::optional<std::uint8_t> CompressedTypeOf(int bitDepth) {
    switch (bitDepth) {
        case 1:
            return kType1BitCompressed;
        case 8:
            return kType8BitCompressed;
        case 16:
            return kType16BitCompressed;
        case 24:
            return kType24BitCompressed;
        default:
            return std::nullopt;
    }
}

}  // namespace pictavo
