#include <gmock/gmock.h>

#include "config/AppSettings.h"
#include "support/FileSizeLimit.h"
#include "support/Refusal.h"
#include "support/SystemMeans.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

using ::testing::ElementsAre;
using Recent = std::array<std::optional<std::string>, 3>;

constexpr std::nullopt_t kHidden = std::nullopt;

AppSettings With(const Recent& recent) {
    AppSettings settings;
    settings.MRU = recent;
    return settings;
}

Recent After(const Recent& recent, const std::string& path) {
    AppSettings settings = With(recent);
    NoteRecentFile(settings, path);
    return settings.MRU;
}

TEST(NoteRecentFile, TheFirstThreeFilesFillTheListFromTheTop) {
    EXPECT_EQ(After({}, "A"), (Recent{"A"}));
    EXPECT_EQ(After({"A"}, "B"), (Recent{"B", "A"}));
    EXPECT_EQ(After({"B", "A"}, "C"), (Recent{"C", "B", "A"}));
}

TEST(NoteRecentFile, AFourthFileDropsTheOldest) {
    EXPECT_EQ(After({"C", "B", "A"}, "D"), (Recent{"D", "C", "B"}));
}

TEST(NoteRecentFile, TheFirstOneOpenedAgainStaysWhereItIs) {
    EXPECT_EQ(After({"A"}, "A"), (Recent{"A"}));
    EXPECT_EQ(After({"C", "B", "A"}, "C"), (Recent{"C", "B", "A"}));
}

TEST(NoteRecentFile, TheSecondOfTwoOpenedAgainChangesPlaces) {
    EXPECT_EQ(After({"B", "A"}, "A"), (Recent{"A", "B"}));
}

TEST(NoteRecentFile, TheThirdOpenedAgainMovesToTheTop) {
    EXPECT_EQ(After({"C", "B", "A"}, "A"), (Recent{"A", "C", "B"}));
}

TEST(NoteRecentFile, TheSecondOfThreeOpenedAgainDropsTheOldest) {
    EXPECT_EQ(After({"C", "B", "A"}, "B"), (Recent{"B", "C"}));
}

TEST(NoteRecentFile, AHiddenFirstEntryIsFilledAndTheOthersStay) {
    EXPECT_EQ(After({kHidden, "B"}, "A"), (Recent{"A", "B"}));
    EXPECT_EQ(After({kHidden, "B", "C"}, "A"), (Recent{"A", "B", "C"}));
    EXPECT_EQ(After({kHidden, "B"}, "B"), (Recent{"B", "B"}));
}

TEST(NoteRecentFile, AHiddenFirstEntryFilledWithTheThirdHidesTheThird) {
    EXPECT_EQ(After({kHidden, "B", "A"}, "A"), (Recent{"A", "B"}));
}

TEST(NoteRecentFile, AHiddenSecondEntryIsFilledAndTheThirdStays) {
    EXPECT_EQ(After({"A", kHidden, "C"}, "B"), (Recent{"B", "A", "C"}));
    EXPECT_EQ(After({"A", kHidden, "C"}, "C"), (Recent{"C", "A"}));
}

TEST(NoteRecentFile, AThirdEntryLikeTheFirstIsHiddenEvenWhenNothingMoves) {
    EXPECT_EQ(After({"A", "B", "A"}, "A"), (Recent{"A", "B"}));
}

TEST(NoteRecentFile, AnEntryShownEmptyIsAnEntry) {
    EXPECT_EQ(After({""}, "A"), (Recent{"A", ""}));
}

TEST(NoteRecentFile, NothingElseChanges) {
    AppSettings settings;
    settings.nConvert = "n";
    settings.ChanR = true;
    AppSettings expected = settings;
    expected.MRU[0] = "A";
    NoteRecentFile(settings, "A");
    EXPECT_EQ(settings, expected);
}

