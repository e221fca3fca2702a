#include "session/ExtractEmbedded.h"

#include "samples/Sample.h"
#include "support/FileSizeLimit.h"
#include "support/SessionFixture.h"
#include "support/SystemMeans.h"

namespace pictavo::tests {
namespace {

using std::string_literals::operator""s;

class ExtractEmbeddedTest : public SessionFixture {
  protected:
    ExtractEmbeddedTest() {
        session.texts.cap_mnFileR = "Files";
        out = temp / "out";
    }

    static std::string Fill(std::size_t count) { return std::string(count, 'x'); }

    /// A GIF of `length` bytes, at least 8.
    static std::string Gif(std::size_t length) { return "GIF89a" + Fill(length - 8) + "\x00\x3B"s; }

    std::filesystem::path Source(const std::string& text) { return WriteFile(temp / "source.bin", text); }

    Outcome Extract(const std::filesystem::path& source, const EmbeddedKind& kind = kEmbeddedGif) {
        return ExtractEmbeddedTo(session, scripted.ports, kind, source, out);
    }

    /// The only box was that of a completion.
    void ExpectCount(const std::string& title) const {
        ASSERT_EQ(scripted.prompts.notices.size(), 1U);
        EXPECT_EQ(scripted.prompts.notices[0].title, title);
        EXPECT_EQ(scripted.prompts.notices[0].text, "Succes");
    }

