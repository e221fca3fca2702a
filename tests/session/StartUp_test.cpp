#include "session/StartUp.h"

#include "support/FakeAssociations.h"
#include "support/SessionFixture.h"
#include "support/SystemMeans.h"

namespace pictavo::tests {
namespace {

class StartUpTest : public SessionFixture {
  protected:
    StartUpTest() {
        session.texts.str_RegExt = "RegExt";
        scripted.ports.associations = &associations;
    }

    Outcome Check() { return CheckAssociation(session, scripted.ports, "/opt/the phone/pictavo"); }

    const std::string command = "/opt/the phone/pictavo \"%1\"";
    FakeAssociations associations;
};

TEST_F(StartUpTest, TheThreeTemporariesAreDeletedAndWorkFilesStay) {
    const WorkFiles& files = session.workFiles;
    for (const auto& path : {files.PngBitmap(), files.Png(), files.PngPatch(), files.Replacement(7)})
        WriteFile(path, std::string("old"));
    session.pngPatchPending = true;
    RemoveTemporaries(session);
    EXPECT_EQ(ListNames(files.folder), std::vector<std::string>{"0007.gpf2"});
    EXPECT_FALSE(session.pngPatchPending);
}

TEST_F(StartUpTest, ALinkInATemporarysPlaceGoesAndItsTargetStays) {
    PICTAVO_NEEDS_POSIX("symbolic links");
    const auto target = WriteFile(temp / "kept", std::string("kept"));
    std::filesystem::create_symlink(target, session.workFiles.PngPatch());
    RemoveTemporaries(session);
    EXPECT_TRUE(ListNames(session.workFiles.folder).empty());
    EXPECT_EQ(ReadText(target), "kept");
}

TEST_F(StartUpTest, NothingIsAskedWhenBothTypesAreOpenedByThisProgram) {
    associations.commands = {{".gpf", command}, {".gpf2", command}};
    EXPECT_TRUE(Check().IsClean());
    EXPECT_TRUE(associations.registered.empty());
}

TEST_F(StartUpTest, NothingIsAskedWithoutAssociations) {
    scripted.ports.associations = nullptr;
    EXPECT_TRUE(Check().IsClean());
}

TEST_F(StartUpTest, OneOtherProgramIsEnoughForTheQuestion) {
    for (const char* other : {".gpf", ".gpf2"}) {
        associations.commands = {{".gpf", command}, {".gpf2", command}};
        associations.commands[other] = "/opt/the phone/pictavo";
        associations.registered.clear();
        scripted.prompts.Expect(Asked::RegisterTypes, true);
        EXPECT_TRUE(Check().IsClean()) << other;
        EXPECT_EQ(associations.registered, std::vector<std::string>{command}) << other;
    }
    EXPECT_EQ(scripted.prompts.questions.at(0).text, "RegExt?");
    EXPECT_EQ(scripted.prompts.questions.at(0).title, "");
}

TEST_F(StartUpTest, AfterCancelItIsAskedAgainAndAfterOkNoMore) {
    scripted.prompts.Expect(Asked::RegisterTypes, false);
    scripted.prompts.Expect(Asked::RegisterTypes, true);
    EXPECT_EQ(Check().end, Outcome::End::Cancelled);
    EXPECT_TRUE(associations.registered.empty());
    EXPECT_TRUE(Check().IsClean());
    EXPECT_TRUE(Check().IsClean());
    EXPECT_EQ(scripted.prompts.questions.size(), 2U);
}

TEST_F(StartUpTest, AFailureToRegisterIsTold) {
    associations.error = Error{ErrorKind::WriteFailed, "/home/x", std::nullopt, "cannot be created"};
    scripted.prompts.Expect(Asked::RegisterTypes, true);
    EXPECT_EQ(Check().end, Outcome::End::Refused);
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"/home/x\rcannot be created"});
}

}  // namespace
}  // namespace pictavo::tests
