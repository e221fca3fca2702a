#pragma once

#include <filesystem>
#include <optional>

#include "core/Result.h"
#include "core/SystemFile.h"

namespace pictavo {

/// The folder of one running program's work and temporary files, which no other one uses meanwhile: the
/// folder that TMP names, held by a lock file; when another program holds that or others may write to it, a
/// private folder inside it; without such a folder a private one in the system's folder for temporary files.
/// A private folder is named pictavo-XXXXXX and only this user can enter it.
class WorkFolder {
  public:
    /// Fails with WriteFailed when no folder can be written.
    static Result<WorkFolder> Open();

    WorkFolder(WorkFolder&& other) noexcept;
    WorkFolder& operator=(WorkFolder&&) = delete;

    /// Gives the lock back. A private folder is removed unless it holds replacement pictures; of the folder
    /// that TMP names everything stays.
    ~WorkFolder();

    /// Absolute.
    const std::filesystem::path& Path() const { return path_; }

  private:
    WorkFolder(std::filesystem::path path, std::optional<system_file::Handle> lock);

    static std::optional<WorkFolder> Hold(const std::filesystem::path& folder);
    static Result<WorkFolder> CreateIn(const std::filesystem::path& folder);

    std::filesystem::path path_;               // empty when moved from
    std::optional<system_file::Handle> lock_;  // nothing for a private folder
};

}  // namespace pictavo
