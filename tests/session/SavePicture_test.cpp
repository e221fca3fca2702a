#include "session/SavePicture.h"

#include "codec/Bitmap.h"
#include "session/ShowPicture.h"
#include "support/SessionFixture.h"
#include "support/SystemMeans.h"

namespace pictavo::tests {
namespace {

class SavePictureTest : public SessionFixture {
  protected:
    /// A picture of 8 bits, number 1, without alpha.
    void ShowPlain() {
        Open(FourIcons());
        ASSERT_TRUE(ShowRow(session, 1));
    }

    /// A picture of 24 bits, number 3, with alpha.
    void ShowAlpha() {
        Open(FourIcons());
        ASSERT_TRUE(ShowRow(session, 3));
    }

    /// One column of 8 bits.
    void ShowTall(int height) {
        const auto file =
            WriteGpf2("tall source.gpf2", 1, height, 0x05, Bytes(static_cast<std::size_t>(height), 0xE0));
        ASSERT_TRUE(LoadGPFfile(session, file));
    }

    std::vector<std::string> QuestionTexts() const {
        std::vector<std::string> texts;
        for (const Question& question : scripted.prompts.questions) texts.push_back(question.text);
        return texts;
    }

    void ExpectNothingTold() const { EXPECT_TRUE(scripted.prompts.notices.empty()); }

    void ExpectOnlyCompletion() const {
        EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"Succes"});
        EXPECT_EQ(scripted.prompts.notices.at(0).title, "");
    }

    GpfHeader HeaderOf(const std::filesystem::path& path) const {
        return *ReadGpfHeader(MemorySource(ReadFile(path)));
    }

    std::filesystem::path WriteOld(const std::string& name) {
        return WriteFile(temp / name, std::string("old"));
    }
};

class SaveAsGpfTest : public SavePictureTest {
  protected:
    Outcome Save(std::uint8_t typeCode = 0x85) { return SaveAsGpf(session, scripted.ports, typeCode); }

    /// Saves under a name in the scratch folder, as GPF2 or GPF, and keeps the compression.
    Outcome SaveUnder(const std::string& name, bool wantsGpf2, std::uint8_t typeCode = 0x85) {
        scripted.prompts.Expect(Asked::WriteGpf2, wantsGpf2);
        scripted.prompts.Choose(temp / name);
        scripted.prompts.Expect(Asked::Compress, true);
        return Save(typeCode);
    }
};

TEST_F(SaveAsGpfTest, AsksForTheVariantTheNameAndTheCompressionInThisOrder) {
    ShowPlain();
    EXPECT_TRUE(SaveUnder("a.gpf2", true).IsClean());
    EXPECT_EQ(QuestionTexts(), (std::vector<std::string>{"Save as GPF2?", "CmpgpfF?"}));
    EXPECT_EQ(scripted.prompts.questions[0].title, "");
    EXPECT_EQ(scripted.prompts.questions[1].title, "");
    ExpectOnlyCompletion();
}

TEST_F(SaveAsGpfTest, TheChooserOffersTheNumberAsGpf2) {
    ShowPlain();
    ASSERT_TRUE(SaveUnder("a.gpf2", true).IsClean());
    const FileChoice& choice = scripted.prompts.choices.at(0);
    EXPECT_EQ(choice.title, "PlSel File 4save");
    EXPECT_EQ(choice.filters.at(0).name, "Graphic Patch Files");
    EXPECT_EQ(choice.filters.at(0).patterns, (std::vector<std::string>{"*.gpf", "*.gpf2"}));
    EXPECT_EQ(choice.suggestedName, "1.gpf2");
    EXPECT_EQ(choice.defaultExtension, "gpf2");
}

TEST_F(SaveAsGpfTest, TheChooserOffersTheNumberAsGpfWhenGpf2IsDeclined) {
    ShowPlain();
    ASSERT_TRUE(SaveUnder("a.gpf", false).IsClean());
    EXPECT_EQ(scripted.prompts.choices.at(0).suggestedName, "1.gpf");
    EXPECT_EQ(scripted.prompts.choices.at(0).defaultExtension, "gpf");
    EXPECT_FALSE(HeaderOf(temp / "a.gpf").isGPF2);
}

