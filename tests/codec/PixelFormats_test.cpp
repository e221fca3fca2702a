#include "codec/PixelFormats.h"

#include <gtest/gtest.h>

#include "PlainCodec.h"
#include "codec/PictureType.h"

namespace pictavo {

static void PrintTo(const Cell& cell, std::ostream* out) {
    *out << '(' << int{cell.r} << ", " << int{cell.g} << ", " << int{cell.b} << ", " << int{cell.a} << ')';
}

namespace tests {
namespace {

template <typename Pixels>
Cell Expanded(unsigned stored) {
    const std::array<std::uint8_t, 4> bytes{
        static_cast<std::uint8_t>(stored), static_cast<std::uint8_t>(stored >> 8),
        static_cast<std::uint8_t>(stored >> 16), static_cast<std::uint8_t>(stored >> 24)};
    Cell cell{1, 2, 3, 4};
    Pixels::Expand(bytes.data(), &cell, 1);
    return cell;
}

template <typename Pixels>
unsigned Quantised(const Cell& cell) {
    std::array<std::uint8_t, 4> bytes{};
    Pixels::Quantise(&cell, bytes.data(), 1);
    return LittleEndian32(bytes);
}

/// Every stored value of a format against the plain rule.
template <typename Pixels>
void ExpectExpandsAsThePlainRule(int bitDepth, unsigned values) {
    for (unsigned value = 0; value < values; ++value)
        ASSERT_EQ(Expanded<Pixels>(value), plain::Expand(bitDepth, {value & 255, value >> 8, 0, 0})) << value;
}

TEST(Pixels8, SpreadsThreeThreeTwoBitsOverTheRamps) {
    EXPECT_EQ(Expanded<Pixels8>(0x1F), (Cell{0, 255, 255, 0}));
    EXPECT_EQ(Expanded<Pixels8>(0xE0), (Cell{255, 0, 0, 0}));
    const std::array<int, 8> ramp{0, 36, 73, 109, 146, 182, 219, 255};
    for (unsigned i = 0; i < 8; ++i) EXPECT_EQ(Expanded<Pixels8>(i << 5 | 1).r, ramp[i]);
    for (unsigned i = 0; i < 8; ++i) EXPECT_EQ(Expanded<Pixels8>(i << 2).g, ramp[i]);
    for (unsigned i = 0; i < 4; ++i) EXPECT_EQ(Expanded<Pixels8>(i).b, i * 85);
}

TEST(Pixels8, C0IsTransparent) {
    EXPECT_EQ(Expanded<Pixels8>(0xC0), (Cell{169, 171, 169, 0}));
}

TEST(Pixels8, EveryValueFollowsTheRule) {
    ExpectExpandsAsThePlainRule<Pixels8>(8, 256);
}

TEST(Pixels8, EveryStoredValueComesBackAsItself) {
    for (unsigned value = 0; value < 256; ++value)
        EXPECT_EQ(Quantised<Pixels8>(Expanded<Pixels8>(value)), value);
}

TEST(Pixels8, KeptAColourThatRoundsToC0BecomesTransparent) {
    EXPECT_EQ(Quantised<Pixels8>({255, 0, 0, 0}), 0xE0U);
    EXPECT_EQ(Quantised<Pixels8>({219, 0, 0, 0}), 0xC0U);
    EXPECT_EQ(Quantised<Pixels8>({169, 171, 169, 0}), 0xC0U);
}

TEST(Pixels12, IgnoresTheTopFourBits) {
    EXPECT_EQ(Expanded<Pixels12>(0x0123), (Cell{17, 34, 51, 0}));
    EXPECT_EQ(Expanded<Pixels12>(0xF123), (Cell{17, 34, 51, 0}));
}

TEST(Pixels12, OnlyTheWord0FFFIsTransparent) {
    EXPECT_EQ(Expanded<Pixels12>(0x0FFF), (Cell{169, 171, 169, 0}));
    EXPECT_EQ(Expanded<Pixels12>(0xFFFF), (Cell{255, 255, 255, 0}));
}

TEST(Pixels12, EveryValueFollowsTheRule) {
    ExpectExpandsAsThePlainRule<Pixels12>(12, 65536);
}

TEST(Pixels16, SpreadsFiveSixFiveBits) {
    EXPECT_EQ(Expanded<Pixels16>(0x07E0), (Cell{0, 255, 0, 0}));
    EXPECT_EQ(Expanded<Pixels16>(0xE000), (Cell{169, 171, 169, 0}));
}

TEST(Pixels16, EveryValueFollowsTheRule) {
    ExpectExpandsAsThePlainRule<Pixels16>(16, 65536);
}

TEST(Pixels16, EveryStoredValueComesBackAsItself) {
    for (unsigned value = 0; value < 65536; ++value)
        ASSERT_EQ(Quantised<Pixels16>(Expanded<Pixels16>(value)), value);
}

TEST(Pixels16, KeptAColourThatRoundsToE000BecomesTransparent) {
    EXPECT_EQ(Quantised<Pixels16>({230, 0, 0, 0}), 0xE000U);
    EXPECT_EQ(Quantised<Pixels16>({169, 171, 169, 0}), 0xE000U);
}

template <typename Pixels>
void ExpectARowQuantisesAsOnePixelAtATime() {
    std::vector<Cell> cells;
    for (unsigned i = 0; i < 256 * 8; ++i) {
        const auto level = [i](unsigned step) { return static_cast<std::uint8_t>(i * step + (i >> 8) * 31); };
        cells.push_back({level(1), level(3), level(7), level(5)});
        if (i % 100 == 0) cells.push_back({169, 171, 169, level(1)});
    }
    Bytes stored(cells.size() * Pixels::kBytes);
    Pixels::Quantise(cells.data(), stored.data(), cells.size());
    for (std::size_t i = 0; i < cells.size(); ++i) {
        unsigned value = 0;
        std::memcpy(&value, &stored[i * Pixels::kBytes], Pixels::kBytes);
        ASSERT_EQ(value, Pixels::QuantiseOne(cells[i])) << i;
    }
}

TEST(Pixels8, ARowOfEveryLevelIsStoredAsOnePixelAtATimeWouldBe) {
    ExpectARowQuantisesAsOnePixelAtATime<Pixels8>();
}

TEST(Pixels16, ARowOfEveryLevelIsStoredAsOnePixelAtATimeWouldBe) {
    ExpectARowQuantisesAsOnePixelAtATime<Pixels16>();
}

TEST(Pixels24, ARowOfEveryLevelIsStoredAsOnePixelAtATimeWouldBe) {
    ExpectARowQuantisesAsOnePixelAtATime<Pixels24>();
}

TEST(Pixels16, ALongRowIsTreatedAsOnePixelAtATimeWouldBe) {
    Bytes stored;
    for (unsigned value = 0; value < 65536; value += 7) {
        stored.push_back(static_cast<std::uint8_t>(value));
        stored.push_back(static_cast<std::uint8_t>(value >> 8));
    }
    std::vector<Cell> cells(stored.size() / 2);
    Pixels16::Expand(stored.data(), cells.data(), cells.size());
    for (unsigned i = 0; i < cells.size(); ++i) ASSERT_EQ(cells[i], Expanded<Pixels16>(7 * i));
}

TEST(Pixels12, ALongRowIsTreatedAsOnePixelAtATimeWouldBe) {
    Bytes stored;
    for (unsigned value = 0; value < 65536; ++value) {
        stored.push_back(static_cast<std::uint8_t>(value));
        stored.push_back(static_cast<std::uint8_t>(value >> 8));
    }
    std::vector<Cell> cells(stored.size() / 2);
    Pixels12::Expand(stored.data(), cells.data(), cells.size());
    for (unsigned i = 0; i < cells.size(); ++i)
        ASSERT_EQ(cells[i], plain::Expand(12, {i & 255, i >> 8, 0, 0})) << i;
}

TEST(Pixels24, StoresBlueGreenRedAlphaAndHasNoTransparentValue) {
    EXPECT_EQ(Expanded<Pixels24>(0x40302010), (Cell{0x30, 0x20, 0x10, 0x40}));
    EXPECT_EQ(Quantised<Pixels24>({0x30, 0x20, 0x10, 0x40}), 0x40302010U);
    EXPECT_EQ(Expanded<Pixels24>(0x00A9ABA9), (Cell{169, 171, 169, 0}));
}

TEST(Pixels1, OneIsBlackAndZeroIsWhite) {
    const auto& pixels = Pixels1::ExpandByte(0x81);
    EXPECT_EQ(pixels[0], (Cell{0, 0, 0, 0}));
    EXPECT_EQ(pixels[1], (Cell{255, 255, 255, 0}));
    EXPECT_EQ(pixels[7], (Cell{0, 0, 0, 0}));
}

TEST(Pixels1, AMeanOf127OrMoreIsWhite) {
    EXPECT_EQ(Pixels1::QuantiseOne({127, 127, 127, 0}), 0U);
    EXPECT_EQ(Pixels1::QuantiseOne({126, 126, 126, 0}), 1U);
    EXPECT_EQ(Pixels1::QuantiseOne({255, 126, 0, 0}), 0U);
}

TEST(Pixels1, KeptTheThirdsAreSummedInDoublesAndMayFallShortOf127) {
    EXPECT_EQ(34 + 253 + 94, 3 * 127);
    EXPECT_EQ(Pixels1::QuantiseOne({34, 253, 94, 0}), 1U);
}

TEST(Pixels1, TheMarkerColourHasNoMeaning) {
    EXPECT_EQ(Pixels1::QuantiseOne(kTransparentMarker), 0U);
}

}  // namespace
}  // namespace tests
}  // namespace pictavo
