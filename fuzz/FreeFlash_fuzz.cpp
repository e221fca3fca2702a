/// The search for free flash. What is found must be what chunk after chunk, looked at one by one, gives.

#include "Holds.h"
#include "Input.h"
#include "PiecewiseSource.h"
#include "patch/FreeFlash.h"

namespace pictavo::fuzz {
namespace {

/// Each byte of the input is a stretch: how long, and whether it is erased.
Bytes FlashFrom(Input& input) {
    Bytes flash;
    while (!input.IsUsedUp() && flash.size() < 0x10000) {
        const std::uint8_t stretch = input.Byte();
        flash.insert(flash.end(), stretch % 64U, stretch >= 64 ? 0xFF : 0x00);
    }
    return flash;
}

bool IsFree(const Bytes& flash, std::uint64_t at, const std::vector<FileRange>& taken) {
    if (at + kFreeFlashChunk > flash.size()) return false;
    for (const FileRange& range : taken)
        if (range.Touches({at, at + kFreeFlashChunk})) return false;
    const auto begin = flash.begin() + static_cast<std::ptrdiff_t>(at);
    return std::all_of(begin, begin + kFreeFlashChunk, [](std::uint8_t byte) { return byte == 0xFF; });
}

std::optional<FileRange> FindPlainly(const Bytes& flash, std::uint64_t start, std::uint64_t needed,
                                     const std::vector<FileRange>& taken) {
    FileRange run{start, start};
    for (std::uint64_t at = start; at + kFreeFlashChunk <= flash.size(); at += kFreeFlashChunk) {
        if (!IsFree(flash, at, taken)) {
            run = {at + kFreeFlashChunk, at + kFreeFlashChunk};
            continue;
        }
        run.end = at + kFreeFlashChunk;
        if (run.Length() >= std::max(needed, kFreeFlashChunk)) return run;
    }
    return std::nullopt;
}

void CheckMerged(const std::vector<FileRange>& ranges) {
    for (std::size_t i = 1; i < ranges.size(); ++i)
        Holds(ranges[i - 1].end < ranges[i].begin, "merged ranges neither touch nor overlap");
}

void Run(Input input) {
    const std::size_t piece = PieceLength(input.Byte());
    const std::uint64_t start = input.Number16() % 512;
    const std::uint64_t needed = input.Number16() % 1024;
    std::vector<FileRange> taken;
    for (std::size_t i = input.Byte() % 4U; i > 0; --i) {
        const std::uint64_t begin = input.Number16() % 4096;
        taken.push_back({begin, begin + 1 + input.Byte()});
    }
    taken = Merged(std::move(taken));
    CheckMerged(taken);
    const Bytes flash = FlashFrom(input);
    const auto found = FindFreeFlash(PiecewiseSource(flash, piece), start, needed, taken);
    const auto expected = FindPlainly(flash, start, needed, taken);
    Holds(found.has_value() == expected.has_value(), "a place is found where there is one");
    if (found) Holds(*found == *expected, "the place is the first one");
    if (!found) Holds(found.error().kind == ErrorKind::NoFreeMemory, "a failure says that nothing is free");
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
