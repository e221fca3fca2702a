#include "session/ExtractFromGpn.h"

#include "support/FileSizeLimit.h"
#include "support/SessionFixture.h"
#include "support/SystemMeans.h"

namespace pictavo::tests {
namespace {

class ExtractFromGpnTest : public SessionFixture {
  protected:
    ExtractFromGpnTest() {
        session.texts.cap_mnFileR = "Files";
        out = temp / "out";
    }

    /// A picture of `stored` bytes of one value.
    static std::string Gpf(int number, std::size_t stored = 16, char value = '\x11', bool isGPF2 = false) {
        const GpfHeader header{4, 4, 0x05, static_cast<std::uint16_t>(number), isGPF2};
        const Bytes data(stored, static_cast<std::uint8_t>(value));
        return std::string(AsText(ComposeGpf(header, data)));
    }

    static std::string Gpf2(int number, std::size_t stored = 16) { return Gpf(number, stored, '\x22', true); }

    std::filesystem::path Container(const std::string& bytes) { return WriteFile(temp / "a.gpn", bytes); }

    Outcome Extract(const std::string& bytes) { return ExtractFrom(Container(bytes)); }

    Outcome ExtractFrom(const std::filesystem::path& container) {
        return ExtractFromGpnTo(session, scripted.ports, container, out);
    }

    std::string Out(const std::string& name) const { return ReadText(out / name); }

    void PutOld(const std::string& name) {
        std::filesystem::create_directory(out);
        WriteFile(out / name, std::string("old"));
    }

