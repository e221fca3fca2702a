#include "tools/GpnReader.h"

#include <array>
#include <optional>

#include "codec/GPFcodec.h"

namespace pictavo {

namespace {

using Block = std::array<std::uint8_t, kGpnBlock>;

/// Past the end of the container there are zeros.
Result<Block> ReadBlock(const ByteSource& container, std::uint64_t offset) {
    Block block{};
    PICTAVO_TRY([[maybe_unused]] const std::size_t count, container.ReadAt(offset, block));
    return block;
}

/// Whether the magic of a GPF2 (true) or of a GPF (false) stands there.
std::optional<bool> MagicOf(const Block& block) {
    if (AsText(block) == kGpf2Magic) return true;
    if (AsText(block) == kGpfMagic) return false;
    return std::nullopt;
}

/// The block behind the magic is the picture's, whatever it holds.
Result<GpnPicture> ReadHead(const ByteSource& container, std::uint64_t offset, bool isGPF2) {
    PICTAVO_TRY(const Block head, ReadBlock(container, offset + kGpnBlock));
    const auto number = static_cast<std::int16_t>(LittleEndian16(head));
    return GpnPicture{{offset, container.Size()}, number, isGPF2};
}

}  // namespace

Result<std::vector<GpnPicture>> ReadGpn(const ByteSource& container) {
    std::vector<GpnPicture> pictures;
    for (std::uint64_t offset = 0; offset < container.Size();) {
        PICTAVO_TRY(const Block block, ReadBlock(container, offset));
        const auto isGPF2 = MagicOf(block);
        if (isGPF2) {
            if (!pictures.empty()) pictures.back().place.end = offset;
            PICTAVO_TRY(const GpnPicture picture, ReadHead(container, offset, *isGPF2));
            pictures.push_back(picture);
        }
        offset += isGPF2 ? kGpnHead : kGpnBlock;
    }
    return pictures;
}

}  // namespace pictavo
