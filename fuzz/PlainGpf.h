#pragma once

/// GPF files taken apart as docs/formats/gpf.md describes them, and decoded by the plain decoder. What the
/// product loads, and what it refuses, must be the same.

#include <cstdio>
#include <string>

#include "Rasters.h"
#include "codec/GPFcodec.h"
#include "tests/codec/PlainCodec.h"

namespace pictavo::fuzz::plain {

inline std::uint16_t WordAt(const Bytes& file, std::size_t at) {
    return static_cast<std::uint16_t>(file[at] | file[at + 1] << 8);
}

/// Fails as the reading of a header must.
inline Result<GpfHeader> HeaderOf(const Bytes& file) {
    const std::string magic(file.begin(), file.begin() + std::min<std::ptrdiff_t>(16, std::ssize(file)));
    const bool isGPF2 = magic == "GraphPatchFile_2";
    if (!isGPF2 && magic != "GraphicPatchFile") return Fail(ErrorKind::NoGpf, {});
    if (file.size() < 32) return Fail(ErrorKind::Truncated, {});
    if (isGPF2)
        return GpfHeader{WordAt(file, 0x14), WordAt(file, 0x16), WordAt(file, 0x18), WordAt(file, 0x10),
                         true};
    return GpfHeader{file[0x14], file[0x15], WordAt(file, 0x16), WordAt(file, 0x10), false};
}

/// By the type's hexadecimal text: the first digit tells the compression, the last one the depth.
inline PictureFormat FormatOf(const GpfHeader& header) {
    std::array<char, 8> text{};
    const int digits = std::snprintf(text.data(), text.size(), "%02X", unsigned{header.type});
    PictureFormat format{header.width, header.height, 0, text[0] == '8'};
    const char last = text[static_cast<std::size_t>(digits - 1)];
    if (last == '1') format.bitDepth = 1;
    if (last == '5') format.bitDepth = 8;
    if (last == '7') format.bitDepth = 12;
    if (last == '8') format.bitDepth = 16;
    if (last == 'A') format.bitDepth = 24;
    return format;
}

/// With sizes far beyond the Raster made a little beyond it, where they come to the same: the plain decoder
/// counts their pixels in an int.
inline PictureFormat Bounded(PictureFormat format) {
    format.width = std::min(format.width, 1000);
    format.height = std::min(format.height, 1000);
    return format;
}

/// False for a picture above 241 columns or 321 rows, and for one that does not come to its end inside of
/// them.
inline bool DecodeInto(tests::plain::Decoder& decoder, const PictureFormat& format) {
    try {
        decoder.Run();
    } catch (const tests::plain::OutOfRange&) {
        return false;
    }
    return format.height == 0 || (format.width <= Raster::kColumns && format.height <= Raster::kRows);
}

/// The line about a picture, here number 1.
inline std::string LineOf(const PictureFormat& format, std::uint64_t bytes) {
    std::array<char, 100> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "1 :: %d x %d :: %dbit :: %s :: %llu bytes", format.width,
                      format.height, format.bitDepth, format.compressed ? "compressed" : "uncompressed",
                      static_cast<unsigned long long>(bytes));
    return std::string(text.data(), static_cast<std::size_t>(length));
}

}  // namespace pictavo::fuzz::plain
