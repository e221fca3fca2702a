#include <cstddef>

#include "samples/FileMakers.h"
#include "samples/Palette.h"

namespace pictavo::samples {

namespace {

constexpr std::size_t kFileHeadLength = 14;
constexpr std::size_t kInfoHeadLength = 40;
constexpr std::size_t kHeadsLength = kFileHeadLength + kInfoHeadLength;

std::size_t RowLength(int width, int bits) {
    return (static_cast<std::size_t>(width) * static_cast<std::size_t>(bits) + 31) / 32 * 4;
}

Bytes DirectRow(const Drawing& drawing, int y, int bits) {
    Bytes row;
    for (int x = 0; x < drawing.width; ++x) {
        const Pixel pixel = drawing.At(x, y);
        AppendBytes(row, Bytes{pixel.b, pixel.g, pixel.r});
        if (bits == 32) row.push_back(pixel.a);
    }
    return row;
}

/// Entries of 1, 4 or 8 bits, the leftmost pixel in the highest bits.
Bytes IndexedRow(ByteView entries, int bits) {
    const auto perByte = static_cast<std::size_t>(8 / bits);
    Bytes row((entries.size() + perByte - 1) / perByte, 0);
    for (std::size_t x = 0; x < entries.size(); ++x) {
        const std::size_t shift = (perByte - 1 - x % perByte) * static_cast<std::size_t>(bits);
        row[x / perByte] |= LowByte(static_cast<std::uint32_t>(entries[x]) << shift);
    }
    return row;
}

void AppendColourTable(Bytes& bmp, std::vector<Pixel> colours, int bits) {
    colours.resize(std::size_t{1} << bits);
    for (const Pixel colour : colours) AppendBytes(bmp, Bytes{colour.b, colour.g, colour.r, 0});
}

void AppendHeads(Bytes& bmp, const Drawing& drawing, int bits, bool topDown) {
    const std::size_t tableLength = bits <= 8 ? std::size_t{4} << bits : 0;
    const std::size_t pixelLength = RowLength(drawing.width, bits) * static_cast<std::size_t>(drawing.height);
    AppendText(bmp, "BM");
    AppendLittle32(bmp, static_cast<std::uint32_t>(kHeadsLength + tableLength + pixelLength));
    AppendLittle32(bmp, 0);
    AppendLittle32(bmp, static_cast<std::uint32_t>(kHeadsLength + tableLength));
    AppendLittle32(bmp, kInfoHeadLength);
    AppendLittle32(bmp, static_cast<std::uint32_t>(drawing.width));
    AppendLittle32(bmp, static_cast<std::uint32_t>(topDown ? -drawing.height : drawing.height));
    AppendLittle16(bmp, 1);
    AppendLittle16(bmp, static_cast<std::uint32_t>(bits));
    AppendLittle32(bmp, 0);
    AppendLittle32(bmp, static_cast<std::uint32_t>(pixelLength));
    for (int unused = 0; unused < 4; ++unused) AppendLittle32(bmp, 0);
}

}  // namespace

Bytes MakeBmp(const Drawing& drawing, int bits, bool topDown) {
    Bytes bmp;
    AppendHeads(bmp, drawing, bits, topDown);
    const IndexedDrawing indexed = bits <= 8 ? Indexed(drawing, 1 << bits) : IndexedDrawing{};
    if (bits <= 8) AppendColourTable(bmp, indexed.colours, bits);
    const auto width = static_cast<std::size_t>(drawing.width);
    for (int i = 0; i < drawing.height; ++i) {
        const int y = topDown ? i : drawing.height - 1 - i;
        const ByteView entries(indexed.entries);
        Bytes row = bits <= 8 ? IndexedRow(entries.subspan(static_cast<std::size_t>(y) * width, width), bits)
                              : DirectRow(drawing, y, bits);
        row.resize(RowLength(drawing.width, bits), 0);
        AppendBytes(bmp, row);
    }
    return bmp;
}

}  // namespace pictavo::samples
