#include "core/Cursor.h"

#include <gtest/gtest.h>
#include <numeric>

#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

/// Gives its bytes in views of a few bytes, as a file does at the ends of its windows.
class ChoppedSource final : public ByteSource {
  public:
    ChoppedSource(std::size_t length, std::size_t piece) : bytes_(length), piece_(piece) {
        std::iota(bytes_.begin(), bytes_.end(), std::uint8_t{1});
    }

    std::uint64_t Size() const override { return bytes_.size(); }
    Result<ByteView> ViewAt(std::uint64_t offset) const override {
        if (failsFrom && offset >= *failsFrom) return Fail(ErrorKind::ReadFailed, {}, offset, "broken");
        if (offset >= bytes_.size()) return ByteView();
        const std::size_t end = std::min<std::size_t>(bytes_.size(), (offset / piece_ + 1) * piece_);
        return ByteView(bytes_).subspan(offset, end - offset);
    }
    const std::filesystem::path& Path() const override { return path_; }

    std::optional<std::uint64_t> failsFrom;

  private:
    Bytes bytes_;
    std::size_t piece_;
    std::filesystem::path path_;
};

Bytes Take(Cursor& cursor, std::size_t length) {
    const std::uint8_t* bytes = cursor.Take(length);
    return {bytes, bytes + length};
}

TEST(Cursor, TakesBytesOneBehindTheOtherWhereverTheViewsEnd) {
    for (const std::size_t piece : {1U, 2U, 3U, 5U, 100U}) {
        const ChoppedSource source(20, piece);
        Cursor cursor(source, 2);
        EXPECT_EQ(Take(cursor, 3), (Bytes{3, 4, 5})) << piece;
        EXPECT_EQ(cursor.Byte(), 6) << piece;
        EXPECT_EQ(Take(cursor, 7), (Bytes{7, 8, 9, 10, 11, 12, 13})) << piece;
        EXPECT_EQ(cursor.Position(), 13U) << piece;
        EXPECT_EQ(cursor.Consumed(), 11U) << piece;
    }
}

TEST(Cursor, BytesPastTheEndReadAsZeroAndAreCounted) {
    const ChoppedSource source(4, 3);
    Cursor cursor(source, 2);
    EXPECT_EQ(Take(cursor, 4), (Bytes{3, 4, 0, 0}));
    EXPECT_EQ(cursor.Byte(), 0);
    EXPECT_EQ(cursor.Consumed(), 5U);
    EXPECT_TRUE(cursor.AtEnd());
    EXPECT_TRUE(cursor.Health());
}

TEST(Cursor, MayStartPastTheEnd) {
    const ChoppedSource source(4, 3);
    Cursor cursor(source, 1000);
    EXPECT_TRUE(cursor.AtEnd());
    EXPECT_EQ(Take(cursor, 2), (Bytes{0, 0}));
    EXPECT_EQ(cursor.Position(), 1002U);
}

TEST(Cursor, IsAtTheEndOnlyBehindTheLastByte) {
    const ChoppedSource source(3, 2);
    Cursor cursor(source, 0);
    Take(cursor, 2);
    EXPECT_FALSE(cursor.AtEnd());
    cursor.Byte();
    EXPECT_TRUE(cursor.AtEnd());
}

TEST(Cursor, SkipsAnyDistance) {
    const ChoppedSource source(20, 6);
    Cursor cursor(source, 0);
    cursor.Byte();
    cursor.Skip(9);
    EXPECT_EQ(cursor.Byte(), 11);
    cursor.Skip(1'000'000);
    EXPECT_EQ(cursor.Position(), 1'000'011U);
    EXPECT_EQ(cursor.Byte(), 0);
}

TEST(Cursor, AFailedReadIsRememberedAndGivesZeros) {
    ChoppedSource source(20, 4);
    source.failsFrom = 8;
    Cursor cursor(source, 6);
    EXPECT_EQ(Take(cursor, 4), (Bytes{7, 8, 0, 0}));
    ASSERT_FALSE(cursor.Health());
    EXPECT_EQ(cursor.Health().error().detail, "broken");
    source.failsFrom.reset();
    EXPECT_EQ(cursor.Byte(), 0) << "nothing is read after a failure";
    EXPECT_EQ(cursor.Health().error().offset, 8U) << "the first failure is the one that is told";
}

TEST(Cursor, TakesAsMuchAsItMayAcrossViews) {
    const ChoppedSource source(3 * Cursor::kLongestTake, 100);
    Cursor cursor(source, 50);
    const Bytes taken = Take(cursor, Cursor::kLongestTake);
    EXPECT_EQ(taken.front(), 51);
    EXPECT_EQ(taken.back(), static_cast<std::uint8_t>(50 + Cursor::kLongestTake));
}

}  // namespace
}  // namespace pictavo::tests
