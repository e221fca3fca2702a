#include "patch/PatchLine.h"

#include <gmock/gmock.h>

namespace pictavo::tests {
namespace {

/// Line number, offset, old and new bytes as they were read.
void ExpectReads(std::string_view text, std::uint64_t offset, const Bytes& oldBytes, const Bytes& newBytes) {
    const auto entry = ParsePatchLine(text, 7);
    ASSERT_TRUE(entry) << text;
    EXPECT_EQ(entry->line, 7U);
    EXPECT_EQ(entry->offset, offset) << text;
    EXPECT_EQ(entry->oldBytes, oldBytes) << text;
    EXPECT_EQ(entry->newBytes, newBytes) << text;
}

TEST(PatchLine, HasAnAddressOfEightUpperCaseDigitsTheOldBytesAndTheNew) {
    EXPECT_EQ(PatchLine(0x12AB40, Bytes{0x00, 0xFF}, Bytes{0xAB, 0x0C}), "0012AB40: 00FF AB0C\r\n");
    EXPECT_EQ(PatchLine(0, Bytes{1}, Bytes{2}), "00000000: 01 02\r\n");
    EXPECT_EQ(PatchLine(0xFFFFFFFF, Bytes{1}, Bytes{2}), "FFFFFFFF: 01 02\r\n");
}

TEST(PatchLine, ARunStandsInLinesOfSixteenBytesTheLastOfTheRest) {
    Bytes oldBytes(37, 0x11);
    Bytes newBytes(37, 0x22);
    newBytes.back() = 0x33;
    const std::string sixteen = std::string(32, '1') + " " + std::string(32, '2') + "\r\n";
    EXPECT_EQ(PatchLines(0x1008, oldBytes, newBytes),
              "00001008: " + sixteen + "00001018: " + sixteen + "00001028: 1111111111 2222222233\r\n");
}

TEST(PatchLine, ARunOfSixteenIsOneLineAndAnEmptyOneNone) {
    EXPECT_EQ(PatchLines(0, Bytes(16, 1), Bytes(16, 2)), PatchLine(0, Bytes(16, 1), Bytes(16, 2)));
    EXPECT_EQ(PatchLines(0, {}, {}), "");
}

TEST(PatchLine, WhatIsWrittenIsReadBack) {
    for (std::size_t length = 1; length <= 16; ++length) {
        const Bytes oldBytes(length, 0xA5);
        const Bytes newBytes(length, static_cast<std::uint8_t>(length));
        const std::string line = PatchLine(0x89ABCDEF, oldBytes, newBytes);
        ExpectReads(line.substr(0, line.size() - 2), 0x89ABCDEF, oldBytes, newBytes);
    }
}

TEST(PatchLine, HexDigitsMayBeOfEitherCase) {
    ExpectReads("0012ab4F: ab CD", 0x12AB4F, {0xAB}, {0xCD});
}

TEST(PatchLine, AnAddressMayHaveFewerDigits) {
    ExpectReads("7: 01 02", 7, {1}, {2});
}

TEST(PatchLine, BlanksAndTabsBehindALineAreNoPartOfIt) {
    ExpectReads("00000007: 01 02 \t ", 7, {1}, {2});
}

TEST(PatchLine, LongerRunsThanAreWrittenAreReadToo) {
    const std::string text = "00000000: " + std::string(2'000, '0') + " " + std::string(2'000, 'F');
    ExpectReads(text, 0, Bytes(1'000, 0), Bytes(1'000, 0xFF));
}

TEST(PatchLine, AnythingElseIsNone) {
    for (const char* text : {"",
                             " ",
                             ":",
                             ": ",
                             ":  ",
                             "; comment",
                             "00000000",
                             "00000000:",
                             "00000000: ",
                             "00000000: 01",
                             "00000000: 01 ",
                             "00000000: 01 0",
                             "00000000: 0 0",
                             "00000000: 0 01",
                             "00000000: 01 0203",
                             "00000000: 0102 03",
                             "00000000:01 02",
                             "00000000 01 02",
                             "00000000: 01  02",
                             "00000000: 01\t02",
                             "00000000: 01 02 03",
                             "00000000: 01 02 ; why",
                             " 00000000: 01 02",
                             "000000001: 01 02",
                             ": 01 02",
                             "0x000010: 01 02",
                             "-0000010: 01 02",
                             "0000G000: 01 02",
                             "00000000: 0G 02",
                             "00000000: 01 0x",
                             "00000000: +1 02"})
        EXPECT_FALSE(ParsePatchLine(text, 1)) << '"' << text << '"';
}

TEST(PatchLine, AZeroByteInALineMakesItNone) {
    EXPECT_FALSE(ParsePatchLine(std::string_view("00000000: 01 0\0", 15), 1));
    EXPECT_FALSE(ParsePatchLine(std::string_view("00000000: 01 02\0", 16), 1));
}

}  // namespace
}  // namespace pictavo::tests
