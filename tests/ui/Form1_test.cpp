#include "ui/Form1.h"

#include <QApplication>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QTimer>
#include <set>

#include "core/Version.h"
#include "support/PassedOnPrompts.h"
#include "support/WindowFixture.h"

namespace pictavo::tests {
namespace {

class Form1Test : public WindowFixture {
  protected:
    /// As a desktop does it: nothing is dropped that was not let in.
    void Drop(const std::vector<std::filesystem::path>& paths) {
        QMimeData data;
        QList<QUrl> urls;
        for (const auto& path : paths)
            urls.append(QUrl::fromLocalFile(QString::fromStdString(path.string())));
        data.setUrls(urls);
        QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(form.get(), &enter);
        QDropEvent drop({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(form.get(), &drop);
    }

    /// A flash over whose pictures a command takes its time.
    static FlashBuilder ManyPictures() {
        FlashBuilder flash(FlashKind::NewSGold);
        flash.Size(16U << 20);
        for (int i = 0; i < 2000; ++i) flash.AddPicture(60, 60, 0x05, Bytes(3600, 0xE0));
        return flash;
    }
};

const std::vector<const char*> kEntries = {"mnu_File",
                                           "mnu_FileOpen",
                                           "mnu_File_MRU1",
                                           "mnu_File_MRU2",
                                           "mnu_File_MRU3",
                                           "mnu_FileClose",
                                           "mnu_FileExit",
                                           "mnu_FullFlash",
                                           "mnu_Fullflash_SavePatch",
                                           "mnu_Fullflash_BuckUpPIT",
                                           "mnu_Fullflash_RebuildPIT",
                                           "mnu_View",
                                           "mnu_View_R",
                                           "mnu_View_G",
                                           "mnu_View_B",
                                           "mnu_View_Alpha",
                                           "mnu_View_X1",
                                           "mnu_View_X2",
                                           "mnu_View_X3",
                                           "mnu_View_X4",
                                           "mnu_Settings",
                                           "mnu_Help",
                                           "mnu_Help_ReadMe",
                                           "mnu_Help_About",
                                           "mnu_PopupPictures",
                                           "mnu_PopupPictures_Load",
                                           "mnu_PopupPictures_Loads",
                                           "mnu_PopupPictures_SaveAsGPF",
                                           "mnu_PopupPictures_SaveAsGPFs",
                                           "mnu_PopupPictures_SaveAsBMP",
                                           "mnu_PopupPictures_SaveAsBMPs",
                                           "mnu_PopupPictures_SaveAsPNG",
                                           "mnu_PopupPictures_SavePatch",
                                           "mnu_PopupPic",
                                           "mnu_PopupPic_SaveAsGPF",
                                           "mnu_PopupPic_SaveAsBMP",
                                           "mnu_PopupPic_SaveAsPNG",
                                           "mnu_PopupPic_SaveChannels",
                                           "mnu_PopupPic_LoadChannels"};

TEST_F(Form1Test, EveryEntryAndControlBearsItsName) {
    Show();
    EXPECT_EQ(form->objectName(), "Form1");
    for (const char* name : kEntries) EXPECT_NE(FindEntry(*form, name), nullptr) << name;
    for (const char* menu : {"mnu_PopupPictures_Load", "mnu_PopupPictures_Loads",
                             "mnu_PopupPictures_SaveAsGPF", "mnu_PopupPic_SaveAsGPF"})
        for (const char* depth : {"_1bit", "_8bit", "_16bit", "_24bit"})
            EXPECT_NE(FindEntry(*form, QString(menu) + depth), nullptr) << menu << depth;
    for (const char* name : {"ListView1", "TabStrip1", "ProgressBar1", "Picture1", "PICframe", "FFinfo",
                             "FFinfol", "TransCheck"})
        EXPECT_NE(form->findChild<QWidget*>(name), nullptr) << name;
}

TEST_F(Form1Test, WithoutALanguageFileTheCaptionsAreTheDesignedOnes) {
    Show();
    const std::vector<std::pair<const char*, const char*>> captions = {
        {"mnu_File", "File"},
        {"mnu_FileOpen", "Open"},
        {"mnu_FileClose", "Close"},
        {"mnu_FileExit", "Exit"},
        {"mnu_FullFlash", "FullFlash"},
        {"mnu_Fullflash_SavePatch", "Save Patch"},
        {"mnu_Fullflash_BuckUpPIT", "BuckUp PIT"},
        {"mnu_Fullflash_RebuildPIT", "Rebuild PIT"},
        {"mnu_View", "View"},
        {"mnu_View_R", "R"},
        {"mnu_View_G", "G"},
        {"mnu_View_B", "B"},
        {"mnu_View_Alpha", "Alpha"},
        {"mnu_View_X1", "X1"},
        {"mnu_View_X2", "X2"},
        {"mnu_View_X3", "X3"},
        {"mnu_View_X4", "X4"},
        {"mnu_Settings", "Settings"},
        {"mnu_Help", "Help"},
        {"mnu_Help_ReadMe", "ReadMe"},
        {"mnu_Help_About", "About"},
        {"mnu_PopupPictures_Load", "Load picture"},
        {"mnu_PopupPictures_Loads", "Load pictures"},
        {"mnu_PopupPictures_SaveAsGPF", "Save as GPF"},
        {"mnu_PopupPictures_SaveAsGPFs", "Save as GPFs"},
        {"mnu_PopupPictures_SaveAsBMP", "Save as BMP"},
        {"mnu_PopupPictures_SaveAsBMPs", "Save as BMPs"},
        {"mnu_PopupPictures_SaveAsPNG", "Save as PNG"},
        {"mnu_PopupPictures_SavePatch", "Save Patch"},
        {"mnu_PopupPic_SaveAsGPF", "Save as GPF"},
        {"mnu_PopupPic_SaveAsBMP", "Save as BMP"},
        {"mnu_PopupPic_SaveAsPNG", "Save as PNG"},
        {"mnu_PopupPic_SaveChannels", "Save channels"},
        {"mnu_PopupPic_LoadChannels", "Load channels"}};
    for (const auto& [name, caption] : captions) EXPECT_EQ(CaptionOf(name), caption) << name;
    for (const char* menu : {"mnu_PopupPictures_Load", "mnu_PopupPictures_Loads",
                             "mnu_PopupPictures_SaveAsGPF", "mnu_PopupPic_SaveAsGPF"})
        for (const int bits : {1, 8, 16, 24})
            EXPECT_EQ(CaptionOf(QString("%1_%2bit").arg(menu).arg(bits)), std::to_string(bits) + " bit");
    EXPECT_EQ(Find<QGroupBox>("FFinfo").title(), "Fullflash info");
    EXPECT_EQ(Find<QCheckBox>("TransCheck").text(), "transparency");
    EXPECT_EQ(Find<QTabWidget>("TabStrip1").tabText(0), "Pictures");
}

TEST_F(Form1Test, ALanguageFileNamesTheControlsAndWhatItLacksStays) {
    WriteLanguage(
        "str_all=alle\r\ncap_mnFileR=Datei\r\ncap_mnSBMP=Als BMP\r\ncap_FFinfo=Telefon\r\n"
        "cap_TrCh=Durchsichtig\r\ncap_tStr1tab1=Bilder\r\ncap_mnSett=Einstellungen\r\n");
    Show();
    form->Start({});
    EXPECT_EQ(CaptionOf("mnu_File"), "Datei");
    EXPECT_EQ(CaptionOf("mnu_PopupPic_SaveAsBMP"), "Als BMP");
    EXPECT_EQ(CaptionOf("mnu_PopupPictures_SaveAsBMPs"), "Als BMP (alle)");
    EXPECT_EQ(CaptionOf("mnu_Settings"), "Einstellungen");
    EXPECT_EQ(Find<QGroupBox>("FFinfo").title(), "Telefon");
    EXPECT_EQ(PlainCaption(Find<QCheckBox>("TransCheck").text()), "Durchsichtig");
    EXPECT_EQ(Find<QTabWidget>("TabStrip1").tabText(0), "Bilder");
    EXPECT_EQ(CaptionOf("mnu_FileOpen"), "Open");
}

TEST_F(Form1Test, ACaptionShowsItsAmpersand) {
    WriteLanguage("cap_mnFileOp=Open & look\r\n");
    Show();
    form->Start({});
    EXPECT_EQ(CaptionOf("mnu_FileOpen"), "Open & look");
}

TEST_F(Form1Test, NoTwoEntriesOfAMenuShareAMnemonic) {
    Show();
    form->Start({});
    std::size_t seen = 0;
    for (const QMenu* menu : form->findChildren<QMenu*>()) {
        std::set<QChar> letters;
        for (const QAction* entry : menu->actions()) {
            const QString text = QString(entry->text()).remove("&&");
            const auto at = text.indexOf('&');
            if (at < 0) continue;
            EXPECT_TRUE(letters.insert(text[at + 1].toLower()).second) << text.toStdString();
            ++seen;
        }
    }
    EXPECT_GT(seen, 20U);
}

TEST_F(Form1Test, TheCheckBoxHasALetterThatTheMenuBarHasNot) {
    Show();
    for (const char* caption : {"transparency", "Файл"}) {
        WriteLanguage(std::string("cap_mnFileR=Файл\r\ncap_TrCh=") + caption + "\r\n");
        form->Start({});
        std::set<QChar> letters;
        for (const QAction* entry : form->menuBar()->actions())
            letters.insert(entry->text()[entry->text().indexOf('&') + 1].toLower());
        const QString text = Find<QCheckBox>("TransCheck").text();
        ASSERT_TRUE(text.contains('&'));
        EXPECT_FALSE(letters.contains(text[text.indexOf('&') + 1].toLower())) << text.toStdString();
    }
}

TEST_F(Form1Test, TheShortcutsAreTheUsualOnes) {
    Show();
    EXPECT_EQ(Entry("mnu_FileOpen").shortcut(), QKeySequence("Ctrl+O"));
    EXPECT_EQ(Entry("mnu_Fullflash_SavePatch").shortcut(), QKeySequence("Ctrl+S"));
    EXPECT_EQ(Entry("mnu_Help_ReadMe").shortcut(), QKeySequence("F1"));
    for (int factor = 1; factor <= 4; ++factor)
        EXPECT_EQ(Entry(QString("mnu_View_X%1").arg(factor)).shortcut(),
                  QKeySequence(QString("Ctrl+%1").arg(factor)));
}

TEST_F(Form1Test, WithoutAFlashWhatNeedsOneIsDisabled) {
    Show();
    for (const char* name :
         {"mnu_FileClose", "mnu_FullFlash", "mnu_Fullflash_SavePatch", "mnu_PopupPictures_SavePatch",
          "mnu_PopupPic_SaveAsBMP", "mnu_PopupPictures_Load", "mnu_PopupPictures_SaveAsBMPs"})
        EXPECT_FALSE(IsEnabled(name)) << name;
    for (const char* name : {"mnu_FileOpen", "mnu_FileExit", "mnu_Settings", "mnu_Help_About", "mnu_View_X2"})
        EXPECT_TRUE(IsEnabled(name)) << name;
}

TEST_F(Form1Test, OpeningEnablesCloseAndFullFlashAndShowsTheFirstPicture) {
    Open(FourIcons());
    Show();
    scripted.prompts.Choose(flashPath);
    Trigger("mnu_FileOpen");
    EXPECT_TRUE(IsEnabled("mnu_FileClose"));
    EXPECT_TRUE(IsEnabled("mnu_FullFlash"));
    EXPECT_FALSE(IsEnabled("mnu_Fullflash_SavePatch"));
    EXPECT_EQ(List().model()->rowCount(), 4);
    EXPECT_EQ(List().currentIndex().row(), 0);
    EXPECT_EQ(FrameCaption(), "0000 :: 16 x 16 :: 8bit :: uncompressed :: 256 bytes");
    EXPECT_TRUE(Find<QLabel>("FFinfol").text().contains(": New-SGold\n"));
    EXPECT_EQ(Find<QProgressBar>("ProgressBar1").value(), 100);
    EXPECT_TRUE(form->windowTitle().startsWith("flash.bin"));
}

TEST_F(Form1Test, ClosingEmptiesTheListTheInformationAndTheMenus) {
    ShowFourIcons();
    Trigger("mnu_FileClose");
    EXPECT_EQ(Find<QLabel>("FFinfol").text(), "");
    EXPECT_EQ(List().model()->rowCount(), 0);
    EXPECT_FALSE(IsEnabled("mnu_FileClose"));
    EXPECT_FALSE(IsEnabled("mnu_FullFlash"));
    EXPECT_EQ(State().flash.FreeSearchOffset, 262144U);
}

TEST_F(Form1Test, ClosingEmptiesTheView) {
    ShowFourIcons();
    Select(0);
    ASSERT_NE(FrameCaption(), "");
    Trigger("mnu_FileClose");
    EXPECT_EQ(FrameCaption(), "");
    EXPECT_EQ(Painted().pixelColor(3, 3), QColor(Qt::white));
    EXPECT_FALSE(IsEnabled("mnu_PopupPic_SaveAsBMP"));
}

TEST_F(Form1Test, AFlashWithoutPicturesEmptiesTheView) {
    ShowFourIcons();
    Select(0);
    ASSERT_NE(FrameCaption(), "");
    Drop({WriteFile(temp / "empty.bin", std::string(5000, 'x'))});
    EXPECT_EQ(List().model()->rowCount(), 0);
    EXPECT_EQ(FrameCaption(), "");
}

TEST_F(Form1Test, AMissingFileChosenIsToldAndNothingChanges) {
    ShowFourIcons();
    scripted.prompts.Choose(temp / "missing.bin");
    Trigger("mnu_FileOpen");
    EXPECT_EQ(scripted.prompts.notices.size(), 1U);
    EXPECT_EQ(List().model()->rowCount(), 4);
}

TEST_F(Form1Test, RecentFilesAreShownByTheirPathsAndOpenAgain) {
    Open(FourIcons());
    Show();
    scripted.prompts.Choose(flashPath);
    Trigger("mnu_FileOpen");
    Trigger("mnu_FileClose");
    EXPECT_EQ(CaptionOf("mnu_File_MRU1"), flashPath.string());
    EXPECT_FALSE(Entry("mnu_File_MRU2").isVisible());
    Trigger("mnu_File_MRU1");
    EXPECT_EQ(List().model()->rowCount(), 4);
}

TEST_F(Form1Test, ARecentFileThatIsGoneDoesNothingAndStays) {
    session.settings.MRU[0] = (temp / "gone.bin").string();
    Show();
    Trigger("mnu_File_MRU1");
    EXPECT_TRUE(scripted.prompts.notices.empty());
    EXPECT_TRUE(Entry("mnu_File_MRU1").isVisible());
}

TEST_F(Form1Test, ArrowKeysShowEachPictureInTurn) {
    ShowFourIcons();
    Select(0);
    for (const char* caption :
         {"0001 :: 16 x 16 :: 8bit :: compressed", "0002 :: 16 x 16 :: 16bit :: compressed"}) {
        QTest::keyClick(&List(), Qt::Key_Down);
        EXPECT_TRUE(FrameCaption().starts_with(caption)) << FrameCaption();
    }
    QTest::keyClick(&List(), Qt::Key_Up);
    EXPECT_TRUE(FrameCaption().starts_with("0001"));
}

TEST_F(Form1Test, APictureThatCanNotBeShownIsToldInTheFrameAndInNoBox) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.AddPicture(250, 2, 0x05, Bytes(500, 0xE0));
    Open(flash);
    Show();
    Select(0);
    EXPECT_EQ(FrameCaption(), "0000 :: 250 x 2 :: LarPic!");
    EXPECT_TRUE(scripted.prompts.notices.empty());
    EXPECT_FALSE(IsEnabled("mnu_PopupPic_SaveAsBMP"));
    EXPECT_EQ(Painted().pixelColor(100, 100), QColor(Qt::white));
}

TEST_F(Form1Test, ATypeOfNoBitDepthShownFirstIsToldInABox) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.AddPicture(1, 1, 0x02, {0x1F});
    Open(flash);
    Show();
    Select(0);
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{" 0bit"});
}

TEST_F(Form1Test, TheListsPopupNeedsARow) {
    Show();
    QTest::mouseClick(List().viewport(), Qt::RightButton);
    EXPECT_FALSE(Find<QMenu>("mnu_PopupPictures").isVisible());
}

TEST_F(Form1Test, ARightClickOnARowShowsTheListsPopup) {
    ShowFourIcons();
    const QRect row = List().visualRect(List().model()->index(2, 0));
    QTest::mouseClick(List().viewport(), Qt::RightButton, {}, row.center());
    EXPECT_TRUE(Find<QMenu>("mnu_PopupPictures").isVisible());
    EXPECT_EQ(List().currentIndex().row(), 2);
    Find<QMenu>("mnu_PopupPictures").close();
}

TEST_F(Form1Test, ThePicturesPopupNeedsACaption) {
    ShowFourIcons();
    auto& picture = Find<PictureView>("Picture1");
    QTest::mouseClick(&picture, Qt::RightButton);
    EXPECT_FALSE(Find<QMenu>("mnu_PopupPic").isVisible());
    Select(0);
    QTest::mouseClick(&picture, Qt::LeftButton);
    EXPECT_FALSE(Find<QMenu>("mnu_PopupPic").isVisible());
    QTest::mouseClick(&picture, Qt::RightButton);
    EXPECT_TRUE(Find<QMenu>("mnu_PopupPic").isVisible());
    Find<QMenu>("mnu_PopupPic").close();
}

TEST_F(Form1Test, OfTheMagnificationsOneIsChecked) {
    ShowFourIcons();
    EXPECT_TRUE(IsChecked("mnu_View_X1"));
    for (int picked = 4; picked >= 1; --picked) {
        Trigger(QString("mnu_View_X%1").arg(picked));
        for (int factor = 1; factor <= 4; ++factor)
            EXPECT_EQ(IsChecked(QString("mnu_View_X%1").arg(factor)), factor == picked);
    }
}

TEST_F(Form1Test, AColourTogglesAndUnchecksAlpha) {
    Show();
    Trigger("mnu_View_Alpha");
    Trigger("mnu_View_G");
    EXPECT_TRUE(IsChecked("mnu_View_G"));
    EXPECT_FALSE(IsChecked("mnu_View_R"));
    EXPECT_FALSE(IsChecked("mnu_View_Alpha"));
    Trigger("mnu_View_G");
    EXPECT_FALSE(IsChecked("mnu_View_G"));
}

TEST_F(Form1Test, AlphaTakesTheColoursWithItAndBringsThemBack) {
    Show();
    Trigger("mnu_View_Alpha");
    for (const char* name : {"mnu_View_R", "mnu_View_G", "mnu_View_B"}) EXPECT_FALSE(IsChecked(name)) << name;
    EXPECT_TRUE(IsChecked("mnu_View_Alpha"));
    Trigger("mnu_View_Alpha");
    for (const char* name : {"mnu_View_R", "mnu_View_G", "mnu_View_B"}) EXPECT_TRUE(IsChecked(name)) << name;
    EXPECT_FALSE(IsChecked("mnu_View_Alpha"));
}

TEST_F(Form1Test, EveryChangeOfTheViewRedrawsIt) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.AddPicture(2, 1, 0x05, {0xE0, 0xC0});
    Open(flash);
    Show();
    Select(0);
    const QImage plain = Painted();
    for (const char* name : {"mnu_View_R", "mnu_View_Alpha", "mnu_View_X3"}) {
        const QImage before = Painted();
        Trigger(name);
        EXPECT_NE(Painted(), before) << name;
    }
    Trigger("mnu_View_Alpha");
    Trigger("mnu_View_X1");
    EXPECT_EQ(Painted(), plain);
    Find<QCheckBox>("TransCheck").click();
    EXPECT_NE(Painted(), plain);
}

