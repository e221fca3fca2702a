#include "session/PngConverter.h"

#include "codec/Bitmap.h"
#include "core/PathText.h"
#include "session/ShowPicture.h"
#include "support/Refusal.h"
#include "support/SessionFixture.h"
#include "support/SystemMeans.h"

namespace pictavo::tests {
namespace {

class PngConverterTest : public SessionFixture {
  protected:
    PngConverterTest() { png = WriteFile(temp / "a.png", std::string("a png")); }

    /// The converter writes the file that the command line names behind "-o".
    void GiveConverter() {
        scripted.processes.effect = [](const FakeProcesses::Call& call) {
            WriteFile(PathOf(call.arguments.at(call.arguments.size() - 2)), Converted());
        };
    }

    static Bytes Converted() { return samples::MakePng(samples::DrawIcon(3, 2, 1), samples::PngColour::Rgb); }

    Result<std::filesystem::path> ToBitmap(int colourType) {
        return ConvertPngToBitmap(session, scripted.processes, png, colourType);
    }

    const std::vector<std::string>& Arguments() const { return scripted.processes.calls.back().arguments; }

    std::filesystem::path png;
};

TEST_F(PngConverterTest, AFileIsAConverterAndAFolderOrNoPathIsNone) {
    EXPECT_TRUE(CheckConverter(session));
    for (const std::string& path : {std::string(), temp.Path().string(), (temp / "none").string()}) {
        session.settings.nConvert = path;
        const Status checked = CheckConverter(session);
        ASSERT_FALSE(checked) << path;
        EXPECT_EQ(checked.error().kind, ErrorKind::ConverterMissing);
        EXPECT_EQ(checked.error().path, path);
    }
}

TEST_F(PngConverterTest, GreyAndAlphaTypesAreConvertedWithAlpha) {
    GiveConverter();
    for (const int type : {0, 4, 6}) {
        ASSERT_TRUE(ToBitmap(type));
        EXPECT_EQ(Arguments(), (std::vector<std::string>{"-out", "bmp", "-ctype", "rgba", "-o",
                                                         session.workFiles.PngBitmap().string(),
                                                         PathText(ShortPath(png))}))
            << type;
    }
}

TEST_F(PngConverterTest, AllOtherTypesAreConvertedInTrueColours) {
    GiveConverter();
    for (const int type : {1, 2, 3, 5, 7}) {
        ASSERT_TRUE(ToBitmap(type));
        EXPECT_EQ(Arguments(), (std::vector<std::string>{"-out", "bmp", "-ctype", "rgb", "-truecolors", "-o",
                                                         session.workFiles.PngBitmap().string(),
                                                         PathText(ShortPath(png))}))
            << type;
    }
}

TEST_F(PngConverterTest, TheConverterOfTheSettingsIsRunOnce) {
    GiveConverter();
    const auto bitmap = ToBitmap(2);
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(*bitmap, session.workFiles.PngBitmap());
    ASSERT_EQ(scripted.processes.calls.size(), 1U);
    EXPECT_EQ(scripted.processes.calls[0].program, session.settings.nConvert);
}

TEST_F(PngConverterTest, WithoutConverterNothingIsRun) {
    session.settings.nConvert = (temp / "none").string();
    const auto bitmap = ToBitmap(2);
    ASSERT_FALSE(bitmap);
    EXPECT_EQ(bitmap.error().kind, ErrorKind::ConverterMissing);
    EXPECT_TRUE(scripted.processes.calls.empty());
}

TEST_F(PngConverterTest, NoOutputIsAFailureThatNamesTheConverterEvenWhenAnEarlierOutputWasThere) {
    WriteFile(session.workFiles.PngBitmap(), std::string("an earlier picture"));
    const auto bitmap = ToBitmap(2);
    ASSERT_FALSE(bitmap);
    EXPECT_EQ(bitmap.error().kind, ErrorKind::ConverterFailed);
    EXPECT_NE(bitmap.error().detail.find(session.settings.nConvert), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(session.workFiles.PngBitmap()));
}

TEST_F(PngConverterTest, AFailureTellsWhatTheConverterMet) {
    EXPECT_TRUE(ToBitmap(2).error().detail.ends_with(" wrote no output"));
    scripted.processes.trouble = "cannot be started (Permission denied)";
    EXPECT_TRUE(
        ToBitmap(2).error().detail.ends_with(" wrote no output: it cannot be started (Permission denied)"));
}

TEST_F(PngConverterTest, BothTemporariesAreGoneBeforeTheConverterStarts) {
    WriteFile(session.workFiles.PngBitmap(), std::string("old"));
    WriteFile(session.workFiles.Png(), std::string("old"));
    std::vector<std::string> atStart{"not run"};
    scripted.processes.effect = [&](const FakeProcesses::Call&) {
        atStart = ListNames(session.workFiles.folder);
    };
    EXPECT_FALSE(ToBitmap(2));
    EXPECT_TRUE(atStart.empty());
}

TEST_F(PngConverterTest, WhatStandsInTheOutputsPlaceAndStaysIsRefusedBeforeTheConverterRuns) {
    std::filesystem::create_directories(session.workFiles.PngBitmap());
    WriteFile(session.workFiles.PngBitmap() / "full", std::string("so it cannot be removed"));
    const auto bitmap = ToBitmap(2);
    ASSERT_FALSE(bitmap);
    EXPECT_EQ(bitmap.error().kind, ErrorKind::WriteFailed);
    EXPECT_EQ(bitmap.error().path, session.workFiles.PngBitmap());
    EXPECT_EQ(bitmap.error().detail, "is in the converter's way and cannot be removed");
    EXPECT_TRUE(scripted.processes.calls.empty());
}

TEST_F(PngConverterTest, BlanksQuotesAndForeignLettersArriveAsTheyStand) {
    GiveConverter();
    session.workFiles.folder = temp / AllowedName("tmp 'of' \"B\xC3\xA4r\" $HOME");
    std::filesystem::create_directory(session.workFiles.folder);
    session.settings.nConvert =
        PathText(WriteFile(temp / AllowedName("my \"con\" verter;"), std::string("x")));
    png = WriteFile(temp / AllowedName("my 'own' \"\xD0\x96\" & picture.png"), std::string("a png"));
    ASSERT_TRUE(ToBitmap(6));
    EXPECT_EQ(scripted.processes.calls[0].program, session.settings.nConvert);
    EXPECT_EQ(Arguments().at(5), PathText(session.workFiles.PngBitmap()));
    EXPECT_EQ(Arguments().at(6), PathText(ShortPath(png)));
}

TEST_F(PngConverterTest, ANameThatBeginsWithADashBecomesAbsolute) {
    GiveConverter();
    png = "-out.png";
    ASSERT_TRUE(ToBitmap(6));
    EXPECT_EQ(Arguments().back(), (std::filesystem::current_path() / "-out.png").string());
}

class PictureToPngTest : public PngConverterTest {
  protected:
    /// Row 1 is of 8 bits, row 3 of 24 with alpha.
    void Show(std::size_t row) {
        Open(FourIcons());
        ASSERT_TRUE(ShowRow(session, row));
        GiveConverter();
    }