TEST_F(SaveAsGpfTest, TheOfferedNameFollowsTheSettings) {
    ShowPlain();
    session.pictureNumber = 26;
    session.settings.HEXFilename = true;
    session.settings.ZeroFilename = true;
    ASSERT_TRUE(SaveUnder("a.gpf", false).IsClean());
    EXPECT_EQ(scripted.prompts.choices.at(0).suggestedName, "01A.gpf");
}

TEST_F(SaveAsGpfTest, DefaultGpf2AsksForNoVariant) {
    ShowPlain();
    session.settings.DefaultGPF2 = true;
    scripted.prompts.Choose(temp / "a.gpf2");
    scripted.prompts.Expect(Asked::Compress, true);
    EXPECT_TRUE(Save().IsClean());
    EXPECT_EQ(scripted.prompts.choices.at(0).suggestedName, "1.gpf2");
    EXPECT_TRUE(HeaderOf(temp / "a.gpf2").isGPF2);
}

TEST_F(SaveAsGpfTest, ACancelledChooserEndsWithoutAWord) {
    ShowPlain();
    const auto before = ListNames(temp.Path());
    scripted.prompts.Expect(Asked::WriteGpf2, true);
    scripted.prompts.Choose({});
    EXPECT_EQ(Save().end, Outcome::End::Cancelled);
    EXPECT_EQ(ListNames(temp.Path()), before);
    ExpectNothingTold();
}

TEST_F(SaveAsGpfTest, TheAnswerLosesItsTail) {
    ShowPlain();
    ASSERT_TRUE(SaveUnder("Hello.gpf !(", false).IsClean());
    EXPECT_TRUE(std::filesystem::exists(temp / "Hello.gpf"));
}

TEST_F(SaveAsGpfTest, AGpfNameGetsItsTwoWhenGpf2WasChosen) {
    ShowPlain();
    ASSERT_TRUE(SaveUnder("x.gpf", true).IsClean());
    EXPECT_TRUE(HeaderOf(temp / "x.gpf2").isGPF2);
    EXPECT_FALSE(std::filesystem::exists(temp / "x.gpf"));
}

TEST_F(SaveAsGpfTest, AForeignNameGetsATwoAndTheExtension) {
    ShowPlain();
    ASSERT_TRUE(SaveUnder("foo.bmp", true).IsClean());
    EXPECT_TRUE(HeaderOf(temp / "foo.bmp2.gpf2").isGPF2);
}

TEST_F(SaveAsGpfTest, ANameWithoutExtensionIsAGpf2AlsoWhenGpf2WasDeclined) {
    ShowPlain();
    ASSERT_TRUE(SaveUnder("plain", false).IsClean());
    EXPECT_TRUE(HeaderOf(temp / "plain.gpf2").isGPF2);
}

TEST_F(SaveAsGpfTest, TheEndingDecidesTheVariantWhateverWasChosen) {
    ShowPlain();
    ASSERT_TRUE(SaveUnder("x.gpf2", false).IsClean());
    EXPECT_TRUE(HeaderOf(temp / "x.gpf2").isGPF2);
}

TEST_F(SaveAsGpfTest, WithoutItsDotGpf2IsNoEndingAndTheFileAGpf) {
    ShowPlain();
    ASSERT_TRUE(SaveUnder("xgpf2", true).IsClean());
    EXPECT_FALSE(HeaderOf(temp / "xgpf2").isGPF2);
}

TEST_F(SaveAsGpfTest, APictureOf256RowsIsRefusedAsGpfBeforeAnyOtherQuestion) {
    ShowTall(256);
    const auto old = WriteOld("a.gpf");
    scripted.prompts.Expect(Asked::WriteGpf2, false);
    scripted.prompts.Choose(old);
    EXPECT_EQ(Save().end, Outcome::End::Refused);
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"CntCmp!"});
    EXPECT_EQ(ReadText(old), "old");
}

TEST_F(SaveAsGpfTest, APictureOf256RowsIsTakenAsGpf2) {
    ShowTall(256);
    ASSERT_TRUE(SaveUnder("a.gpf2", true).IsClean());
    EXPECT_EQ(HeaderOf(temp / "a.gpf2").height, 256);
}

TEST_F(SaveAsGpfTest, APictureOf255RowsIsTakenAsGpf) {
    ShowTall(255);
    ASSERT_TRUE(SaveUnder("a.gpf", false).IsClean());
    EXPECT_EQ(HeaderOf(temp / "a.gpf").height, 255);
}

