#include "patch/FreeFlash.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace pictavo {

namespace {

bool IsErased(const std::uint8_t* chunk) {
    std::array<std::uint64_t, 2> halves;
    static_assert(sizeof halves == kFreeFlashChunk);
    std::memcpy(halves.data(), chunk, sizeof halves);
    return (halves[0] & halves[1]) == ~std::uint64_t{0};
}

/// The run of free chunks that the search is in.
class Run {
  public:
    Run(std::uint64_t needed, const std::vector<FileRange>& taken)
        : needed_(std::max(needed, kFreeFlashChunk)), taken_(taken) {}

    /// Takes in the chunks of `bytes`, which lie at `offset`. True as soon as the run is long enough.
    bool Extend(std::uint64_t offset, ByteView bytes) {
        for (std::size_t at = 0; at + kFreeFlashChunk <= bytes.size(); at += kFreeFlashChunk) {
            if (!IsErased(bytes.data() + at) || IsTaken(offset + at)) {
                length_ = 0;
                continue;
            }
            if (length_ == 0) begin_ = offset + at;
            length_ += kFreeFlashChunk;
            if (length_ >= needed_) return true;
        }
        return false;
    }

    FileRange Range() const { return {begin_, begin_ + length_}; }

  private:
    bool IsTaken(std::uint64_t chunk) const {
        return std::any_of(taken_.begin(), taken_.end(), [chunk](const FileRange& range) {
            return range.begin < chunk + kFreeFlashChunk && chunk < range.end;
        });
    }

    std::uint64_t needed_;
    const std::vector<FileRange>& taken_;
    std::uint64_t begin_ = 0;
    std::uint64_t length_ = 0;
};

Failure NoFreeMemory(const ByteSource& flash) {
    return Fail(ErrorKind::NoFreeMemory, flash.Path(), "Can't find free memory in fullflash!");
}

}  // namespace

Result<FileRange> FindFreeFlash(const ByteSource& flash, std::uint64_t start, std::uint64_t needed,
                                const std::vector<FileRange>& taken) {
    Run run(needed, taken);
    std::uint64_t offset = start;
    while (offset + kFreeFlashChunk <= flash.Size()) {
        PICTAVO_TRY(ByteView view, flash.ViewAt(offset));
        std::array<std::uint8_t, kFreeFlashChunk> across{};
        if (view.size() < across.size()) {
            PICTAVO_TRY([[maybe_unused]] const std::size_t count, flash.ReadAt(offset, across));
            view = across;
        }
        if (run.Extend(offset, view)) return run.Range();
        offset += view.size() - view.size() % kFreeFlashChunk;
    }
    return NoFreeMemory(flash);
}

}  // namespace pictavo
