#include "session/PitCommands.h"

#include "session/ShowPicture.h"
#include "support/SessionFixture.h"
#include "support/SystemMeans.h"

namespace pictavo::tests {
namespace {

class PitCommandsTest : public SessionFixture {
  protected:
    PitCommandsTest() {
        out = temp / "out";
        from = temp / "from";
        std::filesystem::create_directory(from);
    }

    /// Three pictures of 4 x 4 in type 05 at 0x180000 in steps of 64, the table at 0xA0000.
    static FlashBuilder ThreeSquares() {
        FlashBuilder flash(FlashKind::NewSGold);
        flash.Size(2U << 20).PicturesAt(0x180000).Align(64);
        for (const std::uint8_t value : std::initializer_list<std::uint8_t>{1, 2, 3})
            flash.AddPicture(4, 4, 0x05, Bytes(16, value));
        return flash;
    }

    void PutGpf(const std::string& name, int width, int height, std::uint8_t value) {
        const auto stored = static_cast<std::size_t>(width * height);
        std::filesystem::rename(WriteGpf2("x", width, height, 0x05, Bytes(stored, value)), from / name);
    }

    Outcome Rebuild() { return RebuildPitFrom(session, scripted.ports, from, out); }

    std::filesystem::path out;
    std::filesystem::path from;
};

TEST_F(PitCommandsTest, BackupNamesBothFilesByTheirOffsetsAndHoldsTheFlashsBytes) {
    Open(ThreeSquares());
    EXPECT_TRUE(BackupPitTo(session, scripted.ports, out).IsClean());
    EXPECT_EQ(ListNames(out), (std::vector<std::string>{"0x00A0000.bin", "0x0180000.bin"}));
    EXPECT_EQ(ReadFile(out / "0x00A0000.bin"),
              Bytes(flashBytes.begin() + 0xA0000, flashBytes.begin() + 0xA0018));
    EXPECT_EQ(ReadFile(out / "0x0180000.bin"),
              Bytes(flashBytes.begin() + 0x180000, flashBytes.begin() + 0x180090));
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"Succes"});
}

TEST_F(PitCommandsTest, BackupOfLongRecordsTakesTwelveBytesEach) {
    Open(FourIcons(FlashKind::NewSGoldEL71));
    ASSERT_TRUE(BackupPitTo(session, scripted.ports, out).IsClean());
    EXPECT_EQ(ReadFile(out / "0x00A0000.bin").size(), 48U);
}

TEST_F(PitCommandsTest, BackupMeasuresTheLastPictureInTheFlashAndLeavesTheRaster) {
    Open(ThreeSquares());
    ReplaceBy(2, samples::DrawIcon(16, 16, 1), 0x85);
    const Cell before = CellAt(3, 3);
    ASSERT_TRUE(BackupPitTo(session, scripted.ports, out).IsClean());
    EXPECT_EQ(ReadFile(out / "0x0180000.bin").size(), 0x90U);
    EXPECT_EQ(CellAt(3, 3), before);
    EXPECT_EQ(session.picture.width, 16);
}

TEST_F(PitCommandsTest, BackupAsksForEachFileAndCancelSkipsOnlyIt) {
    Open(ThreeSquares());
    std::filesystem::create_directory(out);
    WriteFile(out / "0x00A0000.bin", std::string("old"));
    WriteFile(out / "0x0180000.bin", std::string("old"));
    scripted.prompts.Expect(Asked::Overwrite, false);
    scripted.prompts.Expect(Asked::Overwrite, true);
    EXPECT_EQ(BackupPitTo(session, scripted.ports, out).written, 1U);
    EXPECT_EQ(ReadText(out / "0x00A0000.bin"), "old");
    EXPECT_EQ(ReadFile(out / "0x0180000.bin").size(), 0x90U);
}

TEST_F(PitCommandsTest, AFullTableWritesAsManyRecordsAsPicnumSays) {
    FlashBuilder full(FlashKind::NewSGold);
    full.EndTable(false);
    for (int i = 0; i <= 2000; ++i)
        full.AddRecord({1, 1, 5, 0, static_cast<std::uint8_t>(i & 0xF0), 0, 8, 0xA0});
    Open(full);
    session.rows.back().picOffset = 0x90000;
    ASSERT_TRUE(BackupPitTo(session, scripted.ports, out).IsClean());
    EXPECT_EQ(ReadFile(out / "0x00A0000.bin").size(), 8U);
}

