#include "session/Targets.h"

#include "support/SessionFixture.h"
#include "support/SystemMeans.h"

namespace pictavo::tests {
namespace {

class TargetsTest : public SessionFixture {
  protected:
    void ExpectRefused(const std::filesystem::path& target, ErrorKind kind, const std::string& detail) {
        const auto mode = AskTarget(session, scripted.ports, target);
        ASSERT_FALSE(mode) << target;
        EXPECT_EQ(mode.error().kind, kind);
        EXPECT_EQ(mode.error().path, target);
        EXPECT_EQ(mode.error().detail, detail);
    }
};

TEST_F(TargetsTest, ANameThatIsFreeIsNotAskedFor) {
    EXPECT_EQ(AskTarget(session, scripted.ports, temp / "new").value(), CommitMode::KeepExisting);
}

TEST_F(TargetsTest, AFileThatExistsIsAskedFor) {
    const auto old = WriteFile(temp / "old", std::string("old"));
    scripted.prompts.Expect(Asked::Overwrite, true);
    EXPECT_EQ(AskTarget(session, scripted.ports, old).value(), CommitMode::Replace);
    scripted.prompts.Expect(Asked::Overwrite, false);
    EXPECT_EQ(AskTarget(session, scripted.ports, old).value(), std::nullopt);
}

TEST_F(TargetsTest, AFolderIsRefusedWithoutAQuestion) {
    ExpectRefused(session.workFiles.folder, ErrorKind::WriteFailed, "is a folder");
}

TEST_F(TargetsTest, APipeOrDeviceIsRefusedWithoutAQuestion) {
    PICTAVO_NEEDS_POSIX("named pipes in folders");
    ASSERT_TRUE(MakePipe(temp / "pipe"));
    ExpectRefused(temp / "pipe", ErrorKind::WriteFailed, "is no regular file");
    ExpectRefused(kNullDevice, ErrorKind::WriteFailed, "is no regular file");
}

TEST_F(TargetsTest, ALinkIsAskedForWhateverItLeadsTo) {
    PICTAVO_NEEDS_POSIX("symbolic links");
    std::filesystem::create_symlink(session.workFiles.folder, temp / "link");
    std::filesystem::create_symlink("nowhere", temp / "dangling");
    for (const char* name : {"link", "dangling"}) {
        scripted.prompts.Expect(Asked::Overwrite, true);
        EXPECT_EQ(AskTarget(session, scripted.ports, temp / name).value(), CommitMode::Replace);
    }
}

TEST_F(TargetsTest, TheFlashAndEachInputAreRefusedWithoutAQuestionAlsoThroughALink) {
    Open(FourIcons());
    const auto one = WriteFile(temp / "one", std::string("1"));
    const auto two = WriteFile(temp / "two", std::string("2"));
    std::filesystem::create_hard_link(one, temp / "hard");
    for (const std::filesystem::path& target : {one, two, temp / "hard", flashPath}) {
        const auto mode = AskTarget(session, scripted.ports, target, Inputs{one, temp / "missing", two});
        ASSERT_FALSE(mode) << target;
        EXPECT_EQ(mode.error().kind, ErrorKind::OutputIsInput);
        EXPECT_EQ(mode.error().path, target);
    }
}

TEST_F(TargetsTest, TheNamesOfWorkFilesAreRefusedInTheWorkFolderAlone) {
    for (const char* name : {"0012.gpf2", "2500.gpf2", "PNGtemp.bmp", "PNGtemp.png", "PNGpatch.vkp"}) {
        ExpectRefused(session.workFiles.folder / name, ErrorKind::OutputIsInput,
                      "is the name of a temporary file of this program");
        EXPECT_TRUE(AskTarget(session, scripted.ports, temp / name)) << name;
    }
    for (const char* name : {"x12.gpf2", "0012.gpf", ".gpf2", "PNGtemp.vkp"})
        EXPECT_TRUE(AskTarget(session, scripted.ports, session.workFiles.folder / name)) << name;
}

TEST_F(TargetsTest, ABatchIntoTheEmptyWorkFolderWritesNoWorkFile) {
    auto folder = TargetFolder::Open(session.workFiles.folder);
    ASSERT_TRUE(folder);
    EXPECT_FALSE(folder->Ask(session, scripted.ports, "0012.gpf2"));
    EXPECT_EQ(folder->Ask(session, scripted.ports, "12.bmp").value(), CommitMode::KeepExisting);
}

TEST_F(TargetsTest, AnInputIsRefusedThroughASymbolicLinkToo) {
    PICTAVO_NEEDS_POSIX("symbolic links");
    const auto input = WriteFile(temp / "input", std::string("1"));
    std::filesystem::create_symlink(input, temp / "soft");
    const auto mode = AskTarget(session, scripted.ports, temp / "soft", Inputs{input});
    ASSERT_FALSE(mode);
    EXPECT_EQ(mode.error().kind, ErrorKind::OutputIsInput);
    EXPECT_EQ(mode.error().path, temp / "soft");
}

TEST_F(TargetsTest, OnlyAnInputOrTheFlashIsNoTarget) {
    const auto input = WriteFile(temp / "input", std::string("1"));
    const auto other = WriteFile(temp / "other", std::string("2"));
    EXPECT_TRUE(CheckIsNoInput(session, temp / "new", Inputs{input}));
    EXPECT_TRUE(CheckIsNoInput(session, other, Inputs{input}));
    Open(FourIcons());
    for (const std::filesystem::path& target : {input, flashPath}) {
        const Status status = CheckIsNoInput(session, target, Inputs{input});
        ASSERT_FALSE(status) << target;
        EXPECT_EQ(status.error().kind, ErrorKind::OutputIsInput);
        EXPECT_EQ(status.error().path, target);
    }
}

TEST_F(TargetsTest, AFolderThatIsMissingIsMade) {
    ASSERT_TRUE(TargetFolder::Open(temp / "a" / "b"));
    EXPECT_TRUE(std::filesystem::is_directory(temp / "a" / "b"));
    WriteFile(temp / "file", std::string("no folder"));
    const auto folder = TargetFolder::Open(temp / "file");
    ASSERT_FALSE(folder);
    EXPECT_EQ(folder.error().kind, ErrorKind::WriteFailed);
}

TEST_F(TargetsTest, InAFolderThatWasEmptyANameThatComesAgainIsAskedFor) {
    auto folder = TargetFolder::Open(temp / "out");
    ASSERT_TRUE(folder);
    EXPECT_EQ(folder->Ask(session, scripted.ports, "a").value(), CommitMode::KeepExisting);
    WriteFile(folder->PathOf("a"), std::string("written"));
    EXPECT_EQ(folder->Ask(session, scripted.ports, "b").value(), CommitMode::KeepExisting);
    scripted.prompts.Expect(Asked::Overwrite, true);
    EXPECT_EQ(folder->Ask(session, scripted.ports, "a").value(), CommitMode::Replace);
}

TEST_F(TargetsTest, InAFolderThatHoldsSomethingEveryNameIsLookedUp) {
    std::filesystem::create_directory(temp / "out");
    WriteFile(temp / "out" / "old", std::string("old"));
    auto folder = TargetFolder::Open(temp / "out");
    ASSERT_TRUE(folder);
    scripted.prompts.Expect(Asked::Overwrite, false);
    EXPECT_EQ(folder->Ask(session, scripted.ports, "old").value(), std::nullopt);
    EXPECT_EQ(folder->Ask(session, scripted.ports, "new").value(), CommitMode::KeepExisting);
}

TEST_F(TargetsTest, WhatAnotherProgramPutIntoAnEmptyFolderMeanwhileStays) {
    auto folder = TargetFolder::Open(temp / "out");
    ASSERT_TRUE(folder);
    const auto target = WriteFile(folder->PathOf("a"), std::string("another's"));
    const auto mode = folder->Ask(session, scripted.ports, "a");
    ASSERT_TRUE(mode && *mode);
    const Status written = WriteWholeFile(target, AsBytes("ours"), **mode);
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().kind, ErrorKind::FileExists);
    EXPECT_EQ(ReadText(target), "another's");
}

}  // namespace
}  // namespace pictavo::tests
