#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "core/Bytes.h"
#include "session/Ports.h"
#include "shell/DesktopFolders.h"
#include "shell/KeyStore.h"

namespace pictavo {

/// The keys of the program's own picture files, kept in the user's data and configuration folders as a
/// freedesktop.org desktop wants them: MIME package, icons, desktop entry, default application, templates of
/// the New menu. docs/formats/associations.md tells which key is which file. Any other key is unknown to it:
/// reading finds nothing, writing fails. Reading looks through the system's folders as well.
class FreedesktopStore final : public KeyStore {
  public:
    /// The type's icon as a PNG file of `size` x `size` pixels.
    using DrawIcon = std::function<Bytes(int size)>;

    /// `processes` outlives the object; it runs the desktop's own tools that refresh its caches, where they
    /// are installed.
    FreedesktopStore(DesktopFolders folders, ProcessRunner& processes, DrawIcon drawIcon);

    bool HasKey(const std::string& key) const override;
    Value ReadValue(const std::string& key, const std::string& name) const override;
    Status CreateKey(const std::string& key) override;
    Status WriteValue(const std::string& key, const std::string& name, const std::string& value) override;
    Status DeleteKey(const std::string& key) override;

    /// Writes the files that differ from what they should hold, each whole. Fails also when a file that is to
    /// be changed is there but can not be read; it then stays as it is.
    Status Commit() override;

  private:
    /// What the keys say.
    struct FileType {
        std::set<std::string> extensions;
        std::set<std::string> newFiles;  // extensions of files that the New menu makes
        std::string description;
        std::string command;
        bool hasIcon = false;
    };

    void Load();
    std::vector<std::filesystem::path> MimeAppsLists() const;
    std::vector<std::string> DefaultEntries() const;
    std::vector<std::string> InstalledEntries() const;
    std::string FoundCommand() const;
    std::string CommandOf(const std::string& entry) const;
    std::filesystem::path UserData(const std::string& name) const;
    std::filesystem::path IconFile(int size) const;
    std::filesystem::path Template(const std::string& extension) const;
    Status CommitPackage();
    Status CommitIcons();
    Status CommitEntry();
    Status CommitDefault();
    Status CommitTemplates();
    void RunTool(const std::string& name, const std::filesystem::path& folder);

    DesktopFolders folders_;
    ProcessRunner& processes_;
    DrawIcon drawIcon_;
    FileType type_;
    std::vector<std::filesystem::path> oldTemplates_;
};

}  // namespace pictavo
