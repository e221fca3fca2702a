#include "shell/WorkFolder.h"

#include <algorithm>
#include <utility>

#include "codec/GPFcodec.h"
#include "core/SystemFile.h"
#include "core/SystemNames.h"
#include "shell/TemporaryFolder.h"

namespace pictavo {

namespace {

constexpr const char* kLockName = "pictavo.lock";

/// What cannot be looked into counts as holding some.
bool HoldsWorkFiles(const std::filesystem::path& folder) {
    const auto names = system_file::FileNamesIn(folder);
    return !names || std::any_of(names->begin(), names->end(), [](const std::filesystem::path& name) {
        return name.extension() == GpfExtension(true);
    });
}

}  // namespace

WorkFolder::WorkFolder(std::filesystem::path path, std::optional<system_file::Handle> lock)
    : path_(std::move(path)), lock_(lock) {}

WorkFolder::WorkFolder(WorkFolder&& other) noexcept
    : path_(std::exchange(other.path_, {})), lock_(std::exchange(other.lock_, std::nullopt)) {}

WorkFolder::~WorkFolder() {
    if (lock_)
        system_file::ReleaseLock(*lock_, path_ / kLockName);
    else if (!path_.empty() && !HoldsWorkFiles(path_))
        system_file::RemoveFolder(path_);
}

std::optional<WorkFolder> WorkFolder::Hold(const std::filesystem::path& folder) {
    const auto lock = system_file::TakeLock(folder / kLockName);
    if (!lock) return std::nullopt;
    return WorkFolder(folder, lock);
}

Result<WorkFolder> WorkFolder::CreateIn(const std::filesystem::path& folder) {
    PICTAVO_TRY(std::filesystem::path path, system_file::CreatePrivateFolder(folder, kPrivateFolderPrefix));
    return WorkFolder(std::move(path), std::nullopt);
}

Result<WorkFolder> WorkFolder::Open() {
    const std::filesystem::path named = system_file::WholePath(NamedTemporaryFolder());
    if (named.empty()) return CreateIn(system_file::TemporaryFolder());
    if (!system_file::OthersMayWrite(named))
        if (auto held = Hold(named)) return std::move(*held);
    return CreateIn(named);
}

}  // namespace pictavo