    using Names = std::vector<std::string>;
    std::filesystem::path out;
};

TEST_F(ExtractFromGpnTest, AGpfAndAGpf2ComeOutByteForByteWithTheirExtensions) {
    const Outcome outcome = Extract(Gpf(5, 100) + Gpf2(37, 33));
    EXPECT_TRUE(outcome.IsClean());
    EXPECT_EQ(outcome.written, 2U);
    EXPECT_EQ(ListNames(out), (Names{"37.gpf2", "5.gpf"}));
    EXPECT_EQ(Out("5.gpf"), Gpf(5, 100));
    EXPECT_EQ(Out("37.gpf2"), Gpf2(37, 33));
    ASSERT_EQ(scripted.prompts.notices.size(), 1U);
    EXPECT_EQ(scripted.prompts.notices[0].title, "");
    EXPECT_EQ(scripted.prompts.notices[0].text, "Succes");
}

TEST_F(ExtractFromGpnTest, NamesFollowTheSettings) {
    const auto nameOf = [this](int number, bool hex, bool zeros) {
        session.settings.HEXFilename = hex;
        session.settings.ZeroFilename = zeros;
        std::filesystem::remove_all(out);
        EXPECT_TRUE(Extract(Gpf(number)).IsClean());
        return ListNames(out).at(0);
    };
    EXPECT_EQ(nameOf(37, false, false), "37.gpf");
    EXPECT_EQ(nameOf(37, false, true), "0037.gpf");
    EXPECT_EQ(nameOf(37, true, false), "25.gpf");
    EXPECT_EQ(nameOf(37, true, true), "025.gpf");
    EXPECT_EQ(nameOf(0x0102, false, false), "258.gpf");
    EXPECT_EQ(nameOf(0x0102, true, true), "102.gpf");
}

TEST_F(ExtractFromGpnTest, KeptNumbersFrom8000OnAreNegativeInDecimal) {
    EXPECT_TRUE(Extract(Gpf(0x8000) + Gpf(0xFFFF)).IsClean());
    EXPECT_EQ(ListNames(out), (Names{"-1.gpf", "-32768.gpf"}));
    session.settings.HEXFilename = true;
    std::filesystem::remove_all(out);
    EXPECT_TRUE(Extract(Gpf(0x8000) + Gpf(0xFFFF)).IsClean());
    EXPECT_EQ(ListNames(out), (Names{"8000.gpf", "FFFF.gpf"}));
}

TEST_F(ExtractFromGpnTest, AMagicOffTheStepsOfSixteenIsCopiedAsData) {
    const std::string picture = Gpf(1) + std::string(8, 'd') + Gpf2(2) + std::string(8, 'd');
    EXPECT_TRUE(Extract(picture + Gpf2(3)).IsClean());
    EXPECT_EQ(ListNames(out), (Names{"1.gpf", "3.gpf2"}));
    EXPECT_EQ(Out("1.gpf"), picture);
}

TEST_F(ExtractFromGpnTest, AnExistingFileIsReplacedWithOK) {
    PutOld("5.gpf");
    scripted.prompts.Expect(Asked::Overwrite, true);
    EXPECT_EQ(Extract(Gpf(5) + Gpf(6)).written, 2U);
    EXPECT_EQ(Out("5.gpf"), Gpf(5));
    EXPECT_EQ(scripted.prompts.questions[0].title, "faExi!");
    EXPECT_EQ(scripted.prompts.questions[0].text, (out / "5.gpf").string() + "\rfChan?");
}

TEST_F(ExtractFromGpnTest, KeptADeclinedPictureWithoutItsHeadGoesBehindTheOneBefore) {
    PutOld("6.gpf");
    scripted.prompts.Expect(Asked::Overwrite, false);
    const Outcome outcome = Extract(Gpf(5, 48) + Gpf(6, 64, '\x66') + Gpf(7));
    EXPECT_TRUE(outcome.IsClean());
    EXPECT_EQ(outcome.written, 2U);
    EXPECT_EQ(Out("5.gpf"), Gpf(5, 48) + std::string(64, '\x66'));
    EXPECT_EQ(Out("6.gpf"), "old");
    EXPECT_EQ(Out("7.gpf"), Gpf(7));
}

TEST_F(ExtractFromGpnTest, KeptTwoDeclinedPicturesBothGoBehindTheOneBefore) {
    PutOld("6.gpf");
    PutOld("7.gpf2");
    scripted.prompts.Expect(Asked::Overwrite, false);
    scripted.prompts.Expect(Asked::Overwrite, false);
    EXPECT_EQ(Extract(Gpf(5) + Gpf(6, 16, '\x66') + Gpf2(7, 32)).written, 1U);
    EXPECT_EQ(Out("5.gpf"), Gpf(5) + std::string(16, '\x66') + std::string(32, '\x22'));
}

TEST_F(ExtractFromGpnTest, ADeclinedFirstPictureGoesNowhere) {
    PutOld("5.gpf");
    scripted.prompts.Expect(Asked::Overwrite, false);
    EXPECT_EQ(Extract(Gpf(5, 48) + Gpf(6)).written, 1U);
    EXPECT_EQ(ListNames(out), (Names{"5.gpf", "6.gpf"}));
    EXPECT_EQ(Out("5.gpf"), "old");
    EXPECT_EQ(Out("6.gpf"), Gpf(6));
}

TEST_F(ExtractFromGpnTest, ASecondPictureOfANumberAsksForTheFirstOne) {
    scripted.prompts.Expect(Asked::Overwrite, true);
    EXPECT_EQ(Extract(Gpf(5, 48) + Gpf(5, 16, '\x66')).written, 1U);
    EXPECT_EQ(Out("5.gpf"), Gpf(5, 16, '\x66'));
    EXPECT_EQ(scripted.prompts.questions[0].text, (out / "5.gpf").string() + "\rfChan?");
}

TEST_F(ExtractFromGpnTest, KeptASecondPictureOfANumberIsAppendedToTheFirstWhenDeclined) {
    scripted.prompts.Expect(Asked::Overwrite, false);
    EXPECT_EQ(Extract(Gpf(5, 48) + Gpf(5, 16, '\x66')).written, 1U);
    EXPECT_EQ(Out("5.gpf"), Gpf(5, 48) + std::string(16, '\x66'));
}

TEST_F(ExtractFromGpnTest, ASecondPictureOfANumberBehindAnotherOneAsksTheSame) {
    scripted.prompts.Expect(Asked::Overwrite, true);
    EXPECT_TRUE(Extract(Gpf(5, 48) + Gpf(6) + Gpf(5, 16, '\x66')).IsClean());
    EXPECT_EQ(Out("5.gpf"), Gpf(5, 16, '\x66'));
    EXPECT_EQ(Out("6.gpf"), Gpf(6));
}

TEST_F(ExtractFromGpnTest, AnOldFileAndASecondPictureOfItsNumberAskTwice) {
    PutOld("5.gpf");
    scripted.prompts.Expect(Asked::Overwrite, true);
    scripted.prompts.Expect(Asked::Overwrite, true);
    EXPECT_EQ(Extract(Gpf(5, 48) + Gpf(5, 16, '\x66')).written, 1U);
    EXPECT_EQ(Out("5.gpf"), Gpf(5, 16, '\x66'));
}

TEST_F(ExtractFromGpnTest, AGpfAndAGpf2OfOneNumberAreTwoFiles) {
    EXPECT_EQ(Extract(Gpf(5) + Gpf2(5)).written, 2U);
    EXPECT_EQ(ListNames(out), (Names{"5.gpf", "5.gpf2"}));
}

TEST_F(ExtractFromGpnTest, WhatLiesBeforeTheFirstMagicIsPassedOver) {
    EXPECT_TRUE(Extract(std::string(64, 'x') + Gpf(5)).IsClean());
    EXPECT_EQ(Out("5.gpf"), Gpf(5));
}

TEST_F(ExtractFromGpnTest, AFileWithoutAMagicIsOfTheWrongKindAndNothingIsWritten) {
    for (const std::string& bytes : {std::string(), std::string(500, 'x'), std::string(8, 'x') + Gpf(5)}) {
        scripted.prompts.notices.clear();
        const Outcome outcome = Extract(bytes);
        EXPECT_EQ(outcome.end, Outcome::End::Refused);
        EXPECT_EQ(outcome.problems.at(0).error, (Error{ErrorKind::UnknownFile, temp / "a.gpn", std::nullopt,
                                                       "holds no GPF or GPF2 picture: it is no GPN file"}));
        ASSERT_EQ(scripted.prompts.notices.size(), 1U);
        EXPECT_EQ(scripted.prompts.notices[0].text, "UNKfile");
        EXPECT_EQ(scripted.prompts.notices[0].title, "");
        EXPECT_FALSE(std::filesystem::exists(out));
    }
}

TEST_F(ExtractFromGpnTest, AShortLastBlockIsCopiedAsFarAsItGoes) {
    for (std::size_t cut = 1; cut < 32; ++cut) {
        const std::string whole = Gpf(5, 64);
        const std::string shorter = whole.substr(0, whole.size() - cut);
        std::filesystem::remove_all(out);
        EXPECT_TRUE(Extract(shorter).IsClean());
        EXPECT_EQ(Out("5.gpf"), shorter);
    }
}

TEST_F(ExtractFromGpnTest, AContainerCutInItsLastHeadGivesWhatThereIs) {
    EXPECT_TRUE(Extract(Gpf(5) + "GraphicPatchFile").IsClean());
    EXPECT_EQ(Out("0.gpf"), "GraphicPatchFile");
    scripted.prompts.Expect(Asked::Overwrite, true);
    scripted.prompts.Expect(Asked::Overwrite, false);
    EXPECT_TRUE(Extract(Gpf(5) + "GraphicPatchFile\x00").IsClean());
    EXPECT_EQ(Out("5.gpf"), Gpf(5));
}

TEST_F(ExtractFromGpnTest, TheChoosersAskForTheContainerAndThenForTheFolder) {
    scripted.prompts.Choose(Container(Gpf(5)));
    scripted.prompts.Choose(out);
    EXPECT_EQ(ExtractFromGpn(session, scripted.ports).written, 1U);
    const FileChoice& choice = scripted.prompts.choices.at(0);
    EXPECT_EQ(choice.title, "PlSel Files 4open");
    EXPECT_EQ(choice.filters, (std::vector<FileFilter>{{"Graphic Patch N", {"*.gpn"}}}));
    EXPECT_EQ(scripted.prompts.folderTitles, std::vector<std::string>{"PlSel cFold 4save"});
}

TEST_F(ExtractFromGpnTest, CancelOfEitherChooserWritesAndTellsNothing) {
    scripted.prompts.Choose({});
    EXPECT_EQ(ExtractFromGpn(session, scripted.ports).end, Outcome::End::Cancelled);
    scripted.prompts.Choose(Container(Gpf(5)));
    scripted.prompts.Choose({});
    EXPECT_EQ(ExtractFromGpn(session, scripted.ports).end, Outcome::End::Cancelled);
    EXPECT_TRUE(scripted.prompts.notices.empty());
    EXPECT_FALSE(std::filesystem::exists(out));
}

TEST_F(ExtractFromGpnTest, AMissingContainerIsToldByItsPathBeforeTheFolderIsAskedFor) {
    scripted.prompts.Choose(temp / "missing.gpn");
    EXPECT_EQ(ExtractFromGpn(session, scripted.ports).end, Outcome::End::Refused);
    EXPECT_TRUE(scripted.prompts.folderTitles.empty());
    EXPECT_EQ(scripted.prompts.NoticeTexts(), Names{(temp / "missing.gpn").string() + "\rfnExi!"});
    EXPECT_EQ(scripted.prompts.notices[0].title, "");
}

TEST_F(ExtractFromGpnTest, AFileThatCanNotBeWrittenIsNamedAndTheOthersGoOn) {
    std::filesystem::create_directories(out / "6.gpf");
    const Outcome outcome = Extract(Gpf(5) + Gpf(6, 48) + Gpf(7));
    EXPECT_EQ(outcome.end, Outcome::End::Done);
    EXPECT_EQ(outcome.written, 2U);
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].number, 6);
    EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::WriteFailed);
    EXPECT_EQ(Out("5.gpf"), Gpf(5));
    EXPECT_EQ(Out("7.gpf"), Gpf(7));
    EXPECT_EQ(scripted.prompts.NoticeTexts(),
              (Names{"0006: " + (out / "6.gpf").string() + ": is a folder", "Succes"}));
}

