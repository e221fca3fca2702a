#include "core/OutputFile.h"

#include <random>

#include "core/SystemNames.h"

namespace pictavo {

namespace {

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

OutputFile::OutputFile(std::filesystem::path target, std::filesystem::path temporary,
                       system_file::Handle handle)
    : target_(std::move(target)), temporary_(std::move(temporary)), handle_(handle) {}

OutputFile::OutputFile(OutputFile&& other) noexcept
    : target_(std::move(other.target_)),
      temporary_(std::move(other.temporary_)),
      handle_(std::exchange(other.handle_, system_file::kNoHandle)) {}

OutputFile::~OutputFile() {
    Discard();
}

void OutputFile::Discard() {
    if (handle_ != system_file::kNoHandle) system_file::Close(std::exchange(handle_, system_file::kNoHandle));
    if (!temporary_.empty()) system_file::RemoveFile(std::exchange(temporary_, {}));
}

Status OutputFile::Write(ByteView bytes) {
    return system_file::Write(handle_, bytes, target_);
}

Status OutputFile::WriteAt(std::uint64_t offset, ByteView bytes) {
    return system_file::WriteAt(handle_, offset, bytes, target_);
}

Status OutputFile::Commit(CommitMode mode, Durability durability) {
    if (durability == Durability::Synced) PICTAVO_TRY(system_file::Sync(handle_, target_));
    const bool isNameless = temporary_.empty();
    PICTAVO_TRY(isNameless && mode == CommitMode::KeepExisting ? NameAndClose()
                                                               : CloseAndRename(mode, durability));
    if (durability == Durability::Synced) system_file::SyncFolder(target_.parent_path());
    return {};
}

Status OutputFile::Close() {
    return system_file::CloseWritten(std::exchange(handle_, system_file::kNoHandle), target_);
}

/// The name goes again when the last bytes could not be stored: nobody else had it before.
Status OutputFile::NameAndClose() {
    PICTAVO_TRY(system_file::Name(handle_, target_));
    const Status closed = Close();
    if (!closed) system_file::RemoveFile(target_);
    return closed;
}

Status OutputFile::CloseAndRename(CommitMode mode, Durability durability) {
    if (temporary_.empty()) PICTAVO_TRY(TakeTemporaryName());
    PICTAVO_TRY(Close());
    PICTAVO_TRY(mode == CommitMode::Replace ? system_file::RenameReplacing(temporary_, target_, durability)
                                            : system_file::RenameKeeping(temporary_, target_, durability));
    temporary_.clear();
    return {};
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
    return system_file::CreateFolders(folder);
}

bool NameIsFree(const std::filesystem::path& path) {
    return system_file::TypeOfName(path) == std::filesystem::file_type::not_found;
}

Result<bool> IsSameFile(const std::filesystem::path& one, const std::filesystem::path& other) {
    return system_file::AreSame(one, other);
}

}  // namespace pictavo
