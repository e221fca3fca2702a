/// Decoding of phone pictures of every type. Each must leave the Raster as the plain decoder leaves it, pixel
/// after pixel, and take as many bytes.

#include "Holds.h"
#include "Input.h"
#include "PiecewiseSource.h"
#include "Rasters.h"
#include "tests/codec/PlainCodec.h"

namespace pictavo::fuzz {
namespace {

constexpr std::array<int, 8> kDepths{1, 8, 12, 16, 24, 0, 2, 32};

PictureFormat FormatFrom(Input& input) {
    const std::uint8_t kind = input.Byte();
    PictureFormat format;
    format.bitDepth = kDepths[kind % kDepths.size()];
    format.compressed = (kind & 0x80) != 0;
    format.width = static_cast<std::int16_t>(input.Number16());
    format.height = static_cast<std::int16_t>(input.Number16());
    return format;
}

/// False when the plain decoder met a pixel outside the Raster.
bool DecodePlainly(tests::plain::Decoder& decoder) {
    try {
        decoder.Run();
    } catch (const tests::plain::OutOfRange&) {
        return false;
    }
    return true;
}

/// Larger pictures are refused, also where their data end inside the Raster.
bool FitsRaster(const PictureFormat& format) {
    return format.height <= 0 || (format.width <= Raster::kColumns && format.height <= Raster::kRows);
}

void CheckDepthRefused(const Result<DecodedPicture>& decoded, const Picture& picture) {
    static const Raster blank;
    Holds(!decoded && decoded.error().kind == ErrorKind::BadBitDepth, "an unknown depth is refused");
    Holds(SameCells(picture.raster, blank), "a refused depth touches nothing");
}

void Run(Input input) {
    const PictureFormat format = FormatFrom(input);
    const std::size_t piece = PieceLength(input.Byte());
    const std::size_t start = input.Byte();
    const Bytes data = input.Rest();
    static Picture kept;
    Picture& picture = Renewed(kept);
    const auto decoded = DecodePicture(PiecewiseSource(data, piece), start, format, picture);
    if (format.bitDepth % 2 == 0 && (format.bitDepth < 8 || format.bitDepth > 24))
        return CheckDepthRefused(decoded, picture);
    static Raster expected;
    Clear(expected);
    tests::plain::Decoder plain(data, start, format, expected);
    const bool fits = DecodePlainly(plain) && FitsRaster(format);
    Holds(fits == decoded.has_value(), "only what does not fit into the Raster is refused");
    Holds(SameCells(picture.raster, expected), "the pixels are those of the plain decoder");
    if (!decoded) return;
    Holds(decoded->consumed == plain.Position() - start, "the length is that of the plain decoder");
    Holds(picture.RasterHasAlpha == (format.bitDepth == 24), "24 bits have alpha");
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
