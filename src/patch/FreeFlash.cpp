#include "patch/FreeFlash.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstring>

#include "core/FullflashImage.h"

namespace pictavo {

namespace {

bool IsErased(const std::uint8_t* chunk) {
    std::array<std::uint64_t, 2> halves;
    static_assert(sizeof halves == kFreeFlashChunk);
    std::memcpy(halves.data(), chunk, sizeof halves);
    return (halves[0] & halves[1]) == ~std::uint64_t{0};
}

[[maybe_unused]] bool AreMerged(const std::vector<FileRange>& ranges) {
    const auto meet = [](const FileRange& one, const FileRange& next) { return next.begin <= one.end; };
    return std::adjacent_find(ranges.begin(), ranges.end(), meet) == ranges.end();
}

/// The run of free chunks that the search is in.
class FreeRun {
  public:
    FreeRun(std::uint64_t needed, const std::vector<FileRange>& taken)
        : needed_(std::max(needed, kFreeFlashChunk)), taken_(taken) {}

    /// Takes in the chunks of `bytes`, which lie at `offset`. True as soon as the run is long enough.
    bool Extend(std::uint64_t offset, ByteView bytes) {
        const std::uint64_t end = bytes.size() - bytes.size() % kFreeFlashChunk;
        for (std::uint64_t at = 0; at < end && !IsLongEnough();)
            at = length_ == 0 ? Leap(offset, bytes.data(), at, end) : Step(offset, bytes.data(), at);
        return IsLongEnough();
    }

    FileRange Range() const { return {begin_, begin_ + length_}; }

  private:
    bool IsLongEnough() const { return length_ >= needed_; }

    /// One chunk that may prolong the run.
    std::uint64_t Step(std::uint64_t offset, const std::uint8_t* bytes, std::uint64_t at) {
        length_ = IsFree(offset, bytes, at) ? length_ + kFreeFlashChunk : 0;
        return at + kFreeFlashChunk;
    }

    /// A run that begins at `at` or soon after it holds the chunk at the far end of a leap of the needed
    /// length. When that one is not free, none of the chunks before it need be looked at; when it is, the run
    /// is followed back to its begin.
    std::uint64_t Leap(std::uint64_t offset, const std::uint8_t* bytes, std::uint64_t at, std::uint64_t end) {
        const std::uint64_t chunks = (needed_ + kFreeFlashChunk - 1) / kFreeFlashChunk;
        const std::uint64_t next = std::min(end, at + chunks * kFreeFlashChunk);
        std::uint64_t begin = next;
        while (begin > at && IsFree(offset, bytes, begin - kFreeFlashChunk)) begin -= kFreeFlashChunk;
        begin_ = offset + begin;
        length_ = next - begin;
        return next;
    }

    bool IsFree(std::uint64_t offset, const std::uint8_t* bytes, std::uint64_t at) const {
        return IsErased(bytes + at) && !IsTaken(offset + at);
    }

    bool IsTaken(std::uint64_t chunk) const {
        const auto behind =
            std::upper_bound(taken_.begin(), taken_.end(), chunk,
                             [](std::uint64_t place, const FileRange& range) { return place < range.end; });
        return behind != taken_.end() && behind->begin < chunk + kFreeFlashChunk;
    }

    std::uint64_t needed_;
    const std::vector<FileRange>& taken_;
    std::uint64_t begin_ = 0;
    std::uint64_t length_ = 0;
};

}  // namespace

Error NoFreeMemoryError(const std::filesystem::path& flash) {
    return {ErrorKind::NoFreeMemory, flash, std::nullopt, "Can't find free memory in fullflash!"};
}

std::vector<FileRange> Merged(std::vector<FileRange> ranges) {
    std::sort(ranges.begin(), ranges.end(),
              [](const FileRange& one, const FileRange& other) { return one.begin < other.begin; });
    std::vector<FileRange> merged;
    for (const FileRange& range : ranges) {
        if (!merged.empty() && range.begin <= merged.back().end)
            merged.back().end = std::max(merged.back().end, range.end);
        else
            merged.push_back(range);
    }
    return merged;
}

Result<FileRange> FindFreeFlash(const ByteSource& flash, std::uint64_t start, std::uint64_t needed,
                                const std::vector<FileRange>& taken) {
    assert(AreMerged(taken));
    FreeRun run(needed, taken);
    const std::uint64_t end = std::min(flash.Size(), kAddressableBytes);
    std::uint64_t offset = start;
    while (offset + kFreeFlashChunk <= end) {
        PICTAVO_TRY(ByteView view, flash.ViewAt(offset));
        view = view.first(static_cast<std::size_t>(std::min<std::uint64_t>(view.size(), end - offset)));
        std::array<std::uint8_t, kFreeFlashChunk> across{};
        if (view.size() < across.size()) {
            PICTAVO_TRY([[maybe_unused]] const std::size_t count, flash.ReadAt(offset, across));
            view = across;
        }
        if (run.Extend(offset, view)) return run.Range();
        offset += view.size() - view.size() % kFreeFlashChunk;
    }
    return Failure(NoFreeMemoryError(flash.Path()));
}

}  // namespace pictavo
