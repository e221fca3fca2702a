#include "shell/DesktopFileType.h"

#include <QStandardPaths>
#include <algorithm>
#include <array>

#include "codec/GPFcodec.h"
#include "core/OutputFile.h"
#include "core/PathText.h"
#include "shell/DefaultApplication.h"
#include "shell/DesktopCommand.h"
#include "shell/DesktopEntry.h"
#include "shell/DesktopFiles.h"
#include "shell/MimePackage.h"
#include "shell/QtPath.h"

namespace pictavo {

namespace {

namespace fs = std::filesystem;

constexpr const char* kEntryName = "pictavo-gpffile.desktop";
constexpr const char* kPackage = "mime/packages/pictavo.xml";
constexpr const char* kTemplateName = "Graphic Patch File";
constexpr std::array kIconSizes{16, 32, 48, 64, 128, 256};

fs::path UserData(const DesktopFolders& folders, const std::string& name) {
    return folders.data.front() / name;
}

fs::path EntryFile(const DesktopFolders& folders) {
    return UserData(folders, "applications") / kEntryName;
}

fs::path IconFile(const DesktopFolders& folders, int size) {
    const std::string side = std::to_string(size);
    return UserData(folders, "icons/hicolor/" + side + "x" + side + "/mimetypes") /
           (kPictureMimeIcon + std::string(".png"));
}

fs::path Template(const DesktopFolders& folders, const std::string& extension) {
    return folders.templates / (kTemplateName + extension);
}

void RunTool(ProcessRunner& processes, const std::string& name, const fs::path& folder) {
    const QString program = QStandardPaths::findExecutable(QString::fromStdString(name));
    if (!program.isEmpty()) processes.RunAndWait(StdPath(program), {PathText(folder)});
}

Status SavePackage(const FileType& type, const DesktopFolders& folders, ProcessRunner& processes) {
    const std::string text =
        type.extensions.empty() ? "" : MimePackageText(type.extensions, type.description);
    PICTAVO_TRY(const bool isChanged, PutText(UserData(folders, kPackage), text));
    if (isChanged) RunTool(processes, "update-mime-database", UserData(folders, "mime"));
    return {};
}

Status SaveIcons(const FileType& type, const DesktopFolders& folders, const DrawIcon& drawIcon) {
    for (const int size : kIconSizes) {
        const Bytes icon = type.hasIcon ? drawIcon(size) : Bytes();
        PICTAVO_TRY(PutText(IconFile(folders, size), AsText(icon)));
    }
    return {};
}

Status SaveEntry(const FileType& type, const DesktopFolders& folders, ProcessRunner& processes) {
    const std::string icon = type.hasIcon ? kPictureMimeIcon : "";
    const std::string text =
        type.command.empty() ? "" : DesktopEntryText(type.command, kPictureMimeType, icon);
    PICTAVO_TRY(const bool isChanged, PutText(EntryFile(folders), text));
    if (isChanged) RunTool(processes, "update-desktop-database", UserData(folders, "applications"));
    return {};
}

Status SaveDefault(const FileType& type, const DesktopFolders& folders) {
    const fs::path file = folders.config.front() / kMimeApps;
    PICTAVO_TRY(const std::string before, WholeText(file));
    const std::string after = type.command.empty()
                                  ? WithoutDefaultApplication(before, kPictureMimeType, kEntryName)
                                  : WithDefaultApplication(before, kPictureMimeType, kEntryName);
    if (after == before) return {};
    PICTAVO_TRY(PutText(file, after));
    return {};
}

/// A template that the user has put something into is his.
Status RemoveTemplate(const fs::path& file) {
    std::error_code error;
    if (fs::is_empty(file, error) && !error) PICTAVO_TRY(RemoveText(file));
    return {};
}

/// False where the user has no such folder.
Result<bool> HasTemplates(const fs::path& folder) {
    std::error_code error;
    const fs::file_type type = fs::status(folder, error).type();
    if (type != fs::file_type::none) return type == fs::file_type::directory;
    return Fail(ErrorKind::WriteFailed, folder, "cannot be looked into (" + error.message() + ")");
}

Status SaveTemplates(const FileType& type, const DesktopFolders& folders) {
    if (folders.templates.empty()) return {};
    PICTAVO_TRY(const bool hasTemplates, HasTemplates(folders.templates));
    if (!hasTemplates) return {};
    for (const std::string& extension : type.droppedFiles)
        PICTAVO_TRY(RemoveTemplate(Template(folders, extension)));
    for (const std::string& extension : type.newFiles) {
        const fs::path file = Template(folders, extension);
        if (!IsThere(file)) PICTAVO_TRY(WriteWholeFile(file, {}, CommitMode::KeepExisting));
    }
    return {};
}

}  // namespace

FileType LoadFileType(const DesktopFolders& folders) {
    FileType type;
    const std::string package = TextOrNone(UserData(folders, kPackage));
    for (const char* extension : kGpfExtensions)
        if (HasExtension(package, extension)) type.extensions.insert(extension);
    type.description = DescriptionOf(package);
    type.command = CommandOfEntry(TextOrNone(EntryFile(folders)), LocatedProgram).value_or("");
    type.hasIcon = IsThere(IconFile(folders, kIconSizes.front()));
    return type;
}

Status SaveFileType(const FileType& type, const DesktopFolders& folders, ProcessRunner& processes,
                    const DrawIcon& drawIcon) {
    PICTAVO_TRY(SavePackage(type, folders, processes));
    PICTAVO_TRY(SaveIcons(type, folders, drawIcon));
    PICTAVO_TRY(SaveEntry(type, folders, processes));
    PICTAVO_TRY(SaveDefault(type, folders));
    return SaveTemplates(type, folders);
}

bool HasFileType(const DesktopFolders& folders, const std::string& extension) {
    return std::any_of(folders.data.begin(), folders.data.end(), [&](const fs::path& folder) {
        return HasExtension(TextOrNone(folder / kPackage), extension);
    });
}

}  // namespace pictavo
