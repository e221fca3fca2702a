#include "core/ByteSource.h"

#include <algorithm>

namespace pictavo {

namespace {

constexpr std::size_t kWindowSize = std::size_t{128} * 1024;
constexpr std::size_t kWindowGrid =
    std::size_t{4} * 1024;  // a window starts at a page of the system's file cache

}  // namespace

Result<std::size_t> ByteSource::ReadAt(std::uint64_t offset, MutableByteView into) const {
    std::size_t done = 0;
    while (done < into.size()) {
        PICTAVO_TRY(const ByteView view, ViewAt(offset + done));
        if (view.empty()) break;
        const std::size_t count = std::min(view.size(), into.size() - done);
        std::copy_n(view.begin(), count, into.begin() + static_cast<std::ptrdiff_t>(done));
        done += count;
    }
    return done;
}

Result<Bytes> ByteSource::ReadExactly(std::uint64_t offset, std::uint64_t length) const {
    if (offset > Size() || length > Size() - offset)
        return Fail(ErrorKind::Truncated, Path(), offset, "the file ends inside what is to be read here");
    Bytes bytes(static_cast<std::size_t>(length));
    PICTAVO_TRY(const std::size_t count, ReadAt(offset, bytes));
    if (count < bytes.size()) return Fail(ErrorKind::ReadFailed, Path(), offset, "the file became shorter");
    return bytes;
}

Result<ByteView> MemorySource::ViewAt(std::uint64_t offset) const {
    if (offset >= bytes_.size()) return ByteView();
    return ByteView(bytes_).subspan(static_cast<std::size_t>(offset));
}

Result<std::unique_ptr<FileSource>> FileSource::Open(const std::filesystem::path& path) {
    PICTAVO_TRY(const system_file::Opened opened, system_file::OpenForReading(path));
    return std::unique_ptr<FileSource>(new FileSource(path, opened.handle, opened.size));
}

FileSource::FileSource(std::filesystem::path path, system_file::Handle handle, std::uint64_t size)
    : path_(std::move(path)), handle_(handle), size_(size) {}

FileSource::~FileSource() {
    system_file::Close(handle_);
}

Result<ByteView> FileSource::ViewAt(std::uint64_t offset) const {
    if (offset >= size_) return ByteView();
    if (offset < windowStart_ || offset - windowStart_ >= window_.size()) PICTAVO_TRY(Fill(offset));
    return ByteView(window_).subspan(static_cast<std::size_t>(offset - windowStart_));
}

Status FileSource::Fill(std::uint64_t offset) const {
    const std::uint64_t start = offset - offset % kWindowGrid;
    // What cannot be read must not take what can be read before it away.
    if (!ReadWindow(start, kWindowSize)) PICTAVO_TRY(ReadWindow(start, kWindowGrid));
    if (offset - start >= window_.size())
        return Fail(ErrorKind::ReadFailed, path_, offset, "the file became shorter");
    return {};
}

Status FileSource::ReadWindow(std::uint64_t start, std::size_t mostLength) const {
    window_.resize(static_cast<std::size_t>(std::min<std::uint64_t>(mostLength, size_ - start)));
    const auto count = system_file::ReadAt(handle_, start, window_);
    window_.resize(count.value_or(0));
    windowStart_ = start;
    if (!count) return Failure(WithPath(count.error(), path_));
    return {};
}

}  // namespace pictavo
