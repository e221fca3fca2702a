#pragma once

/// Bytes in memory of which a range cannot be read.

#include "core/ByteSource.h"
#include "core/FileRange.h"

namespace pictavo::tests {

class BrokenSource final : public ByteSource {
  public:
    BrokenSource(Bytes bytes, const FileRange& broken) : bytes_(std::move(bytes)), broken_(broken) {}

    std::uint64_t Size() const override { return bytes_.size(); }

    Result<ByteView> ViewAt(std::uint64_t offset) const override {
        if (offset >= broken_.begin && offset < broken_.end)
            return Fail(ErrorKind::ReadFailed, path_, offset, "cannot be read (Input/output error)");
        if (offset >= bytes_.size()) return ByteView();
        const std::uint64_t end = offset < broken_.begin ? broken_.begin : bytes_.size();
        return ByteView(bytes_).subspan(static_cast<std::size_t>(offset),
                                        static_cast<std::size_t>(end - offset));
    }

    const std::filesystem::path& Path() const override { return path_; }

  private:
    Bytes bytes_;
    FileRange broken_;
    std::filesystem::path path_ = "broken.bin";
};

}  // namespace pictavo::tests
