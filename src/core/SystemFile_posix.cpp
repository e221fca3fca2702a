#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "core/SystemFile.h"

namespace pictavo::system_file {

namespace {

/// Where the system shows a process its open files.
constexpr const char* kOpenFiles = "/proc/self/fd";

std::string Reason(int code) {
    return std::generic_category().message(code);
}

Failure FailWith(ErrorKind kind, const std::filesystem::path& path, const std::string& what) {
    const std::string reason = Reason(errno);
    return Fail(kind, path, what + " (" + reason + ")");
}

Failure CanNotBeCreated(const std::filesystem::path& path) {
    if (errno == EEXIST) return Fail(ErrorKind::FileExists, path, "exists already");
    return FailWith(ErrorKind::WriteFailed, path, "cannot be created");
}

/// The system counts in int; all that is passed to it here was an int before.
int Number(Handle handle) {
    return static_cast<int>(handle);
}

template <typename Call>
auto Retry(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

bool RenameExclusively(const std::filesystem::path& from, const std::filesystem::path& to) {
#ifdef RENAME_NOREPLACE
    return renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0;
#else
    errno = ENOSYS;
    return false;
#endif
}

/// Whether `path` still names the file that was opened, and the file is this user's.
bool IsOwnFile(int handle, const std::filesystem::path& path) {
    struct stat opened {};
    struct stat named {};
    if (fstat(handle, &opened) != 0 || lstat(path.c_str(), &named) != 0) return false;
    const bool isSame = opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
    return isSame && S_ISREG(opened.st_mode) && opened.st_uid == geteuid();
}

}  // namespace

Result<Opened> OpenForReading(const std::filesystem::path& path) {
    const int handle = Retry([&] { return open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK); });
    if (handle < 0) return FailWith(ErrorKind::FileMissing, path, "cannot be opened");
    struct stat status {};
    if (fstat(handle, &status) != 0) {
        const Failure failure = FailWith(ErrorKind::FileMissing, path, "cannot be opened");
        Close(handle);
        return failure;
    }
    if (S_ISREG(status.st_mode)) return Opened{handle, static_cast<std::uint64_t>(status.st_size)};
    Close(handle);
    return Fail(ErrorKind::FileMissing, path,
                S_ISDIR(status.st_mode) ? "cannot be opened (it is a folder)"
                                        : "cannot be opened (it is no regular file)");
}

Result<std::size_t> ReadAt(Handle handle, std::uint64_t offset, MutableByteView into) {
    std::size_t done = 0;
    while (done < into.size()) {
        const auto count = Retry([&] {
            return pread(Number(handle), into.data() + done, into.size() - done,
                         static_cast<off_t>(offset + done));
        });
        if (count < 0)
            return Fail(ErrorKind::ReadFailed, {}, offset + done, "cannot be read (" + Reason(errno) + ")");
        if (count == 0) break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

std::optional<Handle> CreateNameless(const std::filesystem::path& folder) {
#ifdef O_TMPFILE
    static const bool canBeNamed = access(kOpenFiles, X_OK) == 0;
    if (!canBeNamed) return std::nullopt;
    const char* name = folder.empty() ? "." : folder.c_str();
    const int handle = Retry([&] { return open(name, O_WRONLY | O_TMPFILE | O_CLOEXEC, 0666); });
    if (handle >= 0) return handle;
#endif
    return std::nullopt;
}

Status Name(Handle handle, const std::filesystem::path& path) {
#ifdef AT_EMPTY_PATH
    if (linkat(Number(handle), "", AT_FDCWD, path.c_str(), AT_EMPTY_PATH) == 0) return {};
    const bool mayBeForbidden = errno == ENOENT || errno == EPERM;  // to all but a privileged process
    const std::string link = std::string(kOpenFiles) + "/" + std::to_string(handle);
    if (mayBeForbidden && linkat(AT_FDCWD, link.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0)
        return {};
#endif
    return CanNotBeCreated(path);
}

Result<Handle> CreateNew(const std::filesystem::path& path) {
    const int handle =
        Retry([&] { return open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666); });
    if (handle >= 0) return handle;
    return CanNotBeCreated(path);
}

Status Write(Handle handle, ByteView bytes, const std::filesystem::path& path) {
    while (!bytes.empty()) {
        const auto count = Retry([&] { return write(Number(handle), bytes.data(), bytes.size()); });
        if (count < 0) return FailWith(ErrorKind::WriteFailed, path, "cannot be written");
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return {};
}

Status WriteAt(Handle handle, std::uint64_t offset, ByteView bytes, const std::filesystem::path& path) {
    while (!bytes.empty()) {
        const auto count = Retry(
            [&] { return pwrite(Number(handle), bytes.data(), bytes.size(), static_cast<off_t>(offset)); });
        if (count < 0) return FailWith(ErrorKind::WriteFailed, path, "cannot be written");
        offset += static_cast<std::uint64_t>(count);
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return {};
}

Status Sync(Handle handle, const std::filesystem::path& path) {
    if (Retry([&] { return fsync(Number(handle)); }) < 0)
        return FailWith(ErrorKind::WriteFailed, path, "cannot be brought to the disk");
    return {};
}

void SyncFolder(const std::filesystem::path& folder) {
    const int handle = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) return;
    Retry([&] { return fsync(handle); });
    close(handle);
}

void Close(Handle handle) {
    close(Number(handle));
}

Status CloseWritten(Handle handle, const std::filesystem::path& path) {
    if (close(Number(handle)) == 0 || errno == EINTR) return {};
    return FailWith(ErrorKind::WriteFailed, path, "cannot be written");
}

Status RenameReplacing(const std::filesystem::path& from, const std::filesystem::path& to,
                       Durability /*durability*/) {
    if (std::rename(from.c_str(), to.c_str()) == 0) return {};
    return FailWith(ErrorKind::WriteFailed, to, "cannot be created");
}

/// Most file systems have a rename that never replaces, others hard links, which never do either. Where there
/// is neither, as in folders that a virtual machine shares, a look must do: a file that another program makes
/// between the look and the rename is then replaced.
Status RenameKeeping(const std::filesystem::path& from, const std::filesystem::path& to,
                     Durability durability) {
    if (RenameExclusively(from, to)) return {};
    if (errno != EINVAL && errno != ENOSYS) return CanNotBeCreated(to);
    if (link(from.c_str(), to.c_str()) == 0) {
        unlink(from.c_str());
        return {};
    }
    if (errno != EPERM && errno != ENOSYS && errno != EOPNOTSUPP) return CanNotBeCreated(to);
    struct stat status {};
    if (lstat(to.c_str(), &status) == 0) errno = EEXIST;
    if (errno != ENOENT) return CanNotBeCreated(to);
    return RenameReplacing(from, to, durability);
}

Result<std::filesystem::path> CreatePrivateFolder(const std::filesystem::path& parent,
                                                  const std::string& prefix) {
    std::string name = (parent / (prefix + "XXXXXX")).string();
    if (mkdtemp(name.data()) == nullptr)
        return FailWith(ErrorKind::WriteFailed, parent, "no folder can be created here");
    return std::filesystem::path(name);
}

bool OthersMayWrite(const std::filesystem::path& folder) {
    struct stat status {};
    if (stat(folder.c_str(), &status) != 0) return true;
    const bool isTheirs = status.st_uid != geteuid() && status.st_uid != 0;  // the system's own is nobody's
    return isTheirs || (status.st_mode & (S_IWGRP | S_IWOTH)) != 0;
}

std::optional<Handle> TakeLock(const std::filesystem::path& path) {
    const int handle = Retry(
        [&] { return open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600); });
    if (handle < 0) return std::nullopt;
    const bool isTaken = Retry([&] { return flock(handle, LOCK_EX | LOCK_NB); }) == 0;
    if (isTaken && IsOwnFile(handle, path)) return handle;
    Close(handle);
    return std::nullopt;
}

/// The name goes first: once the lock is free, a file of that name may be another holder's.
void ReleaseLock(Handle handle, const std::filesystem::path& path) {
    unlink(path.c_str());
    Close(handle);
}

}  // namespace pictavo::system_file
