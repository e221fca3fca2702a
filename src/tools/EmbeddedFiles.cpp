#include "tools/EmbeddedFiles.h"

#include <algorithm>

namespace pictavo {

namespace {

constexpr std::uint64_t kBlock = 255;

/// From the start signature's first byte to the end signature's.
struct Signed {
    std::uint64_t start = 0;
    std::uint64_t end = 0;
};

class Scan {
  public:
    Scan(const ByteSource& source, const EmbeddedKind& kind, const SearchStep& step)
        : source_(source), kind_(kind), step_(step) {}

    /// The next file that starts at or behind `from`.
    Result<std::optional<Signed>> Next(std::uint64_t from) {
        PICTAVO_TRY(const auto start, Find(kind_.start, from, source_.Size()));
        if (!start) return std::optional<Signed>();
        PICTAVO_TRY(const auto end, Find(kind_.end, *start, source_.Size()));
        if (!end) return std::optional<Signed>();
        PICTAVO_TRY(const std::uint64_t last, LastStart(*start, *end));
        return std::optional(Signed{last, *end});
    }

    FileRange RangeOf(const Signed& found) const {
        const auto end = static_cast<std::int64_t>(Behind(found)) + kind_.endAdjustment;
        return {found.start, std::min(static_cast<std::uint64_t>(end), source_.Size())};
    }

    /// The first byte behind the end signature.
    std::uint64_t Behind(const Signed& found) const { return found.end + kind_.end.bytes.size(); }

  private:
    /// The start that is in force at the end signature: an end in a start's own block belongs to it; else a
    /// later start takes over, if one begins in a later block.
    Result<std::uint64_t> LastStart(std::uint64_t start, std::uint64_t end) {
        while (end + kind_.end.bytes.size() > start + kBlock) {
            const std::uint64_t nextBlock = start + kBlock - 1 - kind_.start.bytes.size();
            PICTAVO_TRY(const auto later, Find(kind_.start, nextBlock, end));
            if (!later) break;
            start = *later;
        }
        return start;
    }

    Result<std::optional<std::uint64_t>> Find(const Signature& signature, std::uint64_t from,
                                              std::uint64_t limit) {
        const auto step = [this](std::uint64_t offset) {
            reached_ = std::max(reached_, offset);
            return step_(reached_);
        };
        return FindSignature(source_, signature, from, limit, step);
    }

    const ByteSource& source_;
    const EmbeddedKind& kind_;
    const SearchStep& step_;
    std::uint64_t reached_ = 0;
};

}  // namespace

Status CarveEmbeddedFiles(const ByteSource& source, const EmbeddedKind& kind, const EmbeddedFileTaker& take,
                          const SearchStep& step) {
    Scan scan(source, kind, step);
    std::uint64_t from = 0;
    for (;;) {
        PICTAVO_TRY(const auto found, scan.Next(from));
        if (!found) return {};
        take(scan.RangeOf(*found));
        from = scan.Behind(*found);
    }
}

}  // namespace pictavo
