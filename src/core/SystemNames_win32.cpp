#include <array>
#include <string_view>
#include <windows.h>

#include "core/SystemError_win32.h"
#include "core/SystemNames.h"
#include "core/SystemPath_win32.h"

namespace pictavo::system_file {

namespace {

using std::filesystem::file_type;

bool MeansNothingThere(DWORD code) {
    return code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND || code == ERROR_INVALID_NAME ||
           code == ERROR_BAD_NETPATH || code == ERROR_INVALID_DRIVE;
}

file_type TypeBy(DWORD attributes) {
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? file_type::directory : file_type::regular;
}

/// Other marks of that kind, such as those of files kept elsewhere, lead nowhere.
bool IsLink(const WIN32_FIND_DATAW& found) {
    return (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (found.dwReserved0 == IO_REPARSE_TAG_SYMLINK || found.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
}

bool IsLink(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        return false;
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(path.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return false;
    FindClose(search);
    return IsLink(found);
}

/// An open file or folder, for questions only.
class Asked {
  public:
    explicit Asked(const std::filesystem::path& path)
        : handle_(CreateFileW(SystemPath(path).c_str(), FILE_READ_ATTRIBUTES,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                              FILE_FLAG_BACKUP_SEMANTICS | SECURITY_SQOS_PRESENT | SECURITY_ANONYMOUS,
                              nullptr)),
          error_(handle_ == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS),
          isFile_(handle_ != INVALID_HANDLE_VALUE && GetFileType(handle_) == FILE_TYPE_DISK &&
                  GetFileInformationByHandle(handle_, &information_) != 0) {}
    ~Asked() {
        if (handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
    }
    Asked(const Asked&) = delete;
    Asked& operator=(const Asked&) = delete;

    file_type Type() const {
        if (MeansNothingThere(error_)) return file_type::not_found;
        if (error_ != ERROR_SUCCESS) return file_type::none;
        return isFile_ ? TypeBy(information_.dwFileAttributes) : file_type::character;
    }

    /// The system's number for why Type is none.
    DWORD Error() const { return error_; }

    bool IsSameAs(const Asked& other) const {
        return isFile_ && other.isFile_ &&
               information_.dwVolumeSerialNumber == other.information_.dwVolumeSerialNumber &&
               information_.nFileIndexHigh == other.information_.nFileIndexHigh &&
               information_.nFileIndexLow == other.information_.nFileIndexLow;
    }

  private:
    BY_HANDLE_FILE_INFORMATION information_{};
    HANDLE handle_;
    DWORD error_;
    bool isFile_;
};

/// Calls `take` for every entry of the folder but itself and its parent, until that returns false; the
/// system's error number, or ERROR_SUCCESS.
template <typename Take>
DWORD ForEachEntry(const std::filesystem::path& folder, Take take) {
    if (folder.empty()) return ERROR_PATH_NOT_FOUND;
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(SystemPath(folder / L"*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_FILE_NOT_FOUND ? DWORD{ERROR_SUCCESS} : GetLastError();  // a bare disk
    bool goesOn = true;
    do {
        const std::wstring_view name = found.cFileName;
        if (name != L"." && name != L"..") goesOn = take(found);
    } while (goesOn && FindNextFileW(search, &found) != 0);
    const DWORD code = goesOn ? GetLastError() : DWORD{ERROR_NO_MORE_FILES};
    FindClose(search);
    return code == ERROR_NO_MORE_FILES ? DWORD{ERROR_SUCCESS} : code;
}

/// The system's error number, or ERROR_SUCCESS.
DWORD CreateFolder(const std::filesystem::path& folder) {
    if (CreateDirectoryW(SystemPath(folder).c_str(), nullptr) != 0) return ERROR_SUCCESS;
    return GetLastError();
}

DWORD CreateFolderAndParents(const std::filesystem::path& folder) {
    const DWORD code = CreateFolder(folder);
    const std::filesystem::path parent = folder.parent_path();
    if (code != ERROR_PATH_NOT_FOUND || parent.empty() || parent == folder) return code;
    const DWORD parentCode = CreateFolderAndParents(parent);
    return parentCode == ERROR_SUCCESS || parentCode == ERROR_ALREADY_EXISTS ? CreateFolder(folder)
                                                                             : parentCode;
}

void RemoveEntry(const std::filesystem::path& path, const WIN32_FIND_DATAW& found) {
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
        RemoveFile(path);
    else if (IsLink(found))
        RemoveDirectoryW(SystemPath(path).c_str());
    else
        RemoveFolder(path);
}

}  // namespace

file_type TypeOfName(const std::filesystem::path& path) {
    return IsLink(SystemPath(path)) ? file_type::symlink : Asked(path).Type();
}

file_type TypeOfFile(const std::filesystem::path& path) {
    return Asked(path).Type();
}

Result<bool> AreSame(const std::filesystem::path& one, const std::filesystem::path& other) {
    const Asked first(one);
    const Asked second(other);
    for (const Asked* asked : {&first, &second})
        if (asked->Type() == file_type::none)
            return Fail(ErrorKind::WriteFailed, one, "cannot be looked at (" + Reason(asked->Error()) + ")");
    return first.IsSameAs(second);
}

void RemoveFile(const std::filesystem::path& path) {
    DeleteFileW(SystemPath(path).c_str());
}

Status CreateFolders(const std::filesystem::path& folder) {
    const DWORD code = CreateFolderAndParents(folder);
    const file_type type = TypeOfFile(folder);
    if (type == file_type::directory) return {};
    const bool isTaken = code == ERROR_ALREADY_EXISTS || type == file_type::regular;
    return Fail(ErrorKind::WriteFailed, folder,
                "cannot be made a folder (" + (isTaken ? "a file has this name" : Reason(code)) + ")");
}

void RemoveFolder(const std::filesystem::path& folder) {
    ForEachEntry(folder, [&](const WIN32_FIND_DATAW& found) {
        RemoveEntry(folder / found.cFileName, found);
        return true;
    });
    RemoveDirectoryW(SystemPath(folder).c_str());
}

std::filesystem::path TemporaryFolder() {
    std::array<wchar_t, MAX_PATH + 2> folder{};
    GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    return folder.data();
}

Result<std::vector<std::filesystem::path>> FileNamesIn(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> names;
    const DWORD code = ForEachEntry(folder, [&](const WIN32_FIND_DATAW& found) {
        const file_type type =
            IsLink(found) ? TypeOfFile(folder / found.cFileName) : TypeBy(found.dwFileAttributes);
        if (type == file_type::regular) names.emplace_back(found.cFileName);
        return true;
    });
    if (code == ERROR_SUCCESS) return names;
    return Fail(ErrorKind::FileMissing, folder, "the folder cannot be read (" + Reason(code) + ")");
}

bool IsEmptyFolder(const std::filesystem::path& folder) {
    bool isEmpty = true;
    const DWORD code = ForEachEntry(folder, [&](const WIN32_FIND_DATAW&) {
        isEmpty = false;
        return false;
    });
    return code == ERROR_SUCCESS && isEmpty;
}

}  // namespace pictavo::system_file
