#include <cerrno>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "core/SystemNames.h"

namespace pictavo::system_file {

namespace {

/// What stands behind all links; nothing when nothing does. An error names `culprit`.
Result<std::optional<struct stat>> StatusOf(const std::filesystem::path& path,
                                            const std::filesystem::path& culprit) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0) return std::optional(status);
    if (errno == ENOENT || errno == ENOTDIR || errno == ELOOP) return std::optional<struct stat>();
    return Fail(ErrorKind::WriteFailed, culprit,
                "cannot be looked at (" + std::generic_category().message(errno) + ")");
}

}  // namespace

std::filesystem::file_type TypeOfName(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::symlink_status(path, ignored).type();
}

std::filesystem::file_type TypeOfFile(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::status(path, ignored).type();
}

Result<bool> AreSame(const std::filesystem::path& one, const std::filesystem::path& other) {
    PICTAVO_TRY(const auto first, StatusOf(one, one));
    PICTAVO_TRY(const auto second, StatusOf(other, one));
    if (!first || !second) return false;
    return first->st_dev == second->st_dev && first->st_ino == second->st_ino;
}

void RemoveFile(const std::filesystem::path& path) {
    ::unlink(path.c_str());
}

Status CreateFolders(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (TypeOfFile(folder) == std::filesystem::file_type::directory) return {};
    return Fail(
        ErrorKind::WriteFailed, folder,
        "cannot be made a folder (" + (error ? error.message() : std::string("a file has this name")) + ")");
}

void RemoveFolder(const std::filesystem::path& folder) {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

std::filesystem::path TemporaryFolder() {
    std::error_code error;
    std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    return error ? "/tmp" : folder;
}

Result<std::vector<std::filesystem::path>> FileNamesIn(const std::filesystem::path& folder) {
    std::error_code error;
    std::vector<std::filesystem::path> names;
    for (auto entry = std::filesystem::directory_iterator(folder, error);
         !error && entry != std::filesystem::directory_iterator(); entry.increment(error))
        if (std::error_code ignored; entry->is_regular_file(ignored))
            names.push_back(entry->path().filename());
    if (!error) return names;
    return Fail(ErrorKind::FileMissing, folder, "the folder cannot be read (" + error.message() + ")");
}

bool IsEmptyFolder(const std::filesystem::path& folder) {
    std::error_code error;
    return std::filesystem::is_empty(folder, error) && !error;
}

}  // namespace pictavo::system_file