TEST_F(PitCommandsTest, AnEmptyTableIsRefusedWithoutAFile) {
    Open(FlashBuilder(FlashKind::NewSGold));
    EXPECT_EQ(BackupPitTo(session, scripted.ports, out).problems.at(0).error.kind, ErrorKind::EmptyBlock);
    EXPECT_EQ(Rebuild().problems.at(0).error.kind, ErrorKind::EmptyBlock);
    EXPECT_FALSE(std::filesystem::exists(out));
}

TEST_F(PitCommandsTest, RowsThatAreGoneAreRefusedWhateverPicnumSays) {
    Open(ThreeSquares());
    session.rows.clear();
    const Outcome outcome = Rebuild();
    EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::EmptyBlock);
    EXPECT_EQ(outcome.problems.at(0).error.detail, "the picture table holds no picture");
    EXPECT_FALSE(std::filesystem::exists(out));
}

TEST_F(PitCommandsTest, ABlockThatEndsBeforeItBeginsIsRefusedAndTheTableStands) {
    FlashBuilder flash = ThreeSquares();
    flash.AddPictureAt(0x100000, 4, 4, 0x05, Bytes(16, 4));
    Open(flash);
    EXPECT_EQ(BackupPitTo(session, scripted.ports, out).problems.at(0).error.kind, ErrorKind::EmptyBlock);
    EXPECT_EQ(ListNames(out), std::vector<std::string>{"0x00A0000.bin"});
}

TEST_F(PitCommandsTest, ALastPictureOfUnknownDepthHasThatOfTheOneShownBefore) {
    FlashBuilder flash = ThreeSquares();
    flash.AddPicture(4, 4, 0x02, Bytes(16, 4));
    Open(flash);
    EXPECT_EQ(BackupPitTo(session, scripted.ports, out).problems.at(0).error.kind, ErrorKind::BadBitDepth);
    EXPECT_EQ(ListNames(out), std::vector<std::string>{"0x00A0000.bin"});
    ASSERT_TRUE(ShowRow(session, 0));
    scripted.prompts.Expect(Asked::Overwrite, true);
    EXPECT_TRUE(BackupPitTo(session, scripted.ports, out).IsClean());
    EXPECT_EQ(ListNames(out).size(), 2U);
}

TEST_F(PitCommandsTest, RebuildPacksThePicturesInStepsOfSixteen) {
    Open(ThreeSquares());
    PutGpf("0.gpf2", 4, 4, 7);
    PutGpf("1.gpf", 5, 5, 8);
    PutGpf("2.gpf2", 2, 2, 9);
    ASSERT_TRUE(Rebuild().IsClean());
    EXPECT_EQ(BytesToHex(ReadFile(out / "0x00A0000.bin"), false),
              "04040500000018A0"
              "05050500100018A0"
              "02020500300018A0");
    const Bytes block = ReadFile(out / "0x0180000.bin");
    EXPECT_EQ(block.size(), 64U);
    EXPECT_EQ(block[0x10], 8);
    EXPECT_EQ(block[0x10 + 25], 0);
    EXPECT_EQ(block[0x30], 9);
}

TEST_F(PitCommandsTest, RebuildTakesAWorkFileBeforeTheFolderAndGpf2BeforeGpf) {
    Open(ThreeSquares());
    for (const char* name : {"0.gpf2", "1.gpf2", "2.gpf2"}) PutGpf(name, 4, 4, 7);
    PutGpf("1.gpf", 2, 2, 8);
    ReplaceBy(0, samples::DrawOneColour(3, 3, {255, 0, 0, 255}), 0x85);
    ASSERT_TRUE(Rebuild().IsClean());
    EXPECT_TRUE(BytesToHex(ReadFile(out / "0x00A0000.bin"), false).starts_with("03030500000018A004040500"));
}

TEST_F(PitCommandsTest, AnExactRepackEndsWithTheTooLargeTextAndBothFilesComplete) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.Size(2U << 20).PicturesAt(0x180000).Align(16);
    for (int i = 0; i < 3; ++i) flash.AddPicture(4, 4, 0x05, Bytes(16, 1));
    Open(flash);
    for (const char* name : {"0.gpf2", "1.gpf2", "2.gpf2"}) PutGpf(name, 4, 4, 7);
    const Outcome outcome = Rebuild();
    EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::BlockTooLarge);
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"RpitLarge"});
    EXPECT_EQ(ReadFile(out / "0x00A0000.bin").size(), 24U);
    EXPECT_EQ(ReadFile(out / "0x0180000.bin").size(), 48U);
}

