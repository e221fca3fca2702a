#pragma once

/// The operating system's calls on files and folders, one function each: what ByteSource and OutputFile, the
/// test for missing files and the folders of temporary files are built on.

#include <cstdint>
#include <filesystem>
#include <optional>

#include "core/Bytes.h"
#include "core/Durability.h"
#include "core/Result.h"

namespace pictavo::system_file {

/// The system's number for an open file, to be closed by whoever was given it.
using Handle = std::intptr_t;

inline constexpr Handle kNoHandle = -1;

struct Opened {
    Handle handle;
    std::uint64_t size;  ///< bytes
};

/// Opens a regular file read-only, without ever blocking. Fails with FileMissing.
Result<Opened> OpenForReading(const std::filesystem::path& path);

/// Reads into all of `into` from `offset`; fewer bytes come back only at the end of the file. Fails with
/// ReadFailed, naming no file.
Result<std::size_t> ReadAt(Handle handle, std::uint64_t offset, MutableByteView into);

/// Creates a file without a name in `folder`, with the rights that the user's mask leaves; it vanishes with
/// its handle unless it is named. Nothing where the file system has no such files, or where it fails: then
/// CreateNew tells why.
std::optional<Handle> CreateNameless(const std::filesystem::path& folder);

/// Gives a nameless file its name. Fails with FileExists when the name is taken, else with WriteFailed.
Status Name(Handle handle, const std::filesystem::path& path);

/// Creates a file that must not exist yet, following no link, with the rights that the user's mask leaves.
/// Fails with FileExists when the name is taken, else with WriteFailed.
Result<Handle> CreateNew(const std::filesystem::path& path);

/// Writes all of `bytes` at the file's end. Fails with WriteFailed.
Status Write(Handle handle, ByteView bytes, const std::filesystem::path& path);

/// Writes all of `bytes` at `offset`. Fails with WriteFailed.
Status WriteAt(Handle handle, std::uint64_t offset, ByteView bytes, const std::filesystem::path& path);

/// Waits until what was written stands on the disk. Fails with WriteFailed.
Status Sync(Handle handle, const std::filesystem::path& path);

/// Makes a name that was given in `folder` durable. Best effort: some file systems refuse it, and the file is
/// whole anyway. Does nothing where a synced rename does so itself.
void SyncFolder(const std::filesystem::path& folder);

void Close(Handle handle);

/// Closes a file that was written, whatever comes of it. Fails with WriteFailed, naming `path`, where the
/// system tells only now that not all of it could be stored.
Status CloseWritten(Handle handle, const std::filesystem::path& path);

/// Renames, replacing a file of the new name. Fails with WriteFailed; both files are then as they were.
Status RenameReplacing(const std::filesystem::path& from, const std::filesystem::path& to,
                       Durability durability);

/// Renames, or fails with FileExists when the new name is taken; no moment lies between test and rename.
Status RenameKeeping(const std::filesystem::path& from, const std::filesystem::path& to,
                     Durability durability);

/// Creates a folder that only this user can enter, under a name that begins with `prefix`, in `parent`.
/// Fails with WriteFailed, naming `parent`.
Result<std::filesystem::path> CreatePrivateFolder(const std::filesystem::path& parent,
                                                  const std::string& prefix);

/// Whether users other than this one may create files in `folder`. True also when that cannot be told.
bool OthersMayWrite(const std::filesystem::path& folder);

/// Takes the lock that a file of this name stands for, and creates the file where it is missing. The lock
/// goes with the process, however that ends. Nothing, without waiting, when another holder has it, when the
/// name is taken by a link or by another user's file, or when no file can be created there.
std::optional<Handle> TakeLock(const std::filesystem::path& path);

/// Gives the lock back and removes its file.
void ReleaseLock(Handle handle, const std::filesystem::path& path);

}  // namespace pictavo::system_file
