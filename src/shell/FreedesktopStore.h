#pragma once

#include <string>

#include "shell/DesktopFileType.h"
#include "shell/KeyStore.h"

namespace pictavo {

/// The keys of the program's own picture files, of which each is a field of a FileType.
/// docs/formats/associations.md tells which key is which file. Any other key is unknown to it: reading finds
/// nothing, writing fails. Read are the extensions and the open command only, as they were last committed,
/// and through the system's folders as well.
class FreedesktopStore final : public KeyStore {
  public:
    /// `processes` outlives the object; it runs the desktop's own tools that refresh its caches, where they
    /// are installed.
    FreedesktopStore(DesktopFolders folders, ProcessRunner& processes, DrawIcon drawIcon);

    bool HasKey(const std::string& key) const override;
    Value ReadValue(const std::string& key, const std::string& name) const override;
    Status CreateKey(const std::string& key) override;
    Status WriteValue(const std::string& key, const std::string& name, const std::string& value) override;
    Status DeleteKey(const std::string& key) override;

    /// Fails as SaveFileType does.
    Status Commit() override;

  private:
    DesktopFolders folders_;
    ProcessRunner& processes_;
    DrawIcon drawIcon_;
    FileType type_;
};

}  // namespace pictavo
