#pragma once

/// The operating system's calls on names, on what stands under them, and on folders. Like those of
/// SystemFile.h they take paths of any length.

#include <filesystem>
#include <vector>

#include "core/Result.h"

namespace pictavo::system_file {

/// The path as it is from everywhere; the same path when the system does not tell where the program stands.
std::filesystem::path WholePath(const std::filesystem::path& path);

/// What stands under a name, a link being a link: not_found when the name is free, none when the system does
/// not tell.
std::filesystem::file_type TypeOfName(const std::filesystem::path& path);

/// The same behind all links.
std::filesystem::file_type TypeOfFile(const std::filesystem::path& path);

/// Both name one existing file or folder, also through links. Fails with WriteFailed, naming `one`, when the
/// system does not tell: what is about to be written over must then be taken for the same.
Result<bool> AreSame(const std::filesystem::path& one, const std::filesystem::path& other);

/// Deletes a file; one that is not there, or that stays, is fine.
void RemoveFile(const std::filesystem::path& path);

/// Creates a folder and its parents where they are missing. Fails with WriteFailed.
Status CreateFolders(const std::filesystem::path& folder);

/// Deletes a folder with all that stands in it, following no link; one that is not there, or what stays, is
/// fine.
void RemoveFolder(const std::filesystem::path& folder);

/// The system's folder for temporary files, whether or not it is there.
std::filesystem::path TemporaryFolder();

/// The names of the regular files in a folder, also through links. Fails with FileMissing when the folder can
/// not be read.
Result<std::vector<std::filesystem::path>> FileNamesIn(const std::filesystem::path& folder);

/// False as well when the folder cannot be read.
bool IsEmptyFolder(const std::filesystem::path& folder);

}  // namespace pictavo::system_file
