#include "ui/QtPrompts.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "support/TempFolder.h"
#include "support/WidgetApplication.h"
#include "ui/TextLine.h"

namespace pictavo::tests {
namespace {

class QtPromptsTest : public ::testing::Test {
  protected:
    QtPromptsTest() {
        prompts.Attach(&window, [] { return SaveCommand::Png; });
    }
    ~QtPromptsTest() override { EXPECT_EQ(acted_, wanted_) << "a box or chooser did not come"; }

    /// Does this to the box or chooser that comes next.
    template <typename Dialog>
    void WithNext(const std::function<void(Dialog&)>& act) {
        ++wanted_;
        QTimer::singleShot(0, &window, [this, act] {
            ++acted_;
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            act(*dialog);
        });
    }

    bool Confirm(Asked about, const std::function<void(QMessageBox&)>& act) {
        WithNext<QMessageBox>(act);
        return prompts.Confirm({about, "A title", "<b>first</b>\rsecond?", {}});
    }

    TempFolder temp;
    QWidget window;
    QtPrompts prompts;

  private:
    int wanted_ = 0;
    int acted_ = 0;
};

TEST_F(QtPromptsTest, AQuestionShowsItsLinesAsPlainText) {
    const bool answer = Confirm(Asked::Compress, [](QMessageBox& box) {
        EXPECT_EQ(box.text(), "<b>first</b>\nsecond?");
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.windowTitle(), "A title");
        EXPECT_EQ(box.icon(), QMessageBox::Question);
        box.button(QMessageBox::Ok)->click();
    });
    EXPECT_TRUE(answer);
}

TEST_F(QtPromptsTest, CancelAndTheCloseButtonAreNo) {
    EXPECT_FALSE(
        Confirm(Asked::Compress, [](QMessageBox& box) { box.button(QMessageBox::Cancel)->click(); }));
    EXPECT_FALSE(Confirm(Asked::Compress, [](QMessageBox& box) { box.close(); }));
}

TEST_F(QtPromptsTest, ReturnDoesNotOverwriteButAnswersOkToTheRest) {
    for (const Asked about : {Asked::Overwrite, Asked::Compress, Asked::WriteGpf2, Asked::SaveWithAlpha,
                              Asked::ApplyToAll, Asked::RegisterTypes}) {
        QMessageBox::StandardButton expected =
            about == Asked::Overwrite ? QMessageBox::Cancel : QMessageBox::Ok;
        Confirm(about, [expected](QMessageBox& box) {
            EXPECT_EQ(box.defaultButton(), box.button(expected));
            box.close();
        });
    }
}

TEST_F(QtPromptsTest, ANoticeOfOneWordHasRoomForItsTitle) {
    int width = 0;
    WithNext<QMessageBox>([&width](QMessageBox& box) {
        width = box.width();
        box.close();
    });
    prompts.Tell({" 3", "OK"});
    EXPECT_GE(width, 240);
}

TEST_F(QtPromptsTest, ANoticeWithoutATitleBearsTheProgramsName) {
    WithNext<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), "Pictavo");
        EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
        EXPECT_EQ(box.icon(), QMessageBox::Information);
        box.close();
    });
    prompts.Tell({"", "done"});
}

