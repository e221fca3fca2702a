#pragma once

/// A flash of any size that is erased (FF) but for some pieces, so that a fuzzed one takes no more memory
/// than its pieces do.

#include <algorithm>
#include <vector>

#include "core/ByteSource.h"

namespace pictavo::fuzz {

class SparseFlash final : public ByteSource {
  public:
    explicit SparseFlash(std::uint64_t size) : size_(size) {}

    /// A later piece lies over an earlier one.
    void Put(std::uint64_t offset, Bytes bytes) { pieces_.push_back({offset, std::move(bytes)}); }

    std::uint64_t Size() const override { return size_; }

    /// Byte by byte inside of pieces, up to the next piece outside of them.
    Result<ByteView> ViewAt(std::uint64_t offset) const override {
        if (offset >= size_) return ByteView();
        std::uint64_t erased = std::min<std::uint64_t>(kErased.size(), size_ - offset);
        for (auto piece = pieces_.rbegin(); piece != pieces_.rend(); ++piece) {
            if (offset >= piece->offset && offset - piece->offset < piece->bytes.size())
                return ByteView(piece->bytes).subspan(static_cast<std::size_t>(offset - piece->offset), 1);
            if (piece->offset > offset) erased = std::min(erased, piece->offset - offset);
        }
        return ByteView(kErased).first(static_cast<std::size_t>(erased));
    }

    const std::filesystem::path& Path() const override { return path_; }

    /// The byte at `offset`; 0 past the end.
    std::uint8_t At(std::uint64_t offset) const {
        if (offset >= size_) return 0;
        for (auto piece = pieces_.rbegin(); piece != pieces_.rend(); ++piece)
            if (offset >= piece->offset && offset - piece->offset < piece->bytes.size())
                return piece->bytes[static_cast<std::size_t>(offset - piece->offset)];
        return 0xFF;
    }

  private:
    struct Piece {
        std::uint64_t offset;
        Bytes bytes;
    };

    inline static const Bytes kErased = Bytes(4096, 0xFF);

    std::uint64_t size_;
    std::vector<Piece> pieces_;
    std::filesystem::path path_;
};

}  // namespace pictavo::fuzz