TEST_F(Form1Test, EachLoadEntryReplacesInItsDepth) {
    ShowFourIcons();
    const std::vector<std::pair<const char*, int>> types = {
        {"_1bit", 0x01}, {"_8bit", 0x05}, {"_16bit", 0x08}, {"_24bit", 0x0A}};
    for (const auto& [depth, type] : types) {
        Select(1);
        scripted.prompts.Choose(Bitmap("new.bmp"));
        scripted.prompts.Expect(Asked::Compress, false);
        Trigger(QString("mnu_PopupPictures_Load") + depth);
        const auto header = ReadGpfHeader(MemorySource(ReadFile(State().workFiles.Replacement(1))));
        ASSERT_TRUE(header);
        EXPECT_EQ(header->type, type);
    }
}

TEST_F(Form1Test, EachLoadsEntryReplacesFromAFolderInItsDepth) {
    ShowFourIcons();
    std::filesystem::create_directory(temp / "new");
    Bitmap("new/2.bmp");
    const std::vector<std::pair<const char*, int>> types = {
        {"_1bit", 0x01}, {"_8bit", 0x85}, {"_16bit", 0x88}, {"_24bit", 0x8A}};
    for (const auto& [depth, type] : types) {
        scripted.prompts.Choose(temp / "new");
        scripted.prompts.Expect(Asked::Compress, type > 1);
        Trigger(QString("mnu_PopupPictures_Loads") + depth);
        const auto header = ReadGpfHeader(MemorySource(ReadFile(State().workFiles.Replacement(2))));
        ASSERT_TRUE(header);
        EXPECT_EQ(header->type, type);
    }
}

