#include "core/OutputFile.h"

#include <random>

#include "core/SystemFile.h"

namespace pictavo {

namespace {

constexpr int kNoHandle = -1;
constexpr int kNameTries = 100;

std::filesystem::path HiddenNeighbour(const std::filesystem::path& target) {
    thread_local std::mt19937_64 random{std::random_device{}()};
    return target.parent_path() / (".pictavo-" + std::to_string(random()) + ".part");
}

}  // namespace

Result<OutputFile> OutputFile::Create(const std::filesystem::path& target) {
    if (const auto handle = system_file::CreateNameless(target.parent_path()))
        return OutputFile(target, {}, *handle);
    return CreateNamed(target);
}

Result<OutputFile> OutputFile::CreateNamed(const std::filesystem::path& target) {
    for (int tries = 0;; ++tries) {
        const std::filesystem::path temporary = HiddenNeighbour(target);
        const auto handle = system_file::CreateNew(temporary);
        if (handle) return OutputFile(target, temporary, *handle);
        if (handle.error().kind != ErrorKind::FileExists || tries == kNameTries)
            return Fail(ErrorKind::WriteFailed, target, handle.error().detail);
    }
}

OutputFile::OutputFile(std::filesystem::path target, std::filesystem::path temporary, int handle)
    : target_(std::move(target)), temporary_(std::move(temporary)), handle_(handle) {}

OutputFile::OutputFile(OutputFile&& other) noexcept
    : target_(std::move(other.target_)),
      temporary_(std::move(other.temporary_)),
      handle_(std::exchange(other.handle_, kNoHandle)) {}

OutputFile::~OutputFile() {
    Discard();
}

void OutputFile::Discard() {
    if (handle_ == kNoHandle) return;
    system_file::Close(std::exchange(handle_, kNoHandle));
    std::error_code ignored;
    if (!temporary_.empty()) std::filesystem::remove(temporary_, ignored);
}

Status OutputFile::Write(ByteView bytes) {
    return system_file::Write(handle_, bytes, target_);
}

Status OutputFile::WriteAt(std::uint64_t offset, ByteView bytes) {
    return system_file::WriteAt(handle_, offset, bytes, target_);
}

Status OutputFile::Commit(CommitMode mode, Durability durability) {
    if (durability == Durability::Synced) PICTAVO_TRY(system_file::Sync(handle_, target_));
    PICTAVO_TRY(TakeName(mode));
    system_file::Close(std::exchange(handle_, kNoHandle));
    if (durability == Durability::Synced) system_file::SyncFolder(target_.parent_path());
    return {};
}

Status OutputFile::TakeName(CommitMode mode) {
    const bool isNameless = temporary_.empty();
    if (isNameless && mode == CommitMode::KeepExisting) return system_file::Name(handle_, target_);
    if (isNameless) PICTAVO_TRY(TakeTemporaryName());
    return mode == CommitMode::Replace ? system_file::RenameReplacing(temporary_, target_)
                                       : system_file::RenameKeeping(temporary_, target_);
}

/// Only a rename replaces a file in one step, and only a file with a name can be renamed.
Status OutputFile::TakeTemporaryName() {
    const std::filesystem::path temporary = HiddenNeighbour(target_);
    if (const Status named = system_file::Name(handle_, temporary); !named)
        return Fail(ErrorKind::WriteFailed, target_, named.error().detail);
    temporary_ = temporary;
    return {};
}

Status WriteWholeFile(const std::filesystem::path& target, ByteView bytes, CommitMode mode,
                      Durability durability) {
    PICTAVO_TRY(OutputFile file, OutputFile::Create(target));
    PICTAVO_TRY(file.Write(bytes));
    return file.Commit(mode, durability);
}

Status CopyRange(const ByteSource& source, std::uint64_t offset, std::uint64_t length, OutputFile& file) {
    while (length > 0) {
        PICTAVO_TRY(ByteView view, source.ViewAt(offset));
        if (view.empty())
            return Fail(ErrorKind::Truncated, source.Path(), offset,
                        "the file ends here, inside what is to be copied");
        if (view.size() > length) view = view.first(static_cast<std::size_t>(length));
        PICTAVO_TRY(file.Write(view));
        offset += view.size();
        length -= view.size();
    }
    return {};
}

Status EnsureFolder(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    std::error_code ignored;
    if (std::filesystem::is_directory(folder, ignored)) return {};
    return Fail(
        ErrorKind::WriteFailed, folder,
        "can not be made a folder (" + (error ? error.message() : std::string("a file has this name")) + ")");
}

bool NameIsFree(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::symlink_status(path, error).type() == std::filesystem::file_type::not_found;
}

bool IsSameFile(const std::filesystem::path& one, const std::filesystem::path& other) {
    std::error_code error;
    return std::filesystem::equivalent(one, other, error) && !error;
}

}  // namespace pictavo