TEST_F(ExtractFromGpnTest, AnUnwritableFolderLosesEveryPictureByItsNumber) {
    PICTAVO_NEEDS_POSIX("folders that nobody can write");
    out = "/proc";
    const Outcome outcome = Extract(Gpf(50001) + Gpf2(50002));
    EXPECT_EQ(outcome.written, 0U);
    ASSERT_EQ(outcome.problems.size(), 2U);
    EXPECT_EQ(outcome.problems[0].error.kind, ErrorKind::WriteFailed);
}

TEST_F(ExtractFromGpnTest, AFullDiskLosesOnlyThePictureThatDoesNotFit) {
    PICTAVO_NEEDS_POSIX("full disks");
    const auto container = Container(Gpf(5) + Gpf(6, 4800) + Gpf(7));
    Outcome outcome;
    {
        const FileSizeLimit full(1000);
        outcome = ExtractFrom(container);
    }
    EXPECT_EQ(ListNames(out), (Names{"5.gpf", "7.gpf"}));
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].number, 6);
    EXPECT_EQ(Out("7.gpf"), Gpf(7));
}

TEST_F(ExtractFromGpnTest, AContainerThatWouldBeItsOwnOutputIsLeftAlone) {
    std::filesystem::create_directory(out);
    const std::string bytes = Gpf(4) + Gpf(5, 48) + Gpf(6);
    const auto container = WriteFile(out / "5.gpf", bytes);
    const Outcome outcome = ExtractFrom(container);
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].number, 5);
    EXPECT_EQ(outcome.problems[0].error, (Error{ErrorKind::OutputIsInput, container, std::nullopt,
                                                "is the very file that is read; it is never written"}));
    EXPECT_EQ(ReadText(container), bytes);
    EXPECT_EQ(Out("4.gpf"), Gpf(4));
    EXPECT_EQ(Out("6.gpf"), Gpf(6));
}

