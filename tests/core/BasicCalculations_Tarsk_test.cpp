#include "core/BasicCalculations_Tarsk.h"

#include <gtest/gtest.h>
#ifndef _WIN32
#include <unistd.h>
#endif

#include "support/SystemMeans.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

std::int32_t Number(std::string_view hex) {
    const auto number = HexToNumber(hex);
    EXPECT_TRUE(number) << hex;
    return number.value_or(0);
}

template <typename Value>
ErrorKind KindOf(const Result<Value>& result) {
    EXPECT_FALSE(result);
    return result.error().kind;
}

TEST(BytesToHex, WritesTwoUpperCaseDigitsAByte) {
    EXPECT_EQ(BytesToHex(Bytes{0x0A, 0x00, 0xFF}, false), "0A00FF");
    EXPECT_EQ(BytesToHex(Bytes{}, false), "");
}

TEST(BytesToHex, ReversedStartsWithTheLastByte) {
    EXPECT_EQ(BytesToHex(Bytes{0x0A, 0x00, 0xFF}, true), "FF000A");
    EXPECT_EQ(BytesToHex(Bytes{0x00, 0x00, 0x53, 0xA0}, true), "A0530000");
}

TEST(HexToBytes, TakesPairsFromTheLeftAndReversesTheirOrder) {
    EXPECT_EQ(HexToBytes("A0530000", false), (Bytes{0xA0, 0x53, 0x00, 0x00}));
    EXPECT_EQ(HexToBytes("A0530000", true), (Bytes{0x00, 0x00, 0x53, 0xA0}));
    EXPECT_EQ(HexToBytes("", false), Bytes{});
}

TEST(HexToBytes, AnOddTextGetsAZeroInFront) {
    EXPECT_EQ(HexToBytes("ABC", false), (Bytes{0x0A, 0xBC}));
}

TEST(HexToBytes, KeptAPairConvertsAsFarAsItsLeadingDigitsGo) {
    EXPECT_EQ(HexToBytes("1GG1FF", false), (Bytes{0x01, 0x00, 0xFF}));
}

TEST(HexToBytes, UndoesBytesToHex) {
    Bytes all;
    for (int value = 0; value < 256; ++value) all.push_back(static_cast<std::uint8_t>(value));
    for (const bool reverse : {false, true}) EXPECT_EQ(HexToBytes(BytesToHex(all, reverse), reverse), all);
}

TEST(HexToNumber, KeptUpToFourDigitsAreSigned16Bit) {
    EXPECT_EQ(Number("FFFF"), -1);
    EXPECT_EQ(Number("8000"), -32768);
    EXPECT_EQ(Number("7FFF"), 32767);
    EXPECT_EQ(Number("FF"), 255);
}

TEST(HexToNumber, KeptFiveToEightDigitsAreSigned32Bit) {
    EXPECT_EQ(Number("0FFFF"), 65535);
    EXPECT_EQ(Number("10000"), 65536);
    EXPECT_EQ(Number("0008000"), 32768);
    EXPECT_EQ(Number("FFFFFFFF"), -1);
    EXPECT_EQ(Number("FFFFFFF"), 0x0FFFFFFF);
}

TEST(HexToNumber, ReadsUpToTheFirstOtherCharacter) {
    EXPECT_EQ(Number(""), 0);
    EXPECT_EQ(Number("12xyz"), 18);
    EXPECT_EQ(Number("xyz"), 0);
    EXPECT_EQ(Number("ff 1"), 255);
    EXPECT_EQ(Number("FFFF "), -1);
}

TEST(HexToNumber, MoreThanEightDigitsOverflow) {
    EXPECT_EQ(KindOf(HexToNumber("000000001")), ErrorKind::Overflow);
}

TEST(BytesToOffset, DropsTheTopFourBitsOfALittleEndianAddress) {
    EXPECT_EQ(BytesToOffset(Bytes{0x44, 0x33, 0x22, 0xA1}), 0x1223344U);
    EXPECT_EQ(BytesToOffset(Bytes{0x44, 0x33, 0x22, 0x01}), 0x1223344U);
    EXPECT_EQ(BytesToOffset(Bytes{0xFF, 0xFF, 0xFF, 0xFF}), 0x0FFFFFFFU);
}

TEST(BytesToOffset, OnlyTheFirstFourBytesCount) {
    EXPECT_EQ(BytesToOffset(Bytes{1, 2, 3, 4, 5}), 0x4030201U);
}

TEST(BytesToOffset, AShortTextRepeatsItsLastByte) {
    EXPECT_EQ(BytesToOffset(Bytes{0x12}), 0x2121212U);
    EXPECT_EQ(BytesToOffset(Bytes{0x34, 0x12}), 0x2121234U);
}

TEST(BytesToOffset, AnEmptyTextIsRefused) {
    EXPECT_EQ(KindOf(BytesToOffset(Bytes{})), ErrorKind::Malformed);
}

TEST(ByteToBits, WritesTheMostSignificantBitFirst) {
    EXPECT_EQ(ByteToBits(5), "00000101");
    EXPECT_EQ(ByteToBits(128), "10000000");
}

TEST(BitsToNumber, UndoesByteToBits) {
    for (int value = 0; value < 256; ++value)
        EXPECT_EQ(BitsToNumber(ByteToBits(static_cast<std::uint8_t>(value))), value);
}

TEST(BitsToNumber, KeptADigitCountsWithItsOwnValueAndAnyOtherCharacterNothing) {
    EXPECT_EQ(BitsToNumber("2"), 2);
    EXPECT_EQ(BitsToNumber("20"), 4);
    EXPECT_EQ(BitsToNumber("x1"), 1);
    EXPECT_EQ(BitsToNumber(""), 0);
}

