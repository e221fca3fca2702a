#include "patch/PatchReader.h"

#include <gtest/gtest.h>

#include "support/TempFolder.h"
#include "support/WholePatch.h"

namespace pictavo::tests {
namespace {

TEST(PatchReader, ReadsLinesAndPassesOverCommentsAndEmptyLines) {
    const auto entries = ReadWholePatch(SourceOf("; a comment\r\n\r\n001A2B30: 0A0B 0102\r\n  \nff: aa BB"));
    ASSERT_TRUE(entries);
    ASSERT_EQ(entries->size(), 2U);
    EXPECT_EQ((*entries)[0].line, 3U);
    EXPECT_EQ((*entries)[0].offset, 0x1A2B30U);
    EXPECT_EQ((*entries)[0].oldBytes, (Bytes{0x0A, 0x0B}));
    EXPECT_EQ((*entries)[0].newBytes, (Bytes{0x01, 0x02}));
    EXPECT_EQ((*entries)[1].line, 5U);
    EXPECT_EQ((*entries)[1].offset, 0xFFU);
}

TEST(PatchReader, NamesTheLineThatIsNoPatchLine) {
    for (const char* line : {"hello", "12 00 01", "12: 00", "12: 0 1", "12: 00 0102", "12: 00  01",
                             "123456789: 00 01", "xy: 00 01", ": 00 01", "12: 00 01 02", "12: G0 01"}) {
        const auto entries = ReadWholePatch(SourceOf(std::string("; ok\n") + line + "\n"));
        ASSERT_FALSE(entries) << line;
        EXPECT_EQ(entries.error().kind, ErrorKind::Malformed);
        EXPECT_TRUE(entries.error().detail.starts_with("line 2 ")) << entries.error().detail;
    }
}

TEST(PatchReader, ChecksOldBytesAndShowsWhatStandsThere) {
    const MemorySource patch = SourceOf("00: 01 FF\n01: 09 FF\n02: 0304 FFFF\n");
    const auto mismatches = MismatchesOf(patch, MemorySource({1, 2, 3}));
    ASSERT_TRUE(mismatches);
    ASSERT_EQ(mismatches->size(), 2U);
    EXPECT_EQ((*mismatches)[0].line, 2U);
    EXPECT_EQ((*mismatches)[0].expected, Bytes{9});
    EXPECT_EQ((*mismatches)[0].found, Bytes{2});
    EXPECT_EQ((*mismatches)[1].found, Bytes{3});
}

TEST(PatchReader, CountsThePatchLinesAndTheMismatches) {
    const MemorySource patch = SourceOf("; ok\n00: 01 FF\n01: 09 FF\n\n02: 0304 FFFF\n");
    const auto check = CheckPatch(patch, MemorySource({1, 2, 3}), [](const PatchMismatch&) {});
    ASSERT_TRUE(check);
    EXPECT_EQ(check->lines, 3U);
    EXPECT_EQ(check->mismatches, 2U);
}

TEST(PatchReader, AppliesTheNewBytesInTheOrderOfTheLines) {
    TempFolder temp;
    const MemorySource patch = SourceOf("01: 02 AA\n01: 02 BB\n03: 04 CC\n");
    ASSERT_TRUE(ApplyPatch(patch, MemorySource({1, 2, 3, 4}), temp / "copy", false));
    EXPECT_EQ(ReadFile(temp / "copy"), (Bytes{1, 0xBB, 3, 0xCC}));
}

TEST(PatchReader, RefusesALinePastTheEndBeforeAnythingIsWritten) {
    TempFolder temp;
    const MemorySource patch = SourceOf("00: 01 02\n03: 0405 AABB\n");
    const Status applied = ApplyPatch(patch, MemorySource({1, 2, 3, 4}), temp / "copy", false);
    ASSERT_FALSE(applied);
    EXPECT_EQ(applied.error().kind, ErrorKind::Truncated);
    EXPECT_TRUE(ListNames(temp.Path()).empty());
}

/// A patch whose line has another address each time that it is read.
class ChangingPatch final : public ByteSource {
  public:
    std::uint64_t Size() const override { return text_.size(); }

    Result<ByteView> ViewAt(std::uint64_t offset) const override {
        if (offset == 0) ++text_[1];
        return AsBytes(text_).subspan(static_cast<std::size_t>(offset));
    }

    const std::filesystem::path& Path() const override { return path_; }

  private:
    mutable std::string text_ = "02: 04 AA\n";
    std::filesystem::path path_;
};

TEST(PatchReader, APatchThatChangesWhileItIsAppliedWritesNothingPastTheEnd) {
    TempFolder temp;
    const Status applied = ApplyPatch(ChangingPatch(), MemorySource({1, 2, 3, 4}), temp / "copy", false);
    ASSERT_FALSE(applied);
    EXPECT_EQ(applied.error().kind, ErrorKind::Truncated);
    EXPECT_TRUE(ListNames(temp.Path()).empty());
}

TEST(PatchReader, KeepsACopyThatExistsUnlessToldToReplaceIt) {
    TempFolder temp;
    WriteFile(temp / "copy", std::string("old"));
    const Status kept = ApplyPatch(SourceOf(""), MemorySource({1}), temp / "copy", false);
    ASSERT_FALSE(kept);
    EXPECT_EQ(kept.error().kind, ErrorKind::FileExists);
    EXPECT_EQ(ReadText(temp / "copy"), "old");
    ASSERT_TRUE(ApplyPatch(SourceOf(""), MemorySource({1}), temp / "copy", true));
    EXPECT_EQ(ReadFile(temp / "copy"), Bytes{1});
}

}  // namespace
}  // namespace pictavo::tests
