#include "codec/PixelFormats.h"

#include "codec/CellNumber.h"

namespace pictavo {

namespace {

/// A table of f(0), f(1) ... f(Count - 1).
template <std::size_t Count, typename Function>
constexpr auto Tabulate(Function function) {
    std::array<decltype(function(0)), Count> table{};
    for (std::size_t i = 0; i < Count; ++i) table[i] = function(static_cast<int>(i));
    return table;
}

constexpr auto kCellOfByte =
    Tabulate<256>([](int value) { return Pixels8::ExpandOne(static_cast<std::uint8_t>(value)); });

constexpr auto kCellsOfBits = Tabulate<256>([](int value) {
    std::array<Cell, 8> cells{};
    for (std::size_t i = 0; i < 8; ++i)
        cells[i] = Pixels1::ExpandBit(static_cast<unsigned>(value) >> (7 - i) & 1U);
    return cells;
});

/// ramp::Scale from 31 and from 63 to 255, in multiplications that fit 16 bits so that the compiler can take
/// eight pixels at once. PixelFormats_test compares every value.
constexpr std::uint16_t Wide5(unsigned value) {
    return static_cast<std::uint16_t>(static_cast<std::uint16_t>(value * 527U + 23U) >> 6);
}
constexpr std::uint16_t Wide6(unsigned value) {
    return static_cast<std::uint16_t>(static_cast<std::uint16_t>(value * 259U + 33U) >> 6);
}

/// ramp::Scale from 255 to 3, 7, 31 and 63, likewise.
constexpr std::uint32_t Narrow2(std::uint32_t value) {
    return (value * 3U + 129U) >> 8;
}
constexpr std::uint32_t Narrow3(std::uint32_t value) {
    return (value * 225U + 4060U) >> 13;
}

/// The same to 31 for red and blue at once, each in its own half of a number, and to 63 for green; all three
/// end up where the stored word has them.
constexpr std::uint32_t Narrow565(std::uint32_t cell) {
    const std::uint32_t redAndBlue = (cell & 0xFF00FFU) * 249U + 0x03F603F6U;
    const std::uint32_t green = (cell >> 8 & 0xFFU) * 253U + 505U;
    return (redAndBlue & 0xF800U) | (green >> 5 & 0x07E0U) | redAndBlue >> 27;
}

std::uint16_t WordAt(const std::uint8_t* stored, std::size_t index) {
    std::uint16_t word = 0;
    std::memcpy(&word, stored + 2 * index, sizeof word);
    return word;
}

std::uint32_t SwapRedAndBlue(std::uint32_t number) {
    return (number & 0xFF00FF00U) | (number >> 16 & 0xFFU) | (number & 0xFFU) << 16;
}

void CopySwapped(const void* from, void* to, std::size_t count) {
    const auto* source = static_cast<const std::uint8_t*>(from);
    auto* target = static_cast<std::uint8_t*>(to);
    for (std::size_t i = 0; i < count; ++i) {
        std::uint32_t number = 0;
        std::memcpy(&number, source + 4 * i, sizeof number);
        number = SwapRedAndBlue(number);
        std::memcpy(target + 4 * i, &number, sizeof number);
    }
}

}  // namespace

void Pixels8::Expand(const std::uint8_t* stored, Cell* cells, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) cells[i] = kCellOfByte[stored[i]];
}

void Pixels8::Quantise(const Cell* cells, std::uint8_t* __restrict stored, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t number = CellNumber(cells + i);
        const std::uint32_t value =
            Narrow3(number & 0xFFU) << 5 | Narrow3(number >> 8 & 0xFFU) << 2 | Narrow2(number >> 16 & 0xFFU);
        stored[i] = static_cast<std::uint8_t>(IsMarkerNumber(number) ? kTransparent : value);
    }
}

void Pixels12::Expand(const std::uint8_t* stored, Cell* cells, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t word = WordAt(stored, i);
        const std::uint32_t apart = (word >> 8 & 0x0FU) | (word << 4 & 0x0F00U) | (word << 16 & 0x0F0000U);
        StoreCellNumber(cells + i, word == kTransparent ? kMarkerNumber : apart | apart << 4);
    }
}

void Pixels16::Expand(const std::uint8_t* stored, Cell* cells, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint16_t word = WordAt(stored, i);
        const std::uint32_t number = static_cast<std::uint32_t>(Wide5(word >> 11U)) |
                                     static_cast<std::uint32_t>(Wide6(word >> 5U & 63U)) << 8 |
                                     static_cast<std::uint32_t>(Wide5(word & 31U)) << 16;
        StoreCellNumber(cells + i, word == kTransparent ? kMarkerNumber : number);
    }
}

void Pixels16::Quantise(const Cell* cells, std::uint8_t* __restrict stored, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t number = CellNumber(cells + i);
        const auto word =
            static_cast<std::uint16_t>(IsMarkerNumber(number) ? kTransparent : Narrow565(number));
        std::memcpy(stored + 2 * i, &word, sizeof word);
    }
}

void Pixels24::Expand(const std::uint8_t* stored, Cell* cells, std::size_t count) {
    CopySwapped(stored, cells, count);
}

void Pixels24::Quantise(const Cell* cells, std::uint8_t* stored, std::size_t count) {
    CopySwapped(cells, stored, count);
}

const std::array<Cell, 8>& Pixels1::ExpandByte(std::uint8_t stored) {
    return kCellsOfBits[stored];
}

}  // namespace pictavo