TEST(BitsToNumber, OverflowsAbove32767) {
    EXPECT_EQ(BitsToNumber("111111111111111"), 32767);
    EXPECT_EQ(KindOf(BitsToNumber("1000000000000000")), ErrorKind::Overflow);
    EXPECT_EQ(KindOf(BitsToNumber("1111111111111111")), ErrorKind::Overflow);
}

TEST(BitsToNumber, OverflowsAbove255Characters) {
    EXPECT_EQ(BitsToNumber(std::string(254, '0') + "1"), 1);
    EXPECT_EQ(KindOf(BitsToNumber(std::string(255, '0') + "1")), ErrorKind::Overflow);
}

TEST(NumberText, IsThePlainDecimalForm) {
    EXPECT_EQ(NumberText("1234"), std::string("1234"));
    EXPECT_EQ(NumberText("0012"), std::string("12"));
    EXPECT_EQ(NumberText("0"), std::string("0"));
}

TEST(NumberText, KeptTheSignIsLost) {
    EXPECT_EQ(NumberText("-12"), std::string("12"));
    EXPECT_EQ(NumberText("-0"), std::string("0"));
}

TEST(NumberText, ATextThatIsNoNumberIsRefused) {
    for (const char* text : {"", "abc", "12 pictures", "inf", "nan"})
        EXPECT_EQ(KindOf(NumberText(text)), ErrorKind::Malformed) << text;
}

TEST(PadZeros, FillsUpOnTheGivenSideAndNeverCuts) {
    EXPECT_EQ(PadZeros("7", 3, true), "007");
    EXPECT_EQ(PadZeros("7", 3, false), "700");
    EXPECT_EQ(PadZeros("12345", 3, true), "12345");
    EXPECT_EQ(PadZeros("", 2, true), "00");
}

TEST(NulString, HoldsUpTo254Nuls) {
    EXPECT_EQ(NulString(0), std::string());
    EXPECT_EQ(NulString(254), std::string(254, '\0'));
    EXPECT_EQ(KindOf(NulString(255)), ErrorKind::Overflow);
}

TEST(FileMissing, OnlyAFileThatCanBeOpenedIsThere) {
    const TempFolder temp;
    EXPECT_FALSE(FileMissing(WriteFile(temp / "file", std::string("x"))));
    EXPECT_FALSE(FileMissing(WriteFile(temp / "empty", std::string())));
    EXPECT_TRUE(FileMissing(temp / "none"));
    EXPECT_TRUE(FileMissing(temp / "no folder" / "none"));
    EXPECT_TRUE(FileMissing(""));
}

#ifndef _WIN32  // rights are no mode there, and Wine shows the superuser everything

/// The superuser may read every file; as long as this stands he is somebody else.
class WithoutPrivileges {
  public:
    WithoutPrivileges() : user_(geteuid()) {
        constexpr uid_t kNobody = 65534;
        if (user_ == 0) {
            EXPECT_EQ(seteuid(kNobody), 0);
        }
    }
    ~WithoutPrivileges() { EXPECT_EQ(seteuid(user_), 0); }
    WithoutPrivileges(const WithoutPrivileges&) = delete;
    WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;

  private:
    uid_t user_;
};

TEST(FileMissing, AFileThatMayNotBeReadCountsAsMissing) {
    using std::filesystem::perms;
    const TempFolder temp;
    std::filesystem::permissions(temp.Path(), perms::owner_all | perms::group_exec | perms::others_exec);
    const auto open = WriteFile(temp / "open", std::string("x"));
    const auto closed = WriteFile(temp / "closed", std::string("x"));
    std::filesystem::permissions(open, perms::owner_read | perms::group_read | perms::others_read);
    std::filesystem::permissions(closed, perms::none);
    const WithoutPrivileges nobody;
    EXPECT_FALSE(FileMissing(open));
    EXPECT_TRUE(FileMissing(closed));
}

#endif

TEST(FileMissing, AFolderCountsAsMissing) {
    EXPECT_TRUE(FileMissing(TempFolder().Path()));
}

TEST(FileMissing, APipeCountsAsMissingAndNeverBlocks) {
    PICTAVO_NEEDS_POSIX("named pipes in folders");
    const TempFolder temp;
    ASSERT_TRUE(MakePipe(temp / "pipe"));
    EXPECT_TRUE(FileMissing(temp / "pipe"));
}

TEST(FileMissing, FollowsALink) {
    PICTAVO_NEEDS_POSIX("symbolic links");
    const TempFolder temp;
    std::filesystem::create_symlink(temp / "none", temp / "dangling");
    std::filesystem::create_symlink(WriteFile(temp / "file", std::string("x")), temp / "link");
    EXPECT_TRUE(FileMissing(temp / "dangling"));
    EXPECT_FALSE(FileMissing(temp / "link"));
}

TEST(UpperHex, HasNoLeadingZeros) {
    EXPECT_EQ(UpperHex(0), "0");
    EXPECT_EQ(UpperHex(0x0A2B), "A2B");
    EXPECT_EQ(UpperHex(0xFFFFFFFFFFFFFFFF), "FFFFFFFFFFFFFFFF");
}

TEST(HexText, IsFilledUpAndNeverCut) {
    EXPECT_EQ(HexText(0, 3), "000");
    EXPECT_EQ(HexText(0xA2B, 7), "0000A2B");
    EXPECT_EQ(HexText(0x12345678, 7), "12345678");
}

}  // namespace
}  // namespace pictavo::tests