TEST_F(PitCommandsTest, ABlockThatReachesTheOldLastPictureExactlyPasses) {
    Open(ThreeSquares());
    PutGpf("0.gpf2", 8, 8, 7);
    PutGpf("1.gpf2", 4, 8, 7);
    PutGpf("2.gpf2", 8, 4, 7);
    EXPECT_TRUE(Rebuild().IsClean());
}

TEST_F(PitCommandsTest, AnEarlierOverrunLeavesTheFilesAsFarAsWritten) {
    Open(ThreeSquares());
    PutGpf("0.gpf2", 8, 8, 7);
    PutGpf("1.gpf2", 9, 8, 7);
    PutGpf("2.gpf2", 4, 4, 7);
    EXPECT_EQ(Rebuild().problems.at(0).error.kind, ErrorKind::BlockTooLarge);
    EXPECT_EQ(ReadFile(out / "0x00A0000.bin").size(), 16U);
}

TEST_F(PitCommandsTest, AMissingSourceIsRefusedBeforeAnyFileIsMadeAndNamed) {
    Open(ThreeSquares());
    PutGpf("1.gpf2", 4, 4, 7);
    const Outcome outcome = Rebuild();
    ASSERT_EQ(outcome.problems.size(), 2U);
    EXPECT_EQ(outcome.problems[0].number, 0);
    EXPECT_EQ(outcome.problems[1].number, 2);
    EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::SourceMissing);
    EXPECT_FALSE(std::filesystem::exists(out));
}

TEST_F(PitCommandsTest, AStoppedRebuildLeavesNoFile) {
    Open(ThreeSquares());
    for (const char* name : {"0.gpf2", "1.gpf2", "2.gpf2"}) PutGpf(name, 4, 4, 7);
    scripted.progress.stopAfter = scripted.progress.percents.size() + 1;
    EXPECT_EQ(Rebuild().problems.at(0).error.kind, ErrorKind::Stopped);
    EXPECT_TRUE(ListNames(out).empty());
}

TEST_F(PitCommandsTest, CancelledFoldersChangeNothing) {
    Open(ThreeSquares());
    scripted.prompts.Choose({});
    EXPECT_EQ(BackupPit(session, scripted.ports).end, Outcome::End::Cancelled);
    scripted.prompts.Choose(from);
    scripted.prompts.Choose({});
    EXPECT_EQ(RebuildPit(session, scripted.ports).end, Outcome::End::Cancelled);
    EXPECT_TRUE(scripted.prompts.notices.empty());
}

TEST_F(PitCommandsTest, BackupAsksForTheFolderAndForEachFileByItsName) {
    Open(ThreeSquares());
    std::filesystem::create_directory(out);
    WriteFile(out / "0x00A0000.bin", std::string("old"));
    scripted.prompts.Choose(out);
    scripted.prompts.Expect(Asked::Overwrite, true);
    EXPECT_EQ(BackupPit(session, scripted.ports).written, 2U);
    EXPECT_EQ(scripted.prompts.folderTitles, std::vector<std::string>{"PlSel cFold 4save"});
    EXPECT_EQ(scripted.prompts.questions.at(0).title, "faExi!");
    EXPECT_EQ(scripted.prompts.questions.at(0).text, (out / "0x00A0000.bin").string() + "\rfChan?");
}

TEST_F(PitCommandsTest, TheTableOfAnSGoldFlashIsNamedBySevenDigitsToo) {
    Open(FourIcons(FlashKind::SGold));
    ASSERT_TRUE(BackupPitTo(session, scripted.ports, out).IsClean());
    EXPECT_EQ(session.flash.PITadr, "9011C");
    EXPECT_EQ(ListNames(out), (std::vector<std::string>{"0x009011C.bin", "0x00C0000.bin"}));
}