TEST_F(Form1Test, AReplacedRowIsBoldInEveryColumnAndThePatchCanBeSaved) {
    ShowFourIcons();
    Select(1);
    scripted.prompts.Choose(Bitmap("new.bmp"));
    scripted.prompts.Expect(Asked::Compress, true);
    Trigger("mnu_PopupPictures_Load_16bit");
    const QAbstractItemModel& model = *List().model();
    for (int column = 0; column < 7; ++column) {
        EXPECT_TRUE(model.index(1, column).data(Qt::FontRole).value<QFont>().bold()) << column;
        EXPECT_FALSE(model.index(0, column).data(Qt::FontRole).value<QFont>().bold()) << column;
    }
    EXPECT_TRUE(IsEnabled("mnu_Fullflash_SavePatch"));
    EXPECT_TRUE(IsEnabled("mnu_PopupPictures_SavePatch"));
    EXPECT_TRUE(FrameCaption().starts_with("1 :: 4 x 4 :: 16bit :: compressed")) << FrameCaption();
}

TEST_F(Form1Test, SavePatchAsksWithItsFilterAndNameAndDisablesItself) {
    ShowFourIcons();
    Select(1);
    scripted.prompts.Choose(Bitmap("new.bmp"));
    scripted.prompts.Expect(Asked::Compress, true);
    Trigger("mnu_PopupPictures_Load_16bit");
    scripted.prompts.Choose(temp / "mine");
    Trigger("mnu_Fullflash_SavePatch");
    const FileChoice& choice = scripted.prompts.choices.back();
    EXPECT_EQ(choice.suggestedName, "GP_");
    EXPECT_EQ(choice.defaultExtension, "vkp");
    EXPECT_TRUE(std::filesystem::exists(temp / "mine.vkp"));
    EXPECT_EQ(scripted.prompts.notices.back().text, "Succes");
    EXPECT_FALSE(IsEnabled("mnu_Fullflash_SavePatch"));
    EXPECT_TRUE(List().model()->index(1, 0).data(Qt::FontRole).value<QFont>().bold());
    ExpectFlashUntouched();
}

