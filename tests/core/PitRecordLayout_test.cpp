#include "core/PitRecordLayout.h"

#include <gtest/gtest.h>

namespace pictavo::tests {
namespace {

FullflashImage Flash(const std::string& model) {
    FullflashImage flash;
    flash.NewSGold = true;
    flash.mModel = model;
    return flash;
}

TEST(PitRecordLayout, TheFieldsLieOneBehindTheOther) {
    EXPECT_EQ(kShortRecord.HeightAt(), 1U);
    EXPECT_EQ(kShortRecord.TypeAt(), 2U);
    EXPECT_EQ(kShortRecord.AddressAt(), 4U);
    EXPECT_EQ(kLongRecord.HeightAt(), 2U);
    EXPECT_EQ(kLongRecord.TypeAt(), 4U);
    EXPECT_EQ(kLongRecord.AddressAt(), 8U);
}

TEST(PitRecordLayout, TheModelDecidesTheForm) {
    EXPECT_EQ(&RecordLayoutOf(Flash("T75")), &kShortRecord);
    EXPECT_EQ(&RecordLayoutOf(Flash("EL71")), &kLongRecord);
}

TEST(PitRecordLayout, ARecordFitsUpToEachOfItsLimits) {
    EXPECT_TRUE(FitsLimits(kShortRecord, 255, 255, 0x8F));
    EXPECT_FALSE(FitsLimits(kShortRecord, 256, 1, 1));
    EXPECT_FALSE(FitsLimits(kShortRecord, 1, 256, 1));
    EXPECT_FALSE(FitsLimits(kShortRecord, 1, 1, 0x90));
    EXPECT_TRUE(FitsLimits(kLongRecord, 240, 320, 0x8F));
    EXPECT_FALSE(FitsLimits(kLongRecord, 241, 1, 1));
    EXPECT_FALSE(FitsLimits(kLongRecord, 1, 321, 1));
    EXPECT_FALSE(FitsLimits(kLongRecord, 1, 1, 0x188));
}

}  // namespace
}  // namespace pictavo::tests
