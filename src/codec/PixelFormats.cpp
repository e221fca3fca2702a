#include "codec/PixelFormats.h"

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

// Shares of a stored value, each at its place in it.
constexpr auto kRed8 =
    Tabulate<256>([](int v) { return static_cast<std::uint8_t>(ramp::Scale(v, 255, 7) << 5); });
constexpr auto kGreen8 =
    Tabulate<256>([](int v) { return static_cast<std::uint8_t>(ramp::Scale(v, 255, 7) << 2); });
constexpr auto kBlue8 =
    Tabulate<256>([](int v) { return static_cast<std::uint8_t>(ramp::Scale(v, 255, 3)); });
constexpr auto kRed16 =
    Tabulate<256>([](int v) { return static_cast<std::uint16_t>(ramp::Scale(v, 255, 31) << 11); });
constexpr auto kGreen16 =
    Tabulate<256>([](int v) { return static_cast<std::uint16_t>(ramp::Scale(v, 255, 63) << 5); });
constexpr auto kBlue16 =
    Tabulate<256>([](int v) { return static_cast<std::uint16_t>(ramp::Scale(v, 255, 31)); });

/// ramp::Scale from 31 and from 63 to 255, in multiplications that fit 16 bits so that the compiler can take
/// eight pixels at once. PixelFormats_test compares every value.
constexpr std::uint16_t Wide5(unsigned value) {
    return static_cast<std::uint16_t>((value * 527U + 23U) >> 6);
}
constexpr std::uint16_t Wide6(unsigned value) {
    return static_cast<std::uint16_t>((value * 259U + 33U) >> 6);
}

/// A cell as one number with red lowest, as it lies in memory.
static_assert(std::endian::native == std::endian::little, "cells are stored as little-endian numbers here");
constexpr std::uint32_t kMarkerNumber = std::bit_cast<std::uint32_t>(kTransparentMarker);

std::uint16_t WordAt(const std::uint8_t* stored, std::size_t index) {
    std::uint16_t word = 0;
    std::memcpy(&word, stored + 2 * index, sizeof word);
    return word;
}

void StoreCell(Cell* cells, std::size_t index, std::uint32_t number) {
    cells[index] = std::bit_cast<Cell>(number);
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

void Pixels8::Quantise(const Cell* cells, std::uint8_t* stored, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const Cell& cell = cells[i];
        const auto value = static_cast<std::uint8_t>(kRed8[cell.r] | kGreen8[cell.g] | kBlue8[cell.b]);
        stored[i] = IsMarkerColour(cell) ? kTransparent : value;
    }
}

void Pixels12::Expand(const std::uint8_t* stored, Cell* cells, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) cells[i] = ExpandOne(WordAt(stored, i));
}

void Pixels16::Expand(const std::uint8_t* stored, Cell* cells, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint16_t word = WordAt(stored, i);
        const std::uint32_t number = static_cast<std::uint32_t>(Wide5(word >> 11U)) |
                                     static_cast<std::uint32_t>(Wide6(word >> 5U & 63U)) << 8 |
                                     static_cast<std::uint32_t>(Wide5(word & 31U)) << 16;
        StoreCell(cells, i, word == kTransparent ? kMarkerNumber : number);
    }
}

void Pixels16::Quantise(const Cell* cells, std::uint8_t* stored, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const Cell& cell = cells[i];
        const auto value = static_cast<std::uint16_t>(kRed16[cell.r] | kGreen16[cell.g] | kBlue16[cell.b]);
        const std::uint16_t word = IsMarkerColour(cell) ? kTransparent : value;
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