TEST_F(Form1Test, TheSaveEntriesRunTheirCommands) {
    ShowFourIcons();
    Select(0);
    for (const char* popup : {"mnu_PopupPic", "mnu_PopupPictures"}) {
        scripted.prompts.Choose(temp / (std::string(popup) + ".bmp"));
        Trigger(QString(popup) + "_SaveAsBMP");
        EXPECT_TRUE(std::filesystem::exists(temp / (std::string(popup) + ".bmp")));
        scripted.prompts.Expect(Asked::WriteGpf2, true);
        scripted.prompts.Choose(temp / (std::string(popup) + ".gpf2"));
        scripted.prompts.Expect(Asked::Compress, false);
        Trigger(QString(popup) + "_SaveAsGPF_8bit");
        EXPECT_TRUE(std::filesystem::exists(temp / (std::string(popup) + ".gpf2")));
        std::filesystem::remove(temp / "converter");
        Trigger(QString(popup) + "_SaveAsPNG");
        EXPECT_EQ(scripted.prompts.notices.back().title, "nConvert");
    }
}

TEST_F(Form1Test, TheCommandsOverAllPicturesWriteTheirFiles) {
    ShowFourIcons();
    scripted.prompts.Choose(temp / "bmps");
    Trigger("mnu_PopupPictures_SaveAsBMPs");
    scripted.prompts.Choose(temp / "gpfs");
    scripted.prompts.Expect(Asked::WriteGpf2, false);
    Trigger("mnu_PopupPictures_SaveAsGPFs");
    EXPECT_EQ(ListNames(temp / "bmps").size(), 4U);
    EXPECT_EQ(ListNames(temp / "gpfs").size(), 4U);
    EXPECT_EQ(Find<QProgressBar>("ProgressBar1").value(), 100);
}

