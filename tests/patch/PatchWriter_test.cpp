#include "patch/PatchWriter.h"

#include <gtest/gtest.h>

#include "patch/PatchLine.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

FullflashImage Phone() {
    FullflashImage flash;
    flash.ManufN = "SIEMENS";
    flash.mModel = "E71";
    flash.fw = "2E";
    flash.lngPack = "lg1";
    flash.NewSGold = true;
    return flash;
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find("\r\n", at), text.size());
        lines.push_back(text.substr(at, end - at));
        at = end + 2;
    }
    return lines;
}

TEST(PatchBanner, HasEightLinesExactToTheCharacter) {
    EXPECT_EQ(LinesOf(PatchBanner(Phone())),
              (std::vector<std::string>{
                  "; #######################################################################",
                  "; ### This file is made by Pictavo v1.3                               ###",
                  "; ### Pictures for your own phone; keep a copy of the fullflash.      ###",
                  "; ###                                                                 ###",
                  "; ### See ReadMe.txt before you flash.                                ###",
                  "; ###                                                                 ###",
                  "; ### Patch for SIEMENS E71fw2E (lg1)                                 ###",
                  "; #######################################################################",
              }));
}

TEST(PatchBanner, EachLineIs73CharactersLong) {
    for (const std::string& line : LinesOf(PatchBanner(Phone()))) EXPECT_EQ(line.size(), 73U) << line;
}

TEST(PatchBanner, EveryLineEndsWithCarriageReturnAndLineFeed) {
    const std::string banner = PatchBanner(Phone());
    EXPECT_EQ(banner.size(), 8U * 75);
    EXPECT_TRUE(banner.ends_with("#\r\n"));
    EXPECT_EQ(std::count(banner.begin(), banner.end(), '\r'), 8);
    EXPECT_EQ(std::count(banner.begin(), banner.end(), '\n'), 8);
}

std::string TargetLine(const std::string& manufacturer) {
    FullflashImage phone = Phone();
    phone.ManufN = manufacturer;
    return LinesOf(PatchBanner(phone)).at(6);
}

TEST(PatchBanner, ATextOf69CharactersGetsOneBlank) {
    const std::string line = TargetLine(std::string(39, 'x'));
    EXPECT_EQ(line, "; ### Patch for " + std::string(39, 'x') + " E71fw2E (lg1) ###");
    EXPECT_EQ(line.size(), 73U);
}

TEST(PatchBanner, ATextOf70CharactersOrMoreIsClosedRightBehind) {
    EXPECT_EQ(TargetLine(std::string(40, 'x')),
              "; ### Patch for " + std::string(40, 'x') + " E71fw2E (lg1)###");
    EXPECT_EQ(TargetLine(std::string(60, 'x')).size(), 93U);
}

TEST(PatchBanner, AnEmptyManufacturerLeavesTwoBlanks) {
    EXPECT_TRUE(TargetLine("").starts_with("; ### Patch for  E71fw2E (lg1) "));
}

TEST(PatchBanner, ControlCharactersBecomeBlanksAndOthersStayAsTheyAre) {
    EXPECT_TRUE(TargetLine("A\r\n\t\x7F" + std::string(1, '\0') + "\xE4")
                    .starts_with("; ### Patch for A     \xE4 E71fw2E"));
}

TEST(PatchLine, IsAddressOldBytesNewBytesInUpperCase) {
    EXPECT_EQ(PatchLine(0x1A2B30, Bytes{0x0A, 0x0B}, Bytes{0x01, 0x02}), "001A2B30: 0A0B 0102\r\n");
    EXPECT_EQ(PatchLine(0xabcdef01, Bytes{0xfe}, Bytes{0xdc}), "ABCDEF01: FE DC\r\n");
    EXPECT_EQ(PatchLine(0, Bytes{0}, Bytes{0}), "00000000: 00 00\r\n");
}

/// A flash in which each byte is the low byte of its offset.
class PatchSectionTest : public ::testing::Test {
  protected:
    PatchSectionTest() {
        Bytes bytes(0x1000);
        for (std::size_t at = 0; at < bytes.size(); ++at) bytes[at] = static_cast<std::uint8_t>(at & 0xFF);
        flash = Phone();
        flash.mModel = "T75";
        flash.source = std::make_shared<MemorySource>(std::move(bytes));
    }

    /// Picture 7 with its record at 0x30 and its data at 0x120, replaced by `stored` as 2 x 3 in type 05.
    PatchSection Section(Placement placement, std::uint64_t offset, const Bytes& stored) {
        const GpfHeader header{2, 3, 0x05, 7, true};
        const auto file = WriteFile(temp / "0007.gpf2", ComposeGpf(header, stored));
        return {
            {{7, 1, 1, 0x08, 0x30, 0x120}, 100, NewPicture{file, header, stored.size()}}, placement, offset};
    }

    Status Write(const PatchSection& section) {
        PICTAVO_TRY(OutputFile patch, OutputFile::Create(temp / "a.vkp"));
        PICTAVO_TRY(WritePatchSection(flash, section, patch));
        return patch.Commit(CommitMode::Replace);
    }

