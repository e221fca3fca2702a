#include "samples/Checksums.h"

#include <array>

namespace pictavo::samples {

namespace {

constexpr std::uint32_t kPolynomial = 0xEDB88320;

constexpr std::array<std::uint32_t, 256> MakeCrcTable() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < table.size(); ++i) {
        std::uint32_t rest = i;
        for (int bit = 0; bit < 8; ++bit) rest = (rest >> 1) ^ (rest % 2 == 1 ? kPolynomial : 0);
        table[i] = rest;
    }
    return table;
}

constexpr auto kCrcTable = MakeCrcTable();

}  // namespace

std::uint32_t Crc32(ByteView bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const std::uint8_t byte : bytes) crc = (crc >> 8) ^ kCrcTable[(crc ^ byte) & 0xFF];
    return ~crc;
}

std::uint32_t Adler32(ByteView bytes) {
    std::uint32_t sum = 1, sumOfSums = 0;
    for (const std::uint8_t byte : bytes) {
        sum = (sum + byte) % 65521;
        sumOfSums = (sumOfSums + sum) % 65521;
    }
    return sumOfSums * 65536 + sum;
}

}  // namespace pictavo::samples