    std::filesystem::path out;
};

TEST_F(ExtractEmbeddedTest, FilesAreNamedByTheirOffsetInEightUpperCaseDigits) {
    const std::string source = Fill(0x2B) + Gif(40) + Fill(0x12AB40 - 0x2B - 40) + Gif(300) + Fill(9);
    const Outcome outcome = Extract(Source(source));
    EXPECT_TRUE(outcome.IsClean());
    EXPECT_EQ(outcome.written, 2U);
    EXPECT_EQ(ListNames(out), (std::vector<std::string>{"0000002B.gif", "0012AB40.gif"}));
    EXPECT_EQ(ReadText(out / "0000002B.gif"), Gif(40));
    EXPECT_EQ(ReadText(out / "0012AB40.gif"), Gif(300));
}

TEST_F(ExtractEmbeddedTest, EachKindTakesItsOwnFilesAndExtension) {
    const std::string png = "\x89PNG\r\n\x1A\n" + Fill(30) + "IENDCRC!";
    const std::string xml = "<?xml version=\"1.0\"?><a/>";
    const auto source = Source(Gif(20) + png + xml + "\x20\x00"s + Fill(300));
    for (const EmbeddedKind* kind : {&kEmbeddedGif, &kEmbeddedPng, &kEmbeddedXml})
        EXPECT_EQ(Extract(source, *kind).written, 1U);
    EXPECT_EQ(ListNames(out), (std::vector<std::string>{"00000000.gif", "00000014.png", "00000042.xml"}));
    EXPECT_EQ(ReadText(out / "00000000.gif"), Gif(20));
    EXPECT_EQ(ReadText(out / "00000014.png"), png);
    EXPECT_EQ(ReadText(out / "00000042.xml"), xml);
}

TEST_F(ExtractEmbeddedTest, TheCountStandsBehindABlankAsTheTitle) {
    Extract(Source(Gif(20) + Gif(30) + Gif(40)));
    ExpectCount(" 3");
}

TEST_F(ExtractEmbeddedTest, WithoutAMatchTheTitleIsNoughtAndNothingIsWritten) {
    EXPECT_TRUE(Extract(Source(Fill(3000))).IsClean());
    ExpectCount(" 0");
    EXPECT_TRUE(ListNames(out).empty());
}

TEST_F(ExtractEmbeddedTest, AnEmptySourceHoldsNothing) {
    EXPECT_TRUE(Extract(Source("")).IsClean());
    ExpectCount(" 0");
    for (const double percent : scripted.progress.percents) EXPECT_GE(percent, 0);  // no number is false
}

TEST_F(ExtractEmbeddedTest, AMissingSourceIsToldByItsPathAndNoFolderIsMade) {
    const Outcome outcome = Extract(temp / "missing.bin");
    EXPECT_EQ(outcome.end, Outcome::End::Refused);
    EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::FileMissing);
    EXPECT_EQ(scripted.prompts.NoticeTexts(),
              std::vector<std::string>{(temp / "missing.bin").string() + "\rfnExi!"});
    EXPECT_EQ(scripted.prompts.notices[0].title, "");
    EXPECT_FALSE(std::filesystem::exists(out));
}

TEST_F(ExtractEmbeddedTest, TheChoosersAskForTheSourceAndThenForTheFolder) {
    scripted.prompts.Choose(Source(Gif(20)));
    scripted.prompts.Choose(out);
    EXPECT_EQ(ExtractEmbedded(session, scripted.ports, kEmbeddedGif).written, 1U);
    const FileChoice& choice = scripted.prompts.choices.at(0);
    EXPECT_EQ(choice.title, "PlSel Files 4open");
    ASSERT_EQ(choice.filters.size(), 2U);
    EXPECT_EQ(choice.filters[0], (FileFilter{"FullFlash files", {"*.bin"}}));
    EXPECT_EQ(choice.filters[1], (FileFilter{"All files", {"*"}}));
    EXPECT_EQ(scripted.prompts.folderTitles, std::vector<std::string>{"PlSel cFold 4save"});
    ExpectCount(" 1");
}

TEST_F(ExtractEmbeddedTest, CancelOfEitherChooserWritesAndTellsNothing) {
    scripted.prompts.Choose({});
    EXPECT_EQ(ExtractEmbedded(session, scripted.ports, kEmbeddedGif).end, Outcome::End::Cancelled);
    scripted.prompts.Choose(Source(Gif(20)));
    scripted.prompts.Choose({});
    EXPECT_EQ(ExtractEmbedded(session, scripted.ports, kEmbeddedGif).end, Outcome::End::Cancelled);
    EXPECT_TRUE(scripted.prompts.notices.empty());
    EXPECT_FALSE(std::filesystem::exists(out));
}

TEST_F(ExtractEmbeddedTest, AMissingSourceIsToldBeforeTheFolderIsAskedFor) {
    scripted.prompts.Choose(temp / "missing.bin");
    EXPECT_EQ(ExtractEmbedded(session, scripted.ports, kEmbeddedGif).end, Outcome::End::Refused);
    EXPECT_TRUE(scripted.prompts.folderTitles.empty());
    EXPECT_EQ(scripted.prompts.NoticeTexts(),
              std::vector<std::string>{(temp / "missing.bin").string() + "\rfnExi!"});
}

TEST_F(ExtractEmbeddedTest, AnExistingFileIsReplacedOnlyWithOK) {
    std::filesystem::create_directory(out);
    const auto first = WriteFile(out / "00000000.gif", "old"s);
    const auto second = WriteFile(out / "00000014.gif", "old"s);
    scripted.prompts.Expect(Asked::Overwrite, false);
    scripted.prompts.Expect(Asked::Overwrite, true);
    const Outcome outcome = Extract(Source(Gif(20) + Gif(30) + Gif(40)));
    EXPECT_TRUE(outcome.IsClean());
    EXPECT_EQ(ReadText(first), "old");
    EXPECT_EQ(ReadText(second), Gif(30));
    EXPECT_EQ(ReadText(out / "00000032.gif"), Gif(40));
    ExpectCount(" 2");
    EXPECT_EQ(scripted.prompts.questions[0].title, "faExi!");
    EXPECT_EQ(scripted.prompts.questions[0].text, first.string() + "\rfChan?");
}

TEST_F(ExtractEmbeddedTest, AFileThatCanNotBeWrittenDoesNotStopTheSearch) {
    std::filesystem::create_directories(out / "00000000.gif");
    const Outcome outcome = Extract(Source(Gif(20) + Gif(30)));
    EXPECT_EQ(outcome.end, Outcome::End::Done);
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::WriteFailed);
    EXPECT_EQ(outcome.problems[0].error.path, out / "00000000.gif");
    ASSERT_EQ(scripted.prompts.notices.size(), 2U);
    EXPECT_EQ(scripted.prompts.notices[0].text, (out / "00000000.gif").string() + ": is a folder");
    EXPECT_EQ(scripted.prompts.notices[1].title, " 1");
    EXPECT_EQ(ReadText(out / "00000014.gif"), Gif(30));
}