    Result<std::filesystem::path> ToPng(bool withAlpha) {
        return ConvertPictureToPng(session, scripted.processes, withAlpha);
    }

    std::vector<std::string> WithFiles(std::vector<std::string> options) const {
        options.insert(options.end(),
                       {"-o", session.workFiles.Png().string(), session.workFiles.PngBitmap().string()});
        return options;
    }
};

TEST_F(PictureToPngTest, APictureWithAlphaGoesOutAsRgba) {
    Show(3);
    ASSERT_TRUE(ToPng(true));
    EXPECT_EQ(Arguments(), WithFiles({"-out", "png", "-ctype", "rgba"}));
    EXPECT_EQ(ReadFile(session.workFiles.PngBitmap()), ComposeBitmap(session.picture, true));
}

TEST_F(PictureToPngTest, DeclinedAlphaGoesOutAsRgb) {
    Show(3);
    ASSERT_TRUE(ToPng(false));
    EXPECT_EQ(Arguments(), WithFiles({"-out", "png", "-ctype", "rgb", "-truecolors"}));
    EXPECT_EQ(ReadFile(session.workFiles.PngBitmap()), ComposeBitmap(session.picture, false));
}

TEST_F(PictureToPngTest, APictureWithoutAlphaGoesOutAsRgbWhateverIsWanted) {
    Show(1);
    ASSERT_TRUE(ToPng(true));
    EXPECT_EQ(Arguments(), WithFiles({"-out", "png", "-ctype", "rgb", "-truecolors"}));
}

TEST_F(PictureToPngTest, ReturnsTheOutputInTheTemporaryFolder) {
    Show(1);
    const auto made = ToPng(true);
    ASSERT_TRUE(made);
    EXPECT_EQ(*made, session.workFiles.folder / "PNGtemp.png");
    EXPECT_EQ(ReadFile(*made), Converted());
}

TEST_F(PictureToPngTest, APictureWithoutPixelsIsRefusedBeforeAnythingIsRun) {
    Show(1);
    for (int* size : {&session.picture.width, &session.picture.height}) {
        const int before = std::exchange(*size, 0);
        EXPECT_EQ(RefusalOf(ToPng(true)),
                  (Error{ErrorKind::Malformed,
                         {},
                         std::nullopt,
                         "the picture has no pixels, without which there is no PNG file"}));
        *size = before;
    }
    EXPECT_TRUE(scripted.processes.calls.empty());
}

TEST_F(PictureToPngTest, AnEarlierPngIsNeverTakenForTheNewOne) {
    Show(1);
    scripted.processes.effect = [](const FakeProcesses::Call&) {};
    WriteFile(session.workFiles.Png(), std::string("an earlier picture"));
    const auto made = ToPng(true);
    ASSERT_FALSE(made);
    EXPECT_EQ(made.error().kind, ErrorKind::ConverterFailed);
}

TEST_F(PictureToPngTest, ATemporaryFolderThatIsGoneIsAWriteErrorAndNothingIsRun) {
    Show(1);
    std::filesystem::remove(session.workFiles.folder);
    const auto made = ToPng(true);
    ASSERT_FALSE(made);
    EXPECT_EQ(made.error().kind, ErrorKind::WriteFailed);
    EXPECT_TRUE(scripted.processes.calls.empty());
}

TEST_F(PictureToPngTest, TheTemporariesAreRemovedOnRequestAndNothingElse) {
    WriteFile(session.workFiles.PngBitmap(), std::string("x"));
    WriteFile(session.workFiles.Png(), std::string("x"));
    WriteFile(session.workFiles.Replacement(1), std::string("x"));
    RemovePngTemporaries(session);
    EXPECT_EQ(ListNames(session.workFiles.folder), std::vector<std::string>{"0001.gpf2"});
}

TEST_F(PictureToPngTest, AnOutputThatIsNoWholePngIsAFailureThatNamesTheConverter) {
    Show(1);
    const Bytes whole = Converted();
    for (const Bytes& output : {Bytes{}, Bytes(whole.begin(), whole.end() - 1), Bytes{'B', 'M', 0, 0}}) {
        scripted.processes.effect = [&](const FakeProcesses::Call&) {
            WriteFile(session.workFiles.Png(), output);
        };
        const auto made = ToPng(true);
        ASSERT_FALSE(made) << output.size();
        EXPECT_EQ(made.error().kind, ErrorKind::ConverterFailed);
        EXPECT_NE(made.error().detail.find(session.settings.nConvert), std::string::npos);
    }
}

}  // namespace
}  // namespace pictavo::tests
