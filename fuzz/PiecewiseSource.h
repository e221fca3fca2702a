#pragma once

/// Bytes in memory that are handed out in short pieces, each in memory of its own which goes away with the
/// next call: who holds on to an old view, or takes a piece for the whole, is found out.

#include <algorithm>

#include "core/ByteSource.h"

namespace pictavo::fuzz {

class PiecewiseSource final : public ByteSource {
  public:
    /// No piece is longer than `longest`, which is at least 1.
    PiecewiseSource(Bytes bytes, std::size_t longest) : bytes_(std::move(bytes)), longest_(longest) {}

    std::uint64_t Size() const override { return bytes_.size(); }

    Result<ByteView> ViewAt(std::uint64_t offset) const override {
        const std::size_t from = static_cast<std::size_t>(std::min<std::uint64_t>(offset, bytes_.size()));
        const ByteView piece = ByteView(bytes_).subspan(from, std::min(longest_, bytes_.size() - from));
        piece_ = std::make_unique<Bytes>(piece.begin(), piece.end());
        return ByteView(*piece_);
    }

    const std::filesystem::path& Path() const override { return path_; }

  private:
    Bytes bytes_;
    std::size_t longest_;
    mutable std::unique_ptr<Bytes> piece_;
    std::filesystem::path path_;
};

/// The longest piece that a byte of the input asks for: 1 to 254, or at 0 and 255 all at once.
constexpr std::size_t PieceLength(std::uint8_t wish) {
    constexpr std::size_t kAllAtOnce = std::size_t{1} << 30;
    return wish == 0 || wish == 255 ? kAllAtOnce : wish;
}

}  // namespace pictavo::fuzz