TEST_F(ExtractEmbeddedTest, WhereNoFileCanBeWrittenTheSearchStillRunsToItsEnd) {
    PICTAVO_NEEDS_POSIX("folders that nobody can write");
    out = "/proc";
    const Outcome outcome = Extract(Source(Gif(20) + Gif(30)));
    EXPECT_EQ(outcome.problems.size(), 2U);
    EXPECT_EQ(outcome.written, 0U);
    EXPECT_EQ(scripted.prompts.notices.back().title, " 0");
    EXPECT_EQ(scripted.prompts.notices.back().text, "Succes");
}

TEST_F(ExtractEmbeddedTest, AFileInThePlaceOfTheFolderIsRefused) {
    WriteFile(out, "a file"s);
    const Outcome outcome = Extract(Source(Gif(20)));
    EXPECT_EQ(outcome.end, Outcome::End::Refused);
    EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::WriteFailed);
    EXPECT_EQ(ReadText(out), "a file");
}

TEST_F(ExtractEmbeddedTest, AFullDiskLosesOnlyTheFilesThatDoNotFit) {
    PICTAVO_NEEDS_POSIX("full disks");
    const auto source = Source(Gif(500) + Gif(5000) + Gif(600));
    Outcome outcome;
    {
        const FileSizeLimit full(1000);
        outcome = Extract(source);
    }
    EXPECT_EQ(ListNames(out), (std::vector<std::string>{"00000000.gif", "0000157C.gif"}));
    EXPECT_EQ(ReadText(out / "0000157C.gif"), Gif(600));
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::WriteFailed);
    EXPECT_EQ(scripted.prompts.notices.back().title, " 2");
}

TEST_F(ExtractEmbeddedTest, AFullDiskLeavesTheOldFileOfTheName) {
    PICTAVO_NEEDS_POSIX("full disks");
    std::filesystem::create_directory(out);
    WriteFile(out / "00000000.gif", "old"s);
    const auto source = Source(Gif(5000));
    scripted.prompts.Expect(Asked::Overwrite, true);
    {
        const FileSizeLimit full(1000);
        EXPECT_EQ(Extract(source).written, 0U);
    }
    EXPECT_EQ(ListNames(out), std::vector<std::string>{"00000000.gif"});
    EXPECT_EQ(ReadText(out / "00000000.gif"), "old");
}

TEST_F(ExtractEmbeddedTest, ASourceThatWouldBeItsOwnOutputIsLeftAlone) {
    std::filesystem::create_directory(out);
    const auto source = WriteFile(out / "00000000.gif", Gif(20) + Gif(30));
    const Outcome outcome = Extract(source);
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::OutputIsInput);
    EXPECT_EQ(ReadText(source), Gif(20) + Gif(30));
    EXPECT_EQ(ReadText(out / "00000014.gif"), Gif(30));
}

TEST_F(ExtractEmbeddedTest, TheOpenFlashIsNeverAnOutput) {
    PICTAVO_NEEDS_POSIX("symbolic links");
    Open(FourIcons());
    std::filesystem::create_directory(out);
    std::filesystem::create_symlink(flashPath, out / "00000000.gif");
    const Outcome outcome = Extract(Source(Gif(20)));
    EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::OutputIsInput);
    ExpectFlashUntouched();
}

