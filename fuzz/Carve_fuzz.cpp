/// Carving embedded files. What is found must be what the plain procedure finds, block after block.

#include "Holds.h"
#include "Input.h"
#include "PiecewiseSource.h"
#include "tests/tools/PlainCarver.h"

namespace pictavo::fuzz {
namespace {

constexpr std::array<EmbeddedKind, 3> kKinds{kEmbeddedGif, kEmbeddedPng, kEmbeddedXml};

/// Signatures and fillings, so that an input of few bytes makes a source of many blocks.
Bytes SourceFrom(Input& input, const EmbeddedKind& kind) {
    Bytes source;
    const auto append = [&](std::string_view text) { source.insert(source.end(), text.begin(), text.end()); };
    while (!input.IsUsedUp() && source.size() < 2'000) {
        const std::uint8_t part = input.Byte();
        if (part < 48)
            append(part % 2 == 0 ? kind.start.bytes : kind.end.bytes);
        else if (part < 64)
            append(kind.start.bytes.substr(0, part % 8U));
        else if (part < 192)
            source.insert(source.end(), input.Byte(), part);
        else
            source.push_back(part);
    }
    return source;
}

void Run(Input input) {
    const std::uint8_t choice = input.Byte();
    const EmbeddedKind& kind = kKinds[choice % kKinds.size()];
    const std::size_t piece = PieceLength(input.Byte());
    const Bytes bytes = choice >= 128 ? input.Rest() : SourceFrom(input, kind);
    const PiecewiseSource source(bytes, piece);
    std::vector<FileRange> found;
    std::uint64_t reached = 0;
    const Status status = CarveEmbeddedFiles(
        source, kind, [&](const FileRange& file) { found.push_back(file); },
        [&](std::uint64_t offset) {
            Holds(offset >= reached, "the offset reached never goes back");
            reached = offset;
            return true;
        });
    Holds(status.has_value(), "memory can be read");
    Holds(found == tests::PlainCarver(bytes, kind).Run(), "the files are those of the plain procedure");
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
