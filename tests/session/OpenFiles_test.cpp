#include "session/OpenFiles.h"

#include "session/ShowPicture.h"
#include "support/SessionFixture.h"
#include "support/SystemMeans.h"

namespace pictavo::tests {
namespace {

using Recent = std::array<std::optional<std::string>, 3>;

class OpenFilesTest : public SessionFixture {
  protected:
    OpenFilesTest() { session.places.settingsFile = WriteFile(temp / "Pictavo.ini", std::string()); }

    std::filesystem::path WriteFlash(const std::string& name) {
        const samples::Outcome written = FourIcons().WriteTo(temp / name);
        EXPECT_TRUE(written) << written.Reason();
        return temp / name;
    }

    std::filesystem::path WriteGpfFile(const std::string& name) {
        return WriteGpf2(name, 2, 3, 0x05, Bytes(6, 0xE0));
    }

    std::filesystem::path WriteBmp(const std::string& name) {
        return WriteFile(temp / name, samples::MakeBmp(samples::DrawIcon(7, 5, 1), 32));
    }

    Outcome Choose(const std::filesystem::path& answer) {
        scripted.prompts.Choose(answer);
        return OpenFile(session, scripted.ports);
    }

    Outcome OpenFlashFile(const std::filesystem::path& path) {
        return OpenFlash(session, scripted.ports, path);
    }

    std::string StoredLines() const { return ReadText(session.places.settingsFile); }

