#include <QImage>
#include <QProgressBar>

#include "support/WindowFixture.h"

/// The entries of the Tools menu and "Change PNG", from the choosers to the last box.

namespace pictavo::tests {
namespace {

using std::string_literals::operator""s;

class Form1ToolsTest : public WindowFixture {
  protected:
    Form1ToolsTest() {
        session.texts.cap_mnFileR = "Files";
        out = temp / "out";
    }

    static std::string Text(ByteView bytes) { return std::string(AsText(bytes)); }

    static Bytes Png(const samples::Drawing& drawing) {
        return samples::MakePng(drawing, samples::PngColour::Rgba);
    }

    static std::string Gpf(int number) {
        return Text(ComposeGpf({4, 4, 0x05, static_cast<std::uint16_t>(number), false}, Bytes(16, 0x11)));
    }

    /// Runs an entry over a source, both choosers being answered.
    void RunTool(const QString& entry, const std::string& source, const std::string& name = "source") {
        scripted.prompts.Choose(WriteFile(temp / name, source));
        scripted.prompts.Choose(out);
        Trigger(entry);
    }

    /// Both choosers were shown with these, and then one box.
    void ExpectChoosers(const std::vector<FileFilter>& filters) const {
        ASSERT_EQ(scripted.prompts.choices.size(), 1U);
        EXPECT_EQ(scripted.prompts.choices[0].title, "PlSel Files 4open");
        EXPECT_EQ(scripted.prompts.choices[0].filters, filters);
        EXPECT_EQ(scripted.prompts.folderTitles, std::vector<std::string>{"PlSel cFold 4save"});
    }

    void ExpectBox(const std::string& title, const std::string& text) const {
        ASSERT_EQ(scripted.prompts.notices.size(), 1U);
        EXPECT_EQ(scripted.prompts.notices[0].title, title);
        EXPECT_EQ(scripted.prompts.notices[0].text, text);
    }

    /// Each pixel as the maker drew it; of a transparent one only that it is so.
    static void ExpectShows(const std::filesystem::path& file, const samples::Drawing& drawing) {
        const QImage image(QString::fromStdString(file.string()));
        ASSERT_EQ(image.size(), QSize(drawing.width, drawing.height)) << file;
        for (int y = 0; y < drawing.height; ++y) {
            for (int x = 0; x < drawing.width; ++x) {
                const samples::Pixel& pixel = drawing.At(x, y);
                const QColor shown = image.pixelColor(x, y);
                ASSERT_EQ(shown.alpha(), pixel.a) << file << " at " << x << ", " << y;
                if (pixel.a == 0) continue;
                ASSERT_EQ(shown.rgb(), qRgb(pixel.r, pixel.g, pixel.b)) << file << " at " << x << ", " << y;
            }
        }
    }

