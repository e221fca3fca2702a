#include "core/PictureTable.h"

#include <gtest/gtest.h>

#include "samples/FlashBuilder.h"

namespace pictavo::tests {
namespace {

using samples::FlashBuilder;
using samples::FlashKind;

PictureTable Read(Bytes bytes, const TableProgress& progress = {}) {
    const auto flash = IdentifyFullflash(std::make_shared<MemorySource>(std::move(bytes)));
    EXPECT_TRUE(flash);
    auto table = ReadPictureTable(*flash, progress);
    EXPECT_TRUE(table);
    return std::move(*table);
}

PictureTable Read(const FlashBuilder& flash) {
    return Read(flash.Build());
}

Bytes Short(int width, int height, std::uint8_t type, std::uint8_t second = 0) {
    return {static_cast<std::uint8_t>(width), static_cast<std::uint8_t>(height), type, second, 0, 0, 0, 0xA0};
}

Bytes Long(int width, int height, std::uint8_t type) {
    return {static_cast<std::uint8_t>(width),
            static_cast<std::uint8_t>(width >> 8),
            static_cast<std::uint8_t>(height),
            static_cast<std::uint8_t>(height >> 8),
            type,
            0,
            0x77,
            0x77,
            0x45,
            0x23,
            0x01,
            0xA0};
}

std::string Text(const PictureTable& table, std::size_t row, Column column) {
    return ColumnText(table.rows.at(row), column);
}

/// Rows before the record of this type.
std::size_t RowsBefore(const Bytes& record, FlashKind kind = FlashKind::NewSGold) {
    FlashBuilder flash(kind);
    flash.AddRecord(HasLongRecords(kind) ? Long(1, 1, 5) : Short(1, 1, 5)).AddRecord(record);
    return Read(flash).rows.size();
}

TEST(PictureTable, TheColumnsShowARecordExactly) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.PitAt(0xA0000).AddRecord({9, 200, 0x05, 0, 0x45, 0x23, 0x01, 0xA0});
    const PictureTable table = Read(flash);
    EXPECT_EQ(Text(table, 0, Column::Number), "0000");
    EXPECT_EQ(Text(table, 0, Column::Hex), "000");
    EXPECT_EQ(Text(table, 0, Column::Width), "9");
    EXPECT_EQ(Text(table, 0, Column::Height), "200");
    EXPECT_EQ(Text(table, 0, Column::Type), "0500");
    EXPECT_EQ(Text(table, 0, Column::PITOffset), "A0000");
    EXPECT_EQ(Text(table, 0, Column::PICOffset), "0012345");
}

TEST(PictureTable, ANumberIsShownInFourDigitsAtLeast) {
    EXPECT_EQ(PictureNumberText(0), "0000");
    EXPECT_EQ(PictureNumberText(123), "0123");
    EXPECT_EQ(PictureNumberText(65535), "65535");
}

TEST(PictureTable, TheColumnsHaveTheirNames) {
    std::string names;
    for (const Column column : kColumns) names += std::string(ColumnName(column)) + " ";
    EXPECT_EQ(names, "# hex width height Type PIToffset PICoffset ");
}

TEST(PictureTable, RecordsLieOneBehindTheOther) {
    FlashBuilder few(FlashKind::SGold);
    few.AddRecord(Short(1, 1, 5)).AddRecord(Short(2, 2, 5)).AddRecord(Short(3, 3, 5));
    EXPECT_EQ(Read(few).rows[2].pitOffset, few.PitOffset() + 16);
    FlashBuilder wide(FlashKind::NewSGoldE71);
    wide.AddRecord(Long(1, 1, 5)).AddRecord(Long(2, 2, 5)).AddRecord(Long(3, 3, 5));
    EXPECT_EQ(Read(wide).rows[2].pitOffset, wide.PitOffset() + 24);
}

TEST(PictureTable, LongRecordsPassOverTheirTwoUnusedBytes) {
    FlashBuilder flash(FlashKind::NewSGoldEL71);
    flash.AddRecord(Long(240, 320, 0x88));
    const PictureTable table = Read(flash);
    EXPECT_EQ(table.rows[0].width, 240);
    EXPECT_EQ(table.rows[0].height, 320);
    EXPECT_EQ(Text(table, 0, Column::PICOffset), "0012345");
}

TEST(PictureTable, AnE71OfTheOldPlatformHasShortRecords) {
    FlashBuilder flash(FlashKind::SGold);
    flash.Model("E71").AddRecord(Short(16, 16, 5));
    EXPECT_EQ(Read(flash).rows[0].width, 16);
}

TEST(PictureTable, ErasedFlashAtTheFirstRecordGivesNoRows) {
    const PictureTable table = Read(FlashBuilder(FlashKind::NewSGold));
    EXPECT_TRUE(table.rows.empty());
    EXPECT_TRUE(table.endMet);
}

TEST(PictureTable, ASecondTypeByteEndsTheTable) {
    EXPECT_EQ(RowsBefore(Short(1, 1, 5, 0)), 2U);
    EXPECT_EQ(RowsBefore(Short(1, 1, 5, 1)), 1U);
}

TEST(PictureTable, TypesUpTo8FAreValidAndFrom90OnEndTheTable) {
    for (const std::uint8_t type : std::initializer_list<std::uint8_t>{0x00, 0x80, 0x8F})
        EXPECT_EQ(RowsBefore(Short(1, 1, type)), 2U);
    for (const std::uint8_t type : std::initializer_list<std::uint8_t>{0x90, 0xA5, 0xFF})
        EXPECT_EQ(RowsBefore(Short(1, 1, type)), 1U);
}

TEST(PictureTable, ShortRecordsMayHoldAnySizeAByteCanSay) {
    EXPECT_EQ(RowsBefore(Short(255, 255, 5)), 2U);
}

TEST(PictureTable, LongRecordsHoldUpTo240x320) {
    EXPECT_EQ(RowsBefore(Long(240, 320, 5), FlashKind::NewSGoldE71), 2U);
    EXPECT_EQ(RowsBefore(Long(241, 320, 5), FlashKind::NewSGoldE71), 1U);
    EXPECT_EQ(RowsBefore(Long(240, 321, 5), FlashKind::NewSGoldE71), 1U);
}

TEST(PictureTable, KeptALongSizeFrom8000OnIsNegativeAndPasses) {
    FlashBuilder flash(FlashKind::NewSGoldE71);
    flash.AddRecord(Long(0xFFFF, 1, 5));
    EXPECT_EQ(Text(Read(flash), 0, Column::Width), "-1");
}

TEST(PictureTable, AFullShortTableHas2001RowsAndNoEnd) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.EndTable(false);
    for (int i = 0; i <= 2001; ++i) flash.AddRecord(Short(1, 1, 5));
    const PictureTable table = Read(flash);
    ASSERT_EQ(table.rows.size(), 2001U);
    EXPECT_EQ(Text(table, 2000, Column::Number), "2000");
    EXPECT_EQ(Text(table, 2000, Column::Hex), "7D0");
    EXPECT_FALSE(table.endMet);
}

