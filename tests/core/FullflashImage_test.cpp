#include "core/FullflashImage.h"

#include <gtest/gtest.h>

#include "core/BasicCalculations_Tarsk.h"
#include "samples/FlashBuilder.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

using samples::FlashBuilder;
using samples::FlashKind;
using samples::kModelOffset;

FullflashImage Identify(Bytes bytes) {
    auto flash = IdentifyFullflash(std::make_shared<MemorySource>(std::move(bytes)));
    EXPECT_TRUE(flash);
    return std::move(*flash);
}

FullflashImage Identify(const FlashBuilder& flash) {
    return Identify(flash.Build());
}

TEST(FullflashImage, TheFirmwareIsAByteAsTwoUpperCaseDigits) {
    EXPECT_EQ(Identify(FlashBuilder(FlashKind::SGold).Firmware(0x2E)).fw, "2E");
    EXPECT_EQ(Identify(FlashBuilder(FlashKind::SGold).Firmware(0x05)).fw, "05");
}

TEST(FullflashImage, AZeroInTheFourthPlaceMarksAModelOfThreeCharacters) {
    EXPECT_EQ(Identify(FlashBuilder(FlashKind::NewSGold).Model("E71")).mModel, "E71");
}

TEST(FullflashImage, AnyOtherFourthCharacterIsKept) {
    EXPECT_EQ(Identify(FlashBuilder(FlashKind::NewSGold).Model("EL71")).mModel, "EL71");
    const FlashBuilder blank = FlashBuilder(FlashKind::NewSGold).Put(kModelOffset, {'E', '7', '1', ' '});
    EXPECT_EQ(Identify(blank).mModel, "E71 ");
}

TEST(FullflashImage, TheLanguagePackIsThreeBytesAsStored) {
    EXPECT_EQ(Identify(FlashBuilder(FlashKind::SGold).LanguagePack("lg7")).lngPack, "lg7");
    EXPECT_EQ(Identify(FlashBuilder(FlashKind::SGold).LanguagePack("a")).lngPack, std::string("a\0\0", 3));
}

TEST(FullflashImage, TrailingZerosOfTheManufacturerAreRemovedAndInnerOnesKept) {
    EXPECT_EQ(Identify(FlashBuilder(FlashKind::SGold).Manufacturer("SIEMENS")).ManufN, "SIEMENS");
    const std::string inner("AB\0CD", 5);
    EXPECT_EQ(Identify(FlashBuilder(FlashKind::SGold).Manufacturer(inner)).ManufN, inner);
}

TEST(FullflashImage, SixteenZerosAreAnEmptyManufacturer) {
    EXPECT_EQ(Identify(FlashBuilder(FlashKind::SGold).Manufacturer("")).ManufN, "");
}

TEST(FullflashImage, TheTopFourBitsOfTheDescriptorsAddressDoNotMatter) {
    for (const std::uint32_t base : {0x00000000U, 0xA0000000U, 0xF0000000U}) {
        const auto flash = Identify(FlashBuilder(FlashKind::SGold).AddressBase(base));
        EXPECT_EQ(flash.pitOffset, 0x90100U + 28) << base;
    }
}

TEST(FullflashImage, TheMarkerByteDecidesThePlatform) {
    EXPECT_EQ(Identify(FlashBuilder(FlashKind::SGold)).platform, "SGold");
    EXPECT_FALSE(Identify(FlashBuilder(FlashKind::SGold)).NewSGold);
    const FlashBuilder flash(FlashKind::NewSGold);
    for (const std::uint8_t marker : std::initializer_list<std::uint8_t>{0x01, 0x80, 0xFF}) {
        const auto image = Identify(FlashBuilder(flash).Put(flash.DescriptorOffset() + 31, {marker}));
        EXPECT_EQ(image.platform, "New-SGold");
        EXPECT_TRUE(image.NewSGold);
    }
}

TEST(FullflashImage, TheTableOfANewPhoneIsSevenDigitsWithLeadingZeros) {
    const auto flash = Identify(FlashBuilder(FlashKind::NewSGold).PitAt(0x00A2B3C4 & 0xFFFFF));
    EXPECT_EQ(flash.PITadr, "002B3C4");
    EXPECT_EQ(flash.pitOffset, 0x2B3C4U);
}

