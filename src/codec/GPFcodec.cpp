#include "codec/GPFcodec.h"

#include <algorithm>

#include "codec/PictureType.h"
#include "core/BasicCalculations_Tarsk.h"

namespace pictavo {

namespace {

constexpr std::size_t kMagicSize = 16;
static_assert(kGpfMagic.size() == kMagicSize && kGpf2Magic.size() == kMagicSize);

/// Places of the fields that differ between the two headers.
struct HeaderLayout {
    std::size_t width;
    std::size_t height;
    std::size_t type;
};

constexpr std::size_t kNumberAt = 0x10;
constexpr HeaderLayout kGpfLayout{0x14, 0x15, 0x16};
constexpr HeaderLayout kGpf2Layout{0x14, 0x16, 0x18};

GpfHeader ParseHeader(ByteView bytes, bool isGPF2) {
    const HeaderLayout& layout = isGPF2 ? kGpf2Layout : kGpfLayout;
    const auto size = [&](std::size_t at) -> std::uint16_t {
        if (isGPF2) return LittleEndian16(bytes.subspan(at));
        return bytes[at];
    };
    GpfHeader header;
    header.width = size(layout.width);
    header.height = size(layout.height);
    header.type = LittleEndian16(bytes.subspan(layout.type));
    header.number = LittleEndian16(bytes.subspan(kNumberAt));
    header.isGPF2 = isGPF2;
    return header;
}

std::uint8_t Clamped(std::uint16_t size) {
    return static_cast<std::uint8_t>(std::min<int>(size, kGpfLargestSize));
}

}  // namespace

GpfHeader HeaderFor(const Picture& picture, std::uint16_t type, int number, bool isGPF2) {
    return {static_cast<std::uint16_t>(picture.width), static_cast<std::uint16_t>(picture.height), type,
            static_cast<std::uint16_t>(number), isGPF2};
}

Result<GpfHeader> ReadGpfHeader(const ByteSource& source) {
    std::array<std::uint8_t, kGpfHeaderSize> bytes{};
    PICTAVO_TRY(const std::size_t count, source.ReadAt(0, bytes));
    const std::string_view magic = AsText(bytes).substr(0, kMagicSize);
    const bool isGPF2 = magic == kGpf2Magic;
    if (!isGPF2 && magic != kGpfMagic)
        return Fail(ErrorKind::NoGpf, source.Path(), "is no GPF file (its first bytes are not those of one)");
    if (count < bytes.size())
        return Fail(ErrorKind::Truncated, source.Path(), count, "the file ends inside its header");
    return ParseHeader(bytes, isGPF2);
}

std::array<std::uint8_t, kGpfHeaderSize> GpfHeaderBytes(const GpfHeader& header) {
    std::array<std::uint8_t, kGpfHeaderSize> bytes{};
    const MutableByteView view(bytes);
    const std::string_view magic = header.isGPF2 ? kGpf2Magic : kGpfMagic;
    std::copy(magic.begin(), magic.end(), bytes.begin());
    PutLittleEndian16(view.subspan(kNumberAt), header.number);
    const HeaderLayout& layout = header.isGPF2 ? kGpf2Layout : kGpfLayout;
    if (header.isGPF2) {
        PutLittleEndian16(view.subspan(layout.width), header.width);
        PutLittleEndian16(view.subspan(layout.height), header.height);
    } else {
        bytes[layout.width] = Clamped(header.width);
        bytes[layout.height] = Clamped(header.height);
    }
    PutLittleEndian16(view.subspan(layout.type), header.type);
    return bytes;
}

std::size_t GpfPaddingAfter(std::uint64_t length) {
    return static_cast<std::size_t>((kGpfPadding - length % kGpfPadding) % kGpfPadding);
}

Bytes ComposeGpf(const GpfHeader& header, ByteView stored) {
    const auto head = GpfHeaderBytes(header);
    const std::size_t length = head.size() + stored.size();
    Bytes file(length + GpfPaddingAfter(length));
    std::copy(head.begin(), head.end(), file.begin());
    std::copy(stored.begin(), stored.end(), file.begin() + kGpfHeaderSize);
    return file;
}

PictureFormat GpfPictureFormat(const GpfHeader& header) {
    const std::string text = HexText(header.type, 2);
    return {header.width, header.height, BitDepthOf(header.type).value_or(0), text.front() == '8'};
}

Result<LoadedGpf> LoadGpf(const ByteSource& source, Picture& picture) {
    PICTAVO_TRY(const GpfHeader header, ReadGpfHeader(source));
    auto decoded = DecodePicture(source, kGpfHeaderSize, GpfPictureFormat(header), picture);
    if (!decoded) return Failure(WithPath(decoded.error(), source.Path()));
    return LoadedGpf{header, *decoded};
}

std::string InformationLine(const std::string& number, const PictureFormat& format, std::uint64_t consumed) {
    return number + " :: " + SizeText(format.width, format.height) +
           " :: " + std::to_string(format.bitDepth) +
           "bit :: " + (format.compressed ? "compressed" : "uncompressed") +
           " :: " + std::to_string(consumed) + " bytes";
}

}  // namespace pictavo
