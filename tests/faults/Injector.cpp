/// Preloaded into a program, this stands between it and the system: it counts the calls on files under one
/// folder, and lets the one of a given number go wrong. Faults.h says how it is told.

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

enum class Verdict { Go, Fail, Half, KillInTheMiddle };

std::string_view Setting(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string_view() : value;
}

/// The path behind a handle, or an empty one.
std::string PathOf(int handle) {
    char path[PATH_MAX];
    const std::string link = "/proc/self/fd/" + std::to_string(handle);
    const long length = syscall(SYS_readlink, link.c_str(), path, sizeof path);
    return length > 0 ? std::string(path, static_cast<std::size_t>(length)) : std::string();
}

std::string PathOf(int folder, const char* name) {
    if (name[0] == '/') return name;
    return (folder == AT_FDCWD ? std::string(".") : PathOf(folder)) + "/" + name;
}

bool IsWatched(std::string_view path) {
    static const std::string_view folder = Setting("FAULTS_FOLDER");
    return !folder.empty() && path.starts_with(folder);
}

void Log(const char* call, const std::string& path) {
    static const std::string_view log = Setting("FAULTS_LOG");
    if (log.empty()) return;
    const std::string process = std::string(program_invocation_short_name) + " " + std::to_string(getpid());
    const std::string line = process + " " + call + " " + path + "\n";
    const long file = syscall(SYS_openat, AT_FDCWD, log.data(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    syscall(SYS_write, file, line.data(), line.size());
    syscall(SYS_close, file);
}

/// Whether the system is to be one without this means.
bool IsLacking(std::string_view means) {
    return Setting("FAULTS_LACKS").find(means) != std::string_view::npos;
}

int Refuse(int code) {
    errno = code;
    return -1;
}

/// Whether the system ever interrupts this call, or does half of it.
bool CanBeInterrupted(std::string_view call) {
    for (const char* one : {"open", "create", "read", "write", "sync", "close", "lock"})
        if (call == one) return true;
    return false;
}

/// Sets errno for a call that is to fail.
Verdict Carry(std::string_view how) {
    if (how == "KILL") kill(getpid(), SIGKILL);
    if (how == "KILL_HALF") return Verdict::KillInTheMiddle;
    if (how == "SHORT") return Verdict::Half;
    if (how == "ENOSPC") errno = ENOSPC;
    if (how == "EIO") errno = EIO;
    if (how == "EACCES") errno = EACCES;
    if (how == "EINTR") errno = EINTR;
    return Verdict::Fail;
}

/// Whether this is the process that is to meet the fault.
bool IsMeant() {
    return Setting("FAULTS_PROGRAM") == program_invocation_short_name;
}

/// Every watched call passes here before it is made.
Verdict Pass(const char* call, const std::string& path, bool takesSpace = false) {
    static std::atomic<int> count{0};
    static const int at =
        std::atoi(Setting("FAULTS_AT").data() == nullptr ? "0" : Setting("FAULTS_AT").data());
    static const std::string_view how = Setting("FAULTS_HOW");
    static const bool lasts = !Setting("FAULTS_LASTING").empty();
    static const bool isMeant = IsMeant();
    if (!IsWatched(path)) return Verdict::Go;
    const int number = ++count;
    Log(call, path);
    const bool staysBad = how == "EIO" ? std::string_view(call) == "read" : takesSpace;
    const bool isHit = number == at || (lasts && at > 0 && number > at && staysBad);
    if ((how == "EINTR" || how == "SHORT") && !CanBeInterrupted(call)) return Verdict::Go;
    return isMeant && isHit ? Carry(how) : Verdict::Go;
}

int Open(int folder, const char* name, int flags, unsigned mode) {
    if ((flags & O_TMPFILE) == O_TMPFILE && IsLacking("nameless files")) return Refuse(EOPNOTSUPP);
    const bool writes = (flags & O_ACCMODE) != O_RDONLY;
    const char* call = writes ? "create" : (flags & O_DIRECTORY) != 0 ? "enter" : "open";
    const Verdict verdict = Pass(call, PathOf(folder, name), writes);
    return verdict == Verdict::Fail ? -1 : static_cast<int>(syscall(SYS_openat, folder, name, flags, mode));
}

/// A call that moves `size` bytes: whole, a half of them, or a half and then no more for ever.
template <typename Call>
ssize_t Move(Verdict verdict, std::size_t size, const Call& call) {
    if (verdict == Verdict::Fail) return -1;
    if (verdict == Verdict::Go) return call(size);
    const ssize_t half = call(size > 1 ? size / 2 : size);
    if (verdict == Verdict::KillInTheMiddle) kill(getpid(), SIGKILL);
    return half;
}

int CallOn(const char* name, const std::string& path, bool takesSpace, const auto& call) {
    return Pass(name, path, takesSpace) == Verdict::Fail ? -1 : static_cast<int>(call());
}

/// Handles that are only read are closed unwatched: nothing can be lost with them.
bool IsWritten(int handle) {
    const long flags = syscall(SYS_fcntl, handle, F_GETFL);
    return flags >= 0 && (flags & O_ACCMODE) != O_RDONLY;
}

int Close(int handle) {
    const Verdict verdict = IsWritten(handle) ? Pass("close", PathOf(handle)) : Verdict::Go;
    const int code = errno;
    const long closed = syscall(SYS_close, handle);
    if (verdict != Verdict::Fail) return static_cast<int>(closed);
    errno = code;
    return -1;
}

int LookAt(int folder, const char* name, void* status, int flags) {
    const std::string path = name[0] == '\0' ? PathOf(folder) : PathOf(folder, name);
    return CallOn("look", path, false, [&] { return syscall(SYS_newfstatat, folder, name, status, flags); });
}

template <typename Entry>
Entry* Next(DIR* folder, const char* name) {
    if (Pass("list", PathOf(dirfd(folder))) == Verdict::Fail) return nullptr;
    return reinterpret_cast<Entry* (*)(DIR*)>(dlsym(RTLD_NEXT, name))(folder);
}

bool FillRandomly(char* letters, std::size_t count) {
    if (getrandom(letters, count, 0) != static_cast<ssize_t>(count)) return false;
    for (std::size_t i = 0; i < count; ++i) letters[i] = static_cast<char>('a' + (letters[i] & 15));
    return true;
}

}  // namespace

// NOLINTBEGIN(cert-dcl50-cpp): these are the C library's own signatures.
extern "C" {

#define FAULTS_MODE(flags)                        \
    unsigned mode = 0;                            \
    if (((flags) & (O_CREAT | O_TMPFILE)) != 0) { \
        va_list rest;                             \
        va_start(rest, flags);                    \
        mode = va_arg(rest, unsigned);            \
        va_end(rest);                             \
    }

int open(const char* name, int flags, ...) {
    FAULTS_MODE(flags)
    return Open(AT_FDCWD, name, flags, mode);
}

int open64(const char* name, int flags, ...) {
    FAULTS_MODE(flags)
    return Open(AT_FDCWD, name, flags, mode);
}

int openat(int folder, const char* name, int flags, ...) {
    FAULTS_MODE(flags)
    return Open(folder, name, flags, mode);
}

int openat64(int folder, const char* name, int flags, ...) {
    FAULTS_MODE(flags)
    return Open(folder, name, flags, mode);
}

ssize_t read(int handle, void* into, size_t size) {
    return Move(Pass("read", PathOf(handle)), size,
                [&](size_t count) { return syscall(SYS_read, handle, into, count); });
}

ssize_t pread(int handle, void* into, size_t size, off_t offset) {
    return Move(Pass("read", PathOf(handle)), size,
                [&](size_t count) { return syscall(SYS_pread64, handle, into, count, offset); });
}

ssize_t pread64(int handle, void* into, size_t size, off64_t offset) {
    return pread(handle, into, size, offset);
}

ssize_t write(int handle, const void* bytes, size_t size) {
    return Move(Pass("write", PathOf(handle), true), size,
                [&](size_t count) { return syscall(SYS_write, handle, bytes, count); });
}

ssize_t pwrite(int handle, const void* bytes, size_t size, off_t offset) {
    return Move(Pass("write", PathOf(handle), true), size,
                [&](size_t count) { return syscall(SYS_pwrite64, handle, bytes, count, offset); });
}

ssize_t pwrite64(int handle, const void* bytes, size_t size, off64_t offset) {
    return pwrite(handle, bytes, size, offset);
}

int close(int handle) {
    return Close(handle);
}

int flock(int handle, int operation) {
    return CallOn("lock", PathOf(handle), false, [&] { return syscall(SYS_flock, handle, operation); });
}

int stat(const char* name, struct stat* status) {
    return LookAt(AT_FDCWD, name, status, 0);
}

int stat64(const char* name, struct stat64* status) {
    return LookAt(AT_FDCWD, name, status, 0);
}

int lstat(const char* name, struct stat* status) {
    return LookAt(AT_FDCWD, name, status, AT_SYMLINK_NOFOLLOW);
}

int lstat64(const char* name, struct stat64* status) {
    return LookAt(AT_FDCWD, name, status, AT_SYMLINK_NOFOLLOW);
}

int fstat(int handle, struct stat* status) {
    return LookAt(handle, "", status, AT_EMPTY_PATH);
}

int fstat64(int handle, struct stat64* status) {
    return LookAt(handle, "", status, AT_EMPTY_PATH);
}

int fstatat(int folder, const char* name, struct stat* status, int flags) {
    return LookAt(folder, name, status, flags);
}

int fstatat64(int folder, const char* name, struct stat64* status, int flags) {
    return LookAt(folder, name, status, flags);
}

struct dirent* readdir(DIR* folder) {
    return Next<struct dirent>(folder, "readdir");
}

struct dirent64* readdir64(DIR* folder) {
    return Next<struct dirent64>(folder, "readdir64");
}

int fsync(int handle) {
    return CallOn("sync", PathOf(handle), false, [&] { return syscall(SYS_fsync, handle); });
}

int rename(const char* from, const char* to) {
    return CallOn("rename", PathOf(AT_FDCWD, to), false,
                  [&] { return syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0); });
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) {
    if (flags != 0 && IsLacking("exclusive renames")) return Refuse(EINVAL);
    return CallOn("rename", PathOf(toFolder, to), false,
                  [&] { return syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags); });
}

