#include "patch/PatchPlan.h"

#include <gtest/gtest.h>

namespace pictavo::tests {
namespace {

constexpr std::uint64_t kSearchStart = 0x100;

/// A flash of 4 KiB of zeros but for what is free; records are 8 bytes long.
FullflashImage Flash(std::initializer_list<FileRange> free) {
    Bytes bytes(0x1000);
    for (const FileRange& range : free)
        std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(range.begin),
                  bytes.begin() + static_cast<std::ptrdiff_t>(range.end), std::uint8_t{0xFF});
    FullflashImage flash;
    flash.source = std::make_shared<MemorySource>(std::move(bytes));
    flash.FreeSearchOffset = kSearchStart;
    return flash;
}

PictureRecord Record(int number, std::uint32_t picOffset) {
    const auto pitOffset = static_cast<std::uint32_t>(number) * 8;
    return {number, 1, 1, 0x05, pitOffset, picOffset};
}

NewPicture Picture(std::uint64_t length) {
    return {"work file", {1, 1, 0x05, 0, true}, length};
}

ReplacedRow Row(int number, std::uint32_t picOffset, std::uint64_t room, std::uint64_t length) {
    return {Record(number, picOffset), room, Picture(length)};
}

PatchPlan Plan(const FullflashImage& flash, std::vector<ReplacedRow> rows) {
    const auto plan = PlanPatch(flash, std::move(rows));
    EXPECT_TRUE(plan);
    return plan.value_or(PatchPlan());
}

void ExpectSection(const PatchPlan& plan, std::size_t index, Placement placement, std::uint64_t offset) {
    EXPECT_EQ(plan.sections.at(index).placement, placement) << "section " << index;
    EXPECT_EQ(plan.sections.at(index).offset, offset) << "section " << index;
    EXPECT_TRUE(plan.sections.at(index).IsWritten());
}

void ExpectLeftOut(const PatchPlan& plan, std::size_t index, Placement placement) {
    EXPECT_EQ(plan.sections.at(index).placement, placement) << "section " << index;
    EXPECT_FALSE(plan.sections.at(index).IsWritten());
}

TEST(PatchPlan, TheRoomIsTheWayToTheNextRowsData) {
    const std::vector<PictureRecord> rows{Record(0, 0x800), Record(1, 0x8F0), Record(2, 0x900)};
    EXPECT_EQ(RoomOf(rows, 0, 5), 0xF0U);
    EXPECT_EQ(RoomOf(rows, 1, 5), 0x10U);
}

TEST(PatchPlan, EqualOrFallingOffsetsGiveNoRoom) {
    const std::vector<PictureRecord> rows{Record(0, 0x800), Record(1, 0x800), Record(2, 0x700)};
    EXPECT_EQ(RoomOf(rows, 0, 5), 0U);
    EXPECT_EQ(RoomOf(rows, 1, 5), 0U);
}

TEST(PatchPlan, TheLastRowHasTheRoomOfItsOldPicture) {
    EXPECT_EQ(RoomOf({Record(0, 0x800), Record(1, 0x900)}, 1, 77), 77U);
    EXPECT_EQ(RoomOf({Record(0, 0x800)}, 0, 0), 0U);
}

TEST(PatchPlan, WithoutRowsThereIsNothingToWrite) {
    const PatchPlan plan = Plan(Flash({}), {});
    EXPECT_TRUE(plan.sections.empty());
    EXPECT_EQ(plan.freeSearchOffset, kSearchStart);
}

TEST(PatchPlan, APictureOfExactlyTheRoomStaysInPlace) {
    const PatchPlan plan = Plan(Flash({{0x200, 0x300}}), {Row(0, 0x800, 32, 32)});
    ExpectSection(plan, 0, Placement::InPlace, 0x800);
    EXPECT_EQ(plan.freeSearchOffset, kSearchStart);
}

TEST(PatchPlan, OneByteMoreMoves) {
    const PatchPlan plan = Plan(Flash({{0x200, 0x300}}), {Row(0, 0x800, 32, 33)});
    ExpectSection(plan, 0, Placement::Moved, 0x200);
}

TEST(PatchPlan, TheSearchGoesOnBehindThePlace) {
    EXPECT_EQ(Plan(Flash({{0x200, 0x300}}), {Row(0, 0x800, 0, 33)}).freeSearchOffset, 0x230U);
}

TEST(PatchPlan, ThePlanLeavesTheFlashsOwnSearchStart) {
    const FullflashImage flash = Flash({{0x200, 0x300}});
    Plan(flash, {Row(0, 0x800, 0, 33)});
    EXPECT_EQ(flash.FreeSearchOffset, kSearchStart);
}

TEST(PatchPlan, TwoMovedPicturesGetTwoPlacesInTheOrderOfTheRows) {
    const PatchPlan plan = Plan(Flash({{0x200, 0x300}}), {Row(0, 0x800, 0, 17), Row(1, 0x810, 0, 16)});
    ExpectSection(plan, 0, Placement::Moved, 0x200);
    ExpectSection(plan, 1, Placement::Moved, 0x220);
    EXPECT_EQ(plan.freeSearchOffset, 0x230U);
}

TEST(PatchPlan, SectionsKeepTheOrderOfTheRows) {
    const PatchPlan plan =
        Plan(Flash({{0x200, 0x300}}), {Row(5, 0x900, 0, 16), Row(2, 0x800, 16, 16), Row(9, 0x700, 0, 16)});
    EXPECT_EQ(plan.sections.at(0).row.record.number, 5);
    EXPECT_EQ(plan.sections.at(1).row.record.number, 2);
    EXPECT_EQ(plan.sections.at(2).row.record.number, 9);
}

TEST(PatchPlan, WhatAnySectionWritesInPlaceIsNotFree) {
    const FullflashImage flash = Flash({{0x200, 0x300}});
    const PatchPlan plan = Plan(flash, {Row(0, 0x800, 0, 32), Row(1, 0x200, 0x48, 0x48)});
    ExpectSection(plan, 0, Placement::Moved, 0x250);
    ExpectSection(plan, 1, Placement::InPlace, 0x200);
}

TEST(PatchPlan, TheRecordsThatAreRewrittenAreNotFree) {
    const FullflashImage flash = Flash({{0x200, 0x300}});
    ReplacedRow row = Row(0, 0x800, 0, 16);
    row.record.pitOffset = 0x20C;
    ExpectSection(Plan(flash, {row}), 0, Placement::Moved, 0x220);
}

TEST(PatchPlan, TheRecordOfARowWithoutWorkFileIsAsFreeAsItLooks) {
    const FullflashImage flash = Flash({{0x200, 0x300}});
    ReplacedRow gone{Record(1, 0x900), 16, std::nullopt};
    gone.record.pitOffset = 0x200;
    ExpectSection(Plan(flash, {Row(0, 0x800, 0, 16), gone}), 0, Placement::Moved, 0x200);
}

TEST(PatchPlan, ARowWithoutWorkFileHasNoPlace) {
    ExpectLeftOut(Plan(Flash({}), {{Record(0, 0x800), 16, std::nullopt}}), 0, Placement::NoWorkFile);
}

TEST(PatchPlan, WithoutFreeMemoryThePictureIsLeftOutAndTheSearchStays) {
    const PatchPlan plan = Plan(Flash({{0x200, 0x220}}), {Row(0, 0x800, 0, 33)});
    ExpectLeftOut(plan, 0, Placement::NoFreeMemory);
    EXPECT_EQ(plan.freeSearchOffset, kSearchStart);
}

TEST(PatchPlan, ASmallerPictureBehindItStillFindsItsPlace) {
    const PatchPlan plan = Plan(Flash({{0x200, 0x220}}), {Row(0, 0x800, 0, 33), Row(1, 0x810, 0, 32),
                                                          Row(2, 0x820, 16, 16), Row(3, 0x830, 0, 16)});
    ExpectLeftOut(plan, 0, Placement::NoFreeMemory);
    ExpectSection(plan, 1, Placement::Moved, 0x200);
    ExpectSection(plan, 2, Placement::InPlace, 0x820);
    ExpectLeftOut(plan, 3, Placement::NoFreeMemory);
}

TEST(PatchPlan, OldBytesBeyondTheFlashLeaveThePictureOut) {
    const PatchPlan plan =
        Plan(Flash({{0x200, 0x300}}), {Row(0, 0xFF8, 16, 9), Row(1, 0x2000, 16, 1), Row(2, 0xFF8, 16, 8)});
    ExpectLeftOut(plan, 0, Placement::BeyondFlash);
    ExpectLeftOut(plan, 1, Placement::BeyondFlash);
    ExpectSection(plan, 2, Placement::InPlace, 0xFF8);
}

TEST(PatchPlan, ARecordBeyondTheFlashLeavesEvenAMovedPictureOut) {
    ReplacedRow row = Row(0, 0x800, 0, 16);
    row.record.pitOffset = 0xFF9;
    ExpectLeftOut(Plan(Flash({{0x200, 0x300}}), {row}), 0, Placement::BeyondFlash);
}

TEST(PatchPlan, AnOldPlaceBeyondTheFlashIsNoHindranceToMoving) {
    ExpectSection(Plan(Flash({{0x200, 0x300}}), {Row(0, 0x2000, 0, 16)}), 0, Placement::Moved, 0x200);
}

TEST(PatchPlan, OnlyAPictureLargerThanItsRoomMakesASearch) {
    EXPECT_FALSE(MustSearch({Row(0, 0x800, 16, 16), {Record(1, 0x900), 16, std::nullopt}}));
    EXPECT_TRUE(MustSearch({Row(0, 0x800, 16, 16), Row(1, 0x900, 16, 17)}));
}

TEST(PatchPlan, WhatAnOldPictureHoldsIsNotFreeThoughItIsFF) {
    const FullflashImage flash = Flash({{0x200, 0x300}});
    const HeldRanges held{{}, {{0x280, 0x281}, {0x1F0, 0x20F}}};  // in any order
    const auto plan = PlanPatch(flash, {Row(0, 0x800, 0, 32), Row(1, 0x900, 0, 0x60)}, held);
    ASSERT_TRUE(plan);
    ExpectSection(*plan, 0, Placement::Moved, 0x210);
    ExpectSection(*plan, 1, Placement::Moved, 0x290);
}

TEST(PatchPlan, APictureInPlaceMayWriteOverOldPictures) {
    const auto plan = PlanPatch(Flash({}), {Row(0, 0x800, 32, 32)}, {{}, {{0x800, 0x820}}});
    ASSERT_TRUE(plan);
    ExpectSection(*plan, 0, Placement::InPlace, 0x800);
}

/// The same with bytes that PNG sections of the patch write.
PatchPlan PlanBeside(const FullflashImage& flash, std::vector<ReplacedRow> rows,
                     const std::vector<FileRange>& pngRanges) {
    const auto plan = PlanPatch(flash, std::move(rows), {pngRanges, {}});
    EXPECT_TRUE(plan);
    return plan.value_or(PatchPlan());
}

TEST(PatchPlan, APictureInPlaceThatTouchesAPngIsLeftOut) {
    const FullflashImage flash = Flash({{0x200, 0x300}});
    const auto placed = [&](const FileRange& png) {
        return PlanBeside(flash, {Row(0, 0x800, 32, 32)}, {png}).sections.at(0).placement;
    };
    EXPECT_EQ(placed({0x81F, 0x900}), Placement::UnderPng);
    EXPECT_EQ(placed({0x700, 0x801}), Placement::UnderPng);
    EXPECT_EQ(placed({0x808, 0x809}), Placement::UnderPng);
    EXPECT_EQ(placed({0x700, 0x900}), Placement::UnderPng);
    EXPECT_EQ(placed({0x820, 0x900}), Placement::InPlace);
    EXPECT_EQ(placed({0x700, 0x800}), Placement::InPlace);
}

TEST(PatchPlan, ARecordThatTouchesAPngLeavesEvenAMovedPictureOut) {
    ReplacedRow row = Row(0, 0x800, 0, 16);
    row.record.pitOffset = 0x400;
    const FullflashImage flash = Flash({{0x200, 0x300}});
    ExpectLeftOut(PlanBeside(flash, {row}, {{0x407, 0x500}}), 0, Placement::UnderPng);
    ExpectSection(PlanBeside(flash, {row}, {{0x408, 0x500}}), 0, Placement::Moved, 0x200);
}

TEST(PatchPlan, TheOldPlaceOfAMovedPictureMayLieUnderAPng) {
    const FullflashImage flash = Flash({{0x200, 0x300}});
    ExpectSection(PlanBeside(flash, {Row(0, 0x800, 0, 16)}, {{0x7F0, 0x900}}), 0, Placement::Moved, 0x200);
}

TEST(PatchPlan, WhatAPngWritesIsNotFreeThoughItHoldsFF) {
    const FullflashImage flash = Flash({{0x200, 0x300}});
    const PatchPlan plan =
        PlanBeside(flash, {Row(0, 0x800, 0, 16), Row(1, 0x810, 0, 16)}, {{0x200, 0x201}, {0x220, 0x241}});
    ExpectSection(plan, 0, Placement::Moved, 0x210);
    ExpectSection(plan, 1, Placement::Moved, 0x250);
}

TEST(PatchPlan, TheOthersOfAPlanWithAPictureUnderAPngAreWritten) {
    const FullflashImage flash = Flash({{0x200, 0x300}});
    const PatchPlan plan =
        PlanBeside(flash, {Row(0, 0x800, 16, 16), Row(1, 0x900, 16, 16)}, {{0x800, 0x801}});
    ExpectLeftOut(plan, 0, Placement::UnderPng);
    ExpectSection(plan, 1, Placement::InPlace, 0x900);
}

TEST(PatchPlan, APictureInPlaceHoldsTheBytesOfItsRecordAndItsData) {
    const FullflashImage flash = Flash({{0x200, 0x300}});
    const PatchPlan plan = Plan(flash, {Row(3, 0x800, 32, 20)});
    EXPECT_EQ(RangesInPlace(flash, plan.sections.at(0)),
              (std::vector<FileRange>{{0x18, 0x20}, {0x800, 0x814}}));
}

TEST(PatchPlan, AMovedPictureHoldsOnlyItsRecordAndOneLeftOutNothing) {
    const FullflashImage flash = Flash({{0x200, 0x300}});
    const PatchPlan plan = Plan(flash, {Row(3, 0x800, 0, 20), {Record(4, 0x900), 16, std::nullopt}});
    EXPECT_EQ(RangesInPlace(flash, plan.sections.at(0)), (std::vector<FileRange>{{0x18, 0x20}}));
    EXPECT_TRUE(RangesInPlace(flash, plan.sections.at(1)).empty());
}

}  // namespace
}  // namespace pictavo::tests