TEST_F(SaveAsGpfTest, AFileThatExistsIsAskedAboutBeforeTheCompression) {
    ShowPlain();
    const auto old = WriteOld("a.gpf");
    scripted.prompts.Expect(Asked::WriteGpf2, false);
    scripted.prompts.Choose(old);
    scripted.prompts.Expect(Asked::Overwrite, true);
    scripted.prompts.Expect(Asked::Compress, true);
    EXPECT_TRUE(Save().IsClean());
    EXPECT_EQ(scripted.prompts.questions[1].title, "faExi!");
    EXPECT_EQ(scripted.prompts.questions[1].text, old.string() + "\rfChan?");
    EXPECT_EQ(HeaderOf(old).width, 16);
}

TEST_F(SaveAsGpfTest, ADeclinedOverwriteAsksNothingMoreAndKeepsTheFile) {
    ShowPlain();
    const auto old = WriteOld("a.gpf");
    scripted.prompts.Expect(Asked::WriteGpf2, false);
    scripted.prompts.Choose(old);
    scripted.prompts.Expect(Asked::Overwrite, false);
    EXPECT_EQ(Save().end, Outcome::End::Cancelled);
    EXPECT_EQ(ReadText(old), "old");
    ExpectNothingTold();
}

TEST_F(SaveAsGpfTest, TheNameThatIsAskedAboutIsTheOneThatIsWritten) {
    ShowPlain();
    const auto old = WriteOld("x.gpf2");
    scripted.prompts.Expect(Asked::WriteGpf2, true);
    scripted.prompts.Choose(temp / "x.gpf");
    scripted.prompts.Expect(Asked::Overwrite, false);
    EXPECT_EQ(Save().end, Outcome::End::Cancelled);
    EXPECT_EQ(scripted.prompts.questions[1].path, old);
}

TEST_F(SaveAsGpfTest, KeepingTheCompressionWritesTheCompressedType) {
    ShowPlain();
    ASSERT_TRUE(SaveUnder("a.gpf2", true, 0x88).IsClean());
    EXPECT_EQ(HeaderOf(temp / "a.gpf2").type, 0x88);
}

TEST_F(SaveAsGpfTest, DecliningTheCompressionTakes128OffTheType) {
    ShowPlain();
    for (const std::uint8_t type : std::initializer_list<std::uint8_t>{0x81, 0x85, 0x88, 0x8A}) {
        const std::string name = std::to_string(type) + ".gpf2";
        scripted.prompts.Expect(Asked::WriteGpf2, true);
        scripted.prompts.Choose(temp / name);
        scripted.prompts.Expect(Asked::Compress, false);
        ASSERT_TRUE(Save(type).IsClean());
        EXPECT_EQ(HeaderOf(temp / name).type, type - 128);
    }
}

TEST_F(SaveAsGpfTest, CompressGpfAsksNothingAndStaysCompressed) {
    ShowPlain();
    session.settings.CompressGPF = true;
    session.settings.DefaultGPF2 = true;
    scripted.prompts.Choose(temp / "a.gpf2");
    ASSERT_TRUE(Save(0x8A).IsClean());
    EXPECT_EQ(HeaderOf(temp / "a.gpf2").type, 0x8A);
    EXPECT_TRUE(scripted.prompts.questions.empty());
}

TEST_F(SaveAsGpfTest, CompressedOneBitIsRefusedWithoutAFile) {
    ShowPlain();
    EXPECT_EQ(SaveUnder("a.gpf2", true, 0x81).end, Outcome::End::Refused);
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"1bit GPF CntCmp"});
    EXPECT_FALSE(std::filesystem::exists(temp / "a.gpf2"));
}

TEST_F(SaveAsGpfTest, CompressedOneBitLeavesTheOldFileThatWasToBeReplaced) {
    ShowPlain();
    session.settings.DefaultGPF2 = true;
    const auto old = WriteOld("a.gpf2");
    scripted.prompts.Choose(old);
    scripted.prompts.Expect(Asked::Overwrite, true);
    scripted.prompts.Expect(Asked::Compress, true);
    EXPECT_EQ(Save(0x81).end, Outcome::End::Refused);
    EXPECT_EQ(ReadText(old), "old");
}

