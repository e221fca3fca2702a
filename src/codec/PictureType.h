#pragma once

/// The phone's picture type codes. Table: docs/formats/phone-pictures.md.

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

namespace pictavo {

/// Added to an uncompressed type code it gives the compressed one.
inline constexpr std::uint8_t kCompressedBit = 0x80;

inline constexpr std::uint8_t kType1Bit = 0x01;
inline constexpr std::uint8_t kType8Bit = 0x05;
inline constexpr std::uint8_t kType12Bit = 0x07;  // read, never written
inline constexpr std::uint8_t kType16Bit = 0x08;
inline constexpr std::uint8_t kType24Bit = 0x0A;
inline constexpr std::uint8_t kType1BitCompressed = kType1Bit | kCompressedBit;  // read, never written
inline constexpr std::uint8_t kType8BitCompressed = kType8Bit | kCompressedBit;
inline constexpr std::uint8_t kType16BitCompressed = kType16Bit | kCompressedBit;
inline constexpr std::uint8_t kType24BitCompressed = kType24Bit | kCompressedBit;

/// A depth of the phone's pictures, and what the encoder writes of it.
struct PictureType {
    std::uint8_t digit;  ///< the low hex digit of its type codes
    int depth;           ///< bits a pixel
    bool isWritten;
    bool isWrittenCompressed;
};

/// All that there are. What is not written is read all the same.
inline constexpr std::array kPictureTypes{
    PictureType{kType1Bit, 1, true, false},    PictureType{kType8Bit, 8, true, true},
    PictureType{kType12Bit, 12, false, false}, PictureType{kType16Bit, 16, true, true},
    PictureType{kType24Bit, 24, true, true},
};

/// The row of a type code's low hex digit; null for any other digit.
constexpr const PictureType* FindPictureType(unsigned typeCode) {
    for (const PictureType& type : kPictureTypes)
        if (type.digit == (typeCode & 0x0F)) return &type;
    return nullptr;
}

/// The bit depth that a type code's low hex digit names: 1, 8, 12, 16 or 24; nothing for any other digit.
constexpr std::optional<int> BitDepthOf(unsigned typeCode) {
    const PictureType* type = FindPictureType(typeCode);
    return type == nullptr ? std::nullopt : std::optional(type->depth);
}

/// Whether it is a depth of the phone's pictures.
constexpr bool IsBitDepth(int bitDepth) {
    return std::any_of(kPictureTypes.begin(), kPictureTypes.end(),
                       [&](const PictureType& type) { return type.depth == bitDepth; });
}

/// Kept: only the high digit 8 of a one-byte code means compressed; 0x18 and 0x98 are not.
constexpr bool IsCompressed(std::uint8_t typeCode) {
    return (typeCode & 0xF0) == kCompressedBit;
}

/// The compressed type code of a bit depth that a user can pick (1, 8, 16, 24).
constexpr std::optional<std::uint8_t> CompressedTypeOf(int bitDepth) {
    for (const PictureType& type : kPictureTypes)
        if (type.isWritten && type.depth == bitDepth) return type.digit | kCompressedBit;
    return std::nullopt;
}

}  // namespace pictavo
