/// The chunks of PNG files. Nothing past the end of a file is reported, and no part of a whole file is whole.

#include <algorithm>

#include "Holds.h"
#include "Input.h"
#include "PiecewiseSource.h"
#include "tools/PNGcodec.h"

namespace pictavo::fuzz {
namespace {

constexpr std::size_t kShortestWhole = 20;  // the signature and an IEND chunk

/// Whether `bytes` stand somewhere in the file.
bool HoldsNumber(const Bytes& file, std::int16_t number) {
    const std::array<std::uint8_t, 2> bytes{static_cast<std::uint8_t>(number >> 8 & 0xFF),
                                            static_cast<std::uint8_t>(number & 0xFF)};
    return std::search(file.begin(), file.end(), bytes.begin(), bytes.end()) != file.end();
}

bool HoldsColour(const Bytes& file, const PaletteEntry& entry) {
    const std::array<std::uint8_t, 3> bytes{entry.red, entry.green, entry.blue};
    return std::search(file.begin(), file.end(), bytes.begin(), bytes.end()) != file.end();
}

/// What is told of a palette stands in the file.
void CheckPalette(const Bytes& file, const PNGInfo& info) {
    const auto entries = static_cast<std::size_t>(info.paletteEntries);
    Holds(entries <= info.palette.size() && 3 * entries <= file.size(), "no entry lies past the end");
    for (std::size_t i = 0; i < entries; ++i)
        Holds(HoldsColour(file, info.palette[i]), "an entry is the file's");
}

void CheckInfo(const Bytes& file, const PNGInfo& info) {
    Holds(info.width >= 0 && info.height >= 0, "no size is negative");
    Holds(info.notices.size() <= 2, "each notice stands once");
    const bool isByte = info.background >= 0 && info.background <= 0xFF;
    Holds(isByte || HoldsNumber(file, info.background), "the background is the file's");
    CheckPalette(file, info);
}

/// Nothing behind the end of the picture makes it less whole; anything missing before does.
void CheckWholeness(const Bytes& file, std::size_t piece, std::size_t cut) {
    const auto isWhole = IsWholePng(PiecewiseSource(file, piece));
    Holds(isWhole.has_value(), "memory can be read");
    Bytes shorter(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(std::min(cut, file.size())));
    const bool isShorterWhole = *IsWholePng(MemorySource(shorter));
    Holds(!isShorterWhole || (*isWhole && shorter.size() >= kShortestWhole),
          "what a whole file begins is whole");
}

bool IsRefusal(const Error& error) {
    return error.kind == ErrorKind::UnknownFile || error.kind == ErrorKind::Overflow ||
           error.kind == ErrorKind::Malformed;
}

void Run(Input input) {
    const std::size_t piece = PieceLength(input.Byte());
    const std::size_t cut = input.Number16();
    const Bytes file = input.Rest();
    CheckWholeness(file, piece, cut);
    const auto info = ReadPNGInfo(PiecewiseSource(file, piece));
    Holds(info || IsRefusal(info.error()), "a file is read, or refused for what it holds");
    if (info) CheckInfo(file, *info);
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