TEST_F(SaveAsGpfTest, CompressGpfAlwaysRefusesOneBit) {
    ShowPlain();
    session.settings.CompressGPF = true;
    session.settings.DefaultGPF2 = true;
    scripted.prompts.Choose(temp / "a.gpf2");
    EXPECT_EQ(Save(0x81).end, Outcome::End::Refused);
    EXPECT_FALSE(std::filesystem::exists(temp / "a.gpf2"));
}

TEST_F(SaveAsGpfTest, TheFileIsHeaderStoredPictureAndPadding) {
    ShowTall(17);
    session.pictureNumber = 0x1234;
    scripted.prompts.Expect(Asked::WriteGpf2, false);
    scripted.prompts.Choose(temp / "a.gpf");
    scripted.prompts.Expect(Asked::Compress, false);
    ASSERT_TRUE(Save(0x85).IsClean());
    Bytes expected = HexToBytes(
        "47726170686963506174636846696C65"
        "34120000011105000000000000000000",
        false);
    expected.insert(expected.end(), 17, 0xE0);
    expected.resize(64);
    EXPECT_EQ(ReadFile(temp / "a.gpf"), expected);
}

TEST_F(SaveAsGpfTest, AFileOfWholeSixteensGetsNoPadding) {
    ShowTall(16);
    session.settings.DefaultGPF2 = true;
    scripted.prompts.Choose(temp / "a.gpf2");
    scripted.prompts.Expect(Asked::Compress, false);
    ASSERT_TRUE(Save(0x85).IsClean());
    EXPECT_EQ(ReadFile(temp / "a.gpf2").size(), 48U);
}

TEST_F(SaveAsGpfTest, TheFileShowsThePictureThatWasSaved) {
    ShowAlpha();
    const Picture before = session.picture;
    ASSERT_TRUE(SaveUnder("a.gpf2", true, 0x8A).IsClean());
    session.picture = Picture();
    ASSERT_TRUE(LoadGPFfile(session, temp / "a.gpf2"));
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x) ASSERT_EQ(CellAt(x, y), before.raster.At(x, y)) << x << ", " << y;
}

TEST_F(SaveAsGpfTest, WithNothingShownItIsRefusedWithoutAQuestionOrABox) {
    Open(FourIcons());
    EXPECT_EQ(Save().problems.at(0).error.kind, ErrorKind::NoSuchPicture);
    EXPECT_EQ(SaveAsBmp(session, scripted.ports).end, Outcome::End::Refused);
    EXPECT_EQ(SaveAsPng(session, scripted.ports).end, Outcome::End::Refused);
    ExpectNothingTold();
}

TEST_F(SaveAsGpfTest, TheOpenFlashIsRefusedWithoutAQuestionAlsoThroughALink) {
    PICTAVO_NEEDS_POSIX("symbolic links");
    ShowPlain();
    std::filesystem::create_symlink(flashPath, temp / "link.gpf");
    scripted.prompts.Expect(Asked::WriteGpf2, false);
    scripted.prompts.Choose(temp / "link.gpf");
    EXPECT_EQ(Save().problems.at(0).error.kind, ErrorKind::OutputIsInput);
    EXPECT_TRUE(std::filesystem::is_symlink(temp / "link.gpf"));
    ExpectFlashUntouched();
}

TEST_F(SaveAsGpfTest, AFolderThatDoesNotExistIsToldByItsName) {
    ShowPlain();
    const Outcome outcome = SaveUnder("no folder/a.gpf2", true);
    EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::WriteFailed);
    EXPECT_TRUE(scripted.prompts.NoticeTexts().at(0).starts_with((temp / "no folder/a.gpf2").string()));
    EXPECT_FALSE(std::filesystem::exists(temp / "no folder"));
}

class SaveAsBmpTest : public SavePictureTest {
  protected:
    Outcome Save() { return SaveAsBmp(session, scripted.ports); }

    static int BitsOf(const Bytes& bitmap) { return bitmap.at(28); }
};

TEST_F(SaveAsBmpTest, WithoutAlphaAsksForTheNameOnlyAndWrites24Bits) {
    ShowPlain();
    scripted.prompts.Choose(temp / "a");
    EXPECT_TRUE(Save().IsClean());
    const Bytes file = ReadFile(temp / "a.bmp");
    EXPECT_EQ(file, ComposeBitmap(session.picture, false));
    EXPECT_EQ(file.size(), 54U + 16 * 48);
    EXPECT_TRUE(scripted.prompts.questions.empty());
    ExpectOnlyCompletion();
}

