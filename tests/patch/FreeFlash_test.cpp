#include "patch/FreeFlash.h"

#include <gtest/gtest.h>
#include <random>

#include "core/FullflashImage.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

/// The search as it is described: chunk by chunk, counting.
std::optional<FileRange> PlainSearch(const Bytes& flash, std::uint64_t start, std::uint64_t needed,
                                     const std::vector<FileRange>& taken = {}) {
    std::uint64_t run = 0;
    std::uint64_t begin = 0;
    for (std::uint64_t at = start; at + 16 <= flash.size(); at += 16) {
        const auto first = flash.begin() + static_cast<std::ptrdiff_t>(at);
        const bool isErased = std::all_of(first, first + 16, [](std::uint8_t byte) { return byte == 0xFF; });
        const bool isTaken = std::any_of(taken.begin(), taken.end(), [at](const FileRange& range) {
            return range.begin < at + 16 && at < range.end;
        });
        const bool isFree = isErased && !isTaken;
        if (isFree && run == 0) begin = at;
        run = isFree ? run + 16 : 0;
        if (isFree && run >= needed) return FileRange{begin, begin + run};
    }
    return std::nullopt;
}

Bytes Flash(std::size_t size, std::initializer_list<FileRange> free) {
    Bytes flash(size, 0);
    for (const FileRange& range : free)
        std::fill(flash.begin() + static_cast<std::ptrdiff_t>(range.begin),
                  flash.begin() + static_cast<std::ptrdiff_t>(range.end), std::uint8_t{0xFF});
    return flash;
}

void ExpectFound(const Result<FileRange>& found, std::uint64_t begin, std::uint64_t end) {
    ASSERT_TRUE(found);
    EXPECT_EQ(found->begin, begin);
    EXPECT_EQ(found->end, end);
}

/// 512 MiB of FF that take no memory.
class ErasedSource final : public ByteSource {
  public:
    std::uint64_t Size() const override { return 2 * kAddressableBytes; }
    Result<ByteView> ViewAt(std::uint64_t offset) const override {
        return ByteView(piece_).first(static_cast<std::size_t>(std::min(piece_.size(), Size() - offset)));
    }
    const std::filesystem::path& Path() const override { return path_; }

  private:
    Bytes piece_ = Bytes(1U << 16, 0xFF);
    std::filesystem::path path_;
};

TEST(FreeFlash, WhatHasNoPhoneAddressIsNotFree) {
    const ErasedSource flash;
    constexpr std::uint64_t last = kAddressableBytes - 32;
    ExpectFound(FindFreeFlash(flash, last, 32), last, kAddressableBytes);
    EXPECT_EQ(FindFreeFlash(flash, last, 33).error().kind, ErrorKind::NoFreeMemory);
    EXPECT_EQ(FindFreeFlash(flash, kAddressableBytes, 16).error().kind, ErrorKind::NoFreeMemory);
    EXPECT_EQ(FindFreeFlash(flash, last + 24, 16).error().kind, ErrorKind::NoFreeMemory);
}

TEST(FreeFlash, TheGridBeginsAtTheStart) {
    ExpectFound(FindFreeFlash(MemorySource(Flash(100, {{3, 19}})), 3, 16), 3, 19);
    EXPECT_FALSE(FindFreeFlash(MemorySource(Flash(100, {{3, 19}})), 0, 16));
}

TEST(FreeFlash, ARunThatBeginsInsideAChunkCountsFromTheNext) {
    ExpectFound(FindFreeFlash(MemorySource(Flash(100, {{8, 64}})), 0, 32), 16, 48);
}

TEST(FreeFlash, SeventeenBytesNeedTwoChunks) {
    ExpectFound(FindFreeFlash(MemorySource(Flash(100, {{16, 48}})), 0, 17), 16, 48);
}

TEST(FreeFlash, AShortLastChunkNeverCounts) {
    EXPECT_FALSE(FindFreeFlash(MemorySource(Flash(47, {{16, 47}})), 0, 17));
}

TEST(FreeFlash, NoPlaceIsToldInTheProgramsWords) {
    const auto found = FindFreeFlash(MemorySource(Flash(64, {})), 0, 16);
    ASSERT_FALSE(found);
    EXPECT_EQ(found.error().kind, ErrorKind::NoFreeMemory);
    EXPECT_EQ(found.error().detail, "Can't find free memory in fullflash!");
}

TEST(FreeFlash, AStartBehindTheEndFindsNothing) {
    EXPECT_FALSE(FindFreeFlash(MemorySource(Flash(64, {{0, 64}})), 100, 16));
}

TEST(FreeFlash, TakenRangesAreNotFree) {
    const MemorySource flash(Flash(128, {{0, 128}}));
    ExpectFound(FindFreeFlash(flash, 0, 32, {{20, 21}}), 32, 64);
    ExpectFound(FindFreeFlash(flash, 0, 32, {{0, 16}, {47, 48}}), 48, 80);
}

TEST(FreeFlash, MergedRangesAreInOrderAndApart) {
    const auto merged = Merged({{40, 50}, {0, 10}, {10, 12}, {45, 47}, {60, 61}});
    ASSERT_EQ(merged.size(), 3U);
    EXPECT_EQ(merged[0].begin, 0U);
    EXPECT_EQ(merged[0].end, 12U);
    EXPECT_EQ(merged[1].begin, 40U);
    EXPECT_EQ(merged[1].end, 50U);
    EXPECT_EQ(merged[2].begin, 60U);
}

TEST(FreeFlash, AChunkThatNoSingleViewOfTheFileHoldsCounts) {
    const TempFolder temp;
    for (const std::uint64_t shift : {0U, 3U, 13U, 15U}) {
        const Bytes flash = Flash(600000, {{131000, 131300}, {262000, 263000}});
        const auto file = FileSource::Open(WriteFile(temp / "flash", flash));
        ASSERT_TRUE(file);
        for (const std::uint64_t needed : {200U, 900U}) {
            const auto expected = PlainSearch(flash, shift, needed);
            ASSERT_TRUE(expected);
            ExpectFound(FindFreeFlash(**file, shift, needed), expected->begin, expected->end);
        }
    }
}

TEST(FreeFlash, FindsWhatThePlainSearchFinds) {
    std::mt19937 random(7);
    TempFolder temp;
    for (int round = 0; round < 300; ++round) {
        Bytes flash(random() % 4 == 0 ? 140000 + random() % 40 : random() % 3000);
        for (std::size_t at = 0; at < flash.size();) {
            const std::size_t run = std::min<std::size_t>(1 + random() % 90, flash.size() - at);
            if (random() % 3 != 0)
                std::fill_n(flash.begin() + static_cast<std::ptrdiff_t>(at), run, std::uint8_t{0xFF});
            at += run;
        }
        const std::uint64_t start = random() % 64;
        const std::uint64_t needed = 1 + random() % 120;
        std::vector<FileRange> taken(random() % 4);
        for (FileRange& range : taken) {
            range.begin = random() % (flash.size() + 1);
            range.end = range.begin + 1 + random() % 200;
        }
        const auto expected = PlainSearch(flash, start, needed, taken);
        const auto file = FileSource::Open(WriteFile(temp / "flash", flash));
        ASSERT_TRUE(file);
        const auto found = FindFreeFlash(**file, start, needed, Merged(taken));
        ASSERT_EQ(found.has_value(), expected.has_value());
        if (expected) ExpectFound(found, expected->begin, expected->end);
    }
}

}  // namespace
}  // namespace pictavo::tests
