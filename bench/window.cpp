/// pictavo-bench-window: what pictavo-bench times of the window, each in a process of its own, on the
/// display that there is, else on the offscreen platform.
///   empty                 shows an empty main window of the same size, and ends when it is painted
///   open FLASH FOLDER     shows the window with the flash open, and ends when its first picture is painted
///   keys FLASH            prints the milliseconds from an arrow key to the painted picture, at X4, and
///                         those of painting a ready pixmap
///   bmps FLASH FOLDER     prints the milliseconds that "Save as BMPs" takes

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
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
#include "ui/ProgramStyle.h"

namespace {

using namespace pictavo;

constexpr QSize kSize(1060, 640);
constexpr int kKeys = 500;

/// Answers the folder chooser, and nothing else is asked.
class FolderPrompts final : public Prompts {
  public:
    std::filesystem::path folder;

    bool Confirm(const Question&) override { return true; }
    void Tell(const Notice&) override {}
    std::filesystem::path ChooseOpen(const FileChoice&) override { return {}; }
    std::filesystem::path ChooseSave(const FileChoice&) override { return {}; }
    std::filesystem::path BrowseForFolder(const std::string&) override { return folder; }
    std::optional<SaveCommand> ChooseSaveCommand() override { return std::nullopt; }
};

/// Ends the program when a widget has been painted, and what was asked for by then has come true.
class EndWhenPainted final : public QObject {
  public:
    EndWhenPainted(QWidget& widget, std::function<bool()> isReady) : isReady_(std::move(isReady)) {
        widget.installEventFilter(this);
    }

    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Paint && isReady_()) QTimer::singleShot(0, qApp, &QApplication::quit);
        return QObject::eventFilter(object, event);
    }

  private:
    std::function<bool()> isReady_;
};

class Window {
  public:
    /// Settings and work files lie in `folder`.
    explicit Window(const QString& folder) : form_(MakeSession(folder), {prompts, processes_, pictures_}) {}

    Form1& Form() { return form_; }
    PictureList& List() { return *form_.findChild<PictureList*>("ListView1"); }
    PictureView& View() { return *form_.findChild<PictureView*>("Picture1"); }
    void Trigger(const char* name) { FindEntry(form_, name)->trigger(); }

    void Open(const char* flash) {
        form_.show();
        form_.Start({flash});
    }

    FolderPrompts prompts;

  private:
    static Session MakeSession(const QString& folder) {
        Session session;
        session.places.settingsFile = StdPath(folder + "/Pictavo.ini");
        session.places.languageFolders = DataFolders(ProgramFolder());
        session.settings.Language = "English";
        session.workFiles.folder = StdPath(folder);
        return session;
    }

    ChildProcessRunner processes_;
    QtPictureLoader pictures_;
    Form1 form_;
};

int ShowEmpty() {
    QMainWindow window;
    window.resize(kSize);
    const EndWhenPainted end(window, [] { return true; });
    window.show();
    return QApplication::exec();
}

int ShowOpened(const char* flash, const char* folder) {
    Window window(folder);
    const EndWhenPainted end(window.View(), [&] { return window.Form().State().shown.isShown; });
    window.Form().show();
    QTimer::singleShot(0, &window.Form(), [&] { window.Form().Start({flash}); });
    return QApplication::exec();
}

double MillisecondsEach(int count, const std::function<void()>& work) {
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < count; ++i) work();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6 / count;
}

void PressDown(QWidget& widget) {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    QApplication::sendEvent(&widget, &press);
    QApplication::processEvents();
}

/// A label with a pixmap of the view's size, painted anew.
class PixmapBox final : public QWidget {
  public:
    PixmapBox() : pixmap_(kViewWidth, kViewHeight) {
        pixmap_.fill(Qt::red);
        setFixedSize(pixmap_.size());
    }

  protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).drawPixmap(0, 0, pixmap_); }

  private:
    QPixmap pixmap_;
};

int TimeKeys(const char* flash) {
    const QTemporaryDir temporary;
    Window window(temporary.path());
    window.Open(flash);
    window.Trigger("mnu_View_X4");
    QApplication::processEvents();
    const double key = MillisecondsEach(kKeys, [&] { PressDown(window.List()); });
    PixmapBox box;
    box.show();
    QApplication::processEvents();
    const double pixmap = MillisecondsEach(kKeys, [&] {
        box.update();
        QApplication::processEvents();
    });
    std::printf("%f %f\n", key, pixmap);
    return 0;
}

int TimeBmps(const char* flash, const char* folder) {
    const QTemporaryDir temporary;
    Window window(temporary.path());
    window.Open(flash);
    window.prompts.folder = folder;
    QApplication::processEvents();  // the window itself is painted before the command starts
    std::printf("%f\n", MillisecondsEach(1, [&] { window.Trigger("mnu_PopupPictures_SaveAsBMPs"); }));
    return 0;
}

int Run(const QStringList& words, char** arguments) {
    if (words == QStringList{"empty"}) return ShowEmpty();
    QApplication::setStyle(new ProgramStyle);
    if (words.size() == 3 && words[0] == "open") return ShowOpened(arguments[2], arguments[3]);
    if (words.size() == 2 && words[0] == "keys") return TimeKeys(arguments[2]);
    if (words.size() == 3 && words[0] == "bmps") return TimeBmps(arguments[2], arguments[3]);
    std::fputs("Usage: pictavo-bench-window empty | open FLASH FOLDER | keys FLASH | bmps FLASH FOLDER\n",
               stderr);
    return 2;
}

}  // namespace

int main(int count, char** arguments) {
    if (!qEnvironmentVariableIsSet("DISPLAY")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, arguments);
    return Run(QApplication::arguments().mid(1), arguments);
}
