#include "samples/Sample.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

#include "Parts.h"
#include "samples/Checksums.h"
#include "samples/PictureEncoders.h"
#include "samples/Replacements.h"

namespace pictavo::samples {
namespace {

constexpr std::uint64_t kMiB = 1U << 20;

SampleSpec Spec(FlashKind kind, int sizeMiB, int pictures) {
    SampleSpec spec;
    spec.kind = kind;
    spec.sizeMiB = sizeMiB;
    spec.pictureCount = pictures;
    return spec;
}

/// Everything in a sample that takes room of its own.
std::vector<ErasedArea> Stretches(const Sample& sample) {
    std::vector<ErasedArea> stretches = sample.erased;
    for (const SamplePicture& picture : sample.pictures)
        stretches.push_back({picture.offset, picture.length});
    for (const EmbeddedFile& file : sample.files) stretches.push_back({file.offset, file.length});
    std::ranges::sort(stretches, {}, &ErasedArea::offset);
    return stretches;
}

void ExpectNothingOverlaps(const Sample& sample) {
    std::uint64_t end = kMiB / 2;  // an erased place stands before the information block
    for (const ErasedArea& stretch : Stretches(sample)) {
        if (stretch.offset < kMiB) continue;
        EXPECT_GE(stretch.offset, end);
        end = stretch.offset + stretch.length;
    }
    EXPECT_LE(end, sample.flash.Size());
}

std::size_t LongestErasedRun(const Bytes& bytes) {
    std::size_t longest = 0, run = 0;
    for (const std::uint8_t byte : bytes) {
        run = byte == 0xFF ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    return longest;
}

TEST(Sample, HoldsItsPicturesWhereItsListSays) {
    const Sample sample = MakeSample(Spec(FlashKind::SGold, 16, 120));
    const Bytes flash = sample.flash.Build();
    ASSERT_EQ(flash.size(), 16 * kMiB);
    for (const SamplePicture& picture : sample.pictures) {
        const auto number = static_cast<std::size_t>(picture.number);
        EXPECT_EQ(Part(flash, picture.offset, picture.length),
                  EncodeForPhone(Draw(picture.recipe), picture.typeCode));
        EXPECT_EQ(sample.flash.PictureOffset(number), picture.offset);
        EXPECT_EQ(flash[sample.flash.RecordOffset(number)], picture.width);
    }
}

TEST(Sample, HoldsEveryTypeDrawingAndTheWholeScreen) {
    const Sample sample = MakeSample(Spec(FlashKind::NewSGoldE71, 32, 300));
    std::set<int> types, drawings;
    int largest = 0;
    for (const SamplePicture& picture : sample.pictures) {
        types.insert(picture.typeCode);
        drawings.insert(static_cast<int>(picture.recipe.kind));
        largest = std::max(largest, picture.width * picture.height);
    }
    EXPECT_EQ(types.size(), kTypeCodes.size());
    EXPECT_EQ(drawings.size(), static_cast<std::size_t>(kDrawingKindCount));
    EXPECT_EQ(largest, 240 * 320);
}

TEST(Sample, HoldsWholeFilesWhoseEndsStandOnce) {
    SampleSpec spec = Spec(FlashKind::NewSGold, 16, 10);
    spec.gifCount = spec.pngCount = spec.xmlCount = 600;
    const Sample sample = MakeSample(spec);
    const Bytes flash = sample.flash.Build();
    ASSERT_EQ(sample.files.size(), 1800U);
    for (const EmbeddedFile& file : sample.files) {
        const std::string_view start = file.kind == FileKind::Gif   ? "GIF89a"
                                       : file.kind == FileKind::Png ? "\x89PNG\r\n\x1A\n"
                                                                    : "<?xml ";
        const std::string_view end = file.kind == FileKind::Gif   ? std::string_view("\0;", 2)
                                     : file.kind == FileKind::Png ? "IEND"
                                                                  : std::string_view(" \0", 2);
        const Bytes bytes = Part(flash, file.offset, file.length + 2);
        const std::string text(bytes.begin(), bytes.end());
        EXPECT_EQ(text.find(start), 0U);
        const std::size_t adjusted = file.kind == FileKind::Gif ? 2 : file.kind == FileKind::Png ? 8 : 0;
        EXPECT_EQ(text.find(end) + adjusted, file.length);
    }
}

TEST(Sample, IsErasedWhereItSaysAndBeyondTheStartOfEverySearch) {
    for (const FlashKind kind : {FlashKind::SGold, FlashKind::NewSGold}) {
        const Sample sample = MakeSample(Spec(kind, 32, 50));
        const Bytes flash = sample.flash.Build();
        const std::uint64_t searchStart = kind == FlashKind::SGold ? 0x40000 : 0x1000000;
        std::uint64_t largest = 0;
        for (const ErasedArea& area : sample.erased) {
            EXPECT_EQ(LongestErasedRun(Part(flash, area.offset, area.length)), area.length);
            if (area.offset >= searchStart) largest = std::max(largest, area.length);
        }
        EXPECT_GE(largest, 4 * kMiB);
        EXPECT_LT(LongestErasedRun(Part(flash, searchStart, 16)), 16U);
    }
}

TEST(Sample, IsNowhereErasedWhenToldSo) {
    SampleSpec spec = Spec(FlashKind::NewSGold, 32, 50);
    spec.erasedAreas = false;
    EXPECT_LT(LongestErasedRun(MakeSample(spec).flash.Build()), 2048U);
}

TEST(Sample, FindsRoomForFullTablesInTheSmallestFlash) {
    for (const FlashKind kind : {FlashKind::SGold, FlashKind::NewSGoldEL71}) {
        SampleSpec spec = Spec(kind, 16, LargestPictureCount(kind));
        spec.gifCount = spec.pngCount = spec.xmlCount = kLargestFileCount;
        ASSERT_EQ(FaultOf(spec), "");
        const Sample sample = MakeSample(spec);
        EXPECT_EQ(sample.pictures.size(), static_cast<std::size_t>(LargestPictureCount(kind)));
        ExpectNothingOverlaps(sample);
    }
}

TEST(Sample, RefusesMoreThanATableHolds) {
    EXPECT_NE(FaultOf(Spec(FlashKind::SGold, 16, 2002)), "");
    EXPECT_EQ(FaultOf(Spec(FlashKind::NewSGoldE71, 16, 2002)), "");
    EXPECT_NE(FaultOf(Spec(FlashKind::SGold, 17, 1)), "");
}

TEST(Sample, IsTheSameOnEveryMachine) {
    EXPECT_EQ(Crc32(MakeSample(Spec(FlashKind::NewSGoldEL71, 16, 200)).flash.Build()), 0x5F916C9BU);
}

TEST(Sample, OffersReplacementsNamedByNumber) {
    const Sample sample = MakeSample(Spec(FlashKind::NewSGold, 16, 5));
    const std::vector<ReplacementFile> files = MakeReplacements(sample);
    ASSERT_EQ(files.size(), 5U);
    EXPECT_EQ(files[0].name, "0000.bmp");
    EXPECT_EQ(files[4].name, "0004.gif");
    EXPECT_EQ(Part(files[0].bytes, 18, 8), (Bytes{64, 0, 0, 0, 64, 0, 0, 0}));
}

}  // namespace
}  // namespace pictavo::samples
