#include "core/OutputFile.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>
#else
#include <sys/stat.h>
#endif

#include "support/FileSizeLimit.h"
#include "support/Refusal.h"
#include "support/SystemMeans.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

using Maker = Result<OutputFile> (*)(const std::filesystem::path&);

/// Both ways: a file without a name, and a hidden neighbour.
class OutputFileTest : public ::testing::TestWithParam<Maker> {
  protected:
    OutputFile Begin(const std::filesystem::path& path) {
        auto file = GetParam()(path);
        EXPECT_TRUE(file);
        return std::move(*file);
    }

    static Status Write(OutputFile& file, const std::string& text) { return file.Write(AsBytes(text)); }

    std::vector<std::string> Names() const { return ListNames(temp.Path()); }

    TempFolder temp;
    const std::filesystem::path target = temp / "target";
};

INSTANTIATE_TEST_SUITE_P(, OutputFileTest, ::testing::Values(&OutputFile::Create, &OutputFile::CreateNamed),
                         [](const auto& way) { return way.index == 0 ? "AsTheSystemCan" : "Named"; });

TEST_P(OutputFileTest, TakesItsNameOnlyWhenItIsCommitted) {
    OutputFile file = Begin(target);
    EXPECT_TRUE(Write(file, "whole"));
    EXPECT_FALSE(std::filesystem::exists(target));
    EXPECT_TRUE(file.Commit(CommitMode::KeepExisting));
    EXPECT_EQ(ReadText(target), "whole");
    EXPECT_EQ(Names(), std::vector<std::string>{"target"});
}

TEST_P(OutputFileTest, IsDiscardedWithoutACommit) {
    {
        OutputFile file = Begin(target);
        EXPECT_TRUE(Write(file, "half"));
    }
    EXPECT_TRUE(Names().empty());
}

TEST_P(OutputFileTest, ReplacesAnExistingFile) {
    WriteFile(target, std::string("old and longer"));
    OutputFile file = Begin(target);
    EXPECT_TRUE(Write(file, "new"));
    EXPECT_EQ(ReadText(target), "old and longer");
    EXPECT_TRUE(file.Commit(CommitMode::Replace));
    EXPECT_EQ(ReadText(target), "new");
    EXPECT_EQ(Names(), std::vector<std::string>{"target"});
}

TEST_P(OutputFileTest, KeepsAnExistingFileThatMayNotBeReplaced) {
    WriteFile(target, std::string("old"));
    {
        OutputFile file = Begin(target);
        EXPECT_TRUE(Write(file, "new"));
        const Status committed = file.Commit(CommitMode::KeepExisting);
        ASSERT_FALSE(committed);
        EXPECT_EQ(committed.error(), (Error{ErrorKind::FileExists, target, std::nullopt, "exists already"}));
    }
    EXPECT_EQ(ReadText(target), "old");
    EXPECT_EQ(Names(), std::vector<std::string>{"target"});
}

TEST_P(OutputFileTest, ReplacesALinkAndNotWhatItLeadsTo) {
    PICTAVO_NEEDS_POSIX("symbolic links");
    const auto other = WriteFile(temp / "other", std::string("other"));
    std::filesystem::create_symlink(other, target);
    OutputFile file = Begin(target);
    EXPECT_TRUE(Write(file, "new"));
    EXPECT_TRUE(file.Commit(CommitMode::Replace));
    EXPECT_EQ(ReadText(other), "other");
    EXPECT_FALSE(std::filesystem::is_symlink(target));
}

TEST_P(OutputFileTest, WritesOverWhatItHoldsAlready) {
    OutputFile file = Begin(target);
    EXPECT_TRUE(Write(file, "0123456789"));
    EXPECT_TRUE(file.WriteAt(3, AsBytes("abc")));
    EXPECT_TRUE(Write(file, "!"));
    EXPECT_TRUE(file.Commit(CommitMode::Replace, Durability::Synced));
    EXPECT_EQ(ReadText(target), "012abc6789!");
}

#ifndef _WIN32