TEST_F(ExtractFromGpnTest, ALinkToTheContainerIsNoOutputEither) {
    PICTAVO_NEEDS_POSIX("symbolic links");
    std::filesystem::create_directory(out);
    const auto container = Container(Gpf(5));
    std::filesystem::create_symlink(container, out / "5.gpf");
    EXPECT_EQ(ExtractFrom(container).problems.at(0).error.kind, ErrorKind::OutputIsInput);
    EXPECT_EQ(ReadText(container), Gpf(5));
}

TEST_F(ExtractFromGpnTest, StoppedItKeepsThePicturesBeforeAndTellsNoCompletion) {
    scripted.progress.stopAfter = 2;
    const Outcome outcome = Extract(Gpf(5) + Gpf(6) + Gpf(7) + Gpf(8));
    EXPECT_EQ(outcome.written, 2U);
    EXPECT_EQ(outcome.problems.back().error.kind, ErrorKind::Stopped);
    EXPECT_EQ(ListNames(out), (Names{"5.gpf", "6.gpf"}));
    EXPECT_EQ(Out("6.gpf"), Gpf(6));
    EXPECT_EQ(scripted.prompts.NoticeTexts(), Names{"stopped before the end"});
}

TEST_F(ExtractFromGpnTest, ProgressIsTheShareOfTheContainerThatWasTaken) {
    Extract(Gpf(5) + Gpf(6) + Gpf(7) + Gpf(8));
    EXPECT_EQ(scripted.progress.percents, (std::vector<double>{25, 50, 75, 100}));
}

}  // namespace
}  // namespace pictavo::tests
