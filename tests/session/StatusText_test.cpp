#include "session/StatusText.h"

#include "session/ChangePng.h"
#include "session/OpenFiles.h"
#include "support/SessionFixture.h"

namespace pictavo::tests {
namespace {

class StatusTextTest : public SessionFixture {};

TEST_F(StatusTextTest, AFlashIsToldByItsPicturesAndWhatCanBeDoneWithThem) {
    Open(FourIcons());
    EXPECT_EQ(OpenedText(session),
              "4 pictures; a right click or the context-menu key on a row loads and saves");
    session.rows.resize(1);
    EXPECT_TRUE(OpenedText(session).starts_with("1 picture;"));
    session.rows.clear();
    EXPECT_EQ(OpenedText(session), "0 pictures");
}

TEST_F(StatusTextTest, AFileWithoutATableIsToldByItsNameAndReason) {
    const auto path = WriteFile(temp / "no.bin", std::string(5000, 'x'));
    const Outcome opened = OpenFlash(session, scripted.ports, path);
    EXPECT_EQ(opened.note, path.string() + ": is no fullflash, or one cut short: it holds no picture table");
}

TEST_F(StatusTextTest, OfLoadedPicturesTheNumberIsTold) {
    EXPECT_EQ(LoadedText(session.settings, 1, 4), "1 of 4 pictures loaded");
}

TEST_F(StatusTextTest, WhenNoneWasLoadedTheNamesSoughtAreThoseOfTheSettings) {
    EXPECT_EQ(LoadedText(session.settings, 0, 1),
              "0 of 1 picture loaded; files are sought by the pictures' numbers, such as 0.bmp or 0.gpf");
    session.settings.HEXFilename = session.settings.ZeroFilename = true;
    EXPECT_TRUE(LoadedText(session.settings, 0, 2).ends_with("such as 000.bmp or 000.gpf"));
}

TEST_F(StatusTextTest, ANameWithALineBreakStaysOnOneLine) {
    EXPECT_EQ(PatchSavedText("/a\nb.vkp", 2), "/a b.vkp: 2 pictures");
    EXPECT_EQ(PngTakenText("/folder/00A0.png"), "00A0.png goes into the next patch");
}

TEST_F(StatusTextTest, FilesAreCounted) {
    EXPECT_EQ(FilesWrittenText(0), "0 files written");
    EXPECT_EQ(FilesWrittenText(1), "1 file written");
}

TEST_F(StatusTextTest, OnlyReplacementsThatHaveTheirWorkFileWait) {
    Open(FourIcons());
    EXPECT_EQ(WaitingText(session), "");
    ReplaceBy(1, samples::DrawIcon(4, 4, 1), 0x85);
    ReplaceBy(2, samples::DrawIcon(4, 4, 1), 0x85);
    EXPECT_EQ(WaitingText(session), "2 replaced pictures not in a patch yet");
    std::filesystem::remove(session.workFiles.Replacement(2));
    EXPECT_EQ(WaitingText(session), "1 replaced picture not in a patch yet");
}

TEST_F(StatusTextTest, AProblemIsToldAsItsBoxIsAndWithItsOwnReason) {
    const Error large{ErrorKind::TooLarge, "/a.bmp", std::nullopt, "is 250 x 2"};
    EXPECT_EQ(ProblemText(session.texts, {large, 7}), "0007: LarPic!: /a.bmp: is 250 x 2");
}

TEST_F(StatusTextTest, NoReasonIsToldTwice) {
    const Error full{ErrorKind::NoFreeMemory, "/a.bin", std::nullopt, "no room"};
    EXPECT_EQ(ProblemText(session.texts, {full, std::nullopt}), "no room");
    const Error plain{ErrorKind::WriteFailed, "/a.bin", std::nullopt, "disk\nfull"};
    EXPECT_EQ(ProblemText(session.texts, {plain, std::nullopt}), "/a.bin disk full");
    const Error missing{ErrorKind::FileMissing, "/a.bin", std::nullopt, "is gone"};
    EXPECT_EQ(ProblemText(session.texts, {missing, std::nullopt}), "/a.bin fnExi!");
}

TEST_F(StatusTextTest, AFullStopBeforeAColonIsDropped) {
    session.texts.str_UNKfile = "This is no file of a known kind.";
    const Error wrong{ErrorKind::NoGpf, {}, std::nullopt, "has another magic"};
    EXPECT_EQ(ProblemText(session.texts, {wrong, std::nullopt}),
              "This is no file of a known kind: error was occupated: has another magic");
}

TEST_F(StatusTextTest, ACommandIsToldByItsLastProblemThenItsNoteThenThatItIsDone) {
    Outcome outcome;
    EXPECT_EQ(OutcomeText(session.texts, outcome), "");
    outcome.written = 2;
    EXPECT_EQ(OutcomeText(session.texts, outcome), "Succes");
    outcome.note = "2 files written";
    EXPECT_EQ(OutcomeText(session.texts, outcome), "2 files written");
    outcome.problems = {{{ErrorKind::Stopped, {}, std::nullopt, "first"}, 1},
                        {{ErrorKind::Stopped, {}, std::nullopt, "last"}, 2}};
    EXPECT_EQ(OutcomeText(session.texts, outcome), "0002: last; 2 files written");
}

TEST_F(StatusTextTest, TheCommandsLeaveTheirNotes) {
    Open(FourIcons());
    session.settings.CompressGPF = true;
    std::filesystem::create_directory(temp / "new");
    WriteGpf2("new/2.gpf2", 4, 4, 0x05, Bytes(16, 1));
    EXPECT_EQ(ReplaceFromFolder(session, scripted.ports, temp / "new", 0x85).note,
              "1 of 4 pictures loaded; 1 replaced picture not in a patch yet");
}

}  // namespace
}  // namespace pictavo::tests
