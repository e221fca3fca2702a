#include "shell/DesktopCommand.h"

#include <QStandardPaths>
#include <set>

#include "core/PathText.h"
#include "shell/DefaultApplication.h"
#include "shell/DesktopEntry.h"
#include "shell/DesktopFiles.h"
#include "shell/KeyFile.h"
#include "shell/QtPath.h"

namespace pictavo {

namespace {

namespace fs = std::filesystem;

constexpr const char* kMimeInfo = "mimeinfo.cache";

/// The lists of default applications in the order in which a desktop reads them.
std::vector<fs::path> MimeAppsLists(const DesktopFolders& folders) {
    std::vector<fs::path> lists;
    for (const fs::path& folder : folders.config) lists.push_back(folder / kMimeApps);
    for (const fs::path& folder : folders.data) lists.push_back(folder / "applications" / kMimeApps);
    return lists;
}

std::vector<std::string> DefaultEntries(const DesktopFolders& folders, const std::string& type) {
    std::vector<std::string> entries;
    for (const fs::path& list : MimeAppsLists(folders))
        for (const std::string& entry : DefaultApplications(TextOrNone(list), type)) entries.push_back(entry);
    return entries;
}

/// Those that open the type without having been made the default, as a package installs them.
std::vector<std::string> InstalledEntries(const DesktopFolders& folders, const std::string& type) {
    std::vector<std::string> entries;
    std::set<std::string> removed;
    for (const fs::path& list : MimeAppsLists(folders)) {
        const std::string text = TextOrNone(list);
        for (const std::string& entry : AddedApplications(text, type)) entries.push_back(entry);
        for (const std::string& entry : RemovedApplications(text, type)) removed.insert(entry);
    }
    for (const fs::path& folder : folders.data) {
        const std::string cache = TextOrNone(folder / "applications" / kMimeInfo);
        for (const std::string& entry : InstalledApplications(cache, type)) entries.push_back(entry);
    }
    std::erase_if(entries, [&](const std::string& entry) { return removed.contains(entry); });
    return entries;
}

/// The places of an entry in a folder of applications: "a-b.desktop" may also be "a/b.desktop".
std::vector<std::string> PlacesOf(const std::string& entry) {
    std::vector<std::string> places{entry};
    for (std::size_t at = entry.find('-'); at != std::string::npos; at = entry.find('-', at + 1)) {
        std::string place = places.back();
        places.push_back(place.replace(at, 1, "/"));
    }
    return places;
}

/// An entry may be hidden, or name a program without which it does not count.
bool Counts(const KeyFile& entry) {
    const auto needed = entry.Value(kDesktopEntry, "TryExec");
    return entry.Value(kDesktopEntry, "Hidden") != "true" &&
           (!needed || !QStandardPaths::findExecutable(QString::fromStdString(*needed)).isEmpty());
}

std::string CommandOfFile(const fs::path& file) {
    const std::string text = TextOrNone(file);
    if (!Counts(KeyFile(text))) return {};
    return CommandOfEntry(text, LocatedProgram).value_or("");
}

std::string CommandOf(const DesktopFolders& folders, const std::string& entry) {
    for (const fs::path& folder : folders.data)
        for (const std::string& place : PlacesOf(entry))
            if (const fs::path file = folder / "applications" / place; IsThere(file))
                return CommandOfFile(file);
    return {};
}

}  // namespace

std::string FoundCommand(const DesktopFolders& folders, const std::string& type) {
    for (const auto& entries : {DefaultEntries(folders, type), InstalledEntries(folders, type)})
        for (const std::string& entry : entries)
            if (const std::string command = CommandOf(folders, entry); !command.empty()) return command;
    return {};
}

std::string LocatedProgram(const std::string& name) {
    const QString found = QStandardPaths::findExecutable(QString::fromStdString(name));
    if (found.isEmpty()) return name;
    return PathText(BehindLinks(StdPath(found)));
}

}  // namespace pictavo