TEST(FullflashImage, TheTablePointerStandsWhereTheDescriptorsByteSays) {
    for (const std::uint8_t place : std::initializer_list<std::uint8_t>{0, 44, 104, 255}) {
        const auto flash = Identify(FlashBuilder(FlashKind::NewSGold).PointerPlace(place).PitAt(0xA0008));
        EXPECT_EQ(flash.pitOffset, 0xA0008U) << int{place};
    }
}

TEST(FullflashImage, TheTableOfAnOldPhoneIsAHexNumberWithoutLeadingZeros) {
    const auto flash = Identify(FlashBuilder(FlashKind::SGold).DescriptorAt(0x90100));
    EXPECT_EQ(flash.PITadr, "9011C");
}

TEST(FullflashImage, ATablePositionOfFourDigitsIsNotReadAsANegativeNumber) {
    const auto flash = Identify(FlashBuilder(FlashKind::SGold).DescriptorAt(0x9000));
    EXPECT_EQ(flash.PITadr, "901C");
    EXPECT_EQ(HexToNumber(flash.PITadr), 0x901C - 0x10000);
    EXPECT_EQ(flash.pitOffset, 0x901CU);
}

TEST(FullflashImage, TheSearchForFreeFlashStartsByThePlatform) {
    EXPECT_EQ(Identify(FlashBuilder(FlashKind::SGold)).FreeSearchOffset, 262144U);
    EXPECT_EQ(Identify(FlashBuilder(FlashKind::NewSGold)).FreeSearchOffset, 16777216U);
}

TEST(FullflashImage, OnlyNewPhonesE71AndEL71HaveLongRecords) {
    EXPECT_TRUE(Identify(FlashBuilder(FlashKind::NewSGoldE71)).HasLongRecords());
    EXPECT_TRUE(Identify(FlashBuilder(FlashKind::NewSGoldEL71)).HasLongRecords());
    EXPECT_TRUE(Identify(FlashBuilder(FlashKind::NewSGold).Model("E71x")).HasLongRecords());
    EXPECT_FALSE(Identify(FlashBuilder(FlashKind::NewSGold).Model("EL7")).HasLongRecords());
    EXPECT_FALSE(Identify(FlashBuilder(FlashKind::SGold).Model("E71")).HasLongRecords());
}

TEST(FullflashImage, AnEmptyFileIdentifiesAsAnOldPhoneWithoutATable) {
    const auto flash = Identify(Bytes{});
    EXPECT_EQ(flash.platform, "SGold");
    EXPECT_EQ(flash.fw, "00");
    EXPECT_EQ(flash.mModel, std::string(3, '\0'));
    EXPECT_EQ(flash.lngPack, std::string(3, '\0'));
    EXPECT_EQ(flash.ManufN, "");
    EXPECT_EQ(flash.PITadr, "1C");
    EXPECT_FALSE(flash.pitOffset);
}

TEST(FullflashImage, AFileThatEndsInsideTheDescriptorsPointerHasNoTable) {
    Bytes bytes = FlashBuilder(FlashKind::NewSGold).Build();
    bytes.resize(samples::kDescriptorPointerOffset + 3);
    EXPECT_FALSE(Identify(bytes).pitOffset);
}

TEST(FullflashImage, ADescriptorBeyondTheEndReadsAsZeros) {
    Bytes bytes = FlashBuilder(FlashKind::NewSGold).Build();
    bytes.resize(samples::kDescriptorPointerOffset + 4);
    const auto flash = Identify(bytes);
    EXPECT_EQ(flash.platform, "SGold");
    EXPECT_EQ(flash.PITadr, "9011C");
}

TEST(FullflashImage, APositionBelowZeroReadsAsZeros) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.DescriptorAt(0).Put(31, {1}).Put(48, {0});
    const auto image = Identify(flash);
    EXPECT_TRUE(image.NewSGold);
    EXPECT_EQ(image.PITadr, "0000000");
}

TEST(FullflashImage, AMissingFileIsAnError) {
    const TempFolder temp;
    const auto flash = OpenFullflashImage(temp / "none.bin");
    ASSERT_FALSE(flash);
    EXPECT_EQ(flash.error().kind, ErrorKind::FileMissing);
    EXPECT_EQ(flash.error().path, temp / "none.bin");
}

TEST(FullflashImage, AFolderIsAnErrorThatSaysSo) {
    const TempFolder temp;
    const auto flash = OpenFullflashImage(temp.Path());
    ASSERT_FALSE(flash);
    EXPECT_EQ(flash.error().detail, "cannot be opened (it is a folder)");
}

}  // namespace
}  // namespace pictavo::tests
