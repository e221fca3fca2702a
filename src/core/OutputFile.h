#pragma once

/// The only way to write a file that a user asked for: the bytes go to a file without a name, or where the
/// file system has none to a hidden neighbour of the target, which takes the target's name when it is
/// complete. Killed or out of disk at any moment, the target is as it was.

#include <filesystem>

#include "core/ByteSource.h"
#include "core/Durability.h"
#include "core/Result.h"
#include "core/SystemFile.h"

namespace pictavo {

enum class CommitMode {
    Replace,       ///< a file of the target's name is replaced
    KeepExisting,  ///< a file of the target's name stays, and the commit fails with FileExists
};

class OutputFile {
  public:
    /// Begins a file that will be `target`. Fails with WriteFailed, naming `target`, when its folder does not
    /// exist or cannot be written.
    static Result<OutputFile> Create(const std::filesystem::path& target);

    /// The same by way of a hidden neighbour; Create does so where it must.
    static Result<OutputFile> CreateNamed(const std::filesystem::path& target);

    OutputFile(OutputFile&& other) noexcept;
    OutputFile& operator=(OutputFile&&) = delete;

    /// Discards what was written unless it was committed.
    ~OutputFile();

    /// Appends bytes. Fails with WriteFailed; the file is then good for discarding only.
    Status Write(ByteView bytes);

    /// Writes over bytes that were appended before, from `offset` on. Fails as Write does.
    Status WriteAt(std::uint64_t offset, ByteView bytes);

    /// Gives the file its name. To be called once. After a failure the target is as it was, and what was
    /// written is discarded.
    Status Commit(CommitMode mode, Durability durability = Durability::Relaxed);

  private:
    OutputFile(std::filesystem::path target, std::filesystem::path temporary, system_file::Handle handle);
    Status NameAndClose();
    Status CloseAndRename(CommitMode mode, Durability durability);
    Status TakeTemporaryName();
    Status Close();
    void Discard();

    std::filesystem::path target_;
    std::filesystem::path temporary_;  // empty while the file has no name
    system_file::Handle handle_;
};

/// Writes a whole file at once through OutputFile. For any thread.
Status WriteWholeFile(const std::filesystem::path& target, ByteView bytes, CommitMode mode,
                      Durability durability = Durability::Relaxed);

/// Appends `length` bytes of `source` from `offset` on, in pieces. Fails with Truncated when the source ends
/// first, with ReadFailed and with WriteFailed.
Status CopyRange(const ByteSource& source, std::uint64_t offset, std::uint64_t length, OutputFile& file);

/// Creates `folder` and its parents where they are missing. Fails with WriteFailed.
Status EnsureFolder(const std::filesystem::path& folder);

/// True when nothing has this name. Unlike FileMissing it counts a file that is there and cannot be opened,
/// which must not be passed over as if it were not, and a link that leads nowhere.
bool NameIsFree(const std::filesystem::path& path);

/// True when both paths name one existing file, also through links. Fails with WriteFailed, naming `one`,
/// when the system does not tell.
Result<bool> IsSameFile(const std::filesystem::path& one, const std::filesystem::path& other);

}  // namespace pictavo
