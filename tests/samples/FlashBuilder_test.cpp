#include "samples/FlashBuilder.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

#include "Parts.h"

namespace pictavo::samples {
namespace {

bool IsErased(const Bytes& bytes) {
    return std::ranges::all_of(bytes, [](std::uint8_t byte) { return byte == 0xFF; });
}

Bytes ContentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A folder that lives as long as its test.
class FlashBuilderFiles : public testing::Test {
  protected:
    FlashBuilderFiles() { std::filesystem::create_directory(folder_); }
    ~FlashBuilderFiles() override { std::filesystem::remove_all(folder_); }

    std::ptrdiff_t FileCount() const {
        return std::distance(std::filesystem::directory_iterator(folder_), {});
    }

    const std::filesystem::path folder_ =
        std::filesystem::path(testing::TempDir()) /
        ("flash-builder-" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()) + "-" +
         std::to_string(testing::UnitTest::GetInstance()->start_timestamp()));
};

TEST(FlashBuilder, WritesTheInformationBlock) {
    const Bytes flash = FlashBuilder(FlashKind::NewSGoldE71)
                            .Firmware(0x1F)
                            .LanguagePack("lg2")
                            .Manufacturer("SIEMENS")
                            .Build();
    ASSERT_EQ(flash.size(), 0x100000U);
    EXPECT_EQ(flash[0x8FC50], 0x1F);
    EXPECT_EQ(Part(flash, 0x8FC60, 3), Text("lg2"));
    EXPECT_EQ(Part(flash, 0x8FC70, 4), (Bytes{'E', '7', '1', 0}));
    EXPECT_EQ(Part(flash, 0x8FC80, 9), (Bytes{'S', 'I', 'E', 'M', 'E', 'N', 'S', 0, 0}));
    EXPECT_EQ(flash[0x8FC8F], 0);
    EXPECT_EQ(flash[0x8FC90], 0xFF);
}

TEST(FlashBuilder, PointsFromTheDescriptorToTheTableOfANewSGold) {
    const Bytes flash = FlashBuilder(FlashKind::NewSGold).DescriptorAt(0x95000).PitAt(0xA1234).Build();
    EXPECT_EQ(Part(flash, 0x8FD08, 4), (Bytes{0x00, 0x50, 0x09, 0xA0}));
    EXPECT_NE(flash[0x95000 + 31], 0);
    EXPECT_EQ(flash[0x95000 + 48], 104);
    EXPECT_EQ(Part(flash, 0x95000 + 104 - 44, 4), (Bytes{0x34, 0x12, 0x0A, 0xA0}));
}

TEST(FlashBuilder, LaysTheTableOfAnSGoldIntoItsDescriptor) {
    FlashBuilder flash(FlashKind::SGold);
    flash.DescriptorAt(0x95000).AddPicture(16, 9, 0x85, {1, 2, 3});
    EXPECT_EQ(flash.PitOffset(), 0x95000U + 28);
    const Bytes bytes = flash.Build();
    EXPECT_EQ(Part(bytes, 0x95000 + 28, 8), (Bytes{16, 9, 0x85, 0, 0x00, 0x00, 0x0C, 0xA0}));
    EXPECT_EQ(bytes[0x95000 + 31], 0);
}

TEST(FlashBuilder, KeepsAnSGoldWithoutPicturesAnSGold) {
    const Bytes flash = FlashBuilder(FlashKind::SGold).DescriptorAt(0x95000).Build();
    EXPECT_EQ(Part(flash, 0x95000 + 28, 8), (Bytes{0xFF, 0xFF, 0xFF, 0, 0xFF, 0xFF, 0xFF, 0xFF}));
}

TEST(FlashBuilder, WritesLongRecordsForTheBigScreens) {
    FlashBuilder flash(FlashKind::NewSGoldEL71);
    flash.AddPicture(240, 320, 0x88, {7}).AddPicture(8, 8, 0x05, {9});
    const Bytes bytes = flash.Build();
    EXPECT_EQ(Part(bytes, 0xA0000, 12), (Bytes{240, 0, 0x40, 1, 0x88, 0, 0, 0, 0x00, 0x00, 0x0C, 0xA0}));
    EXPECT_EQ(Part(bytes, 0xA000C, 12), (Bytes{8, 0, 8, 0, 0x05, 0, 0, 0, 0x10, 0x00, 0x0C, 0xA0}));
    EXPECT_EQ(flash.RecordOffset(1), 0xA000CU);
    EXPECT_TRUE(IsErased(Part(bytes, 0xA0018, 12)));
}

TEST(FlashBuilder, PlacesPicturesInStepsAndTellsWhere) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.PicturesAt(0xB0000).Align(4).AddPicture(1, 1, 5, {1, 2, 3, 4, 5}).AddPicture(1, 1, 5, {6});
    flash.AddPictureAt(0xF0000, 1, 1, 5, {7});
    const Bytes bytes = flash.Build();
    EXPECT_EQ(flash.PictureOffset(1), 0xB0008U);
    EXPECT_EQ(Part(bytes, 0xB0000, 10), (Bytes{1, 2, 3, 4, 5, 0xFF, 0xFF, 0xFF, 6, 0xFF}));
    EXPECT_EQ(bytes[flash.PictureOffset(2)], 7);
    EXPECT_EQ(flash.NextPictureOffset(), 0xB000CU);
}

