/// The chunks of PNG files. What is told of a file, what it is refused for, and whether it is whole must be
/// what a plain list of its chunks gives, and no part of a whole file may be whole that lacks its end.

#include "Holds.h"
#include "Input.h"
#include "PiecewiseSource.h"
#include "PlainPng.h"

namespace pictavo::fuzz {
namespace {

void CheckWholeness(const Bytes& file, std::size_t piece) {
    const auto isWhole = IsWholePng(PiecewiseSource(file, piece));
    Holds(isWhole.has_value(), "memory can be read");
    const auto chunks = plain::ChunksOf(file);
    Holds(*isWhole == (chunks && plain::IsWhole(*chunks)),
          "a file with its chunks up to IEND, and no other, is whole");
}

void CheckInfo(const Bytes& file, std::size_t piece) {
    const auto info = ReadPNGInfo(PiecewiseSource(file, piece));
    const auto expected = plain::PngInfoOf(file);
    Holds(info.has_value() == expected.has_value(), "a file is refused when the plain walk refuses it");
    if (!info) return Holds(info.error().kind == expected.error().kind, "it is refused for the same reason");
    Holds(plain::AreEqual(*info, *expected), "what is told is what the chunks hold");
}

void Run(Input input) {
    const std::size_t piece = PieceLength(input.Byte());
    const std::size_t cut = input.Number16();
    const Bytes file = input.Rest();
    const auto kept = static_cast<std::ptrdiff_t>(std::min(cut, file.size()));
    const Bytes beginning(file.begin(), file.begin() + kept);
    CheckWholeness(file, piece);
    CheckWholeness(beginning, piece);
    CheckInfo(file, piece);
    CheckInfo(beginning, piece);
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
