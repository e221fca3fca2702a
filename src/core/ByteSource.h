#pragma once

/// Random access to bytes that are only ever read: an open file, or memory. There is no way to write through
/// a ByteSource, and none of it is loaded before it is asked for.

#include <filesystem>
#include <memory>

#include "core/Bytes.h"
#include "core/Result.h"
#include "core/SystemFile.h"

namespace pictavo {

class ByteSource {
  public:
    virtual ~ByteSource() = default;

    /// Length in bytes, as it was when the source was opened.
    virtual std::uint64_t Size() const = 0;

    /// The bytes at hand from `offset` on: at least one before the end, none at or past it. The view stays
    /// valid until the next call on this source. Fails with ReadFailed.
    virtual Result<ByteView> ViewAt(std::uint64_t offset) const = 0;

    /// The file behind the source, for error messages; empty for memory.
    virtual const std::filesystem::path& Path() const = 0;

    /// Copies the bytes from `offset` on into `into` and returns their number. Where the source ends first,
    /// the rest of `into` keeps what it held: this is the rule of every read past the end of a flash.
    Result<std::size_t> ReadAt(std::uint64_t offset, MutableByteView into) const;

    /// Exactly `length` bytes from `offset` on. Fails with Truncated when the source ends first.
    Result<Bytes> ReadExactly(std::uint64_t offset, std::uint64_t length) const;
};

/// Bytes in memory; owns them.
class MemorySource final : public ByteSource {
  public:
    explicit MemorySource(Bytes bytes) : bytes_(std::move(bytes)) {}

    std::uint64_t Size() const override { return bytes_.size(); }
    Result<ByteView> ViewAt(std::uint64_t offset) const override;
    const std::filesystem::path& Path() const override { return path_; }

  private:
    Bytes bytes_;
    std::filesystem::path path_;
};

/// A file opened read-only, read in windows of 128 KiB that stay at hand, so that small reads are cheap and
/// memory stays constant. Not mapped: a file that shrinks is an error here, not a signal. For one thread.
class FileSource final : public ByteSource {
  public:
    /// Fails with FileMissing when the path cannot be opened or is no regular file (a folder, a pipe);
    /// never blocks on one.
    static Result<std::unique_ptr<FileSource>> Open(const std::filesystem::path& path);
    ~FileSource() override;
    FileSource(const FileSource&) = delete;
    FileSource& operator=(const FileSource&) = delete;

    std::uint64_t Size() const override { return size_; }
    Result<ByteView> ViewAt(std::uint64_t offset) const override;
    const std::filesystem::path& Path() const override { return path_; }

  private:
    FileSource(std::filesystem::path path, system_file::Handle handle, std::uint64_t size);
    Status Fill(std::uint64_t offset) const;
    Status ReadWindow(std::uint64_t start, std::size_t mostLength) const;

    std::filesystem::path path_;
    system_file::Handle handle_;
    std::uint64_t size_;
    mutable Bytes window_;
    mutable std::uint64_t windowStart_ = 0;
};

}  // namespace pictavo
