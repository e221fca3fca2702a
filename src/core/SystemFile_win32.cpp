#include <algorithm>
#include <array>
#include <random>
#include <string_view>
#include <windows.h>

#include "core/SystemError_win32.h"
#include "core/SystemFile.h"
#include "core/SystemNames.h"
#include "core/SystemPath_win32.h"
#include "core/SystemRights_win32.h"

namespace pictavo::system_file {

namespace {

/// Whoever reads the file meanwhile may go on, and it may be renamed while it is open.
constexpr DWORD kShareWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

constexpr std::size_t kLongestTransfer = std::size_t{1} << 30;
constexpr std::string_view kFolderLetters = "abcdefghijklmnopqrstuvwxyz0123456789";
constexpr std::size_t kFolderLetterCount = 6;
constexpr int kFolderTries = 100;

HANDLE Native(Handle handle) {
    return reinterpret_cast<HANDLE>(handle);
}

Handle Number(HANDLE handle) {
    return reinterpret_cast<Handle>(handle);
}

Failure FailWith(ErrorKind kind, const std::filesystem::path& path, const std::string& what) {
    const DWORD code = GetLastError();
    return Fail(kind, path, what + " (" + Reason(code) + ")");
}

Failure CanNotBeCreated(const std::filesystem::path& path) {
    const DWORD code = GetLastError();
    if (code == ERROR_FILE_EXISTS || code == ERROR_ALREADY_EXISTS)
        return Fail(ErrorKind::FileExists, path, "exists already");
    return FailWith(ErrorKind::WriteFailed, path, "cannot be created");
}

DWORD TransferSize(std::size_t wanted) {
    return static_cast<DWORD>(std::min(wanted, kLongestTransfer));
}

OVERLAPPED Place(std::uint64_t offset) {
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset & 0xFFFFFFFF);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return place;
}

/// What the system takes for the end of the file, wherever that is.
constexpr std::uint64_t kFileEnd = ~std::uint64_t{0};

Status WriteFrom(Handle handle, std::uint64_t offset, ByteView bytes, const std::filesystem::path& path) {
    while (!bytes.empty()) {
        OVERLAPPED place = Place(offset);
        DWORD count = 0;
        if (WriteFile(Native(handle), bytes.data(), TransferSize(bytes.size()), &count, &place) == 0)
            return FailWith(ErrorKind::WriteFailed, path, "cannot be written");
        if (offset != kFileEnd) offset += count;
        bytes = bytes.subspan(count);
    }
    return {};
}

Status Rename(const std::filesystem::path& from, const std::filesystem::path& to, DWORD how,
              Durability durability) {
    if (durability == Durability::Synced) how |= MOVEFILE_WRITE_THROUGH;
    if (MoveFileExW(SystemPath(from).c_str(), SystemPath(to).c_str(), how) != 0) return {};
    return CanNotBeCreated(to);
}

std::string RandomLetters() {
    std::random_device random;
    std::uniform_int_distribution<std::size_t> letter(0, kFolderLetters.size() - 1);
    std::string letters;
    while (letters.size() < kFolderLetterCount) letters.push_back(kFolderLetters[letter(random)]);
    return letters;
}

/// Whether the file that was opened is a file of this user's, and not a link to one.
bool IsOwnRegularFile(HANDLE handle) {
    BY_HANDLE_FILE_INFORMATION information{};
    if (GetFileInformationByHandle(handle, &information) == 0) return false;
    constexpr DWORD kNoFile = FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DIRECTORY;
    return GetFileType(handle) == FILE_TYPE_DISK && (information.dwFileAttributes & kNoFile) == 0 &&
           IsOwn(handle);
}

/// The file goes with its last handle, which the system closes when the process ends in whatever way.
bool RemoveWhenClosed(HANDLE handle) {
    FILE_DISPOSITION_INFO disposition{};
    disposition.DeleteFile = TRUE;
    return SetFileInformationByHandle(handle, FileDispositionInfo, &disposition, sizeof disposition) != 0;
}

/// Of a folder the system says that access is denied.
Failure CanNotBeOpened(const std::filesystem::path& path, DWORD code) {
    const bool isFolder = TypeOfFile(path) == std::filesystem::file_type::directory;
    return Fail(ErrorKind::FileMissing, path,
                "cannot be opened (" + (isFolder ? "it is a folder" : Reason(code)) + ")");
}

}  // namespace

