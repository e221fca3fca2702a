#pragma once

/// A source with unreadable pieces, for searches that are to go on behind them: such a piece looks like
/// erased flash.

#include <functional>
#include <set>

#include "core/ByteSource.h"

namespace pictavo {

class GapSource final : public ByteSource {
  public:
    /// Told of each unreadable stretch once, with the offset at which it was met.
    using Note = std::function<void(const Error& error)>;

    /// `source` outlives this.
    GapSource(const ByteSource& source, Note note) : source_(source), note_(std::move(note)) {}

    std::uint64_t Size() const override { return source_.Size(); }

    /// Never fails: what cannot be read is FF, up to the next multiple of 4 KiB.
    Result<ByteView> ViewAt(std::uint64_t offset) const override;
    const std::filesystem::path& Path() const override { return source_.Path(); }

  private:
    ByteView Gap(std::uint64_t offset, const Error& error) const;

    const ByteSource& source_;
    Note note_;
    mutable std::set<std::uint64_t> unreadable_;  // numbers of pieces
};

}  // namespace pictavo