TEST_F(PitCommandsTest, ALastPictureThatCanNotBeDecodedIsRefusedAndTheTableStands) {
    FlashBuilder flash = ThreeSquares();
    flash.AddPicture(250, 2, 0x05, Bytes(500, 1));
    Open(flash);
    EXPECT_EQ(BackupPitTo(session, scripted.ports, out).problems.at(0).error.kind, ErrorKind::TooLarge);
    EXPECT_EQ(ListNames(out), std::vector<std::string>{"0x00A0000.bin"});
}

TEST_F(PitCommandsTest, ABlockThatTheFlashEndsInsideIsNotHalfWritten) {
    FlashBuilder flash = ThreeSquares();
    flash.AddPictureAt((2U << 20) - 2, 2, 2, 0x05, {1, 1});
    Open(flash);
    EXPECT_EQ(BackupPitTo(session, scripted.ports, out).problems.at(0).error.kind, ErrorKind::Truncated);
    EXPECT_EQ(ListNames(out), std::vector<std::string>{"0x00A0000.bin"});
}

TEST_F(PitCommandsTest, RebuildAsksForTheSourceFolderAndThenForTheOther) {
    Open(ThreeSquares());
    for (const char* name : {"0.gpf2", "1.gpf2", "2.gpf2"}) PutGpf(name, 4, 4, 7);
    scripted.prompts.Choose(from);
    scripted.prompts.Choose(out);
    EXPECT_TRUE(RebuildPit(session, scripted.ports).IsClean());
    EXPECT_EQ(scripted.prompts.folderTitles,
              (std::vector<std::string>{"PlSel cFold 4open", "PlSel cFold 4save"}));
    EXPECT_EQ(ListNames(out), (std::vector<std::string>{"0x00A0000.bin", "0x0180000.bin"}));
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"Succes"});
    ExpectFlashUntouched();
}

TEST_F(PitCommandsTest, RebuildAsksForEachFileAndCancelSkipsOnlyIt) {
    Open(ThreeSquares());
    for (const char* name : {"0.gpf2", "1.gpf2", "2.gpf2"}) PutGpf(name, 4, 4, 7);
    std::filesystem::create_directory(out);
    WriteFile(out / "0x00A0000.bin", std::string("old"));
    WriteFile(out / "0x0180000.bin", std::string("old"));
    scripted.prompts.Expect(Asked::Overwrite, true);
    scripted.prompts.Expect(Asked::Overwrite, false);
    EXPECT_EQ(Rebuild().written, 1U);
    EXPECT_EQ(ReadFile(out / "0x00A0000.bin").size(), 24U);
    EXPECT_EQ(ReadText(out / "0x0180000.bin"), "old");
}

TEST_F(PitCommandsTest, FilesOf48And80BytesTakeOneAndThreeSteps) {
    Open(ThreeSquares());
    PutGpf("0.gpf2", 4, 4, 7);
    PutGpf("1.gpf2", 6, 8, 8);
    PutGpf("2.gpf2", 4, 4, 9);
    ASSERT_EQ(ReadFile(from / "0.gpf2").size(), 48U);
    ASSERT_EQ(ReadFile(from / "1.gpf2").size(), 80U);
    ASSERT_TRUE(Rebuild().IsClean());
    EXPECT_EQ(BytesToHex(ReadFile(out / "0x00A0000.bin"), false),
              "04040500000018A0"
              "06080500100018A0"
              "04040500400018A0");
}

TEST_F(PitCommandsTest, RebuildOnAFlashOfLongRecordsWritesTwelveBytesEach) {
    FlashBuilder flash(FlashKind::NewSGoldE71);
    flash.Size(2U << 20).PicturesAt(0x180000).Align(4096);
    for (int i = 0; i < 2; ++i) flash.AddPicture(4, 4, 0x05, Bytes(16, 1));
    Open(flash);
    PutGpf("0.gpf2", 1, 320, 7);
    PutGpf("1.gpf2", 4, 4, 7);
    ASSERT_TRUE(Rebuild().IsClean());
    EXPECT_EQ(BytesToHex(ReadFile(out / "0x00A0000.bin"), false),
              "0100400105000000000018A0"
              "0400040005000000400118A0");
}

TEST_F(PitCommandsTest, SourcesAreFoundByTheNamesOfTheSettings) {
    Open(ThreeSquares());
    session.settings.HEXFilename = true;
    session.settings.ZeroFilename = true;
    for (const char* name : {"000.gpf2", "001.gpf", "002.gpf2"}) PutGpf(name, 4, 4, 7);
    EXPECT_TRUE(Rebuild().IsClean());
}