Result<Opened> OpenForReading(const std::filesystem::path& path) {
    // Whoever serves a pipe of that name learns nothing of this user.
    constexpr DWORD kAnonymous = SECURITY_SQOS_PRESENT | SECURITY_ANONYMOUS;
    const HANDLE handle = CreateFileW(SystemPath(path).c_str(), GENERIC_READ, kShareWithAll, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL | kAnonymous, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return CanNotBeOpened(path, GetLastError());
    LARGE_INTEGER size{};
    if (GetFileType(handle) == FILE_TYPE_DISK && GetFileSizeEx(handle, &size) != 0)
        return Opened{Number(handle), static_cast<std::uint64_t>(size.QuadPart)};
    CloseHandle(handle);
    return Fail(ErrorKind::FileMissing, path, "cannot be opened (it is no regular file)");
}

Result<std::size_t> ReadAt(Handle handle, std::uint64_t offset, MutableByteView into) {
    std::size_t done = 0;
    while (done < into.size()) {
        OVERLAPPED place = Place(offset + done);
        DWORD count = 0;
        const BOOL isRead =
            ReadFile(Native(handle), into.data() + done, TransferSize(into.size() - done), &count, &place);
        if (isRead == 0 && GetLastError() != ERROR_HANDLE_EOF)
            return Fail(ErrorKind::ReadFailed, {}, offset + done,
                        "cannot be read (" + Reason(GetLastError()) + ")");
        if (count == 0) break;
        done += count;
    }
    return done;
}

std::optional<Handle> CreateNameless(const std::filesystem::path& /*folder*/) {
    return std::nullopt;
}

Status Name(Handle /*handle*/, const std::filesystem::path& path) {
    return Fail(ErrorKind::WriteFailed, path, "cannot be created (files have names from the start here)");
}

Result<Handle> CreateNew(const std::filesystem::path& path) {
    const HANDLE handle =
        CreateFileW(SystemPath(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                    CREATE_NEW, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (handle != INVALID_HANDLE_VALUE) return Number(handle);
    return CanNotBeCreated(path);
}

Status Write(Handle handle, ByteView bytes, const std::filesystem::path& path) {
    return WriteFrom(handle, kFileEnd, bytes, path);
}

Status WriteAt(Handle handle, std::uint64_t offset, ByteView bytes, const std::filesystem::path& path) {
    return WriteFrom(handle, offset, bytes, path);
}

Status Sync(Handle handle, const std::filesystem::path& path) {
    if (FlushFileBuffers(Native(handle)) != 0) return {};
    return FailWith(ErrorKind::WriteFailed, path, "cannot be brought to the disk");
}

void SyncFolder(const std::filesystem::path& /*folder*/) {}

void Close(Handle handle) {
    CloseHandle(Native(handle));
}

Status CloseWritten(Handle handle, const std::filesystem::path& path) {
    if (CloseHandle(Native(handle)) != 0) return {};
    return FailWith(ErrorKind::WriteFailed, path, "cannot be written");
}

Status RenameReplacing(const std::filesystem::path& from, const std::filesystem::path& to,
                       Durability durability) {
    const Status renamed = Rename(from, to, MOVEFILE_REPLACE_EXISTING, durability);
    if (renamed || renamed.error().kind != ErrorKind::FileExists) return renamed;
    return Fail(ErrorKind::WriteFailed, to, "cannot be replaced");
}

Status RenameKeeping(const std::filesystem::path& from, const std::filesystem::path& to,
                     Durability durability) {
    return Rename(from, to, 0, durability);
}

Result<std::filesystem::path> CreatePrivateFolder(const std::filesystem::path& parent,
                                                  const std::string& prefix) {
    PrivateRights rights;
    if (rights.Attributes() == nullptr)
        return FailWith(ErrorKind::WriteFailed, parent, "no private folder can be created here");
    for (int tries = 0; tries < kFolderTries; ++tries) {
        std::filesystem::path folder = parent / (prefix + RandomLetters());
        if (CreateDirectoryW(SystemPath(folder).c_str(), rights.Attributes()) != 0) return folder;
        if (GetLastError() != ERROR_ALREADY_EXISTS) break;
    }
    return FailWith(ErrorKind::WriteFailed, parent, "no folder can be created here");
}

bool OthersMayWrite(const std::filesystem::path& folder) {
    return StrangersMayCreateIn(SystemPath(folder));
}

/// Opened for this process alone: that is the lock.
std::optional<Handle> TakeLock(const std::filesystem::path& path) {
    const HANDLE handle =
        CreateFileW(SystemPath(path).c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, 0, nullptr, OPEN_ALWAYS,
                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return std::nullopt;
    if (IsOwnRegularFile(handle) && RemoveWhenClosed(handle)) return Number(handle);
    CloseHandle(handle);
    return std::nullopt;
}

void ReleaseLock(Handle handle, const std::filesystem::path& /*path*/) {
    Close(handle);
}

}  // namespace pictavo::system_file
