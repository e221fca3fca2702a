#include "shell/FreedesktopStore.h"

#include <QStandardPaths>
#include <algorithm>
#include <array>
#include <utility>

#include "core/ByteSource.h"
#include "core/OutputFile.h"
#include "core/PathText.h"
#include "shell/CFileAssociation.h"
#include "shell/DefaultApplication.h"
#include "shell/DesktopEntry.h"
#include "shell/MimePackage.h"
#include "shell/QtPath.h"

namespace pictavo {

namespace {

namespace fs = std::filesystem;

constexpr const char* kEntryName = "pictavo-gpffile.desktop";
constexpr const char* kPackage = "mime/packages/pictavo.xml";
constexpr const char* kMimeApps = "mimeapps.list";
constexpr const char* kMimeInfo = "mimeinfo.cache";
constexpr const char* kTemplateName = "Graphic Patch File";
constexpr const char* kNewKey = "\\ShellNew";
constexpr std::array kIconSizes{16, 32, 48, 64, 128, 256};

/// What a registry says of a key or value that it does not have.
constexpr std::uint32_t kNotFound = 2;

const std::string& OpenCommandKey() {
    static const std::string key = CommandKey(kPictureFileClass, kOpenVerb);
    return key;
}

const std::string& IconKey() {
    static const std::string key = std::string(kPictureFileClass) + "\\DefaultIcon";
    return key;
}

/// The extension of a key such as ".gpf\ShellNew"; empty for any other.
std::string ExtensionOfNewKey(const std::string& key) {
    if (!key.ends_with(kNewKey)) return {};
    const std::string extension = key.substr(0, key.find('\\'));
    return extension + kNewKey == key && IsPictureExtension(extension) ? extension : "";
}

bool IsKnown(const std::string& key) {
    return IsPictureExtension(key) || !ExtensionOfNewKey(key).empty() || key == kPictureFileClass ||
           key == OpenCommandKey() || key == IconKey();
}

Failure Unknown(const std::string& key) {
    return Fail(ErrorKind::WriteFailed, "the desktop has no place for \"" + key + "\"");
}

bool Exists(const fs::path& path) {
    std::error_code ignored;
    return fs::exists(fs::symlink_status(path, ignored));
}

/// Empty for a file that does not exist.
Result<std::string> WholeText(const fs::path& path) {
    if (!Exists(path)) return std::string();
    PICTAVO_TRY(const auto source, FileSource::Open(path));
    PICTAVO_TRY(const Bytes bytes, source->ReadExactly(0, source->Size()));
    return std::string(AsText(bytes));
}

std::string TextOrNone(const fs::path& path) {
    return WholeText(path).value_or("");
}

/// A link stays one, and the file that it leads to is written.
fs::path BehindLinks(const fs::path& path) {
    std::error_code error;
    const fs::path target = fs::weakly_canonical(path, error);
    return error ? path : target;
}

/// Returns whether the file had to be changed.
Result<bool> Remove(const fs::path& path) {
    std::error_code error;
    const bool wasThere = fs::remove(path, error);
    if (error) return Fail(ErrorKind::WriteFailed, path, "can not be removed (" + error.message() + ")");
    return wasThere;
}

/// The same; an empty text stands for no file.
Result<bool> Put(const fs::path& path, std::string_view text) {
    if (text.empty()) return Remove(path);
    PICTAVO_TRY(const std::string before, WholeText(path));
    if (before == text) return false;
    PICTAVO_TRY(EnsureFolder(path.parent_path()));
    PICTAVO_TRY(WriteWholeFile(BehindLinks(path), AsBytes(text), CommitMode::Replace));
    return true;
}

/// The program's path where the search path leads to one, links followed; else the name alone.
std::string Located(const std::string& name) {
    const QString found = QStandardPaths::findExecutable(QString::fromStdString(name));
    if (found.isEmpty()) return name;
    return PathText(BehindLinks(StdPath(found)));
}

}  // namespace

FreedesktopStore::FreedesktopStore(DesktopFolders folders, ProcessRunner& processes, DrawIcon drawIcon)
    : folders_(std::move(folders)), processes_(processes), drawIcon_(std::move(drawIcon)) {
    Load();
}

void FreedesktopStore::Load() {
    const std::string package = TextOrNone(UserData(kPackage));
    for (const char* extension : kGpfExtensions)
        if (HasExtension(package, extension)) type_.extensions.insert(extension);
    type_.description = DescriptionOf(package);
    type_.command = CommandOfEntry(TextOrNone(UserData("applications") / kEntryName), Located).value_or("");
    type_.hasIcon = Exists(IconFile(kIconSizes.front()));
}

bool FreedesktopStore::HasKey(const std::string& key) const {
    if (key == OpenCommandKey()) return !FoundCommand().empty();
    return IsPictureExtension(key) &&
           std::any_of(folders_.data.begin(), folders_.data.end(), [&](const fs::path& folder) {
               return HasExtension(TextOrNone(folder / kPackage), key);
           });
}

KeyStore::Value FreedesktopStore::ReadValue(const std::string& key, const std::string& name) const {
    if (!name.empty() || !HasKey(key)) return tl::unexpected(kNotFound);
    return key == OpenCommandKey() ? FoundCommand() : std::string(kPictureFileClass);
}

/// In the order in which a desktop reads them.
std::vector<fs::path> FreedesktopStore::MimeAppsLists() const {
    std::vector<fs::path> lists;
    for (const fs::path& folder : folders_.config) lists.push_back(folder / kMimeApps);
    for (const fs::path& folder : folders_.data) lists.push_back(folder / "applications" / kMimeApps);
    return lists;
}

std::vector<std::string> FreedesktopStore::DefaultEntries() const {
    std::vector<std::string> entries;
    for (const fs::path& list : MimeAppsLists())
        for (const std::string& entry : DefaultApplications(TextOrNone(list), kPictureMimeType))
            entries.push_back(entry);
    return entries;
}

/// Those that open the type without having been made the default, as a package installs them.
std::vector<std::string> FreedesktopStore::InstalledEntries() const {
    std::vector<std::string> entries;
    std::set<std::string> removed;
    for (const fs::path& list : MimeAppsLists()) {
        const std::string text = TextOrNone(list);
        for (const std::string& entry : AddedApplications(text, kPictureMimeType)) entries.push_back(entry);
        for (const std::string& entry : RemovedApplications(text, kPictureMimeType)) removed.insert(entry);
    }
    for (const fs::path& folder : folders_.data) {
        const std::string cache = TextOrNone(folder / "applications" / kMimeInfo);
        for (const std::string& entry : InstalledApplications(cache, kPictureMimeType))
            entries.push_back(entry);
    }
    std::erase_if(entries, [&](const std::string& entry) { return removed.contains(entry); });
    return entries;
}

/// Of the first default application that exists, else of the first one that opens the type at all; empty when
/// there is none.
std::string FreedesktopStore::FoundCommand() const {
    for (const auto& entries : {DefaultEntries(), InstalledEntries()})
        for (const std::string& entry : entries)
            if (const std::string command = CommandOf(entry); !command.empty()) return command;
    return {};
}

std::string FreedesktopStore::CommandOf(const std::string& entry) const {
    for (const fs::path& folder : folders_.data) {
        const fs::path file = folder / "applications" / entry;
        if (Exists(file)) return CommandOfEntry(TextOrNone(file), Located).value_or("");
    }
    return {};
}

Status FreedesktopStore::CreateKey(const std::string& key) {
    if (!IsKnown(key)) return Unknown(key);
    return {};
}

Status FreedesktopStore::WriteValue(const std::string& key, const std::string& name,
                                    const std::string& value) {
    const std::string extension = ExtensionOfNewKey(key);
    if (!IsKnown(key) || name != (extension.empty() ? "" : "NullFile")) return Unknown(key + " " + name);
    if (!extension.empty())
        type_.newFiles.insert(extension);
    else if (key == OpenCommandKey())
        type_.command = value;
    else if (key == IconKey())
        type_.hasIcon = true;
    else if (key == kPictureFileClass)
        type_.description = value;
    else if (value == kPictureFileClass)
        type_.extensions.insert(key);
    else
        return Unknown(value);
    return {};
}

Status FreedesktopStore::DeleteKey(const std::string& key) {
    if (key == kPictureFileClass) {
        type_.description.clear();
        type_.command.clear();
        type_.hasIcon = false;
    } else if (IsPictureExtension(key)) {
        type_.extensions.erase(key);
        type_.newFiles.erase(key);
        oldTemplates_.push_back(Template(key));
    } else {
        return Unknown(key);
    }
    return {};
}

Status FreedesktopStore::Commit() {
    PICTAVO_TRY(CommitPackage());
    PICTAVO_TRY(CommitIcons());
    PICTAVO_TRY(CommitEntry());
    PICTAVO_TRY(CommitDefault());
    return CommitTemplates();
}

Status FreedesktopStore::CommitPackage() {
    const std::string text =
        type_.extensions.empty() ? "" : MimePackageText(type_.extensions, type_.description);
    PICTAVO_TRY(const bool isChanged, Put(UserData(kPackage), text));
    if (isChanged) RunTool("update-mime-database", UserData("mime"));
    return {};
}

Status FreedesktopStore::CommitIcons() {
    for (const int size : kIconSizes) {
        const Bytes icon = type_.hasIcon ? drawIcon_(size) : Bytes();
        PICTAVO_TRY(Put(IconFile(size), AsText(icon)));
    }
    return {};
}

Status FreedesktopStore::CommitEntry() {
    const std::string icon = type_.hasIcon ? kPictureMimeIcon : "";
    const std::string text =
        type_.command.empty() ? "" : DesktopEntryText(type_.command, kPictureMimeType, icon);
    PICTAVO_TRY(const bool isChanged, Put(UserData("applications") / kEntryName, text));
    if (isChanged) RunTool("update-desktop-database", UserData("applications"));
    return {};
}

Status FreedesktopStore::CommitDefault() {
    const fs::path file = folders_.config.front() / kMimeApps;
    PICTAVO_TRY(const std::string before, WholeText(file));
    const std::string after = type_.command.empty()
                                  ? WithoutDefaultApplication(before, kPictureMimeType, kEntryName)
                                  : WithDefaultApplication(before, kPictureMimeType, kEntryName);
    if (after == before) return {};
    PICTAVO_TRY(Put(file, after));
    return {};
}

/// A template that the user has put something into is his.
Status FreedesktopStore::CommitTemplates() {
    std::error_code error;
    if (folders_.templates.empty() || !fs::is_directory(folders_.templates, error)) return {};
    for (const fs::path& file : std::exchange(oldTemplates_, {})) {
        if (fs::is_empty(file, error) && !error) PICTAVO_TRY(Remove(file));
    }
    for (const std::string& extension : type_.newFiles) {
        if (Exists(Template(extension))) continue;
        PICTAVO_TRY(WriteWholeFile(Template(extension), {}, CommitMode::KeepExisting));
    }
    return {};
}

fs::path FreedesktopStore::UserData(const std::string& name) const {
    return folders_.data.front() / name;
}

fs::path FreedesktopStore::IconFile(int size) const {
    const std::string side = std::to_string(size);
    return UserData("icons/hicolor/" + side + "x" + side + "/mimetypes") /
           (kPictureMimeIcon + std::string(".png"));
}

fs::path FreedesktopStore::Template(const std::string& extension) const {
    return folders_.templates / (kTemplateName + extension);
}

void FreedesktopStore::RunTool(const std::string& name, const fs::path& folder) {
    const QString program = QStandardPaths::findExecutable(QString::fromStdString(name));
    if (!program.isEmpty()) processes_.RunAndWait(StdPath(program), {PathText(folder)});
}

}  // namespace pictavo