TEST_F(SaveAsBmpTest, TheChooserOffersBitmapsAndThePicturesNumber) {
    ShowPlain();
    scripted.prompts.Choose({});
    EXPECT_EQ(Save().end, Outcome::End::Cancelled);
    const FileChoice& choice = scripted.prompts.choices.at(0);
    EXPECT_EQ(choice.title, "PlSel File 4save");
    EXPECT_EQ(choice.filters.at(0).name, "Bitmap File");
    EXPECT_EQ(choice.filters.at(0).patterns, std::vector<std::string>{"*.bmp"});
    EXPECT_EQ(choice.suggestedName, "1.bmp");
    EXPECT_EQ(choice.defaultExtension, "bmp");
}

TEST_F(SaveAsBmpTest, WithAlphaAsksForItAndWrites32Bits) {
    ShowAlpha();
    scripted.prompts.Expect(Asked::SaveWithAlpha, true);
    scripted.prompts.Choose(temp / "a.bmp");
    EXPECT_TRUE(Save().IsClean());
    EXPECT_EQ(scripted.prompts.questions.at(0).text, "SalCh?");
    EXPECT_EQ(scripted.prompts.questions.at(0).title, "");
    EXPECT_EQ(BitsOf(ReadFile(temp / "a.bmp")), 32);
}

TEST_F(SaveAsBmpTest, DeclinedAlphaWrites24Bits) {
    ShowAlpha();
    scripted.prompts.Expect(Asked::SaveWithAlpha, false);
    scripted.prompts.Choose(temp / "a.bmp");
    EXPECT_TRUE(Save().IsClean());
    EXPECT_EQ(BitsOf(ReadFile(temp / "a.bmp")), 24);
}

TEST_F(SaveAsBmpTest, ACancelledChooserEndsWithoutAWord) {
    ShowAlpha();
    const auto before = ListNames(temp.Path());
    scripted.prompts.Expect(Asked::SaveWithAlpha, true);
    scripted.prompts.Choose({});
    EXPECT_EQ(Save().end, Outcome::End::Cancelled);
    EXPECT_EQ(ListNames(temp.Path()), before);
    ExpectNothingTold();
}

TEST_F(SaveAsBmpTest, TheAnswerKeepsItsTailAndGetsTheExtension) {
    ShowPlain();
    scripted.prompts.Choose(temp / "Hello!");
    ASSERT_TRUE(Save().IsClean());
    EXPECT_TRUE(std::filesystem::exists(temp / "Hello!.bmp"));
}

TEST_F(SaveAsBmpTest, AnEndingInUpperCaseIsTheExtension) {
    ShowPlain();
    scripted.prompts.Choose(temp / "A.BMP");
    ASSERT_TRUE(Save().IsClean());
    EXPECT_TRUE(std::filesystem::exists(temp / "A.BMP"));
    EXPECT_FALSE(std::filesystem::exists(temp / "A.BMP.bmp"));
}

TEST_F(SaveAsBmpTest, AFileThatExistsIsReplacedWhenTheUserSaysSo) {
    ShowPlain();
    const auto old = WriteOld("a.bmp");
    scripted.prompts.Choose(temp / "a");
    scripted.prompts.Expect(Asked::Overwrite, true);
    EXPECT_TRUE(Save().IsClean());
    EXPECT_EQ(scripted.prompts.questions.at(0).title, "faExi!");
    EXPECT_EQ(scripted.prompts.questions.at(0).text, old.string() + "\rfChan?");
    EXPECT_EQ(BitsOf(ReadFile(old)), 24);
}

TEST_F(SaveAsBmpTest, ADeclinedOverwriteKeepsTheFile) {
    ShowPlain();
    const auto old = WriteOld("a.bmp");
    scripted.prompts.Choose(old);
    scripted.prompts.Expect(Asked::Overwrite, false);
    EXPECT_EQ(Save().end, Outcome::End::Cancelled);
    EXPECT_EQ(ReadText(old), "old");
    ExpectNothingTold();
}

