#pragma once

/// Uncompressed bitmaps of 24 and 32 bits as a test sees them, read without a line of the product.

#include <cstdint>
#include <cstdlib>
#include <vector>

#include "samples/Drawing.h"
#include "samples/PictureEncoders.h"
#include "support/TempFolder.h"

namespace pictavo::tests {

struct BmpFile {
    int bits = 0;
    samples::Drawing shown;  ///< alpha is 255 where the file has none
};

inline std::uint32_t LittleNumber(const Bytes& bytes, std::size_t at, std::size_t length) {
    std::uint32_t value = 0;
    for (std::size_t i = length; i-- > 0;) value = value << 8 | bytes.at(at + i);
    return value;
}

inline BmpFile ReadBmp(const std::filesystem::path& path) {
    const Bytes bytes = ReadFile(path);
    if (bytes.size() < 54 || bytes[0] != 'B' || bytes[1] != 'M') {
        ADD_FAILURE() << path << " is no bitmap";
        return {};
    }
    const auto height = static_cast<std::int32_t>(LittleNumber(bytes, 22, 4));
    BmpFile file{static_cast<int>(LittleNumber(bytes, 28, 2)),
                 {static_cast<int>(LittleNumber(bytes, 18, 4)), std::abs(height), {}}};
    const auto width = static_cast<std::size_t>(file.shown.width);
    const auto rows = static_cast<std::size_t>(file.shown.height);
    const std::size_t step = file.bits == 32 ? 4 : 3;
    const std::size_t rowBytes = (width * step + 3) / 4 * 4;
    const std::size_t start = LittleNumber(bytes, 10, 4);
    EXPECT_GE(bytes.size(), start + rowBytes * rows) << path;
    for (std::size_t y = 0; y < rows; ++y) {
        std::size_t at = start + rowBytes * (height < 0 ? y : rows - 1 - y);
        for (std::size_t x = 0; x < width; ++x, at += step)
            file.shown.pixels.push_back({bytes.at(at + 2), bytes.at(at + 1), bytes.at(at),
                                         step == 4 ? bytes.at(at + 3) : std::uint8_t{255}});
    }
    return file;
}

/// The bitmap holds exactly what a right reader shows of the drawing in this type.
inline void ExpectShows(const std::filesystem::path& path, const samples::Drawing& drawing,
                        std::uint8_t typeCode) {
    const BmpFile file = ReadBmp(path);
    const bool hasAlpha = (typeCode & 0x0F) == 0x0A;
    EXPECT_EQ(file.bits, hasAlpha ? 32 : 24) << path;
    samples::Drawing expected{drawing.width, drawing.height, samples::ExpectedPixels(drawing, typeCode)};
    if (!hasAlpha)
        for (samples::Pixel& pixel : expected.pixels) pixel.a = 255;
    EXPECT_EQ(file.shown.width, drawing.width) << path;
    EXPECT_EQ(file.shown.height, drawing.height) << path;
    EXPECT_TRUE(file.shown == expected) << path << " shows other pixels";
}

}  // namespace pictavo::tests