TEST(PictureTable, AFullLongTableHas2501RowsAndNoEnd) {
    FlashBuilder flash(FlashKind::NewSGoldE71);
    flash.EndTable(false);
    for (int i = 0; i <= 2501; ++i) flash.AddRecord(Long(1, 1, 5));
    const PictureTable table = Read(flash);
    EXPECT_EQ(table.rows.size(), 2501U);
    EXPECT_FALSE(table.endMet);
}

TEST(PictureTable, TheEndOfTheFileEndsTheTable) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.EndTable(false).AddRecord(Short(1, 1, 5)).AddRecord(Short(2, 2, 5));
    Bytes bytes = flash.Build();
    bytes.resize(flash.PitOffset() + 16);
    EXPECT_EQ(Read(bytes).rows.size(), 2U);
    bytes.resize(flash.PitOffset());
    EXPECT_TRUE(Read(bytes).rows.empty());
}

TEST(PictureTable, ARecordThatTheEndCutsIsJudgedOnZeros) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.AddRecord(Short(7, 9, 5));
    Bytes bytes = flash.Build();
    bytes.resize(flash.PitOffset() + 2);
    const PictureTable table = Read(bytes);
    ASSERT_EQ(table.rows.size(), 1U);
    EXPECT_EQ(table.rows[0].width, 7);
    EXPECT_EQ(table.rows[0].typeCode, 0);
    EXPECT_EQ(table.rows[0].picOffset, 0U);
    EXPECT_TRUE(table.endMet);
}

TEST(PictureTable, ATableBeyondTheFileGivesNoRows) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.PitAt(0x0F000000);
    EXPECT_TRUE(Read(flash).rows.empty());
}

TEST(PictureTable, TellsItsProgressByRecord) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.AddRecord(Short(1, 1, 5)).AddRecord(Short(1, 1, 5));
    std::vector<std::pair<int, int>> told;
    Read(flash.Build(), [&](int number, int most) { told.emplace_back(number, most); });
    EXPECT_EQ(told, (std::vector<std::pair<int, int>>{{0, 2000}, {1, 2000}}));
}

}  // namespace
}  // namespace pictavo::tests