TEST_F(SaveAsBmpTest, FlaggedChannelsAreWrittenAlone) {
    ShowPlain();
    constexpr ChannelFlags kRed{true, false, false, false};
    ASSERT_TRUE(SaveBmpTo(session, scripted.ports, temp / "a.bmp", false, {}, kRed).IsClean());
    EXPECT_EQ(ReadFile(temp / "a.bmp"), ComposeBitmap(session.picture, false, kRed));
    EXPECT_EQ(ReadFile(temp / "a.bmp").size(), 54U + 16 * 64);
    ASSERT_TRUE(SaveAsBMP(session, temp / "b.bmp", false, kRed));
    EXPECT_EQ(ReadFile(temp / "b.bmp"), ReadFile(temp / "a.bmp"));
}

TEST_F(SaveAsBmpTest, TheBareWriterReplacesAFileWithoutAQuestion) {
    ShowPlain();
    const auto old = WriteOld("a.bmp");
    EXPECT_TRUE(SaveAsBMP(session, old, true));
    EXPECT_EQ(ReadFile(old), ComposeBitmap(session.picture, true));
    ExpectNothingTold();
}

TEST_F(SaveAsBmpTest, TheInputIsRefusedAsTarget) {
    ShowPlain();
    const auto input = WriteOld("input.bmp");
    const Outcome outcome = SaveBmpTo(session, scripted.ports, input, false, input);
    EXPECT_EQ(outcome.problems.at(0).error.kind, ErrorKind::OutputIsInput);
    EXPECT_EQ(ReadText(input), "old");
}

TEST_F(SaveAsBmpTest, ASizeBelowZeroIsWrittenAsZero) {
    session.picture.width = -3;
    session.picture.height = -2;
    ASSERT_TRUE(SaveAsBMP(session, temp / "none.bmp", false));
    const Bytes file = ReadFile(temp / "none.bmp");
    ASSERT_EQ(file.size(), 54U);
    EXPECT_EQ(Bytes(file.begin() + 18, file.begin() + 26), Bytes(8, 0));
}

class SaveAsPngTest : public SavePictureTest {
  protected:
    Outcome Save() { return SaveAsPng(session, scripted.ports); }

    /// The converter writes its output, and the bitmap it was given is kept for a look.
    void GiveConverter() {
        scripted.processes.effect = [this](const FakeProcesses::Call&) {
            bitmap = ReadFile(session.workFiles.PngBitmap());
            WriteFile(session.workFiles.Png(), png);
        };
    }

    std::vector<std::string> WithFiles(std::vector<std::string> options) const {
        options.insert(options.end(),
                       {"-o", session.workFiles.Png().string(), session.workFiles.PngBitmap().string()});
        return options;
    }

    const Bytes png = samples::MakePng(samples::DrawIcon(5, 4, 1), samples::PngColour::Rgb);
    Bytes bitmap;
};

TEST_F(SaveAsPngTest, WithoutConverterOneBoxSaysSoAndNothingIsAsked) {
    ShowAlpha();
    session.settings.nConvert = (temp / "no converter").string();
    EXPECT_EQ(Save().problems.at(0).error.kind, ErrorKind::ConverterMissing);
    ASSERT_EQ(scripted.prompts.notices.size(), 1U);
    EXPECT_EQ(scripted.prompts.notices[0].title, "nConvert");
    EXPECT_EQ(scripted.prompts.notices[0].text, "fnExi!");
    EXPECT_TRUE(scripted.processes.calls.empty());
}

TEST_F(SaveAsPngTest, TheChooserOffersPngFilesAndThePicturesNumber) {
    ShowPlain();
    scripted.prompts.Choose({});
    EXPECT_EQ(Save().end, Outcome::End::Cancelled);
    const FileChoice& choice = scripted.prompts.choices.at(0);
    EXPECT_EQ(choice.title, "PlSel File 4save");
    EXPECT_EQ(choice.filters.at(0).name, "Portable Network Graphic files");
    EXPECT_EQ(choice.filters.at(0).patterns, std::vector<std::string>{"*.png"});
    EXPECT_EQ(choice.suggestedName, "1.png");
    EXPECT_EQ(choice.defaultExtension, "png");
    EXPECT_TRUE(scripted.processes.calls.empty());
}

TEST_F(SaveAsPngTest, WithoutAlphaTheConverterIsToldTrueColours) {
    ShowPlain();
    GiveConverter();
    scripted.prompts.Choose(temp / "a");
    EXPECT_TRUE(Save().IsClean());
    ASSERT_EQ(scripted.processes.calls.size(), 1U);
    EXPECT_EQ(scripted.processes.calls[0].program, session.settings.nConvert);
    EXPECT_EQ(scripted.processes.calls[0].arguments,
              WithFiles({"-out", "png", "-ctype", "rgb", "-truecolors"}));
    EXPECT_EQ(bitmap, ComposeBitmap(session.picture, false));
    ExpectOnlyCompletion();
}

