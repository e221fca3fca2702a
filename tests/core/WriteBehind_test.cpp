#include "core/WriteBehind.h"

#include <gtest/gtest.h>

#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

TEST(WriteBehind, WritesEveryFileAndTellsInOrderHowEachEnded) {
    const TempFolder temp;
    WriteFile(temp / "5", std::string("old"));
    WriteBehind files;
    for (int i = 0; i < 300; ++i)  // six MiB, which are handed over many times
        files.Add({temp / std::to_string(i), Bytes(20'000, static_cast<std::uint8_t>(i)),
                   CommitMode::KeepExisting});
    const std::vector<Status> ends = files.Finish();
    ASSERT_EQ(ends.size(), 300U);
    for (std::size_t i = 0; i < ends.size(); ++i) {
        const Bytes written = ReadFile(temp / std::to_string(i));
        EXPECT_EQ(ends[i].has_value(), i != 5) << i;
        EXPECT_EQ(written == Bytes(20'000, static_cast<std::uint8_t>(i)), i != 5) << i;
    }
    EXPECT_EQ(ends[5].error().kind, ErrorKind::FileExists);
    EXPECT_EQ(ends[5].error().path, temp / "5");
    EXPECT_EQ(ReadText(temp / "5"), "old");
}

TEST(WriteBehind, ReplacesWhereItMay) {
    const TempFolder temp;
    WriteFile(temp / "a", std::string("old"));
    WriteBehind files;
    files.Add({temp / "a", Bytes(3, 'n'), CommitMode::Replace});
    EXPECT_TRUE(files.Finish().at(0));
    EXPECT_EQ(ReadText(temp / "a"), "nnn");
}

TEST(WriteBehind, TakesAFileLargerThanAllThatMayWait) {
    const TempFolder temp;
    WriteBehind files;
    for (int i = 0; i < 3; ++i)
        files.Add({temp / std::to_string(i), Bytes(3U << 20, 1), CommitMode::Replace});
    for (const Status& end : files.Finish()) EXPECT_TRUE(end);
    EXPECT_EQ(ReadFile(temp / "2"), Bytes(3U << 20, 1));
}

TEST(WriteBehind, WithoutAFileTellsOfNone) {
    WriteBehind files;
    EXPECT_TRUE(files.Finish().empty());
}

}  // namespace
}  // namespace pictavo::tests