    std::string Line(int number, const std::filesystem::path& path) const {
        return "MRU" + std::to_string(number) + "=" + path.string() + "\r\n";
    }
};

TEST_F(OpenFilesTest, AFlashBecomesTheFirstRecentFile) {
    const auto a = WriteFlash("a.bin");
    EXPECT_TRUE(OpenFlashFile(a).IsClean());
    EXPECT_EQ(session.rows.size(), 4U);
    EXPECT_EQ(session.settings.MRU, (Recent{a.string(), std::nullopt, std::nullopt}));
}

TEST_F(OpenFilesTest, TheSettingsFileGrowsByTheRecentFilesAtEachOpening) {
    const auto a = WriteFlash("a.bin");
    const auto b = WriteFlash("b.bin");
    WriteFile(session.places.settingsFile, std::string("ChanR=true\r\n"));
    ASSERT_TRUE(OpenFlashFile(a).IsClean());
    ASSERT_TRUE(OpenFlashFile(b).IsClean());
    EXPECT_EQ(StoredLines(), "ChanR=true\r\n" + Line(1, a) + Line(1, b) + Line(2, a));
}

TEST_F(OpenFilesTest, OpeningTheSecondOfThreeMovesItUpAndDropsTheOldest) {
    const auto a = WriteFlash("a.bin");
    const auto b = WriteFlash("b.bin");
    const auto c = WriteFlash("c.bin");
    for (const auto& path : {a, b, c, b}) ASSERT_TRUE(OpenFlashFile(path).IsClean());
    EXPECT_EQ(session.settings.MRU, (Recent{b.string(), c.string(), std::nullopt}));
}

TEST_F(OpenFilesTest, OpeningTheSameFlashTwiceLeavesOneRecentFile) {
    const auto a = WriteFlash("a.bin");
    for (int times = 0; times < 2; ++times) ASSERT_TRUE(OpenFlashFile(a).IsClean());
    EXPECT_EQ(session.settings.MRU, (Recent{a.string(), std::nullopt, std::nullopt}));
    EXPECT_EQ(session.rows.size(), 4U);
}

TEST_F(OpenFilesTest, ARelativeNameIsKeptAsItsWholePath) {
    const auto a = WriteFlash("a.bin");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(temp.Path());
    const Outcome outcome = OpenFlashFile("a.bin");
    std::filesystem::current_path(before);
    EXPECT_TRUE(outcome.IsClean());
    EXPECT_EQ(session.settings.MRU[0], a.string());
}

TEST_F(OpenFilesTest, AFolderThatCanNotBeWrittenBreaksNoOpening) {
    session.places.settingsFile = temp / "nowhere" / "Pictavo.ini";
    const auto a = WriteFlash("a.bin");
    const Outcome outcome = OpenFlashFile(a);
    EXPECT_EQ(outcome.end, Outcome::End::Done);
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::WriteFailed);
    EXPECT_TRUE(scripted.prompts.notices.empty());
    EXPECT_EQ(session.rows.size(), 4U);
    EXPECT_EQ(session.settings.MRU[0], a.string());
}

TEST_F(OpenFilesTest, WithoutASettingsFileTheRecentFilesAreThoseOfTheSession) {
    session.places.settingsFile.clear();
    const auto a = WriteFlash("a.bin");
    EXPECT_TRUE(OpenFlashFile(a).IsClean());
    EXPECT_EQ(session.settings.MRU[0], a.string());
}

TEST_F(OpenFilesTest, ANameWithALineBreakBringsNoSettingIn) {
    PICTAVO_NEEDS_POSIX("line breaks in names");
    const auto a = WriteFlash("a\nChanR=true.bin");
    const Outcome outcome = OpenFlashFile(a);
    EXPECT_EQ(outcome.end, Outcome::End::Done);
    EXPECT_EQ(session.rows.size(), 4U);
    EXPECT_EQ(session.settings.MRU, Recent());
    EXPECT_EQ(StoredLines(), "");
}

TEST_F(OpenFilesTest, AFlashThatCanNotBeOpenedIsToldAndNoRecentFile) {
    const Outcome outcome = OpenFlashFile(temp / "gone.bin");
    EXPECT_EQ(outcome.end, Outcome::End::Refused);
    EXPECT_EQ(scripted.prompts.NoticeTexts(),
              std::vector<std::string>{(temp / "gone.bin").string() + "\rfnExi!"});
    EXPECT_EQ(session.settings.MRU, Recent());
    EXPECT_EQ(StoredLines(), "");
}

TEST_F(OpenFilesTest, TheChooserOffersFlashesThenPictures) {
    EXPECT_EQ(Choose({}).end, Outcome::End::Cancelled);
    const FileChoice& choice = scripted.prompts.choices.at(0);
    EXPECT_EQ(choice.title, "PlSel File 4open");
    EXPECT_EQ(choice.filters,
              (std::vector<FileFilter>{
                  {"FullFlash files", {"*.bin"}},
                  {"Graphic files", {"*.gpf", "*.gpf2", "*.bmp", "*.gif", "*.jpg", "*.png"}}}));
    EXPECT_EQ(choice.suggestedName, "");
    EXPECT_EQ(choice.defaultExtension, "");
}

TEST_F(OpenFilesTest, AnUpperCaseEndingOpensAsWell) {
    EXPECT_TRUE(Choose(WriteFlash("A.BIN")).IsClean());
    EXPECT_EQ(session.rows.size(), 4U);
    EXPECT_TRUE(Choose(WriteGpfFile("B.GPF2")).IsClean());
    EXPECT_EQ(session.picture.width, 2);
    EXPECT_TRUE(Choose(WriteBmp("C.BMP")).IsClean());
    EXPECT_EQ(session.picture.width, 7);
}

TEST_F(OpenFilesTest, Gpf2NeedsNoDot) {
    EXPECT_TRUE(Choose(WriteGpfFile("pic_gpf2")).IsClean());
    EXPECT_EQ(session.picture.height, 3);
}

TEST_F(OpenFilesTest, EveryPictureEndingLoads) {
    for (const char* name : {"a.bmp", "a.gif", "a.jpg"}) {
        session.shown = {};
        EXPECT_TRUE(Choose(WriteBmp(name)).IsClean()) << name;
        EXPECT_TRUE(session.shown.isShown) << name;
    }
    scripted.processes.effect = [this](const FakeProcesses::Call&) { WriteBmp("work/PNGtemp.bmp"); };
    const auto png = samples::MakePng(samples::DrawIcon(7, 5, 1), samples::PngColour::Rgb);
    EXPECT_TRUE(Choose(WriteFile(temp / "a.png", png)).IsClean());
    EXPECT_EQ(scripted.processes.calls.size(), 1U);
}

TEST_F(OpenFilesTest, TheAnswerLosesItsTail) {
    WriteFlash("a.bin");
    EXPECT_TRUE(Choose(temp / "a.bin !").IsClean());
    EXPECT_EQ(session.rows.size(), 4U);
}

TEST_F(OpenFilesTest, OtherEndingsDoNothing) {
    for (const char* name : {"a.jpeg", "a.txt", "bin", "a.binx"}) {
        EXPECT_EQ(Choose(WriteFile(temp / name, std::string("text"))).end, Outcome::End::Refused) << name;
        EXPECT_FALSE(session.shown.isShown) << name;
        EXPECT_TRUE(session.rows.empty()) << name;
    }
    EXPECT_TRUE(scripted.prompts.notices.empty());
}

TEST_F(OpenFilesTest, AMissingFileIsToldWhateverItsEnding) {
    for (const char* name : {"gone.bin", "gone.txt"}) {
        scripted.prompts.notices.clear();
        const Outcome outcome = Choose(temp / name);
        EXPECT_EQ(outcome.end, Outcome::End::Refused);
        EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::FileMissing);
        EXPECT_EQ(scripted.prompts.NoticeTexts(),
                  std::vector<std::string>{"fnExi\r" + (temp / name).string() + "!"});
    }
}