    const std::vector<FileFilter> anyFile{{"FullFlash files", {"*.bin"}}, {"All files", {"*"}}};
    std::filesystem::path out;
};

TEST_F(Form1ToolsTest, ExtractGifsTellsTheirNumberAndTheyShowWhatTheMakerDrew) {
    Show();
    const std::vector<samples::Drawing> drawings{samples::DrawIcon(20, 16, 1), samples::DrawGlyphs(30, 9, 2),
                                                 samples::DrawTransparencyChecker(8, 8, 3)};
    std::string source;
    std::vector<std::string> names;
    for (const samples::Drawing& drawing : drawings) {
        source += std::string(1000, 'x');
        names.push_back(PadZeros(UpperHex(source.size()), 8, true) + ".gif");
        source += Text(samples::MakeGif(drawing));
    }
    RunTool("mnu_Tools_FindGIF", source);
    ExpectChoosers(anyFile);
    ExpectBox(" 3", "Succes");
    EXPECT_EQ(Line(), "3 files written");
    ASSERT_EQ(ListNames(out), names);
    for (std::size_t i = 0; i < drawings.size(); ++i) ExpectShows(out / names[i], drawings[i]);
}

TEST_F(Form1ToolsTest, ExtractPngsTellsTheirNumberAndTheyShowWhatTheMakerDrew) {
    Show();
    const samples::Drawing photo = samples::DrawPhoto(40, 30, 1);
    const samples::Drawing disc = samples::DrawSoftDisc(21, 21, 2);
    const std::string first = Text(Png(photo));
    RunTool("mnu_Tools_FindPNG", "xyz" + first + std::string(5000, 'x') + Text(Png(disc)));
    ExpectChoosers(anyFile);
    ExpectBox(" 2", "Succes");
    const std::string second = PadZeros(UpperHex(3 + first.size() + 5000), 8, true) + ".png";
    ASSERT_EQ(ListNames(out), (std::vector<std::string>{"00000003.png", second}));
    ExpectShows(out / "00000003.png", photo);
    ExpectShows(out / second, disc);
}

TEST_F(Form1ToolsTest, ExtractXmlsTellsTheirNumber) {
    Show();
    RunTool("mnu_Tools_FindXML", "<?xml version=\"1.0\"?><a/>\x20\x00"s + std::string(400, 'x'));
    ExpectChoosers(anyFile);
    ExpectBox(" 1", "Succes");
    EXPECT_EQ(ReadText(out / "00000000.xml"), "<?xml version=\"1.0\"?><a/>");
}

TEST_F(Form1ToolsTest, ASearchWithoutAMatchTellsNought) {
    Show();
    RunTool("mnu_Tools_FindGIF", std::string(5000, 'x'));
    ExpectBox(" 0", "Succes");
    EXPECT_TRUE(ListNames(out).empty());
}

TEST_F(Form1ToolsTest, ExtractFromGraphPatchWritesItsPictures) {
    Show();
    const std::string patch =
        "\r\n; ##### Picture 0007 #####\r\n000A0000: 0000000000000000 04010500000018A0\r\n\r\n"
        "00180000: 11111111 01020304\r\n\r\n; ##### PNG Picture 0012AB40 #####\r\n00180000: 1111 7777\r\n";
    RunTool("mnu_Tools_ExtractFgrP", patch, "a.vkp");
    ExpectChoosers({{"ViKlay Patch File", {"*.vkp"}}});
    ExpectBox("", "Succes");
    EXPECT_EQ(ListNames(out), (std::vector<std::string>{"0012AB40.png", "7.gpf"}));
    EXPECT_EQ(ReadFile(out / "7.gpf"), ComposeGpf({4, 1, 0x05, 7, false}, Bytes{1, 2, 3, 4}));
}

TEST_F(Form1ToolsTest, ExtractFromGpnWritesItsPictures) {
    Show();
    RunTool("mnu_Tools_ExtractFGPN", Gpf(5) + Gpf(6), "a.gpn");
    ExpectChoosers({{"Graphic Patch N", {"*.gpn"}}});
    ExpectBox("", "Succes");
    EXPECT_EQ(ListNames(out), (std::vector<std::string>{"5.gpf", "6.gpf"}));
    EXPECT_EQ(ReadText(out / "6.gpf"), Gpf(6));
}

TEST_F(Form1ToolsTest, AContainerWithoutAPictureIsOfTheWrongKind) {
    Show();
    RunTool("mnu_Tools_ExtractFGPN", "no container", "a.gpn");
    ExpectBox("", "UNKfile");
    EXPECT_FALSE(std::filesystem::exists(out));
}

TEST_F(Form1ToolsTest, CancelOfEitherChooserWritesAndTellsNothing) {
    Show();
    const auto source = WriteFile(temp / "source", Gpf(5) + Text(Png(samples::DrawIcon(4, 4, 1))));
    for (const char* entry : {"mnu_Tools_FindGIF", "mnu_Tools_FindPNG", "mnu_Tools_FindXML",
                              "mnu_Tools_ExtractFgrP", "mnu_Tools_ExtractFGPN"}) {
        scripted.prompts.Choose({});
        Trigger(entry);
        scripted.prompts.Choose(source);
        scripted.prompts.Choose({});
        Trigger(entry);
    }
    EXPECT_EQ(scripted.prompts.choices.size(), 10U);
    EXPECT_EQ(scripted.prompts.folderTitles.size(), 5U);
    EXPECT_TRUE(scripted.prompts.notices.empty());
    EXPECT_FALSE(std::filesystem::exists(out));
    EXPECT_EQ(Line(), "");
}

TEST_F(Form1ToolsTest, AMissingSourceIsToldAndNoFolderAskedFor) {
    Show();
    const std::string path = (temp / "missing").string();
    const std::vector<std::pair<const char*, std::string>> boxes{
        {"mnu_Tools_FindGIF", path + "\rfnExi!"},     {"mnu_Tools_FindPNG", path + "\rfnExi!"},
        {"mnu_Tools_FindXML", path + "\rfnExi!"},     {"mnu_Tools_ExtractFgrP", "fnExi!"},
        {"mnu_Tools_ExtractFGPN", path + "\rfnExi!"},
    };
    for (const auto& [entry, text] : boxes) {
        scripted.prompts.notices.clear();
        scripted.prompts.Choose(path);
        Trigger(entry);
        ExpectBox("", text);
    }
    EXPECT_TRUE(scripted.prompts.folderTitles.empty());
}

TEST_F(Form1ToolsTest, AnOpenFlashItsRowsAndItsReplacementsStayAsTheyAre) {
    Open(FourIcons());
    ReplaceBy(1, samples::DrawIcon(9, 9, 7), 0x85);
    Show();
    Select(2);
    const std::string caption = FrameCaption();
    const QImage painted = Painted();
    RunTool("mnu_Tools_ExtractFGPN", Gpf(5) + Gpf(6));
    EXPECT_EQ(State().rows.size(), 4U);
    EXPECT_TRUE(State().replaced.at(1));
    EXPECT_TRUE(IsEnabled("mnu_Fullflash_SavePatch"));
    EXPECT_EQ(FrameCaption(), caption);
    EXPECT_EQ(Painted(), painted);
    ExpectFlashUntouched();
}

TEST_F(Form1ToolsTest, AnExistingFileIsReplacedOnlyWithOK) {
    Show();
    std::filesystem::create_directory(out);
    WriteFile(out / "5.gpf", "old"s);
    WriteFile(out / "6.gpf", "old"s);
    scripted.prompts.Choose(WriteFile(temp / "source", Gpf(5) + Gpf(6)));
    scripted.prompts.Choose(out);
    scripted.prompts.Expect(Asked::Overwrite, false);
    scripted.prompts.Expect(Asked::Overwrite, true);
    Trigger("mnu_Tools_ExtractFGPN");
    EXPECT_EQ(ReadText(out / "5.gpf"), "old");
    EXPECT_EQ(ReadText(out / "6.gpf"), Gpf(6));
    EXPECT_EQ(scripted.prompts.questions.at(0).title, "faExi!");
    EXPECT_EQ(scripted.prompts.questions.at(0).text, (out / "5.gpf").string() + "\rfChan?");
}

TEST_F(Form1ToolsTest, TheBarShowsHowFarTheWorkIs) {
    Show();
    std::vector<int> values;
    scripted.prompts.whenTold = [&] { values.push_back(Find<QProgressBar>("ProgressBar1").value()); };
    RunTool("mnu_Tools_ExtractFGPN", Gpf(5) + Gpf(6));
    std::filesystem::remove_all(out);
    RunTool("mnu_Tools_FindGIF", std::string(3'000'000, 'x'));
    ASSERT_EQ(values.size(), 2U);
    EXPECT_EQ(values[0], 100);
    EXPECT_EQ(values[1], 100);
}

/// "Change PNG" over a flash that holds a PNG file of 900 bytes and more at 0x1C0000.
class Form1ChangePngTest : public Form1ToolsTest {
  protected:
    void ShowFlash() {
        FlashBuilder flash = FourIcons();
        Open(flash.Put(0x1C0000, Png(samples::DrawPhoto(16, 16, 1))));
        Show();
    }