TEST_F(SaveAsPngTest, WithAlphaTheUserIsAskedAndTheConverterToldSo) {
    ShowAlpha();
    GiveConverter();
    scripted.prompts.Expect(Asked::SaveWithAlpha, true);
    scripted.prompts.Choose(temp / "a.png");
    EXPECT_TRUE(Save().IsClean());
    EXPECT_EQ(scripted.prompts.questions.at(0).text, "SalCh?");
    EXPECT_EQ(scripted.processes.calls.at(0).arguments, WithFiles({"-out", "png", "-ctype", "rgba"}));
    EXPECT_EQ(bitmap, ComposeBitmap(session.picture, true));
}

TEST_F(SaveAsPngTest, DeclinedAlphaIsConvertedWithoutIt) {
    ShowAlpha();
    GiveConverter();
    scripted.prompts.Expect(Asked::SaveWithAlpha, false);
    scripted.prompts.Choose(temp / "a.png");
    EXPECT_TRUE(Save().IsClean());
    EXPECT_EQ(scripted.processes.calls.at(0).arguments,
              WithFiles({"-out", "png", "-ctype", "rgb", "-truecolors"}));
    EXPECT_EQ(bitmap, ComposeBitmap(session.picture, false));
}

TEST_F(SaveAsPngTest, TheOutputIsCopiedToTheNameAndTheTemporariesAreDeleted) {
    ShowPlain();
    GiveConverter();
    scripted.prompts.Choose(temp / "a");
    ASSERT_TRUE(Save().IsClean());
    EXPECT_EQ(ReadFile(temp / "a.png"), png);
    EXPECT_TRUE(ListNames(session.workFiles.folder).empty());
}

TEST_F(SaveAsPngTest, ADeclinedOverwriteKeepsTheFileAndRunsNoConverter) {
    ShowPlain();
    const auto old = WriteOld("a.png");
    scripted.prompts.Choose(old);
    scripted.prompts.Expect(Asked::Overwrite, false);
    EXPECT_EQ(Save().end, Outcome::End::Cancelled);
    EXPECT_EQ(scripted.prompts.questions.at(0).title, "faExi!");
    EXPECT_EQ(scripted.prompts.questions.at(0).text, old.string() + "\rfChan?");
    EXPECT_EQ(ReadText(old), "old");
    EXPECT_TRUE(scripted.processes.calls.empty());
}

TEST_F(SaveAsPngTest, AnAcceptedOverwriteReplacesTheFile) {
    ShowPlain();
    GiveConverter();
    const auto old = WriteOld("a.png");
    scripted.prompts.Choose(old);
    scripted.prompts.Expect(Asked::Overwrite, true);
    EXPECT_TRUE(Save().IsClean());
    EXPECT_EQ(ReadFile(old), png);
}

TEST_F(SaveAsPngTest, AConverterThatWritesNothingLeavesTheOldFileAndNoTemporaries) {
    ShowPlain();
    const auto old = WriteOld("a.png");
    WriteFile(session.workFiles.Png(), std::string("an earlier picture"));
    scripted.prompts.Choose(old);
    scripted.prompts.Expect(Asked::Overwrite, true);
    EXPECT_EQ(Save().problems.at(0).error.kind, ErrorKind::ConverterFailed);
    EXPECT_EQ(ReadText(old), "old");
    EXPECT_TRUE(ListNames(session.workFiles.folder).empty());
}

TEST_F(SaveAsPngTest, AHalfWrittenPngLeavesTheOldFileAndNoTemporaries) {
    ShowPlain();
    const auto old = WriteOld("a.png");
    scripted.processes.effect = [this](const FakeProcesses::Call&) {
        WriteFile(session.workFiles.Png(), ByteView(png).first(png.size() / 2));
    };
    scripted.prompts.Choose(old);
    scripted.prompts.Expect(Asked::Overwrite, true);
    EXPECT_EQ(Save().problems.at(0).error.kind, ErrorKind::ConverterFailed);
    EXPECT_EQ(ReadText(old), "old");
    EXPECT_TRUE(ListNames(session.workFiles.folder).empty());
}

}  // namespace
}  // namespace pictavo::tests
