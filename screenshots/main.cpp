/// pictavo-screenshots FLASH FOLDER: draws the window on a fullflash, off-screen, and saves what it shows as
/// PNG files: the list with a picture, the list's popup menu, and the Settings dialog.

#include <QApplication>
#include <QDir>
#include <QMenu>
#include <QPainter>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>

#include "shell/Folders.h"
#include "shell/ProgramFolder.h"
#include "shell/QtPath.h"
#include "shell/QtPictureLoader.h"
#include "shell/Shell_.h"
#include "ui/Form1.h"
#include "ui/MenuParts.h"
#include "ui/QtPrompts.h"

namespace {

using namespace pictavo;

constexpr int kShownRow = 29;
constexpr QSize kSize(1060, 640);  // whatever the screen

class Screenshots {
  public:
    Screenshots(Form1& form, QString folder) : form_(form), folder_(std::move(folder)) {}

    bool Take() {
        ShowRow(kShownRow);
        form_.resize(kSize);
        Save(form_.grab(), "window");
        SavePopup("mnu_PopupPictures", "popup");
        QTimer::singleShot(0, &form_, [this] { SaveDialog("settings"); });
        Entry("mnu_Settings").trigger();
        return isGood_;
    }

  private:
    QAction& Entry(const QString& name) const { return *FindEntry(form_, name); }

    void ShowRow(int row) const {
        auto* list = form_.findChild<PictureList*>("ListView1");
        list->setCurrentIndex(list->model()->index(row, 0));
    }

    void SavePopup(const QString& name, const QString& file) {
        auto* menu = form_.findChild<QMenu*>(name);
        const auto* list = form_.findChild<PictureList*>("ListView1");
        const QPoint at = list->mapTo(&form_, list->visualRect(list->currentIndex()).center());
        menu->popup(form_.mapToGlobal(at));
        QPixmap window = form_.grab();
        QPainter(&window).drawPixmap(at, menu->grab());
        menu->close();
        Save(window, file);
    }

    void SaveDialog(const QString& file) {
        QWidget* dialog = QApplication::activeModalWidget();
        Save(dialog->grab(), file);
        dialog->close();
    }

    void Save(const QPixmap& pixmap, const QString& name) {
        isGood_ &= pixmap.save(folder_ + "/" + name + ".png");
    }

    Form1& form_;
    QString folder_;
    bool isGood_ = true;
};

Session MakeSession(const QTemporaryDir& temporary) {
    Session session;
    session.places.settingsFile = StdPath(temporary.filePath("Pictavo.ini"));
    session.places.languageFolders = DataFolders(ProgramFolder());
    session.settings.nConvert = "/opt/pictavo/pictavo-convert";
    session.settings.Language = "English";
    session.workFiles.folder = StdPath(temporary.path());
    return session;
}

}  // namespace

int main(int count, char** arguments) {
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, arguments);
    if (count != 3) {
        std::fputs("Usage: pictavo-screenshots FLASH FOLDER\n", stderr);
        return 2;
    }
    const QTemporaryDir temporary;
    QtPrompts prompts;
    ChildProcessRunner processes;
    QtPictureLoader pictures;
    Form1 form(MakeSession(temporary), {prompts, processes, pictures});
    form.show();
    form.Start({arguments[1]});
    QDir().mkpath(arguments[2]);
    if (Screenshots(form, arguments[2]).Take()) return 0;
    std::fprintf(stderr, "pictavo-screenshots: %s cannot be written\n", arguments[2]);
    return 1;
}
