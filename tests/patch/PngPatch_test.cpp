#include "patch/PngPatch.h"

#include <gmock/gmock.h>

#include "support/Refusal.h"
#include "support/TempFolder.h"
#include "support/WholePatch.h"

namespace pictavo::tests {
namespace {

const std::string kSignature = "\x89PNG\r\n\x1A\n";

/// A flash of zeros with this text at `start`.
MemorySource FlashWith(std::size_t start, const std::string& text, std::size_t size = 0x4000) {
    Bytes bytes(size);
    std::copy(text.begin(), text.end(), bytes.begin() + static_cast<std::ptrdiff_t>(start));
    return MemorySource(std::move(bytes));
}

/// What passes for a PNG file of `length` bytes, at least 16.
std::string Png(std::size_t length) {
    return kSignature + std::string(length - 16, 'x') + "IENDCRC!";
}

FileRange Find(const ByteSource& flash, std::uint64_t start) {
    const auto place = FindPngInFlash(flash, start);
    EXPECT_TRUE(place);
    return place.value_or(FileRange());
}

std::string Section(const ByteSource& flash, const FileRange& place, const Bytes& newPng) {
    const auto section = PngSection(flash, place, "0012AB40", newPng);
    EXPECT_TRUE(section);
    return section.value_or("");
}

/// The flash from `begin` to `end` with the section applied.
Bytes Applied(const MemorySource& flash, const std::string& section, const FileRange& range) {
    const TempFolder temp;
    const ByteView text = AsBytes(section);
    const MemorySource patch(Bytes(text.begin(), text.end()));
    EXPECT_TRUE(MismatchesOf(patch, flash)->empty());
    EXPECT_TRUE(ApplyPatch(patch, flash, temp / "copy", false));
    const Bytes copy = ReadFile(temp / "copy");
    return {copy.begin() + static_cast<std::ptrdiff_t>(range.begin),
            copy.begin() + static_cast<std::ptrdiff_t>(range.end)};
}

TEST(PngPatch, TheOldPngEndsBehindTheChecksumOfItsIEND) {
    EXPECT_EQ(Find(FlashWith(0x100, Png(1000)), 0x100), (FileRange{0x100, 0x100 + 1000}));
    EXPECT_EQ(Find(FlashWith(0, kSignature + "IENDCRC!"), 0), (FileRange{0, 16}));
}

TEST(PngPatch, TheFirstIENDBehindTheStartIsTheEnd) {
    const MemorySource flash = FlashWith(0x100, "IENDIEND" + Png(300) + Png(400));
    EXPECT_EQ(Find(flash, 0x108), (FileRange{0x108, 0x108 + 300}));
}

TEST(PngPatch, AnIENDAcrossABorderOf512BytesIsFound) {
    for (std::size_t length = 500; length < 540; ++length)
        EXPECT_EQ(Find(FlashWith(0x100, Png(length)), 0x100), (FileRange{0x100, 0x100 + length})) << length;
}

TEST(PngPatch, APngMayEndWithTheFlash) {
    EXPECT_EQ(Find(FlashWith(0x3F00, Png(0x100)), 0x3F00), (FileRange{0x3F00, 0x4000}));
}

TEST(PngPatch, APlaceWithoutAPngSignatureIsRefused) {
    const MemorySource flash = FlashWith(0x100, Png(1000));
    for (const std::uint64_t start : {0xFFU, 0x101U, 0x0U, 0x3FFFU, 0x4000U, 0xFFFFFFFFU})
        EXPECT_EQ(RefusalOf(FindPngInFlash(flash, start)),
                  (Error{ErrorKind::Malformed, {}, start, "no PNG file begins there"}));
}

TEST(PngPatch, APngWithoutIENDIsRefused) {
    EXPECT_EQ(RefusalOf(FindPngInFlash(FlashWith(0x100, kSignature + "IEN"), 0x100)),
              (Error{ErrorKind::Malformed, {}, 0x100, "the PNG file there has no end (IEND)"}));
}

TEST(PngPatch, APngWhoseChecksumTheFlashCutsIsRefused) {
    const std::string png = Png(100);
    for (std::size_t missing = 1; missing <= 4; ++missing) {
        const std::string cut = png.substr(0, png.size() - missing);
        EXPECT_EQ(RefusalOf(FindPngInFlash(FlashWith(0, cut, cut.size()), 0)),
                  (Error{ErrorKind::Truncated, {}, 0, "the flash ends inside the PNG file there"}));
    }
}

TEST(PngPatch, KeptANewFileMayBeTwoBytesLongerThanTheOldOne) {
    const MemorySource flash = FlashWith(0x100, Png(1000));
    const FileRange place = Find(flash, 0x100);
    for (const std::uint64_t length : {1U, 1000U, 1001U, 1002U})
        EXPECT_TRUE(CheckPngFits(flash, place, length));
    for (const std::uint64_t length : {1003U, 5000U})
        EXPECT_EQ(RefusalOf(CheckPngFits(flash, place, length)),
                  (Error{ErrorKind::PngTooLarge, {}, 0x100, "Too large size!"}));
}

TEST(PngPatch, ASectionCoversTheLongerOfOldAndNewFile) {
    EXPECT_EQ(PngSectionRange({100, 200}, 50), (FileRange{100, 200}));
    EXPECT_EQ(PngSectionRange({100, 200}, 100), (FileRange{100, 200}));
    EXPECT_EQ(PngSectionRange({100, 200}, 102), (FileRange{100, 202}));
}

TEST(PngPatch, ASectionIsAnEmptyLineItsTitleAndLinesOfSixteenBytes) {
    const MemorySource flash = FlashWith(0x12AB, std::string(16, 'a') + "bcd", 0x2000);
    const std::string old = "61616161616161616161616161616161";
    EXPECT_EQ(Section(flash, {0x12AB, 0x12AB + 19}, Bytes(19, 0x0F)),
              "\r\n; ##### PNG Picture 0012AB40 #####\r\n"
              "000012AB: " +
                  old +
                  " 0F0F0F0F0F0F0F0F0F0F0F0F0F0F0F0F\r\n"
                  "000012BB: 626364 0F0F0F\r\n");
}

TEST(PngPatch, WhatIsLeftOfALongerOldFileIsCoveredWithFFInLinesOfItsOwn) {
    const MemorySource flash = FlashWith(0x1000, std::string(40, 'a'));
    const std::string sixteen = "61616161616161616161616161616161 FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF\r\n";
    EXPECT_EQ(Section(flash, {0x1000, 0x1000 + 40}, {1, 2, 3}),
              "\r\n; ##### PNG Picture 0012AB40 #####\r\n"
              "00001000: 616161 010203\r\n"
              "00001003: " +
                  sixteen + "00001013: " + sixteen + "00001023: 6161616161 FFFFFFFFFF\r\n");
}

TEST(PngPatch, TheBytesBehindAnOldFileStayAsTheyWere) {
    const MemorySource flash = FlashWith(0x1000, Png(100) + "behind");
    const FileRange place = Find(flash, 0x1000);
    for (const std::size_t length : {1U, 16U, 84U, 85U, 99U, 100U}) {
        Bytes expected(length, 0x77);
        expected.resize(100, 0xFF);
        for (const char c : std::string("behind")) expected.push_back(static_cast<std::uint8_t>(c));
        const std::string section = Section(flash, place, Bytes(length, 0x77));
        EXPECT_EQ(Applied(flash, section, {0x1000, 0x1000 + 106}), expected) << length;
    }
}

TEST(PngPatch, KeptTheTwoBytesMoreOverwriteWhatLiesBehind) {
    const MemorySource flash = FlashWith(0x1000, Png(100) + "behind");
    const std::string section = Section(flash, Find(flash, 0x1000), Bytes(102, 0x77));
    Bytes expected(102, 0x77);
    for (const char c : std::string("hind")) expected.push_back(static_cast<std::uint8_t>(c));
    EXPECT_EQ(Applied(flash, section, {0x1000, 0x1000 + 106}), expected);
}

TEST(PngPatch, TwoBytesMoreThanTheFlashHoldsAreRefused) {
    const MemorySource flash = FlashWith(0x3F00, Png(0x100));
    const auto section = PngSection(flash, {0x3F00, 0x4000}, "00003F00", Bytes(0x102));
    EXPECT_EQ(RefusalOf(section).kind, ErrorKind::Truncated);
}

}  // namespace
}  // namespace pictavo::tests