TEST_F(Form1Test, AfterACommandOverAllRowsTheSelectedOneIsShownAndSaved) {
    ShowFourIcons();
    std::filesystem::create_directory(temp / "new");
    Bitmap("new/3.bmp");
    Select(1);
    const QImage painted = Painted();
    const std::string caption = FrameCaption();
    const auto runOverAll = [&](const char* entry, std::vector<std::pair<Asked, bool>> answers) {
        scripted.prompts.Choose(temp / "new");
        for (const auto& [about, answer] : answers) scripted.prompts.Expect(about, answer);
        Trigger(entry);
        EXPECT_EQ(FrameCaption(), caption) << entry;
        EXPECT_EQ(Painted(), painted) << entry;
        EXPECT_EQ(State().pictureNumber, 1) << entry;
    };
    runOverAll("mnu_PopupPictures_Loads_16bit", {{Asked::Compress, true}});
    runOverAll("mnu_PopupPictures_SaveAsGPFs", {{Asked::WriteGpf2, true}});
    runOverAll("mnu_PopupPictures_SaveAsBMPs", {{Asked::Overwrite, true}});
    scripted.prompts.Choose(temp / "selected.bmp");
    Trigger("mnu_PopupPictures_SaveAsBMP");
    EXPECT_EQ(ReadFile(temp / "selected.bmp"), ReadFile(temp / "new" / "1.bmp"));
}

TEST_F(Form1Test, ACommandOverAllRowsThatWasCancelledChangesNoView) {
    ShowFourIcons();
    Select(1);
    Drop({Bitmap("other.bmp")});
    const std::string caption = FrameCaption();
    ASSERT_TRUE(caption.starts_with("4 x 4")) << caption;
    scripted.prompts.Choose({});
    Trigger("mnu_PopupPictures_SaveAsBMPs");
    EXPECT_EQ(FrameCaption(), caption);
}

TEST_F(Form1Test, ARefusedFileMakesRoomForTheRowsOwnPicture) {
    ShowFourIcons();
    Select(1);
    const QImage painted = Painted();
    const std::string caption = FrameCaption();
    scripted.prompts.Choose(Bitmap("new.bmp"));
    scripted.prompts.Expect(Asked::Compress, true);
    Trigger("mnu_PopupPictures_Load_1bit");
    EXPECT_EQ(FrameCaption(), caption);
    EXPECT_EQ(Painted(), painted);
}

TEST_F(Form1Test, ThePitEntriesRunTheirCommands) {
    ShowFourIcons();
    scripted.prompts.Choose(temp / "pit");
    Trigger("mnu_Fullflash_BuckUpPIT");
    EXPECT_EQ(ListNames(temp / "pit").size(), 2U);
    scripted.prompts.Choose({});
    Trigger("mnu_Fullflash_RebuildPIT");
    EXPECT_EQ(scripted.prompts.folderTitles.back(), "PlSel cFold 4open");
}

TEST_F(Form1Test, ReadMeIsShownAndAboutTellsWithTheMenusCaption) {
    WriteLanguage("cap_mnHAbout=Wer\r\nstr_tnx=Danke\r\n");
    Show();
    form->Start({});
    Trigger("mnu_Help_ReadMe");
    EXPECT_EQ(readMeShown, 1);
    Trigger("mnu_Help_About");
    EXPECT_EQ(scripted.prompts.notices.back().title, "Wer");
    EXPECT_NE(scripted.prompts.notices.back().text.find("\r\rDanke:\r"), std::string::npos);
}