    void ChangeBy(const std::filesystem::path& path) {
        scripted.prompts.Choose(path);
        Trigger("mnu_Fullflash_Change_PNG");
    }

    void ExpectSavePatch(bool isEnabled) const {
        for (const char* name : {"mnu_Fullflash_SavePatch", "mnu_PopupPictures_SavePatch"})
            EXPECT_EQ(IsEnabled(name), isEnabled) << name;
    }
};

TEST_F(Form1ChangePngTest, EnablesSavePatchWhichTakesTheSectionIn) {
    ShowFlash();
    ExpectSavePatch(false);
    ChangeBy(WriteFile(temp / "001C0000.png", Png(samples::DrawIcon(5, 5, 2))));
    ASSERT_EQ(scripted.prompts.choices.size(), 1U);
    EXPECT_EQ(scripted.prompts.choices[0].title, "PlSel Files 4open");
    EXPECT_EQ(scripted.prompts.choices[0].filters,
              (std::vector<FileFilter>{{"Portable Network Graphic files", {"*.png"}}}));
    EXPECT_TRUE(scripted.prompts.notices.empty());
    ExpectSavePatch(true);
    scripted.prompts.Choose(temp / "new.vkp");
    Trigger("mnu_PopupPictures_SavePatch");
    EXPECT_NE(ReadText(temp / "new.vkp").find("; ##### PNG Picture 001C0000 #####\r\n001C0000: 89504E47"),
              std::string::npos);
    ExpectBox("", "Succes");
    ExpectSavePatch(false);
    EXPECT_FALSE(State().pngPatchPending);
}

TEST_F(Form1ChangePngTest, CancelLeavesEverythingAsItWas) {
    ShowFlash();
    ChangeBy({});
    EXPECT_TRUE(scripted.prompts.notices.empty());
    ExpectSavePatch(false);
}

TEST_F(Form1ChangePngTest, ARefusalIsOneBoxAndSavePatchStaysDisabled) {
    ShowFlash();
    ChangeBy(temp / "001C0000.png");
    ExpectBox("", "fnExi!");
    scripted.prompts.notices.clear();
    ChangeBy(WriteFile(temp / "1C0000.png", Png(samples::DrawPhoto(60, 60, 2))));
    ExpectBox("", "Too large size!");
    ExpectSavePatch(false);
}

TEST_F(Form1ChangePngTest, IsOutOfReachWithoutAFlash) {
    Show();
    EXPECT_FALSE(IsEnabled("mnu_FullFlash"));
}

TEST_F(Form1ChangePngTest, ClosingTheFlashDropsWhatIsPending) {
    ShowFlash();
    ChangeBy(WriteFile(temp / "001C0000.png", Png(samples::DrawIcon(5, 5, 2))));
    ASSERT_TRUE(State().pngPatchPending);
    Trigger("mnu_FileClose");
    EXPECT_FALSE(State().pngPatchPending);
    EXPECT_TRUE(ListNames(State().workFiles.folder).empty());
    ExpectSavePatch(false);
}

}  // namespace
}  // namespace pictavo::tests