TEST_F(QtPromptsTest, ASaveChooserNeverAsksAboutOverwritingItself) {
    WithNext<QFileDialog>([this](QFileDialog& dialog) {
        EXPECT_TRUE(dialog.testOption(QFileDialog::DontConfirmOverwrite));
        EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
        EXPECT_EQ(dialog.nameFilters(), QStringList{"Bitmap File (*.bmp)"});
        EXPECT_EQ(dialog.defaultSuffix(), "bmp");
        EXPECT_EQ(dialog.windowTitle(), "Select");
        dialog.findChild<QLineEdit*>("fileNameEdit")
            ->setText(QString::fromStdString((temp / "0007").string()));
        dialog.findChild<QLineEdit*>("fileNameEdit")->setFocus();
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    EXPECT_EQ(prompts.ChooseSave({"Select", {{"Bitmap File", {"*.bmp"}}}, "0007", "bmp"}), temp / "0007.bmp");
}

TEST_F(QtPromptsTest, SeveralPatternsAreToldApart) {
    WithNext<QFileDialog>([](QFileDialog& dialog) {
        EXPECT_EQ(dialog.nameFilters(),
                  (QStringList{"FullFlash files (*.bin)", "Graphic files (*.gpf *.bmp)"}));
        dialog.reject();
    });
    const auto chosen = prompts.ChooseOpen(
        {"Select", {{"FullFlash files", {"*.bin"}}, {"Graphic files", {"*.gpf", "*.bmp"}}}, "", ""});
    EXPECT_TRUE(chosen.empty());
}

TEST_F(QtPromptsTest, TheFolderUsedLastIsOfferedAgain) {
    WriteFile(temp / "a.bin", std::string("x"));
    WithNext<QFileDialog>([this](QFileDialog& dialog) {
        dialog.setDirectory(QString::fromStdString(temp.Path().string()));
        dialog.findChild<QLineEdit*>("fileNameEdit")->setText("a.bin");
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    const FileChoice choice{"Select", {{"All", {"*"}}}, "", ""};
    EXPECT_EQ(prompts.ChooseOpen(choice), temp / "a.bin");
    WithNext<QFileDialog>([this](QFileDialog& dialog) {
        EXPECT_EQ(dialog.directory().absolutePath().toStdString(), temp.Path().string());
        dialog.reject();
    });
    prompts.ChooseOpen(choice);
}

TEST_F(QtPromptsTest, OfAPathTypedWholeTheFilesFolderIsOfferedAgain) {
    std::filesystem::create_directory(temp / "typed");
    WriteFile(temp / "typed" / "a.bin", std::string("x"));
    WithNext<QFileDialog>([this](QFileDialog& dialog) {
        dialog.setDirectory(QString::fromStdString(temp.Path().string()));
        dialog.findChild<QLineEdit*>("fileNameEdit")
            ->setText(QString::fromStdString((temp / "typed" / "a.bin").string()));
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    const FileChoice choice{"Select", {{"All", {"*"}}}, "", ""};
    EXPECT_EQ(prompts.ChooseOpen(choice), temp / "typed" / "a.bin");
    WithNext<QFileDialog>([this](QFileDialog& dialog) {
        EXPECT_EQ(dialog.directory().absolutePath().toStdString(), (temp / "typed").string());
        dialog.reject();
    });
    prompts.ChooseOpen(choice);
}

TEST_F(QtPromptsTest, ACancelledFolderChooserGivesNoPath) {
    WithNext<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
    EXPECT_EQ(prompts.BrowseForFolder("Where to?"), std::filesystem::path());
}

TEST_F(QtPromptsTest, AFolderChooserShowsFoldersAloneAndGivesThePathWithoutASeparatorAtItsEnd) {
    std::filesystem::create_directory(temp / "a folder");
    WithNext<QFileDialog>([this](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Where to?");
        EXPECT_TRUE(dialog.testOption(QFileDialog::ShowDirsOnly));
        dialog.findChild<QLineEdit*>()->setText(QString::fromStdString((temp / "a folder").string() + "/"));
        static_cast<QDialog&>(dialog).accept();
    });
    EXPECT_EQ(prompts.BrowseForFolder("Where to?"), temp / "a folder");
}

TEST_F(QtPromptsTest, CancelIsCalledAsTheLanguageFileSays) {
    prompts.Attach(
        &window, [] { return SaveCommand::Png; }, [] { return QString("Anders"); });
    Confirm(Asked::Compress, [](QMessageBox& box) {
        EXPECT_EQ(box.button(QMessageBox::Cancel)->text(), "Anders");
        box.close();
    });
}

TEST_F(QtPromptsTest, ThePopupIsTheWindows) {
    EXPECT_EQ(prompts.ChooseSaveCommand(), SaveCommand::Png);
}

TEST(TextLineTest, ALongTextAsksForNoRoomAndIsWholeInTheToolTip) {
    TextLine line;
    const QSize before = line.sizeHint();
    line.SetText(QString(500, 'x'));
    EXPECT_EQ(line.sizeHint(), before);
    EXPECT_EQ(line.toolTip().size(), 500);
    EXPECT_EQ(line.accessibleName().size(), 500);
}

}  // namespace
}  // namespace pictavo::tests
