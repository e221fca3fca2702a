#include "codec/PictureType.h"

#include <gtest/gtest.h>

#include "codec/PictureEncoder.h"

namespace pictavo::tests {
namespace {

TEST(PictureType, TheLowDigitNamesTheDepth) {
    const std::array<std::optional<int>, 16> depths{std::nullopt, 1,
                                                    std::nullopt, std::nullopt,
                                                    std::nullopt, 8,
                                                    std::nullopt, 12,
                                                    16,           std::nullopt,
                                                    24,           std::nullopt,
                                                    std::nullopt, std::nullopt,
                                                    std::nullopt, std::nullopt};
    for (unsigned low = 0; low < 16; ++low)
        for (const unsigned high : {0x00U, 0x10U, 0x80U, 0xF0U, 0x4500U})
            EXPECT_EQ(BitDepthOf(high | low), depths[low]);
}

TEST(PictureType, OnlyTheHighDigit8IsCompressed) {
    for (unsigned high = 0; high < 16; ++high)
        EXPECT_EQ(IsCompressed(static_cast<std::uint8_t>(high << 4 | 8)), high == 8);
}

TEST(PictureType, FiveDepthsAreThePhones) {
    std::vector<int> depths;
    for (int depth = -24; depth <= 256; ++depth)
        if (IsBitDepth(depth)) depths.push_back(depth);
    EXPECT_EQ(depths, (std::vector<int>{1, 8, 12, 16, 24}));
}

TEST(PictureType, FourDepthsCanBePicked) {
    EXPECT_EQ(CompressedTypeOf(1), 0x81);
    EXPECT_EQ(CompressedTypeOf(8), 0x85);
    EXPECT_EQ(CompressedTypeOf(16), 0x88);
    EXPECT_EQ(CompressedTypeOf(24), 0x8A);
    for (const int depth : {-8, 0, 2, 4, 12, 32}) EXPECT_EQ(CompressedTypeOf(depth), std::nullopt) << depth;
}

TEST(PictureType, SevenTypesAreWritten) {
    std::vector<int> codes;
    for (int code = 0; code <= 0xFF; ++code)
        if (CanEncode(static_cast<std::uint8_t>(code))) codes.push_back(code);
    EXPECT_EQ(codes, (std::vector<int>{0x01, 0x05, 0x08, 0x0A, 0x85, 0x88, 0x8A}));
}

}  // namespace
}  // namespace pictavo::tests