TEST_F(Form1Test, WithoutALanguageTheThanksLineIsAColon) {
    Show();
    Trigger("mnu_Help_About");
    EXPECT_NE(scripted.prompts.notices.back().text.find("\r\r:\r"), std::string::npos);
    EXPECT_TRUE(scripted.prompts.notices.back().text.starts_with("Pictavo v1.3"));
}

TEST_F(Form1Test, ExitClosesTheWindow) {
    Show();
    Trigger("mnu_FileExit");
    EXPECT_FALSE(form->isVisible());
}

TEST_F(Form1Test, TheFilesOfTheCommandLineAreOpenedAtTheStart) {
    Open(FourIcons());
    Show();
    form->Start({flashPath.string()});
    EXPECT_EQ(List().model()->rowCount(), 4);
    EXPECT_TRUE(FrameCaption().starts_with("0000"));
}

TEST_F(Form1Test, AFileDroppedOpensAsFromTheDialog) {
    Open(FourIcons());
    CloseFullflash(session);
    std::filesystem::rename(flashPath, temp / "FLASH.BIN");
    Show();
    Drop({temp / "FLASH.BIN"});
    EXPECT_EQ(List().model()->rowCount(), 4);
    EXPECT_TRUE(FrameCaption().starts_with("0000"));
}

TEST_F(Form1Test, OfFilesDroppedNoneIsOpenedOnceTheWindowIsClosing) {
    const Bytes png = samples::MakePng(samples::DrawIcon(2, 2, 1), samples::PngColour::Rgb);
    Open(FourIcons());
    CloseFullflash(session);
    Show();
    scripted.processes.effect = [this](const FakeProcesses::Call&) { form->close(); };
    Drop({WriteFile(temp / "a.png", png), flashPath});
    EXPECT_EQ(scripted.processes.calls.size(), 1U);
    EXPECT_FALSE(form->isVisible());
    EXPECT_TRUE(State().rows.empty());
    EXPECT_TRUE(scripted.prompts.notices.empty());
}

TEST_F(Form1Test, EscStopsACommandOverAllPictures) {
    Open(ManyPictures());
    Show();
    scripted.prompts.Choose(temp / "out");
    QTimer::singleShot(0, form.get(), [this] { QTest::keyClick(&List(), Qt::Key_Escape); });
    Trigger("mnu_PopupPictures_SaveAsBMPs");
    EXPECT_GT(ListNames(temp / "out").size(), 0U);
    EXPECT_LT(ListNames(temp / "out").size(), 2000U);
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"stopped before the end"});
    EXPECT_TRUE(Line().starts_with("stopped before the end; ")) << Line();
    EXPECT_LT(Find<QProgressBar>("ProgressBar1").value(), 100);
}

/// Answers questions by a box of its own, which a key of the test's closes, and the rest by the script.
class BoxedQuestions final : public PassedOnPrompts {
  public:
    BoxedQuestions(Prompts& scripted, Qt::Key key) : PassedOnPrompts(scripted), key_(key) {}

    bool Confirm(const Question&) override {
        ++asked;
        QMessageBox box(QMessageBox::Question, "", "", QMessageBox::Ok | QMessageBox::Cancel);
        QTimer::singleShot(0, &box, [this, &box] {
            box.button(QMessageBox::Cancel)->setFocus();
            QTest::keyClick(box.button(QMessageBox::Cancel), key_);
        });
        return box.exec() == QMessageBox::Ok;
    }

    int asked = 0;

  private:
    Qt::Key key_;
};

TEST_F(Form1Test, EscInAQuestionStopsACommandOverAllPicturesAndCancelDoesNot) {
    for (const auto& [key, asked] : {std::pair(Qt::Key_Escape, 1), {Qt::Key_Space, 4}}) {
        Open(FourIcons());
        std::filesystem::create_directory(temp / "old");
        for (const char* name : {"0.bmp", "1.bmp", "2.bmp", "3.bmp"})
            WriteFile(temp / "old" / name, std::string("old"));
        BoxedQuestions questions(scripted.prompts, key);
        Form1 window(std::move(session), {questions, scripted.processes, scripted.pictures});
        window.show();
        scripted.prompts.Choose(temp / "old");
        FindEntry(window, "mnu_PopupPictures_SaveAsBMPs")->trigger();
        EXPECT_EQ(questions.asked, asked);
        EXPECT_EQ(window.findChild<TextLine*>("Line1")->Text().startsWith("stopped"), asked == 1);
        EXPECT_EQ(ReadText(temp / "old" / "0.bmp"), "old");
        session = {};
        session.workFiles.folder = temp / "work";
    }
}

TEST_F(Form1Test, EscInTheQuestionOfCompressionStopsLoadPictures) {
    Open(FourIcons());
    std::filesystem::create_directory(temp / "new");
    for (const char* name : {"new/0.bmp", "new/1.bmp"}) Bitmap(name);
    BoxedQuestions questions(scripted.prompts, Qt::Key_Escape);
    Form1 window(std::move(session), {questions, scripted.processes, scripted.pictures});
    window.show();
    scripted.prompts.Choose(temp / "new");
    FindEntry(window, "mnu_PopupPictures_Loads_16bit")->trigger();
    EXPECT_EQ(questions.asked, 1);
    EXPECT_FALSE(window.State().replaced.at(1));
}

TEST_F(Form1Test, WhileACommandRunsNothingElseStartsAndClosingWaits) {
    Open(ManyPictures());
    Show();
    Select(0);
    scripted.prompts.Choose(temp / "out");
    int meanwhile = 0;
    QTimer::singleShot(0, form.get(), [&] {
        ++meanwhile;
        Entry("mnu_FileClose").trigger();
        QTest::keyClick(form.get(), Qt::Key_O, Qt::ControlModifier);
        QTest::mouseClick(List().viewport(), Qt::RightButton, {}, {20, 40});
        form->close();
        EXPECT_TRUE(form->isVisible());
    });
    Trigger("mnu_PopupPictures_SaveAsBMPs");
    EXPECT_EQ(meanwhile, 1);
    EXPECT_EQ(State().rows.size(), 2000U);
    EXPECT_FALSE(Find<QMenu>("mnu_PopupPictures").isVisible());
    EXPECT_FALSE(form->isVisible());
    EXPECT_LT(ListNames(temp / "out").size(), 2000U);
    EXPECT_TRUE(scripted.prompts.notices.empty());
}

