#include "codec/ImportedPixels.h"

#include <gtest/gtest.h>

#include "OldPicture.h"

namespace pictavo::tests {
namespace {

constexpr Cell kNew{201, 202, 203, 204};

class ImportedPixelsTest : public ::testing::Test {
  protected:
    ImportedPixelsTest() {
        FillWithOld(picture.raster);
        picture.width = 10;
        picture.height = 20;
        picture.bitDepth = 16;
    }

    void Store(const ImportedPixels& pixels, const ChannelFlags& flags = {}) {
        StoreImportedPixels(pixels, 32, flags, picture);
    }

    static ImportedPixels OneColour(int width, int height, const Cell& cell = kNew, bool hasAlpha = true) {
        const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
        return {width, height, std::vector<Cell>(count, cell), hasAlpha};
    }

    void ExpectSize(int width, int height) const {
        EXPECT_EQ(picture.width, width);
        EXPECT_EQ(picture.height, height);
    }

    /// Every cell of the Raster: `inside` in the top left corner, kOld elsewhere.
    void ExpectCorner(int width, int height, const Cell& inside) const {
        for (int y = 0; y < Raster::kRows; ++y)
            for (int x = 0; x < Raster::kColumns; ++x)
                ASSERT_EQ(picture.raster.At(x, y), x < width && y < height ? inside : kOld) << x << ", " << y;
    }

    Picture picture;
};

TEST_F(ImportedPixelsTest, WholePixelsGoIntoTheTopLeftCornerAndNowhereElse) {
    Store(OneColour(3, 2));
    ExpectCorner(3, 2, kNew);
}

TEST_F(ImportedPixelsTest, StandRowByRowFromTheTop) {
    Store({2, 2, {{1, 0, 0, 0}, {2, 0, 0, 0}, {3, 0, 0, 0}, {4, 0, 0, 0}}, false});
    EXPECT_EQ(picture.raster.At(0, 0).r, 1);
    EXPECT_EQ(picture.raster.At(1, 0).r, 2);
    EXPECT_EQ(picture.raster.At(0, 1).r, 3);
    EXPECT_EQ(picture.raster.At(1, 1).r, 4);
}

TEST_F(ImportedPixelsTest, SetTheSizeAndTheDepth) {
    Store(OneColour(30, 2));
    ExpectSize(30, 2);
    EXPECT_EQ(picture.bitDepth, 32);
}

TEST_F(ImportedPixelsTest, RasterHasAlphaIsThatOfTheFile) {
    Store(OneColour(1, 1, kNew, true));
    EXPECT_TRUE(picture.RasterHasAlpha);
    Store(OneColour(1, 1, kNew, false));
    EXPECT_FALSE(picture.RasterHasAlpha);
}

TEST_F(ImportedPixelsTest, TheLargestPictureFits) {
    Store(OneColour(240, 320));
    ExpectCorner(240, 320, kNew);
    ExpectSize(240, 320);
}

TEST_F(ImportedPixelsTest, NoPixelsLeaveNoPicture) {
    Store({});
    ExpectCorner(0, 0, kNew);
    ExpectSize(0, 0);
}

TEST_F(ImportedPixelsTest, OnlyFlaggedChannelsChange) {
    for (unsigned set = 1; set < 16; ++set) {
        const ChannelFlags flags{(set & 1) != 0, (set & 2) != 0, (set & 4) != 0, (set & 8) != 0};
        FillWithOld(picture.raster);
        Store(OneColour(3, 2), flags);
        Cell expected = kOld;
        if (flags.red) expected.r = 201;
        if (flags.green) expected.g = 202;
        if (flags.blue) expected.b = 203;
        if (flags.alpha) expected.a = 204;
        ExpectCorner(3, 2, expected);
    }
}

TEST_F(ImportedPixelsTest, WithFlagsEachSideIsTheLargerOfOldAndNew) {
    const ChannelFlags green{false, true, false, false};
    Store(OneColour(3, 2), green);
    ExpectSize(10, 20);
    Store(OneColour(11, 2), green);
    ExpectSize(11, 20);
    Store(OneColour(3, 21), green);
    ExpectSize(11, 21);
}

TEST_F(ImportedPixelsTest, WithFlagsDepthAndAlphaAreThoseOfTheFileToo) {
    Store(OneColour(1, 1), {true, false, false, false});
    EXPECT_EQ(picture.bitDepth, 32);
    EXPECT_TRUE(picture.RasterHasAlpha);
}

TEST_F(ImportedPixelsTest, KeptTheAlphaFlagTakesTheZeroOfAFileWithoutAlpha) {
    Store(OneColour(2, 2, {9, 9, 9, 0}, false), {false, false, false, true});
    ExpectCorner(2, 2, {1, 2, 3, 0});
    EXPECT_FALSE(picture.RasterHasAlpha);
}

}  // namespace
}  // namespace pictavo::tests