    std::string Written(const PatchSection& section) {
        EXPECT_TRUE(Write(section));
        return ReadText(temp / "a.vkp");
    }

    void ExpectFails(const PatchSection& section, ErrorKind kind) {
        const Status written = Write(section);
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error().kind, kind);
    }

    TempFolder temp;
    FullflashImage flash;
};

TEST_F(PatchSectionTest, InPlaceTheRecordKeepsItsAddress) {
    EXPECT_EQ(Written(Section(Placement::InPlace, 0x120, {0xE0, 0xE1, 0xE2})),
              "\r\n"
              "; ##### Picture 0007 #####\r\n"
              "00000030: 3031323334353637 0203050034353637\r\n"
              "\r\n"
              "00000120: 202122 E0E1E2\r\n");
}

TEST_F(PatchSectionTest, MovedTheRecordGetsTheAddressOfTheNewPlace) {
    EXPECT_EQ(Written(Section(Placement::Moved, 0x240, {0xE0, 0xE1, 0xE2})),
              "\r\n"
              "; ##### Picture 0007 #####\r\n"
              "00000030: 3031323334353637 02030500400200A0\r\n"
              "\r\n"
              "00000240: 404142 E0E1E2\r\n");
}

TEST_F(PatchSectionTest, ALongRecordIsTwelveBytes) {
    flash.mModel = "EL71";
    EXPECT_NE(Written(Section(Placement::Moved, 0x240, {0xE0}))
                  .find("\r\n00000030: 303132333435363738393A3B 0200030005000000400200A0\r\n"),
              std::string::npos);
}

TEST_F(PatchSectionTest, DataLinesHoldSixteenBytesAndTheLastTheRest) {
    const std::string text = Written(Section(Placement::InPlace, 0x120, Bytes(35, 0xEE)));
    EXPECT_EQ(text.substr(text.find("00000120: ")),
              "00000120: 202122232425262728292A2B2C2D2E2F EEEEEEEEEEEEEEEEEEEEEEEEEEEEEEEE\r\n"
              "00000130: 303132333435363738393A3B3C3D3E3F EEEEEEEEEEEEEEEEEEEEEEEEEEEEEEEE\r\n"
              "00000140: 404142 EEEEEE\r\n");
}

TEST_F(PatchSectionTest, WholeLinesLeaveNoEmptyOne) {
    EXPECT_TRUE(Written(Section(Placement::InPlace, 0x120, Bytes(16, 0xEE)))
                    .ends_with("2D2E2F EEEEEEEEEEEEEEEEEEEEEEEEEEEEEEEE\r\n"));
}

TEST_F(PatchSectionTest, LinesThatChangeNothingAreWritten) {
    EXPECT_TRUE(
        Written(Section(Placement::InPlace, 0x120, {0x20, 0x21})).ends_with("00000120: 2021 2021\r\n"));
}

TEST_F(PatchSectionTest, ThePlaceNeedNotBeAWholeStep) {
    EXPECT_TRUE(
        Written(Section(Placement::InPlace, 0x123, Bytes(17, 0xEE))).ends_with("\r\n00000133: 33 EE\r\n"));
}

TEST_F(PatchSectionTest, ThePaddingOfTheWorkFileIsNoData) {
    const PatchSection section = Section(Placement::InPlace, 0x120, {0xE0, 0xE1, 0xE2});
    ASSERT_EQ(ReadFile(section.row.picture->workFile).size(), 48U);
    EXPECT_TRUE(Written(section).ends_with("\r\n00000120: 202122 E0E1E2\r\n"));
}

TEST_F(PatchSectionTest, WhereTheWorkFileIsShorterThanItsPictureThereAreZeros) {
    PatchSection section = Section(Placement::InPlace, 0x120, Bytes(16, 0xEE));
    section.row.picture->length = 18;
    EXPECT_TRUE(Written(section).ends_with("EEEE\r\n00000130: 3031 0000\r\n"));
}

TEST_F(PatchSectionTest, APictureOfNoBytesHasItsRecordAndNoDataLine) {
    EXPECT_TRUE(Written(Section(Placement::InPlace, 0x120, {})).ends_with("0203050034353637\r\n\r\n"));
}

TEST_F(PatchSectionTest, WithoutAPlaceOnlyTheEmptyAndTheSectionLineAreWritten) {
    for (const Placement placement : {Placement::NoWorkFile, Placement::NoFreeMemory, Placement::BeyondFlash})
        EXPECT_EQ(Written(Section(placement, 0x120, {0xE0})), "\r\n; ##### Picture 0007 #####\r\n");
}

TEST_F(PatchSectionTest, AWorkFileThatIsGoneByNowIsMissing) {
    const PatchSection section = Section(Placement::InPlace, 0x120, {0xE0});
    std::filesystem::remove(section.row.picture->workFile);
    ExpectFails(section, ErrorKind::FileMissing);
}

TEST_F(PatchSectionTest, OldBytesBeyondTheFlashAreNeverInvented) {
    ExpectFails(Section(Placement::InPlace, 0xFFF, {0xE0, 0xE1}), ErrorKind::Truncated);
    EXPECT_FALSE(std::filesystem::exists(temp / "a.vkp"));
}

}  // namespace
}  // namespace pictavo::tests
