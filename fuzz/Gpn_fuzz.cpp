/// Splitting GPN containers. The pictures are those that the blocks, looked at one by one, give, and their
/// pieces laid one behind the other are the container from its first picture on.

#include "Holds.h"
#include "Input.h"
#include "PiecewiseSource.h"
#include "codec/GPFcodec.h"
#include "tools/GpnReader.h"

namespace pictavo::fuzz {
namespace {

std::string_view BlockAt(const Bytes& container, std::size_t at) {
    return AsText(container).substr(std::min(at, container.size()), kGpnBlock);
}

/// The number in the block at `at`; what the container lacks is 0.
int NumberAt(const Bytes& container, std::size_t at) {
    const auto byte = [&](std::size_t i) { return i < container.size() ? container[i] : 0; };
    return static_cast<std::int16_t>(byte(at) | byte(at + 1) << 8);
}

/// The container block by block, as its format is described.
std::vector<GpnPicture> ReadPlainly(const Bytes& container) {
    std::vector<GpnPicture> pictures;
    for (std::size_t at = 0; at < container.size(); at += kGpnBlock) {
        const bool isGPF2 = BlockAt(container, at) == kGpf2Magic;
        if (!isGPF2 && BlockAt(container, at) != kGpfMagic) continue;
        if (!pictures.empty()) pictures.back().place.end = at;
        pictures.push_back({{at, container.size()}, NumberAt(container, at + kGpnBlock), isGPF2});
        at += kGpnBlock;
    }
    return pictures;
}

bool AreEqual(const GpnPicture& one, const GpnPicture& other) {
    return one.place == other.place && one.number == other.number && one.isGPF2 == other.isGPF2;
}

void CheckPieces(const std::vector<GpnPicture>& pictures, const Bytes& container) {
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        const bool isLast = i + 1 == pictures.size();
        Holds(pictures[i].place.end == (isLast ? container.size() : pictures[i + 1].place.begin),
              "the pieces laid one behind the other are the container");
        Holds(pictures[i].place.Length() >= kGpnBlock, "a piece holds its magic");
    }
}

void Run(Input input) {
    const std::size_t piece = PieceLength(input.Byte());
    const Bytes container = input.Rest();
    const auto pictures = ReadGpn(PiecewiseSource(container, piece));
    Holds(pictures.has_value(), "memory can be read");
    const auto expected = ReadPlainly(container);
    Holds(std::equal(pictures->begin(), pictures->end(), expected.begin(), expected.end(), AreEqual),
          "the pictures are those of the blocks");
    CheckPieces(*pictures, container);
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
