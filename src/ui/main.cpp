/// Pictavo, the window. Arguments: the files to open.

#include <QApplication>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QTimer>
#include <iostream>

#include "core/ErrorText.h"
#include "core/FailedWrites.h"
#include "core/ProgramArguments.h"
#include "core/Version.h"
#include "shell/Folders.h"
#include "shell/ProgramFolder.h"
#include "shell/QtPath.h"
#include "shell/QtPictureLoader.h"
#include "shell/ReadMe.h"
#include "shell/Shell_.h"
#include "shell/SystemAssociations.h"
#include "shell/SystemStore.h"
#include "shell/TextLocale.h"
#include "shell/WorkFolder.h"
#include "ui/AppIcon.h"
#include "ui/Application.h"
#include "ui/Form1.h"
#include "ui/GivenNames.h"
#include "ui/ProgramInformation.h"
#include "ui/ProgramStyle.h"
#include "ui/QtPrompts.h"
#include "ui/QtTranslation.h"

namespace {

using namespace pictavo;

/// Where things lie, and the settings that hold without a file.
Session MakeSession(const std::filesystem::path& workFolder) {
    Session session;
    session.places.settingsFile = SettingsFile(ProgramFolder());
    session.places.languageFolders = DataFolders(ProgramFolder());
    session.places.codePage = IsLocaleCyrillic() ? CodePage::Windows1251 : CodePage::Windows1252;
    session.settings.nConvert = PathText(ConverterProgram(ProgramFolder()));
    session.settings.Language = "English";
    session.workFiles.folder = workFolder;
    return session;
}

int RunWindow(const std::filesystem::path& workFolder, const std::vector<std::string>& names) {
    QtPrompts prompts;
    ChildProcessRunner processes;
    QtPictureLoader pictures;
    const std::filesystem::path readMe = ReadMeFile(DataFolders(ProgramFolder()));
    const auto showReadMe = [&readMe] { ShowReadMe(readMe); };
    const auto store = MakeSystemStore(processes, AppIconPng);
    SystemAssociations associations(*store, prompts);
    const WindowServices services{prompts,          processes,  pictures, &associations,
                                  RunningProgram(), showReadMe, readMe};
    Form1 form(MakeSession(workFolder), services);
    prompts.Attach(
        &form, [&form] { return form.PickSaveCommand(); }, [&form] { return form.CancelCaption(); });
    form.show();
    QTimer::singleShot(0, &form, [&] { form.Start(names); });
    return QApplication::exec();
}

constexpr const char* kFolderAdvice =
    "\n\nReplaced pictures are kept there until their patch is saved. Let TMP name a folder that can be "
    "written, and start Pictavo again.";

int RefuseFolder(const Error& error) {
    const QString trouble = QtPath(error.path) + "\n" + QString::fromStdString(DetailText(error));
    QMessageBox::critical(nullptr, "Pictavo", trouble + kFolderAdvice);
    return 1;
}

}  // namespace

int main(int count, char** arguments) {
    ReportFailedWrites();
    if (const auto information = InformationAskedFor(ProgramArguments(count, arguments))) {
        std::cout << *information << std::flush;
        return std::cout ? 0 : 1;
    }
    Application application(count, arguments);
    QApplication::setApplicationName("Pictavo");
    QApplication::setApplicationVersion(kVersion);
    QApplication::setStyle(new ProgramStyle);
    QApplication::setWindowIcon(AppIcon());
    QApplication::setDesktopFileName("pictavo");  // whose icon a desktop shows for the window
    QTranslator translator;
    InstallQtTranslation(translator, QLocale(), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    const auto workFolder = WorkFolder::Open();
    if (!workFolder) return RefuseFolder(workFolder.error());
    return RunWindow(workFolder->Path(), GivenNames(count, arguments));
}