TEST_F(PitCommandsTest, ABoldRowWithoutWorkFileTakesTheFoldersFile) {
    Open(ThreeSquares());
    for (const char* name : {"0.gpf2", "1.gpf2", "2.gpf2"}) PutGpf(name, 4, 4, 7);
    ReplaceBy(0, samples::DrawOneColour(3, 3, {255, 0, 0, 255}), 0x85);
    std::filesystem::remove(session.workFiles.Replacement(0));
    ASSERT_TRUE(Rebuild().IsClean());
    EXPECT_TRUE(BytesToHex(ReadFile(out / "0x00A0000.bin"), false).starts_with("04040500000018A0"));
}

TEST_F(PitCommandsTest, AllThatStandsBehindTheHeadGoesIntoTheBlock) {
    Open(ThreeSquares());
    for (const char* name : {"1.gpf2", "2.gpf2"}) PutGpf(name, 4, 4, 7);
    Bytes longer = ComposeGpf({4, 4, 0x05, 0, true}, Bytes(16, 7));
    longer.resize(64, 0xAB);
    WriteFile(from / "0.gpf2", longer);
    ASSERT_TRUE(Rebuild().IsClean());
    const Bytes block = ReadFile(out / "0x0180000.bin");
    EXPECT_EQ(block.size(), 64U);
    EXPECT_EQ(block[16], 0xAB);
    EXPECT_EQ(block[32], 7);
}

TEST_F(PitCommandsTest, AFileOfNoWholeSixteensIsFilledUpInTheBlock) {
    Open(ThreeSquares());
    for (const char* name : {"1.gpf2", "2.gpf2"}) PutGpf(name, 4, 4, 7);
    Bytes shorter = ComposeGpf({5, 1, 0x05, 0, true}, Bytes(5, 9));
    shorter.resize(37);
    WriteFile(from / "0.gpf2", shorter);
    ASSERT_TRUE(Rebuild().IsClean());
    const Bytes block = ReadFile(out / "0x0180000.bin");
    EXPECT_EQ(block.size(), 48U);
    EXPECT_EQ(Bytes(block.begin() + 4, block.begin() + 17), (Bytes{9, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 7}));
}

TEST_F(PitCommandsTest, ASourceThatIsNoGpfOrDoesNotFitIsNamedBeforeAnyFileIsMade) {
    Open(ThreeSquares());
    WriteFile(from / "0.gpf2", std::string(64, 'x'));
    PutGpf("1.gpf2", 4, 4, 7);
    PutGpf("2.gpf2", 1, 256, 7);
    const Outcome outcome = Rebuild();
    EXPECT_EQ(outcome.end, Outcome::End::Refused);
    ASSERT_EQ(outcome.problems.size(), 2U);
    EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::NoGpf);
    EXPECT_EQ(outcome.problems[1].error.kind, ErrorKind::NotSupported);
    EXPECT_EQ(outcome.problems[1].number, 2);
    EXPECT_FALSE(std::filesystem::exists(out));
}

TEST_F(PitCommandsTest, ProgressOfARebuildGrowsByRows) {
    Open(ThreeSquares());
    for (const char* name : {"0.gpf2", "1.gpf2", "2.gpf2"}) PutGpf(name, 4, 4, 7);
    scripted.progress.percents.clear();
    ASSERT_TRUE(Rebuild().IsClean());
    ASSERT_EQ(scripted.progress.percents.size(), 3U);
    EXPECT_DOUBLE_EQ(scripted.progress.percents[0], 100.0 / 3);
    EXPECT_EQ(scripted.progress.percents[2], 100);
}

TEST_F(PitCommandsTest, ASourceWhoseDataEndEarlyIsNamedBeforeAnyFileIsMade) {
    for (const std::uint8_t type : std::initializer_list<std::uint8_t>{0x05, 0x85}) {
        Open(ThreeSquares());
        for (const char* name : {"0.gpf2", "2.gpf2"}) PutGpf(name, 4, 4, 7);
        WriteFile(from / "1.gpf2", ComposeGpf({20, 20, type, 0, true}, Bytes(16, 7)));
        const Outcome outcome = Rebuild();
        EXPECT_EQ(outcome.end, Outcome::End::Refused);
        ASSERT_EQ(outcome.problems.size(), 1U);
        EXPECT_EQ(outcome.problems[0].number, 1);
        EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::Truncated);
        EXPECT_EQ(outcome.problems[0].error.path, from / "1.gpf2");
        EXPECT_FALSE(std::filesystem::exists(out));
    }
}

