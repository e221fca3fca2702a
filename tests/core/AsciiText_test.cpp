#include "core/AsciiText.h"

#include <gtest/gtest.h>

namespace pictavo::tests {
namespace {

TEST(AsciiTextTest, OnlyTheLettersOfAsciiAreLowered) {
    EXPECT_EQ(Lowered("AZaz@[`{09.GPF2"), "azaz@[`{09.gpf2");
    EXPECT_EQ(Lowered("\xC3\x84\xD0\x96 Ä"), "\xC3\x84\xD0\x96 Ä");
    EXPECT_EQ(Lowered(""), "");
}

TEST(AsciiTextTest, ADecimalTextHoldsNothingButDecimalDigits) {
    EXPECT_TRUE(IsDecimal("0123456789"));
    for (const std::string_view text : {"", "1 ", "+1", "-1", "1.0", "A", "/", ":"})
        EXPECT_FALSE(IsDecimal(text)) << text;
}

TEST(AsciiTextTest, AHexTextHoldsNothingButHexDigitsOfEitherCase) {
    EXPECT_TRUE(IsHex("0123456789ABCDEFabcdef"));
    for (const std::string_view text : {"", "0x1", "G", "g", "@", "`", "1 "})
        EXPECT_FALSE(IsHex(text)) << text;
}

}  // namespace
}  // namespace pictavo::tests
