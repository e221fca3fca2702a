#include "codec/Bitmap.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "codec/PixelFormats.h"

namespace pictavo {

namespace {

constexpr std::size_t kHeaderSize = 54;
constexpr std::size_t kInformationHeaderSize = 40;
constexpr std::uint8_t kOpaque = 255;

/// Bytes behind a row of three bytes a pixel that bring it to a multiple of four.
std::size_t RowPadding(int width) {
    return (4 - static_cast<std::size_t>(width) * 3 % 4) % 4;
}

std::uint8_t FourthByte(const Picture& picture, const Cell& cell) {
    if (picture.RasterHasAlpha) return cell.a;
    return IsMarkerColour(cell) ? 0 : kOpaque;
}

std::uint8_t* PutPixel24(const Cell& cell, std::uint8_t* to) {
    to[0] = cell.b;
    to[1] = cell.g;
    to[2] = cell.r;
    return to + 3;
}

/// Puts four bytes at once, the last of which is the next pixel's.
std::uint8_t* PutPixel24Quickly(const Cell& cell, std::uint8_t* to) {
    static_assert(std::endian::native == std::endian::little);
    const std::uint32_t blueGreenRed = __builtin_bswap32(std::bit_cast<std::uint32_t>(cell)) >> 8;
    std::memcpy(to, &blueGreenRed, sizeof blueGreenRed);
    return to + 3;
}

/// Behind the last pixel of a file there is no room for a fourth byte.
std::uint8_t* PutRow24(const Cell* cells, int width, std::uint8_t* to) {
    int x = 0;
    for (; x + 1 < width; ++x) to = PutPixel24Quickly(cells[x], to);
    for (; x < width; ++x) to = PutPixel24(cells[x], to);
    return to;
}

std::uint8_t* PutRow32(const Picture& picture, const Cell* cells, int width, std::uint8_t* to) {
    const auto count = static_cast<std::size_t>(width);
    Pixels24::Quantise(cells, to, count);
    if (!picture.RasterHasAlpha)
        for (std::size_t x = 0; x < count; ++x) to[4 * x + 3] = FourthByte(picture, cells[x]);
    return to + 4 * count;
}

std::uint8_t* PutRowOfChannels(const Picture& picture, const Cell* cells, const ChannelFlags& flags,
                               std::uint8_t* to) {
    for (int x = 0; x < picture.width; ++x, to += 4) {
        to[0] = flags.blue ? cells[x].b : 0;
        to[1] = flags.green ? cells[x].g : 0;
        to[2] = flags.red ? cells[x].r : 0;
        to[3] = flags.alpha ? FourthByte(picture, cells[x]) : 0;
    }
    return to;
}

void PutHeader(int width, int height, bool withAlpha, MutableByteView file) {
    file[0] = 'B';
    file[1] = 'M';
    PutLittleEndian32(file.subspan(2), static_cast<std::uint32_t>(file.size()));
    file[10] = kHeaderSize;
    file[14] = kInformationHeaderSize;
    PutLittleEndian16(file.subspan(18), static_cast<std::uint16_t>(width));
    PutLittleEndian16(file.subspan(22), static_cast<std::uint16_t>(height));
    file[26] = 1;
    file[28] = withAlpha ? 32 : 24;
    PutLittleEndian32(file.subspan(34), static_cast<std::uint32_t>(file.size() - kHeaderSize));
}

}  // namespace

Bytes ComposeBitmap(const Picture& picture, bool withAlpha, const ChannelFlags& flags) {
    const int width = std::max(picture.width, 0);
    const int height = std::max(picture.height, 0);
    const std::size_t pixelBytes = withAlpha || flags.Any() ? 4 : 3;
    const std::size_t padding = withAlpha ? 0 : RowPadding(width);
    const std::size_t rowBytes = static_cast<std::size_t>(width) * pixelBytes + padding;
    Bytes file(kHeaderSize + rowBytes * static_cast<std::size_t>(height));
    std::uint8_t* to = file.data() + kHeaderSize;
    for (int y = height - 1; y >= 0; --y, to += padding) {
        const Cell* cells = picture.raster.From(0, y);
        if (flags.Any())
            to = PutRowOfChannels(picture, cells, flags, to);
        else
            to = withAlpha ? PutRow32(picture, cells, width, to) : PutRow24(cells, width, to);
    }
    PutHeader(width, height, withAlpha, file);
    return file;
}

Status CheckBitmapFilled(const ByteSource& source, const PictureFileInfo& info) {
    if (info.isCompressed) return {};
    const auto rowBytes = static_cast<std::uint64_t>((info.width * info.bitDepth + 31) / 32 * 4);
    const auto rows = static_cast<std::uint64_t>(info.height);
    const std::uint64_t left = source.Size() - std::min(info.pixelOffset, source.Size());
    const bool areRowsThere = rowBytes == 0 || rows <= left / rowBytes;  // rows * rowBytes may pass 64 bits
    if (info.pixelOffset <= source.Size() && areRowsThere) return {};
    return Fail(ErrorKind::Truncated, source.Path(), info.pixelOffset,
                "the file ends before the last row of its pixels");
}

Result<ImportedPixels> ReadBitmap32(const ByteSource& source, const PictureFileInfo& info) {
    ImportedPixels pixels{static_cast<int>(info.width), static_cast<int>(info.height), {}, true};
    const auto width = static_cast<std::size_t>(info.width);
    const auto height = static_cast<std::size_t>(info.height);
    PICTAVO_TRY(const Bytes stored, source.ReadExactly(info.pixelOffset, 4 * width * height));
    pixels.cells.reserve(width * height);
    for (std::size_t y = 0; y < height; ++y) {
        const std::size_t row = info.topDown ? y : height - 1 - y;
        const std::uint8_t* from = stored.data() + 4 * width * row;
        for (std::size_t x = 0; x < width; ++x, from += 4)
            pixels.cells.push_back({from[2], from[1], from[0], from[3]});
    }
    return pixels;
}

}  // namespace pictavo