class AppendRecentFilesTest : public ::testing::Test {
  protected:
    const TempFolder temp;
    const std::filesystem::path path = temp / "Pictavo.ini";
};

TEST_F(AppendRecentFilesTest, PutsTheLinesBehindWhatIsThere) {
    WriteFile(path, std::string("; my own line\r\nChanR=true\r\n"));
    EXPECT_TRUE(AppendRecentFiles(path, With({"/b.bin", "/a.bin"})));
    EXPECT_EQ(ReadText(path), "; my own line\r\nChanR=true\r\nMRU1=/b.bin\r\nMRU2=/a.bin\r\n");
    EXPECT_THAT(ListNames(temp.Path()), ElementsAre("Pictavo.ini"));
}

TEST_F(AppendRecentFilesTest, TheFileGrowsAtEveryOpeningAndTheLastLinesHold) {
    EXPECT_TRUE(AppendRecentFiles(path, With({"/a.bin"})));
    EXPECT_TRUE(AppendRecentFiles(path, With({"/b.bin", "/a.bin"})));
    EXPECT_EQ(ReadText(path), "MRU1=/a.bin\r\nMRU1=/b.bin\r\nMRU2=/a.bin\r\n");
    const auto settings = LoadAppSettings(path, {});
    ASSERT_TRUE(settings);
    EXPECT_EQ(settings->MRU, (Recent{"/b.bin", "/a.bin"}));
}

TEST_F(AppendRecentFilesTest, OnlyTheEntriesThatAreShownHaveALine) {
    EXPECT_TRUE(AppendRecentFiles(path, With({kHidden, "/b.bin"})));
    EXPECT_EQ(ReadText(path), "MRU2=/b.bin\r\n");
}

TEST_F(AppendRecentFilesTest, WithNothingShownNothingIsWritten) {
    EXPECT_TRUE(AppendRecentFiles(path, {}));
    EXPECT_TRUE(ListNames(temp.Path()).empty());
}

TEST_F(AppendRecentFilesTest, ALastLineWithoutItsEndIsEndedFirst) {
    WriteFile(path, std::string("ChanA=true"));
    EXPECT_TRUE(AppendRecentFiles(path, With({"/a.bin"})));
    EXPECT_EQ(ReadText(path), "ChanA=true\r\nMRU1=/a.bin\r\n");
}

TEST_F(AppendRecentFilesTest, AnEmptyFileGetsTheLinesOnly) {
    WriteFile(path, std::string());
    EXPECT_TRUE(AppendRecentFiles(path, With({"/a.bin"})));
    EXPECT_EQ(ReadText(path), "MRU1=/a.bin\r\n");
}

TEST_F(AppendRecentFilesTest, OnAFullDiskTheOldFileStays) {
    PICTAVO_NEEDS_POSIX("full disks");
    WriteFile(path, std::string("ChanR=true\r\n"));
    {
        const FileSizeLimit full(20);
        EXPECT_EQ(RefusalOf(AppendRecentFiles(path, With({"/a/long/path.bin"}))).kind,
                  ErrorKind::WriteFailed);
    }
    EXPECT_EQ(ReadText(path), "ChanR=true\r\n");
    EXPECT_THAT(ListNames(temp.Path()), ElementsAre("Pictavo.ini"));
}

TEST_F(AppendRecentFilesTest, AFileThatCanNotBeReadIsNotReplaced) {
    std::filesystem::create_directory(path);
    EXPECT_EQ(RefusalOf(AppendRecentFiles(path, With({"/a.bin"}))).kind, ErrorKind::FileMissing);
    EXPECT_TRUE(std::filesystem::is_directory(path));
}

TEST_F(AppendRecentFilesTest, AFolderThatIsNotThereIsAnError) {
    EXPECT_EQ(RefusalOf(AppendRecentFiles(temp / "none" / "Pictavo.ini", With({"/a.bin"}))).kind,
              ErrorKind::WriteFailed);
}

}  // namespace
}  // namespace pictavo::tests