int link(const char* from, const char* to) {
    if (IsLacking("hard links")) return Refuse(EPERM);
    return CallOn("link", PathOf(AT_FDCWD, to), true,
                  [&] { return syscall(SYS_linkat, AT_FDCWD, from, AT_FDCWD, to, 0); });
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) {
    if ((flags & AT_EMPTY_PATH) != 0 && IsLacking("links by handle")) return Refuse(ENOENT);
    return CallOn("link", PathOf(toFolder, to), true,
                  [&] { return syscall(SYS_linkat, fromFolder, from, toFolder, to, flags); });
}

int unlinkat(int folder, const char* name, int flags) {
    return CallOn("remove", PathOf(folder, name), false,
                  [&] { return syscall(SYS_unlinkat, folder, name, flags); });
}

int unlink(const char* name) {
    return unlinkat(AT_FDCWD, name, 0);
}

int rmdir(const char* name) {
    return unlinkat(AT_FDCWD, name, AT_REMOVEDIR);
}

int remove(const char* name) {
    const int removed = unlink(name);
    return removed != 0 && errno == EISDIR ? rmdir(name) : removed;
}

int mkdir(const char* name, mode_t mode) {
    return CallOn("mkdir", PathOf(AT_FDCWD, name), true, [&] { return syscall(SYS_mkdir, name, mode); });
}

char* mkdtemp(char* pattern) {
    char* letters = pattern + std::strlen(pattern) - 6;
    if (!FillRandomly(letters, 6)) return nullptr;
    return mkdir(pattern, 0700) == 0 ? pattern : nullptr;
}

}  // extern "C"
// NOLINTEND(cert-dcl50-cpp)
