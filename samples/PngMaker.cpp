#include <algorithm>
#include <cstddef>

#include "samples/Checksums.h"
#include "samples/FileMakers.h"
#include "samples/Palette.h"

namespace pictavo::samples {

namespace {

constexpr std::size_t kLargestStoredBlock = 65535;

std::uint8_t Mean(Pixel pixel) {
    return static_cast<std::uint8_t>((pixel.r + pixel.g + pixel.b + 1) / 3);
}

Bytes PngPixel(Pixel pixel, PngColour colour) {
    switch (colour) {
        case PngColour::Grey:
            return {Mean(pixel)};
        case PngColour::GreyAlpha:
            return {Mean(pixel), pixel.a};
        case PngColour::Rgb:
            return {pixel.r, pixel.g, pixel.b};
        case PngColour::Rgba:
            return {pixel.r, pixel.g, pixel.b, pixel.a};
        case PngColour::Palette:
            break;
    }
    return {};
}

/// One deflate block that holds its bytes as they are.
void AppendStoredBlock(Bytes& bytes, ByteView block, bool isLast) {
    bytes.push_back(isLast ? 1 : 0);
    AppendLittle16(bytes, static_cast<std::uint32_t>(block.size()));
    AppendLittle16(bytes, ~static_cast<std::uint32_t>(block.size()));
    AppendBytes(bytes, block);
}

Bytes ZlibStream(ByteView data) {
    Bytes stream{0x78, 0x01};
    for (ByteView rest = data; stream.size() == 2 || !rest.empty();) {
        const std::size_t length = std::min(rest.size(), kLargestStoredBlock);
        AppendStoredBlock(stream, rest.first(length), length == rest.size());
        rest = rest.subspan(length);
    }
    AppendBig32(stream, Adler32(data));
    return stream;
}

Bytes Header(const Drawing& drawing, PngColour colour) {
    Bytes header;
    AppendBig32(header, static_cast<std::uint32_t>(drawing.width));
    AppendBig32(header, static_cast<std::uint32_t>(drawing.height));
    AppendBytes(header, Bytes{8, static_cast<std::uint8_t>(colour), 0, 0, 0});
    return header;
}

/// Each row begins with its filter, which is none.
template <typename AppendPixel>
Bytes FilteredRows(const Drawing& drawing, AppendPixel appendPixel) {
    Bytes rows;
    const auto width = static_cast<std::size_t>(drawing.width);
    for (std::size_t i = 0; i < drawing.pixels.size(); ++i) {
        if (i % width == 0) rows.push_back(0);
        appendPixel(rows, i);
    }
    return rows;
}

void AppendColours(Bytes& png, const std::vector<Pixel>& colours) {
    Bytes table, alphas;
    for (const Pixel colour : colours) {
        AppendBytes(table, Bytes{colour.r, colour.g, colour.b});
        alphas.push_back(colour.a);
    }
    AppendBytes(png, PngChunk("PLTE", table));
    AppendBytes(png, PngChunk("tRNS", alphas));
}

Bytes AppendPaletteAndRows(Bytes& png, const Drawing& drawing) {
    const IndexedDrawing indexed = Indexed(drawing, 256);
    AppendColours(png, indexed.colours);
    return FilteredRows(drawing, [&](Bytes& rows, std::size_t i) { rows.push_back(indexed.entries[i]); });
}

Bytes DirectRows(const Drawing& drawing, PngColour colour) {
    return FilteredRows(
        drawing, [&](Bytes& rows, std::size_t i) { AppendBytes(rows, PngPixel(drawing.pixels[i], colour)); });
}

}  // namespace

Bytes PngChunk(std::string_view type, ByteView data) {
    Bytes named;
    AppendText(named, type);
    AppendBytes(named, data);
    Bytes chunk;
    AppendBig32(chunk, static_cast<std::uint32_t>(data.size()));
    AppendBytes(chunk, named);
    AppendBig32(chunk, Crc32(named));
    return chunk;
}

Bytes MakePng(const Drawing& drawing, PngColour colour, ByteView ancillary) {
    Bytes png{0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
    AppendBytes(png, PngChunk("IHDR", Header(drawing, colour)));
    AppendBytes(png, ancillary);
    const bool hasPalette = colour == PngColour::Palette;
    const Bytes rows = hasPalette ? AppendPaletteAndRows(png, drawing) : DirectRows(drawing, colour);
    AppendBytes(png, PngChunk("IDAT", ZlibStream(rows)));
    AppendBytes(png, PngChunk("IEND", {}));
    return png;
}

}  // namespace pictavo::samples
