#include <algorithm>
#include <cstddef>

#include "samples/FileMakers.h"
#include "samples/Palette.h"
#include "samples/StoredColour.h"

namespace pictavo::samples {

namespace {

constexpr int kCodeBits = 9;
constexpr std::uint32_t kClearCode = 256;
constexpr std::uint32_t kEndCode = 257;
constexpr std::size_t kTableSize = 256;
constexpr std::size_t kLargestBlock = 255;

/// Readers start to build codes of ten bits after 254 pixels, unless they are told to begin anew.
constexpr std::size_t kPixelsBetweenClears = 250;

/// Codes of nine bits, packed from the lowest bit up.
class CodeWriter {
  public:
    void Write(std::uint32_t code) {
        pending_ |= code << pendingBits_;
        pendingBits_ += kCodeBits;
        while (pendingBits_ >= 8) Flush();
    }

    Bytes Finish() {
        if (pendingBits_ > 0) Flush();
        return bytes_;
    }

  private:
    void Flush() {
        bytes_.push_back(LowByte(pending_));
        pending_ >>= 8;
        pendingBits_ -= 8;
    }

    Bytes bytes_;
    std::uint32_t pending_ = 0;
    int pendingBits_ = 0;
};

constexpr std::uint8_t kReducedTransparent = static_cast<std::uint8_t>(kTransparent8);

/// Makes all transparent pixels equal and all others opaque.
Drawing Flattened(const Drawing& drawing) {
    Drawing flat = drawing;
    for (Pixel& pixel : flat.pixels) {
        pixel = IsTransparent(pixel) ? Pixel{0, 0, 0, 0} : Pixel{pixel.r, pixel.g, pixel.b, 255};
    }
    return flat;
}

/// Gives one colour of the fixed table away for the transparent pixels.
void SetTransparentEntry(IndexedDrawing& indexed, const Drawing& flat) {
    indexed.colours[kReducedTransparent].a = 0;
    for (std::size_t i = 0; i < flat.pixels.size(); ++i) {
        if (flat.pixels[i].a == 0)
            indexed.entries[i] = kReducedTransparent;
        else if (indexed.entries[i] == kReducedTransparent)
            ++indexed.entries[i];
    }
}

bool IsClear(Pixel pixel) {
    return pixel.a == 0;
}

IndexedDrawing GifColours(const Drawing& flat) {
    IndexedDrawing indexed = Indexed(flat, kTableSize);
    const bool lost =
        std::ranges::any_of(flat.pixels, IsClear) && std::ranges::none_of(indexed.colours, IsClear);
    if (lost) SetTransparentEntry(indexed, flat);
    return indexed;
}

void AppendScreen(Bytes& gif, const Drawing& drawing) {
    AppendText(gif, "GIF89a");
    AppendLittle16(gif, static_cast<std::uint32_t>(drawing.width));
    AppendLittle16(gif, static_cast<std::uint32_t>(drawing.height));
    AppendBytes(gif, Bytes{0xF7, 0, 0});  // a table of 256 colours; no background; square pixels
}

void AppendColourTable(Bytes& gif, std::vector<Pixel> colours) {
    colours.resize(kTableSize);
    for (const Pixel colour : colours) AppendBytes(gif, Bytes{colour.r, colour.g, colour.b});
}

void AppendTransparency(Bytes& gif, const std::vector<Pixel>& colours) {
    const auto clear = std::ranges::find_if(colours, IsClear);
    if (clear == colours.end()) return;
    AppendBytes(gif, Bytes{0x21, 0xF9, 4, 1, 0, 0, static_cast<std::uint8_t>(clear - colours.begin()), 0});
}

void AppendFrameHead(Bytes& gif, const Drawing& drawing) {
    AppendBytes(gif, Bytes{0x2C, 0, 0, 0, 0});
    AppendLittle16(gif, static_cast<std::uint32_t>(drawing.width));
    AppendLittle16(gif, static_cast<std::uint32_t>(drawing.height));
    gif.push_back(0);
}

/// Each pixel is its own code, so that no table of strings is needed.
Bytes Codes(const std::vector<std::uint8_t>& entries) {
    CodeWriter writer;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (i % kPixelsBetweenClears == 0) writer.Write(kClearCode);
        writer.Write(entries[i]);
    }
    writer.Write(kEndCode);
    return writer.Finish();
}

void AppendBlocks(Bytes& gif, ByteView data) {
    while (!data.empty()) {
        const ByteView block = data.first(std::min(data.size(), kLargestBlock));
        gif.push_back(static_cast<std::uint8_t>(block.size()));
        AppendBytes(gif, block);
        data = data.subspan(block.size());
    }
    gif.push_back(0);
}

}  // namespace

Bytes MakeGif(const Drawing& drawing) {
    const IndexedDrawing indexed = GifColours(Flattened(drawing));
    Bytes gif;
    AppendScreen(gif, drawing);
    AppendColourTable(gif, indexed.colours);
    AppendTransparency(gif, indexed.colours);
    AppendFrameHead(gif, drawing);
    gif.push_back(kCodeBits - 1);
    AppendBlocks(gif, Codes(indexed.entries));
    gif.push_back(0x3B);
    return gif;
}

}  // namespace pictavo::samples