TEST_F(Form1Test, ClosingLeavesTheWorkFiles) {
    ShowFourIcons();
    Select(1);
    scripted.prompts.Choose(Bitmap("new.bmp"));
    scripted.prompts.Expect(Asked::Compress, true);
    Trigger("mnu_PopupPictures_Load_16bit");
    const auto workFile = State().workFiles.Replacement(1);
    form->close();
    form.reset();
    EXPECT_TRUE(std::filesystem::exists(workFile));
}

TEST_F(Form1Test, TheSettingsTickTransparency) {
    WriteFile(temp / "Pictavo.ini", std::string("Transparency=true\r\n"));
    Show();
    EXPECT_FALSE(Find<QCheckBox>("TransCheck").isChecked());
    form->Start({});
    EXPECT_TRUE(Find<QCheckBox>("TransCheck").isChecked());
}

TEST_F(Form1Test, OfTheRecentFilesTheSettingsMayNameTheSecondAlone) {
    WriteFile(temp / "Pictavo.ini", std::string("MRU2=/b.bin\r\n"));
    Show();
    form->Start({});
    EXPECT_FALSE(Entry("mnu_File_MRU1").isVisible());
    EXPECT_TRUE(Entry("mnu_File_MRU2").isVisible());
    EXPECT_FALSE(Entry("mnu_File_MRU3").isVisible());
    EXPECT_EQ(CaptionOf("mnu_File_MRU2"), "/b.bin");
}

TEST_F(Form1Test, ControlsHaveNamesForScreenReadersInTheLanguageThatHasOne) {
    Show();
    for (const char* name : {"ListView1", "Picture1", "ProgressBar1"})
        EXPECT_FALSE(Find<QWidget>(name).accessibleName().isEmpty()) << name;
    WriteLanguage("cap_tStr1tab1=Bilder\r\n");
    form->Start({});
    EXPECT_EQ(List().accessibleName(), "Bilder");
}

// ------------------------------------------------------------------------------------------------- the line

TEST_F(Form1Test, TheLineTellsHowACommandEnded) {
    ShowFourIcons();
    Select(0);
    EXPECT_EQ(Line(), "");
    scripted.prompts.Choose(temp / "a.bmp");
    Trigger("mnu_PopupPic_SaveAsBMP");
    EXPECT_EQ(Line(), "Succes");
    scripted.prompts.Choose({});
    Trigger("mnu_PopupPic_SaveAsBMP");
    EXPECT_EQ(Line(), "");
    scripted.prompts.Choose(temp / "no folder" / "a.bmp");
    Trigger("mnu_PopupPic_SaveAsBMP");
    EXPECT_TRUE(Line().starts_with((temp / "no folder" / "a.bmp").string() + " ")) << Line();
    EXPECT_EQ(Line().find('\n'), std::string::npos);
    Select(1);
    EXPECT_EQ(Line(), "");
}

TEST_F(Form1Test, TheLineTellsWhyTheFirstPictureIsNotShown) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.AddPicture(250, 2, 0x05, Bytes(500, 0xE0));
    Open(flash);
    CloseFullflash(session);
    Show();
    scripted.prompts.Choose(flashPath);
    Trigger("mnu_FileOpen");
    EXPECT_TRUE(Line().starts_with("0000: LarPic!: " + flashPath.string() + ": ")) << Line();
}

TEST_F(Form1Test, TheLineTellsThatARecentFileCouldNotBeStored) {
    session.places.settingsFile = temp / "nowhere" / "Pictavo.ini";
    Open(FourIcons());
    CloseFullflash(session);
    Show();
    scripted.prompts.Choose(flashPath);
    Trigger("mnu_FileOpen");
    EXPECT_EQ(List().currentIndex().row(), 0);
    EXPECT_TRUE(Line().starts_with((temp / "nowhere" / "Pictavo.ini").string())) << Line();
    EXPECT_TRUE(scripted.prompts.notices.empty());
}

TEST_F(Form1Test, TheLineTellsWhatWasOpenedAndHowToGoOn) {
    Open(FourIcons());
    Show();
    Drop({flashPath});
    EXPECT_TRUE(Line().starts_with("4 pictures; ")) << Line();
    Drop({WriteFile(temp / "empty.bin", std::string(5000, 'x'))});
    EXPECT_TRUE(Line().ends_with("it holds no picture table")) << Line();
    Trigger("mnu_FileClose");
    EXPECT_EQ(Line(), "");
}

TEST_F(Form1Test, WhileACommandOverAllRowsRunsTheLineTellsThatEscStopsIt) {
    ShowFourIcons();
    scripted.prompts.Choose(temp / "out");
    std::string line;
    scripted.prompts.whenTold = [&] { line = Line(); };
    Trigger("mnu_PopupPictures_SaveAsBMPs");
    EXPECT_EQ(line, "Esc stops this command");
    EXPECT_EQ(Line(), "4 files written");
}

TEST_F(Form1Test, ALineOfACommandBeforeIsGoneWhenTheNextOneStarts) {
    ShowFourIcons();
    Select(0);
    scripted.prompts.Choose(temp / "a.bmp");
    Trigger("mnu_PopupPic_SaveAsBMP");
    ASSERT_EQ(Line(), "Succes");
    std::string line = "never told";
    scripted.prompts.whenTold = [&] { line = Line(); };
    Trigger("mnu_Help_About");
    EXPECT_EQ(line, "");
}

