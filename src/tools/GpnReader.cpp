#include "tools/GpnReader.h"

#include <optional>
#include <string_view>

#include "codec/GPFcodec.h"
#include "core/Cursor.h"

namespace pictavo {

namespace {

static_assert(kGpfMagic.front() == kGpf2Magic.front());

/// Whether the magic of a GPF2 (true) or of a GPF (false) stands there. Of most blocks the first byte says
/// that none does.
std::optional<bool> MagicOf(std::string_view block) {
    if (block.front() != kGpfMagic.front()) return std::nullopt;
    if (block == kGpf2Magic) return true;
    if (block == kGpfMagic) return false;
    return std::nullopt;
}

/// Past the end of the container there are zeros.
ByteView NextBlock(Cursor& cursor) {
    return {cursor.Take(kGpnBlock), kGpnBlock};
}

/// The block behind the magic is the picture's, whatever it holds.
GpnPicture ReadHead(Cursor& cursor, const FileRange& place, bool isGPF2) {
    return {place, static_cast<std::int16_t>(LittleEndian16(NextBlock(cursor))), isGPF2};
}

}  // namespace

Result<std::vector<GpnPicture>> ReadGpn(const ByteSource& container) {
    std::vector<GpnPicture> pictures;
    Cursor cursor(container, 0);
    while (!cursor.AtEnd()) {
        const std::uint64_t offset = cursor.Position();
        const auto isGPF2 = MagicOf(AsText(NextBlock(cursor)));
        if (!isGPF2) continue;
        if (!pictures.empty()) pictures.back().place.end = offset;
        pictures.push_back(ReadHead(cursor, {offset, container.Size()}, *isGPF2));
    }
    PICTAVO_TRY(cursor.Health());
    return pictures;
}

}  // namespace pictavo
