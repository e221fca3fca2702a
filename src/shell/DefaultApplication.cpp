#include "shell/DefaultApplication.h"

#include <algorithm>

#include "shell/KeyFile.h"

namespace pictavo {

namespace {

constexpr const char* kGroup = "Default Applications";

std::vector<std::string> EntriesOf(const KeyFile& file, const std::string& type) {
    return ListItems(file.Value(kGroup, type).value_or(""));
}

void PutEntries(KeyFile& file, const std::string& type, const std::vector<std::string>& entries) {
    std::string list;
    for (const std::string& entry : entries) list += entry + ";";
    if (list.empty())
        file.Remove(kGroup, type);
    else
        file.Set(kGroup, type, list);
}

}  // namespace

std::vector<std::string> DefaultApplications(const std::string& mimeApps, const std::string& type) {
    return EntriesOf(KeyFile(mimeApps), type);
}

std::vector<std::string> AddedApplications(const std::string& mimeApps, const std::string& type) {
    return ListItems(KeyFile(mimeApps).Value("Added Associations", type).value_or(""));
}

std::vector<std::string> RemovedApplications(const std::string& mimeApps, const std::string& type) {
    return ListItems(KeyFile(mimeApps).Value("Removed Associations", type).value_or(""));
}

std::vector<std::string> InstalledApplications(const std::string& mimeInfo, const std::string& type) {
    return ListItems(KeyFile(mimeInfo).Value("MIME Cache", type).value_or(""));
}

std::string WithDefaultApplication(const std::string& mimeApps, const std::string& type,
                                   const std::string& entry) {
    KeyFile file(mimeApps);
    std::vector<std::string> entries = EntriesOf(file, type);
    if (!entries.empty() && entries.front() == entry) return mimeApps;
    std::erase(entries, entry);
    entries.insert(entries.begin(), entry);
    PutEntries(file, type, entries);
    return file.Text();
}

std::string WithoutDefaultApplication(const std::string& mimeApps, const std::string& type,
                                      const std::string& entry) {
    KeyFile file(mimeApps);
    std::vector<std::string> entries = EntriesOf(file, type);
    if (std::erase(entries, entry) == 0) return mimeApps;
    PutEntries(file, type, entries);
    return file.Text();
}

}  // namespace pictavo