TEST_F(Form1Test, TheLineTellsHowManyPicturesAFolderHeld) {
    ShowFourIcons();
    std::filesystem::create_directory(temp / "new");
    scripted.prompts.Choose(temp / "new");
    Trigger("mnu_PopupPictures_Loads_16bit");
    EXPECT_TRUE(Line().starts_with("0 of 4 pictures loaded; ")) << Line();
    Bitmap("new/2.bmp");
    scripted.prompts.Choose(temp / "new");
    scripted.prompts.Expect(Asked::Compress, true);
    Trigger("mnu_PopupPictures_Loads_16bit");
    EXPECT_TRUE(Line().starts_with("1 of 4 pictures loaded")) << Line();
    scripted.prompts.Choose(temp / "mine.vkp");
    Trigger("mnu_Fullflash_SavePatch");
    EXPECT_EQ(Line(), (temp / "mine.vkp").string() + ": 1 picture");
}

TEST_F(Form1Test, WhatIsInNoPatchYetIsMarkedInTheTitleAndCounted) {
    ShowFourIcons();
    EXPECT_FALSE(form->isWindowModified());
    Select(1);
    scripted.prompts.Choose(Bitmap("new.bmp"));
    scripted.prompts.Expect(Asked::Compress, true);
    Trigger("mnu_PopupPictures_Load_16bit");
    EXPECT_TRUE(form->isWindowModified());
    EXPECT_EQ(form->windowTitle(), QString("flash.bin[*] - ") + kCaption);
    EXPECT_EQ(Line(), "1 replaced picture not in a patch yet");
    scripted.prompts.Choose(temp / "mine");
    Trigger("mnu_Fullflash_SavePatch");
    EXPECT_FALSE(form->isWindowModified());
}

TEST_F(Form1Test, ANameThatHoldsTheMarkIsShownWithIt) {
    Open(FourIcons(), "a[*].bin");
    Show();
    EXPECT_EQ(form->windowTitle(), QString("a[*][*].bin[*] - ") + kCaption);
}

TEST_F(Form1Test, TheWindowOpensNoLargerThanTheScreen) {
    Show();
    const QSize available = form->screen()->availableSize();
    ASSERT_LT(available.width(), 1060);
    EXPECT_EQ(form->size(), QSize(1060, 640).boundedTo(available));
}

TEST_F(Form1Test, WhatAWideWindowHasMoreIsThePicturesSide) {
    ShowFourIcons();
    QApplication::processEvents();
    const int list = List().width();
    const int box = Find<QFrame>("PICframe").width();
    form->resize(form->width() + 300, form->height());
    QApplication::processEvents();
    EXPECT_EQ(List().width(), list);
    EXPECT_EQ(Find<QFrame>("PICframe").width(), box + 300);
}

TEST_F(Form1Test, TheBarIsSeenOnlyWhileACommandIsAtWork) {
    Open(ManyPictures());  // which take longer than the bar waits
    Show();
    const auto& bar = Find<QProgressBar>("ProgressBar1");
    EXPECT_TRUE(bar.isHidden());
    bool wasSeen = false;
    scripted.prompts.whenTold = [&] { wasSeen = bar.isVisible(); };
    scripted.prompts.Choose(temp / "out");
    Trigger("mnu_PopupPictures_SaveAsBMPs");
    EXPECT_TRUE(wasSeen);
    EXPECT_TRUE(bar.isHidden());
}

TEST_F(Form1Test, AListWithoutRowsSaysHowToComeBySome) {
    Show();
    const QImage empty = List().viewport()->grab().toImage();
    const auto isPlain = [](const QImage& image) {
        QImage plain = image;
        plain.fill(image.pixel(0, 0));
        return plain == image;
    };
    EXPECT_FALSE(isPlain(empty));
    Open(FourIcons());
    Drop({flashPath});
    const int below = List().visualRect(List().model()->index(3, 0)).bottom() + 2;
    const QImage filled = List().viewport()->grab().toImage();
    EXPECT_TRUE(isPlain(filled.copy(0, below, filled.width(), filled.height() - below)));
}

TEST_F(Form1Test, TheLineTellsWhereTheReadMeStands) {
    Show();
    Trigger("mnu_Help_ReadMe");
    EXPECT_EQ(Line(), (temp / "ReadMe.txt").string() + " fnExi!");
    WriteFile(temp / "ReadMe.txt", std::string("x"));
    Trigger("mnu_Help_ReadMe");
    EXPECT_EQ(Line(), (temp / "ReadMe.txt").string());
}

TEST_F(Form1Test, AfterApplyTheLineTellsALanguageThatHasNoFileAndTheInformationIsRelabelled) {
    ShowFourIcons();
    WithDialog([this](QWidget& dialog) {
        EXPECT_EQ(Line(), "Test.lng was not found");
        WriteLanguage("str_mModel=Modell\r\n");
        dialog.findChild<QLineEdit*>("Text1")->setText("x");
        dialog.findChild<QPushButton*>("Command3")->click();
        EXPECT_EQ(Line(), "");
        EXPECT_TRUE(Find<QLabel>("FFinfol").text().startsWith("Modell: "));
        dialog.findChild<QLineEdit*>("Text2")->setText("None");
        dialog.findChild<QPushButton*>("Command3")->click();
        EXPECT_EQ(Line(), "None.lng was not found");
    });
    Trigger("mnu_Settings");
    EXPECT_EQ(Line(), "None.lng was not found");
}

TEST_F(Form1Test, TheLineTellsThatANameWasPassedOver) {
    Open(FourIcons());
    CloseFullflash(session);
    Show();
    scripted.prompts.Expect(Asked::ApplyToAll, false);
    form->Start({flashPath.string(), (temp / "a.txt").string()});
    EXPECT_TRUE(FrameCaption().starts_with("0000")) << FrameCaption();
    EXPECT_TRUE(Line().starts_with((temp / "a.txt").string())) << Line();
}

}  // namespace
}  // namespace pictavo::tests
