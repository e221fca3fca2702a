#include "samples/CodeLikeBytes.h"

#include <cstddef>

#include "samples/Bytes.h"
#include "samples/Random.h"

namespace pictavo::samples {

namespace {

/// The leading bytes that are frequent in 32-bit code: loads, moves, compares, branches, calls.
constexpr std::array<std::uint8_t, 16> kLeadingBytes{0xE5, 0xE5, 0xE1, 0xE3, 0xE2, 0xEB, 0x0A, 0x1A,
                                                     0xE8, 0xE9, 0xE0, 0xEA, 0x03, 0x13, 0xE7, 0x93};

std::uint32_t CodeWord(std::uint64_t bits) {
    const std::uint32_t lead = kLeadingBytes[bits >> 60];
    return lead << 24 | (static_cast<std::uint32_t>(bits) & 0xFFFFFF);
}

std::uint32_t TableWord(std::uint64_t bits) {
    return static_cast<std::uint32_t>(bits & 0x0FFF);
}

std::uint32_t TextWord(std::uint64_t bits) {
    const auto letters = static_cast<std::uint32_t>(bits) & 0x0F0F0F0F;
    return 0x61616161 + letters;
}

/// Of eight blocks one holds a table, one text and six code.
std::uint32_t Word(std::uint64_t kind, std::uint64_t bits) {
    if (kind == 0) return TableWord(bits);
    return kind == 1 ? TextWord(bits) : CodeWord(bits);
}

}  // namespace

std::array<std::uint8_t, kCodeBlockLength> CodeLikeBlock(std::uint64_t seed, std::uint64_t block) {
    Random random(Mixed(seed) + block);
    const std::uint64_t kind = random.Below(8);
    std::array<std::uint8_t, kCodeBlockLength> bytes;
    for (std::size_t i = 0; i < bytes.size(); i += 4) {
        const std::uint32_t word = Word(kind, random.Next());
        for (std::size_t k = 0; k < 4; ++k) bytes[i + k] = LowByte(word >> (8 * k));
    }
    return bytes;
}

}  // namespace pictavo::samples