TEST_F(PitCommandsTest, ASourceThatCanNotBeDecodedIsTakenAsItStands) {
    Open(ThreeSquares());
    PutGpf("0.gpf2", 4, 4, 7);
    WriteFile(from / "1.gpf2", ComposeGpf({250, 2, 0x05, 0, true}, Bytes(16, 8)));
    WriteFile(from / "2.gpf2", ComposeGpf({4, 4, 0x03, 0, true}, Bytes(16, 9)));
    ASSERT_TRUE(Rebuild().IsClean());
    EXPECT_EQ(BytesToHex(ReadFile(out / "0x00A0000.bin"), false),
              "04040500000018A0"
              "FA020500100018A0"
              "04040300200018A0");
}

TEST_F(PitCommandsTest, ASourceLongerThan16MebibytesIsNamedBeforeAnyFileIsMade) {
    constexpr std::uintmax_t kLongest = 16U << 20;
    Open(ThreeSquares());
    for (const char* name : {"0.gpf2", "1.gpf2", "2.gpf2"}) PutGpf(name, 4, 4, 7);
    std::filesystem::resize_file(from / "1.gpf2", kLongest + 1);
    const Outcome outcome = Rebuild();
    EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::Malformed);
    EXPECT_EQ(outcome.problems.at(0).error.path, from / "1.gpf2");
    EXPECT_FALSE(std::filesystem::exists(out));
    std::filesystem::resize_file(from / "1.gpf2", kLongest);
    EXPECT_EQ(Rebuild().problems.at(0).error.kind, ErrorKind::BlockTooLarge);
}

TEST_F(PitCommandsTest, ASourceIsNoOutputAlsoThroughAHardLink) {
    Open(ThreeSquares());
    for (const char* name : {"0.gpf2", "1.gpf2", "2.gpf2"}) PutGpf(name, 4, 4, 7);
    const Bytes before = ReadFile(from / "2.gpf2");
    std::filesystem::create_directory(out);
    std::filesystem::create_hard_link(from / "2.gpf2", out / "0x00A0000.bin");
    EXPECT_EQ(Rebuild().problems.at(0).error.kind, ErrorKind::OutputIsInput);
    EXPECT_EQ(ReadFile(from / "2.gpf2"), before);
}

TEST_F(PitCommandsTest, ASourceIsNoOutputAlsoThroughASymbolicLink) {
    PICTAVO_NEEDS_POSIX("symbolic links");
    Open(ThreeSquares());
    for (const char* name : {"0.gpf2", "1.gpf2", "2.gpf2"}) PutGpf(name, 4, 4, 7);
    const Bytes before = ReadFile(from / "2.gpf2");
    std::filesystem::create_directory(out);
    std::filesystem::create_symlink(from / "2.gpf2", out / "0x0180000.bin");
    EXPECT_EQ(Rebuild().problems.at(0).error.kind, ErrorKind::OutputIsInput);
    EXPECT_EQ(ReadFile(from / "2.gpf2"), before);
    EXPECT_EQ(ListNames(out), std::vector<std::string>{"0x0180000.bin"});
}

TEST_F(PitCommandsTest, ATableThatBeginsWhereItsFirstPictureDoesIsRefusedWithoutAFile) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.AddPictureAt(0xA0000, 4, 4, 0x05, {}).AddPictureAt(0xC0000, 4, 4, 0x05, Bytes(16, 1));
    Open(flash);
    for (const char* name : {"0.gpf2", "1.gpf2"}) PutGpf(name, 4, 4, 7);
    for (const Outcome& outcome : {BackupPitTo(session, scripted.ports, out), Rebuild()}) {
        EXPECT_EQ(outcome.end, Outcome::End::Refused);
        ASSERT_EQ(outcome.problems.size(), 1U);
        EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::Malformed);
        EXPECT_EQ(outcome.problems[0].error.path, flashPath);
    }
    EXPECT_FALSE(std::filesystem::exists(out));
}

}  // namespace
}  // namespace pictavo::tests
