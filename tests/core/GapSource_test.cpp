#include "core/GapSource.h"

#include <gtest/gtest.h>

#include "support/BrokenSource.h"

namespace pictavo::tests {
namespace {

class GapSourceTest : public ::testing::Test {
  protected:
    Bytes Read(const FileRange& broken) {
        const BrokenSource source(Bytes(20'000, 7), broken);
        const GapSource gaps(source, [this](const Error& error) { noted.push_back(error); });
        EXPECT_EQ(gaps.Size(), 20'000U);
        EXPECT_EQ(gaps.Path(), "broken.bin");
        Bytes bytes(20'000);
        for (int round = 0; round < 2; ++round) EXPECT_EQ(gaps.ReadAt(0, bytes), bytes.size());
        return bytes;
    }

    static Bytes WithErased(std::size_t begin, std::size_t end) {
        Bytes bytes(20'000, 7);
        std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(begin),
                  bytes.begin() + static_cast<std::ptrdiff_t>(end), std::uint8_t{0xFF});
        return bytes;
    }

    std::vector<Error> noted;
};

TEST_F(GapSourceTest, WhatCanBeReadIsAsItStands) {
    EXPECT_EQ(Read({0, 0}), Bytes(20'000, 7));
    EXPECT_TRUE(noted.empty());
}

TEST_F(GapSourceTest, AnUnreadableStretchIsErasedFlashAndNotedOnce) {
    EXPECT_EQ(Read({4096, 12288}), WithErased(4096, 12288));
    ASSERT_EQ(noted.size(), 1U);
    EXPECT_EQ(noted[0].offset, 4096U);
    EXPECT_EQ(noted[0].kind, ErrorKind::ReadFailed);
}

TEST_F(GapSourceTest, APieceIsGivenUpFromWhereItCannotBeReadToItsEnd) {
    EXPECT_EQ(Read({5000, 5001}), WithErased(5000, 8192));
}

TEST_F(GapSourceTest, TheLastPieceEndsWithTheSource) {
    EXPECT_EQ(Read({16384, 20'000}), WithErased(16384, 20'000));
    EXPECT_EQ(noted.size(), 1U);
}

}  // namespace
}  // namespace pictavo::tests