TEST(FlashBuilder, LeavesWhatStandsBehindATableWithoutEnd) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.FillWithCode(0, 0x100000, 3).AddRecord({1, 1, 5, 0, 0, 0, 0, 0xA0});
    EXPECT_TRUE(IsErased(Part(flash.Build(), 0xA0008, 8)));
    EXPECT_FALSE(IsErased(Part(flash.EndTable(false).Build(), 0xA0008, 8)));
}

TEST(FlashBuilder, LaysPutAndEraseOverEverythingInTheirOrder) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.FillWithCode(0, 0x100000, 3).Put(0xA0000, {1, 2, 3, 4}).Erase(0xA0001, 2).Put(0xA0002, {9});
    EXPECT_EQ(Part(flash.Build(), 0xA0000, 4), (Bytes{1, 0xFF, 9, 4}));
}

TEST(FlashBuilder, CutsOffWhatReachesPastTheSize) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.AddPicture(3, 1, 5, {1, 2, 3}).Size(0xC0002);
    const Bytes bytes = flash.Build();
    ASSERT_EQ(bytes.size(), 0xC0002U);
    EXPECT_EQ(Part(bytes, 0xC0000, 2), (Bytes{1, 2}));
}

TEST_F(FlashBuilderFiles, HoldWhatBuildGives) {
    FlashBuilder flash(FlashKind::SGold);
    flash.Size(0x300123).FillWithCode(5, 0x250000, 8).AddDrawing(DrawNoise(200, 200, 1), 0x0A);
    flash.PicturesAt(0x1FFFF0).AddDrawing(DrawPhoto(64, 64, 1), 0x8A).Erase(0x0FFFFF, 2);
    ASSERT_TRUE(flash.WriteTo(folder_ / "flash.bin"));
    EXPECT_EQ(ContentOf(folder_ / "flash.bin"), flash.Build());
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(FlashBuilderFiles, StayAsTheyWereWhenWritingFails) {
    std::filesystem::create_directory(folder_ / "flash.bin");
    const Outcome outcome = FlashBuilder(FlashKind::SGold).WriteTo(folder_ / "flash.bin");
    EXPECT_FALSE(outcome);
    EXPECT_NE(outcome.Reason().find("flash.bin"), std::string::npos);
    EXPECT_EQ(FileCount(), 1);
}

}  // namespace
}  // namespace pictavo::samples