TEST_F(OpenFilesTest, AFileThatIsNoGpfIsTold) {
    EXPECT_EQ(Choose(WriteFile(temp / "a.gpf", std::string("no GPF file at all, though long enough"))).end,
              Outcome::End::Refused);
    EXPECT_EQ(scripted.prompts.NoticeTexts(), (std::vector<std::string>{"UNKfile", "error was occupated"}));
}

TEST_F(OpenFilesTest, APictureThatIsTooLargeIsToldAndThePictureBeforeStays) {
    ASSERT_TRUE(Choose(WriteGpfFile("a.gpf2")).IsClean());
    const auto large = WriteFile(temp / "large.bmp", samples::MakeBmp(samples::DrawIcon(241, 1, 1), 24));
    EXPECT_EQ(Choose(large).end, Outcome::End::Refused);
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"LarPic!"});
    EXPECT_EQ(session.picture.width, 2);
}

TEST_F(OpenFilesTest, AGpfThatIsCutShortIsShownAndAProblem) {
    const auto cut = WriteGpf2("a.gpf2", 20, 20, 0x05, Bytes(10, 0xE0));
    const Outcome outcome = Choose(cut);
    EXPECT_EQ(outcome.end, Outcome::End::Done);
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::Truncated);
    EXPECT_TRUE(session.shown.isShown);
    EXPECT_TRUE(scripted.prompts.notices.empty());
}

TEST_F(OpenFilesTest, ADroppedFileOpensAsAChosenOneDoes) {
    EXPECT_TRUE(OpenDropped(session, scripted.ports, WriteFlash("A.BIN")).IsClean());
    EXPECT_EQ(session.rows.size(), 4U);
    EXPECT_EQ(OpenDropped(session, scripted.ports, temp / "gone.gpf").end, Outcome::End::Refused);
    EXPECT_EQ(scripted.prompts.NoticeTexts(),
              std::vector<std::string>{"fnExi\r" + (temp / "gone.gpf").string() + "!"});
}

TEST_F(OpenFilesTest, ARecentFileOpensAgainAndMovesToTheTop) {
    const auto a = WriteFlash("a.bin");
    const auto b = WriteFlash("b.bin");
    session.settings.MRU = {a.string(), b.string(), std::nullopt};
    EXPECT_TRUE(OpenRecent(session, scripted.ports, 1).IsClean());
    EXPECT_EQ(session.flash.source->Path(), b);
    EXPECT_EQ(session.settings.MRU, (Recent{b.string(), a.string(), std::nullopt}));
}

TEST_F(OpenFilesTest, ARecentFileThatIsMissingStaysAndNothingHappens) {
    ASSERT_TRUE(OpenFlashFile(WriteFlash("a.bin")).IsClean());
    const std::string lines = StoredLines();
    session.settings.MRU[2] = (temp / "gone.bin").string();
    const Recent before = session.settings.MRU;
    EXPECT_EQ(OpenRecent(session, scripted.ports, 2).end, Outcome::End::Refused);
    EXPECT_EQ(session.settings.MRU, before);
    EXPECT_EQ(StoredLines(), lines);
    EXPECT_EQ(session.rows.size(), 4U);
    EXPECT_TRUE(scripted.prompts.notices.empty());
}

TEST_F(OpenFilesTest, AnEntryThatIsNotShownOpensNothing) {
    EXPECT_EQ(OpenRecent(session, scripted.ports, 0).end, Outcome::End::Cancelled);
    EXPECT_EQ(OpenRecent(session, scripted.ports, 3).end, Outcome::End::Cancelled);
    EXPECT_TRUE(session.rows.empty());
}

}  // namespace
}  // namespace pictavo::tests
