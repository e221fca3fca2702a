#include "patch/FreeFlash.h"

#include <gtest/gtest.h>
#include <random>

#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

/// The search as it is described: chunk by chunk, counting.
std::optional<FileRange> PlainSearch(const Bytes& flash, std::uint64_t start, std::uint64_t needed) {
    std::uint64_t run = 0;
    std::uint64_t begin = 0;
    for (std::uint64_t at = start; at + 16 <= flash.size(); at += 16) {
        const auto first = flash.begin() + static_cast<std::ptrdiff_t>(at);
        const bool isFree = std::all_of(first, first + 16, [](std::uint8_t byte) { return byte == 0xFF; });
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
        const auto expected = PlainSearch(flash, start, needed);
        const auto file = FileSource::Open(WriteFile(temp / "flash", flash));
        ASSERT_TRUE(file);
        const auto found = FindFreeFlash(**file, start, needed);
        ASSERT_EQ(found.has_value(), expected.has_value());
        if (expected) ExpectFound(found, expected->begin, expected->end);
    }
}

}  // namespace
}  // namespace pictavo::tests
