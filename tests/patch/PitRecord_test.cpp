#include "patch/PitRecord.h"

#include <gtest/gtest.h>

#include "core/BasicCalculations_Tarsk.h"

namespace pictavo::tests {
namespace {

FullflashImage Flash(const std::string& model, bool newSGold) {
    FullflashImage flash;
    flash.mModel = model;
    flash.NewSGold = newSGold;
    return flash;
}

FullflashImage ShortFlash() {
    return Flash("T75", true);
}
FullflashImage LongFlash() {
    return Flash("EL71", true);
}

GpfHeader Header(int width, int height, int type) {
    return {static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height),
            static_cast<std::uint16_t>(type), 7, true};
}

std::string Record(const FullflashImage& flash, const GpfHeader& header) {
    return BytesToHex(ComposePitRecord(flash, header, {0x11, 0x22, 0x33, 0xA4}), false);
}

TEST(PitRecord, AnAddressIsTheFlashsBaseAndTheOffsetLowByteFirst) {
    EXPECT_EQ(BytesToHex(StoredAddressOf(0x8F000), false), "00F008A0");
    EXPECT_EQ(BytesToHex(StoredAddressOf(0), false), "000000A0");
    EXPECT_EQ(BytesToHex(StoredAddressOf(0x7FFFFF0), false), "F0FFFFA7");
}

TEST(PitRecord, TheShortFormIsWidthHeightTypeZeroAddress) {
    EXPECT_EQ(Record(ShortFlash(), Header(132, 176, 0x88)), "84B08800112233A4");
    EXPECT_EQ(Record(ShortFlash(), Header(1, 9, 0x05)), "01090500112233A4");
    EXPECT_EQ(Record(ShortFlash(), Header(255, 255, 0x0A)), "FFFF0A00112233A4");
}

TEST(PitRecord, TheLongFormHasTwoBytesEachOfWidthAndHeightAndThreeZeros) {
    EXPECT_EQ(Record(LongFlash(), Header(132, 176, 0x88)), "8400B00088000000112233A4");
    EXPECT_EQ(Record(LongFlash(), Header(240, 320, 0x05)), "F000400105000000112233A4");
    EXPECT_EQ(Record(LongFlash(), Header(9, 256, 0x8A)), "090000018A000000112233A4");
}

TEST(PitRecord, TheLongFormBelongsToModelsThatBeginWithE71AndEl71) {
    for (const std::string& model :
         {std::string("E71"), std::string("E71\0", 4), std::string("E71x"), std::string("EL71")})
        EXPECT_EQ(Record(Flash(model, true), Header(1, 1, 1)).size(), 24U) << model;
    for (const char* model : {"T75", "EL7", "XE71", "e71", ""})
        EXPECT_EQ(Record(Flash(model, true), Header(1, 1, 1)).size(), 16U) << model;
}

TEST(PitRecord, OnAnSGoldFlashNoModelHasTheLongForm) {
    EXPECT_EQ(Record(Flash("E71", false), Header(1, 1, 1)).size(), 16U);
    EXPECT_EQ(Record(Flash("EL71", false), Header(1, 1, 1)).size(), 16U);
}

TEST(PitRecord, AShortRecordHoldsUpTo255EachWay) {
    EXPECT_TRUE(CheckFitsRecord(ShortFlash(), Header(255, 255, 0x88)));
    for (const GpfHeader& header : {Header(256, 1, 0x88), Header(1, 256, 0x88)}) {
        const Status fits = CheckFitsRecord(ShortFlash(), header);
        ASSERT_FALSE(fits);
        EXPECT_EQ(fits.error().kind, ErrorKind::NotSupported);
    }
}

TEST(PitRecord, ALongRecordHoldsUpTo240Times320) {
    EXPECT_TRUE(CheckFitsRecord(LongFlash(), Header(240, 320, 0x88)));
    for (const GpfHeader& header : {Header(241, 1, 0x88), Header(1, 321, 0x88), Header(0x8000, 1, 0x88)}) {
        const Status fits = CheckFitsRecord(LongFlash(), header);
        ASSERT_FALSE(fits);
        EXPECT_TRUE(fits.error().detail.ends_with(" does not fit this phone's table (at most 240 x 320)"));
    }
}

TEST(PitRecord, NoRecordHoldsATypeThatWouldEndTheTable) {
    for (const FullflashImage& flash : {ShortFlash(), LongFlash()}) {
        EXPECT_TRUE(CheckFitsRecord(flash, Header(1, 1, 0x8F)));
        for (const int type : {0x90, 0xFF, 0x188}) {
            const Status fits = CheckFitsRecord(flash, Header(1, 1, type));
            ASSERT_FALSE(fits) << type;
            EXPECT_EQ(fits.error().kind, ErrorKind::NotSupported);
        }
    }
}

}  // namespace
}  // namespace pictavo::tests
