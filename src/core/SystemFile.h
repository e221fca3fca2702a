#pragma once

/// The operating system's calls on files and folders, one function each: what ByteSource and OutputFile, the
/// test for missing files and the folders of temporary files are built on.

#include <filesystem>
#include <optional>

#include "core/Bytes.h"
#include "core/Result.h"

namespace pictavo::system_file {

struct Opened {
    int handle;
    std::uint64_t size;  ///< bytes
};

/// Opens a regular file read-only, without ever blocking. Fails with FileMissing.
Result<Opened> OpenForReading(const std::filesystem::path& path);

/// Reads into all of `into` from `offset`; fewer bytes come back only at the end of the file.
Result<std::size_t> ReadAt(int handle, std::uint64_t offset, MutableByteView into);

/// Creates a file without a name in `folder`, with the rights that the user's mask leaves; it vanishes with
/// its handle unless it is named. Nothing where the file system has no such files, or where it fails: then
/// CreateNew tells why.
std::optional<int> CreateNameless(const std::filesystem::path& folder);

/// Gives a nameless file its name. Fails with FileExists when the name is taken, else with WriteFailed.
Status Name(int handle, const std::filesystem::path& path);

/// Creates a file that must not exist yet, following no link, with the rights that the user's mask leaves.
/// Fails with FileExists when the name is taken, else with WriteFailed.
Result<int> CreateNew(const std::filesystem::path& path);

/// Writes all of `bytes` at the file's end. Fails with WriteFailed.
Status Write(int handle, ByteView bytes, const std::filesystem::path& path);

/// Writes all of `bytes` at `offset`. Fails with WriteFailed.
Status WriteAt(int handle, std::uint64_t offset, ByteView bytes, const std::filesystem::path& path);

/// Waits until what was written stands on the disk.
Status Sync(int handle, const std::filesystem::path& path);

/// Makes a rename in `folder` durable. Best effort: some file systems refuse it, and the file is whole
/// anyway.
void SyncFolder(const std::filesystem::path& folder);

void Close(int handle);

/// Renames, replacing a file of the new name.
Status RenameReplacing(const std::filesystem::path& from, const std::filesystem::path& to);

/// Renames, or fails with FileExists when the new name is taken; no moment lies between test and rename.
Status RenameKeeping(const std::filesystem::path& from, const std::filesystem::path& to);

/// Creates a folder that only this user can enter, under a name that begins with `prefix`, in `parent`.
Result<std::filesystem::path> CreatePrivateFolder(const std::filesystem::path& parent,
                                                  const std::string& prefix);

/// Whether users other than this one may create files in `folder`. False when that cannot be told.
bool OthersMayWrite(const std::filesystem::path& folder);

/// Takes the lock that a file of this name stands for, and creates the file where it is missing. The lock
/// goes with the process, however that ends. Nothing, without waiting, when another holder has it, when the
/// name is taken by a link or by another user's file, or when no file can be created there.
std::optional<int> TakeLock(const std::filesystem::path& path);

/// Gives the lock back and removes its file.
void ReleaseLock(int handle, const std::filesystem::path& path);

}  // namespace pictavo::system_file
