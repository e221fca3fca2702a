#include "samples/Palette.h"

#include <cstddef>
#include <map>
#include <optional>

#include "samples/Bytes.h"
#include "samples/StoredColour.h"

namespace pictavo::samples {

namespace {

/// How many shades of each channel a fixed table has.
struct Shades {
    std::uint32_t red, green, blue;
};

std::optional<IndexedDrawing> WithOwnColours(const Drawing& drawing, int limit) {
    IndexedDrawing indexed;
    std::map<std::uint32_t, std::uint8_t> known;
    for (const Pixel pixel : drawing.pixels) {
        const auto next = static_cast<std::uint8_t>(indexed.colours.size());
        const auto [place, isNew] = known.try_emplace(Stored24(pixel), next);
        if (isNew && indexed.colours.size() == static_cast<std::size_t>(limit)) return std::nullopt;
        if (isNew) indexed.colours.push_back(pixel);
        indexed.entries.push_back(place->second);
    }
    return indexed;
}

std::vector<Pixel> Table(Shades shades) {
    const std::uint32_t count = shades.red * shades.green * shades.blue;
    std::vector<Pixel> colours;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t red = i / shades.blue / shades.green, green = i / shades.blue % shades.green;
        colours.push_back({LowByte(Scaled(red, shades.red - 1, 255)),
                           LowByte(Scaled(green, shades.green - 1, 255)),
                           LowByte(Scaled(i % shades.blue, shades.blue - 1, 255)), 255});
    }
    return colours;
}

std::uint8_t NearestEntry(Pixel pixel, Shades shades) {
    const std::uint32_t red = Scaled(pixel.r, 255, shades.red - 1);
    const std::uint32_t green = Scaled(pixel.g, 255, shades.green - 1);
    const std::uint32_t blue = Scaled(pixel.b, 255, shades.blue - 1);
    return LowByte((red * shades.green + green) * shades.blue + blue);
}

IndexedDrawing InBlackAndWhite(const Drawing& drawing) {
    IndexedDrawing indexed{{{0, 0, 0, 255}, {255, 255, 255, 255}}, {}};
    for (const Pixel pixel : drawing.pixels) indexed.entries.push_back(IsBlackInOneBit(pixel) ? 0 : 1);
    return indexed;
}

IndexedDrawing WithFixedTable(const Drawing& drawing, Shades shades) {
    IndexedDrawing indexed{Table(shades), {}};
    for (const Pixel pixel : drawing.pixels) indexed.entries.push_back(NearestEntry(pixel, shades));
    return indexed;
}

}  // namespace

IndexedDrawing Indexed(const Drawing& drawing, int limit) {
    if (auto indexed = WithOwnColours(drawing, limit)) return *indexed;
    if (limit == 2) return InBlackAndWhite(drawing);
    return WithFixedTable(drawing, limit == 16 ? Shades{2, 4, 2} : Shades{8, 8, 4});
}

}  // namespace pictavo::samples