TEST_F(ExtractEmbeddedTest, TheOpenFlashMayBeTheSource) {
    FlashBuilder flash = FourIcons();
    const Bytes gif = samples::MakeGif(samples::DrawIcon(9, 9, 3));
    flash.Put(0x1F0000, gif);
    Open(flash);
    EXPECT_EQ(Extract(flashPath).written, 1U);
    EXPECT_EQ(ReadFile(out / "001F0000.gif"), gif);
    EXPECT_TRUE(session.flash.IsOpen());
    ExpectFlashUntouched();
}

TEST_F(ExtractEmbeddedTest, ProgressIsTheShareOfTheSourceThatWasPassed) {
    Extract(Source(Fill(1'500'000) + Gif(20) + Fill(1'500'000)));
    const auto& percents = scripted.progress.percents;
    ASSERT_GE(percents.size(), 2U);
    EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end()));
    EXPECT_GE(percents.front(), 0);
    EXPECT_GT(percents.back(), 90);
    EXPECT_LE(percents.back(), 100);
}

TEST_F(ExtractEmbeddedTest, AStoppedSearchKeepsWhatWasFoundAndTellsNoCompletion) {
    scripted.progress.stopAfter = 4;  // behind the first file
    const Outcome outcome = Extract(Source(Gif(20) + Fill(4'000'000) + Gif(20)));
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::Stopped);
    EXPECT_EQ(ListNames(out), std::vector<std::string>{"00000000.gif"});
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"stopped before the end"});
}

TEST_F(ExtractEmbeddedTest, ASourceOfMoreThanTwoGigabytesIsReadToItsEnd) {
    const auto source = Source("");
    std::filesystem::resize_file(source, (std::uintmax_t{2} << 30) + 0x1000);  // a hole takes no room
    std::ofstream file(source, std::ios::binary | std::ios::in);
    file.seekp((std::streamoff{2} << 30) + 0x800);
    file << Gif(64);
    file.close();
    EXPECT_EQ(Extract(source).written, 1U);
    EXPECT_EQ(ReadText(out / "80000800.gif"), Gif(64));
}

TEST_F(ExtractEmbeddedTest, EveryFileOfASampleComesOutByteForByteAndNothingElse) {
    samples::SampleSpec spec;
    spec.sizeMiB = 16;
    spec.pictureCount = 40;
    const samples::Sample sample = samples::MakeSample(spec);
    const Bytes flash = sample.flash.Build();
    const auto source = WriteFile(temp / "sample.bin", flash);
    using Kind = std::pair<samples::FileKind, const EmbeddedKind*>;
    for (const auto& [fileKind, kind] :
         {Kind(samples::FileKind::Gif, &kEmbeddedGif), Kind(samples::FileKind::Png, &kEmbeddedPng),
          Kind(samples::FileKind::Xml, &kEmbeddedXml)}) {
        std::map<std::string, Bytes> expected;
        for (const samples::EmbeddedFile& file : sample.files) {
            const std::string name = PadZeros(UpperHex(file.offset), 8, true) + std::string(kind->extension);
            const auto begin = flash.begin() + static_cast<std::ptrdiff_t>(file.offset);
            if (file.kind == fileKind)
                expected[name] = Bytes(begin, begin + static_cast<std::ptrdiff_t>(file.length));
        }
        out = temp / std::string(kind->extension);
        EXPECT_EQ(Extract(source, *kind).written, expected.size());
        std::map<std::string, Bytes> found;
        for (const std::string& name : ListNames(out)) found[name] = ReadFile(out / name);
        EXPECT_FALSE(expected.empty());
        EXPECT_TRUE(found == expected) << kind->extension;
    }
}

}  // namespace
}  // namespace pictavo::tests