TEST_P(OutputFileTest, HasTheRightsThatTheUsersMaskLeaves) {
    const mode_t before = umask(027);
    OutputFile file = Begin(target);
    EXPECT_TRUE(file.Commit(CommitMode::Replace));
    umask(before);
    struct stat status {};
    ASSERT_EQ(stat(target.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

#else

/// Another program that has a file open and does not let it go.
class OpenElsewhere {
  public:
    explicit OpenElsewhere(const std::filesystem::path& path)
        : handle_(
              CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr)) {
        EXPECT_NE(handle_, INVALID_HANDLE_VALUE) << path;
    }
    ~OpenElsewhere() { CloseHandle(handle_); }
    OpenElsewhere(const OpenElsewhere&) = delete;
    OpenElsewhere& operator=(const OpenElsewhere&) = delete;

  private:
    HANDLE handle_;
};

TEST_P(OutputFileTest, AFileThatAnotherProgramHoldsStaysWithTheReason) {
    WriteFile(target, std::string("old"));
    {
        const OpenElsewhere elsewhere(target);
        OutputFile file = Begin(target);
        EXPECT_TRUE(Write(file, "new"));
        const Status committed = file.Commit(CommitMode::Replace);
        ASSERT_FALSE(committed);
        EXPECT_EQ(committed.error().kind, ErrorKind::WriteFailed);
        EXPECT_EQ(committed.error().path, target);
    }
    EXPECT_EQ(ReadText(target), "old");
    EXPECT_EQ(Names(), std::vector<std::string>{"target"});
}

#endif

TEST_P(OutputFileTest, AFullDiskLeavesTheOldFileAndNothingElse) {
    PICTAVO_NEEDS_POSIX("full disks");
    WriteFile(target, std::string("old"));
    {
        OutputFile file = Begin(target);
        const FileSizeLimit full(1000);
        const Status written = file.Write(Bytes(5000, 1));
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error(), (Error{ErrorKind::WriteFailed, target, std::nullopt,
                                          "cannot be written (File too large)"}));
    }
    EXPECT_EQ(ReadText(target), "old");
    EXPECT_EQ(Names(), std::vector<std::string>{"target"});
}

TEST_P(OutputFileTest, AFolderThatIsNotThereIsNamedWithTheTarget) {
    const auto file = GetParam()(temp / "none" / "target");
    ASSERT_FALSE(file);
    EXPECT_EQ(file.error(), (Error{ErrorKind::WriteFailed, temp / "none" / "target", std::nullopt,
                                   "cannot be created (No such file or directory)"}));
}

TEST_P(OutputFileTest, AFolderOfTheTargetsNameIsNeverReplaced) {
    std::filesystem::create_directory(target);
    for (const CommitMode mode : {CommitMode::Replace, CommitMode::KeepExisting}) {
        OutputFile file = Begin(target);
        EXPECT_FALSE(file.Commit(mode));
    }
    EXPECT_TRUE(std::filesystem::is_directory(target));
    EXPECT_EQ(Names(), std::vector<std::string>{"target"});
}

TEST_P(OutputFileTest, ANameWithoutAFolderIsInTheCurrentOne) {
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(temp.Path());
    for (const CommitMode mode : {CommitMode::KeepExisting, CommitMode::Replace}) {
        OutputFile file = Begin("bare");
        EXPECT_TRUE(file.Commit(mode, Durability::Synced));
    }
    std::filesystem::current_path(before);
    EXPECT_EQ(Names(), std::vector<std::string>{"bare"});
}

TEST(OutputFile, LeavesNoTraceInTheFolderWhileItIsWritten) {
    PICTAVO_NEEDS_POSIX("files without a name");
    const TempFolder temp;
    auto file = OutputFile::Create(temp / "target");
    ASSERT_TRUE(file);
    ASSERT_TRUE(file->Write(Bytes(100, 1)));
    EXPECT_TRUE(ListNames(temp.Path()).empty()) << "this file system has no nameless files";
}

TEST(CopyRange, CopiesAPartAndRefusesWhatIsNotThere) {
    const TempFolder temp;
    const MemorySource source(Bytes{1, 2, 3, 4, 5});
    auto file = OutputFile::Create(temp / "target");
    ASSERT_TRUE(file);
    EXPECT_TRUE(CopyRange(source, 1, 3, *file));
    const Status copied = CopyRange(source, 4, 2, *file);
    ASSERT_FALSE(copied);
    EXPECT_EQ(copied.error().kind, ErrorKind::Truncated);
    EXPECT_EQ(copied.error().offset, 5U);
}

TEST(EnsureFolder, CreatesParentsAndTakesWhatIsThere) {
    const TempFolder temp;
    EXPECT_TRUE(EnsureFolder(temp / "a" / "b" / "c"));
    EXPECT_TRUE(EnsureFolder(temp / "a" / "b" / "c"));
    EXPECT_TRUE(std::filesystem::is_directory(temp / "a" / "b" / "c"));
}

TEST(EnsureFolder, AFileInTheWayIsAnError) {
    const TempFolder temp;
    WriteFile(temp / "file", std::string("x"));
    for (const auto& folder : {temp / "file", temp / "file" / "below"}) {
        const Status made = EnsureFolder(folder);
        ASSERT_FALSE(made) << folder;
        EXPECT_EQ(made.error().kind, ErrorKind::WriteFailed);
        EXPECT_EQ(made.error().path, folder);
    }
}

TEST(EnsureFolder, ANameThatTheSystemRefusesIsAnError) {
    const TempFolder temp;
    const std::filesystem::path folder = temp / std::string(300, 'n');
    const Status made = EnsureFolder(folder);
    ASSERT_FALSE(made);
    EXPECT_EQ(made.error().kind, ErrorKind::WriteFailed);
    EXPECT_EQ(made.error().path, folder);
}

TEST(EnsureFolder, ALinkToItselfIsAnError) {
    PICTAVO_NEEDS_POSIX("symbolic links");
    const TempFolder temp;
    std::filesystem::create_symlink("circle", temp / "circle");
    const Status made = EnsureFolder(temp / "circle");
    ASSERT_FALSE(made);
    EXPECT_EQ(made.error().kind, ErrorKind::WriteFailed);
    EXPECT_EQ(made.error().path, temp / "circle");
}

TEST(NameIsFree, OnlyWhereNothingStands) {
    const TempFolder temp;
    EXPECT_TRUE(NameIsFree(temp / "nothing"));
    EXPECT_FALSE(NameIsFree(temp.Path()));
    EXPECT_FALSE(NameIsFree(WriteFile(temp / "file", Bytes{1})));
}

TEST(NameIsFree, ALinkThatLeadsNowhereHasTheName) {
    PICTAVO_NEEDS_POSIX("symbolic links");
    const TempFolder temp;
    std::filesystem::create_symlink(temp / "nothing", temp / "link");
    EXPECT_FALSE(NameIsFree(temp / "link"));
}

TEST(IsSameFile, SeesThroughSymbolicLinks) {
    PICTAVO_NEEDS_POSIX("symbolic links");
    const TempFolder temp;
    const auto file = WriteFile(temp / "file", std::string("x"));
    std::filesystem::create_symlink(file, temp / "soft");
    EXPECT_EQ(IsSameFile(file, temp / "soft"), true);
}

TEST(IsSameFile, SeesThroughHardLinksAndOtherSpellings) {
    const TempFolder temp;
    const auto file = WriteFile(temp / "file", std::string("x"));
    std::filesystem::create_hard_link(file, temp / "hard");
    EXPECT_EQ(IsSameFile(file, temp / "hard"), true);
    EXPECT_EQ(IsSameFile(file, temp / "." / "file"), true);
    EXPECT_EQ(IsSameFile(file, WriteFile(temp / "twin", std::string("x"))), false);
    EXPECT_EQ(IsSameFile(file, temp / "none"), false);
}

TEST(IsSameFile, ALinkThatLeadsToItselfIsNoFile) {
    PICTAVO_NEEDS_POSIX("symbolic links");
    const TempFolder temp;
    std::filesystem::create_symlink(temp / "loop", temp / "loop");
    EXPECT_EQ(IsSameFile(temp / "loop", WriteFile(temp / "file", std::string("x"))), false);
}

TEST(IsSameFile, WhatTheSystemDoesNotTellIsAnErrorThatNamesTheFirst) {
    PICTAVO_NEEDS_POSIX("names that it does not look at");
    const TempFolder temp;
    const auto file = WriteFile(temp / "file", std::string("x"));
    const auto overlong = temp / std::string(300, 'x');
    const std::string detail = "cannot be looked at (File name too long)";
    EXPECT_EQ(RefusalOf(IsSameFile(overlong, file)),
              (Error{ErrorKind::WriteFailed, overlong, std::nullopt, detail}));
    EXPECT_EQ(RefusalOf(IsSameFile(file, overlong)),
              (Error{ErrorKind::WriteFailed, file, std::nullopt, detail}));
}

}  // namespace
}  // namespace pictavo::tests
