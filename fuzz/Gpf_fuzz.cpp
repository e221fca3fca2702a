/// Loading of GPF and GPF2 files. What loads, and what is refused, must be what the plain reader gives; a
/// file that loads, written anew from its header and its picture's bytes, loads again as the same picture.

#include "Holds.h"
#include "Input.h"
#include "PiecewiseSource.h"
#include "PlainGpf.h"

namespace pictavo::fuzz {
namespace {

bool AreEqual(const GpfHeader& one, const GpfHeader& other) {
    return one.width == other.width && one.height == other.height && one.type == other.type &&
           one.number == other.number && one.isGPF2 == other.isGPF2;
}

bool ShowTheSame(const Picture& one, const Picture& other) {
    return one.width == other.width && one.height == other.height && one.bitDepth == other.bitDepth &&
           one.RasterHasAlpha == other.RasterHasAlpha && SameCells(one.raster, other.raster);
}

/// What stands behind the header; bytes that a cut file lacks read as zeros.
Bytes StoredBytes(const Bytes& file, const LoadedGpf& loaded) {
    const std::size_t there = file.size() - kGpfHeaderSize;
    const auto consumed = static_cast<std::size_t>(loaded.decoded.consumed);
    Bytes stored(file.begin() + kGpfHeaderSize,
                 file.begin() + static_cast<std::ptrdiff_t>(kGpfHeaderSize + std::min(there, consumed)));
    stored.resize(consumed);
    return stored;
}

void CheckWrittenAnew(const Bytes& file, const LoadedGpf& loaded, const Picture& picture) {
    const Bytes written = ComposeGpf(loaded.header, StoredBytes(file, loaded));
    Holds(written.size() % kGpfPadding == 0, "a file's length is a multiple of sixteen");
    static Picture kept;
    Picture& again = Renewed(kept);
    const auto loadedAgain = LoadGpf(MemorySource(written), again);
    Holds(loadedAgain.has_value(), "a file written from what was loaded loads");
    Holds(AreEqual(loadedAgain->header, loaded.header), "its header is that of the first file");
    Holds(loadedAgain->decoded.consumed == loaded.decoded.consumed, "its picture is as long");
    Holds(ShowTheSame(picture, again), "its picture is that of the first file");
}

/// The picture is as the plain decoder leaves it, and as long.
void CheckLoaded(const Bytes& file, const LoadedGpf& loaded, const Picture& picture, std::uint64_t end) {
    const PictureFormat format = plain::FormatOf(loaded.header);
    const std::uint64_t consumed = loaded.decoded.consumed;
    Holds(kGpfHeaderSize + consumed == end, "its length is that of the plain decoder");
    Holds(picture.width == format.width && picture.height == format.height &&
              picture.bitDepth == format.bitDepth && picture.RasterHasAlpha == (format.bitDepth == 24),
          "the picture is what the header says");
    Holds(InformationLine("1", GpfPictureFormat(loaded.header), consumed) == plain::LineOf(format, consumed),
          "a picture has its line");
    Holds(!loaded.decoded.complete || end <= file.size(), "a complete picture lies in its file");
    Holds(loaded.decoded.complete || end >= file.size(), "a picture that is not complete meets the end");
}

/// Decodes plainly, and demands the same of what was loaded.
void CheckPicture(const Bytes& file, const GpfHeader& header, const Result<LoadedGpf>& loaded,
                  const Picture& picture) {
    const PictureFormat format = plain::FormatOf(header);
    if (format.bitDepth == 0)
        return Holds(!loaded && loaded.error().kind == ErrorKind::BadBitDepth, "an unknown type is refused");
    static Raster expected;
    Clear(expected);
    tests::plain::Decoder decoder(file, kGpfHeaderSize, plain::Bounded(format), expected);
    const bool fits = plain::DecodeInto(decoder, format);
    Holds(SameCells(picture.raster, expected), "the pixels are those of the plain decoder");
    Holds(loaded.has_value() == fits, "a picture of a known type that fits loads, and no other");
    if (!loaded)
        return Holds(loaded.error().kind == ErrorKind::TooLarge, "a picture that does not fit is too large");
    Holds(AreEqual(loaded->header, header), "the header is that of the file");
    CheckLoaded(file, *loaded, picture, decoder.Position());
}

void Run(Input input) {
    const std::size_t piece = PieceLength(input.Byte());
    const Bytes file = input.Rest();
    static Picture kept;
    Picture& picture = Renewed(kept);
    const auto loaded = LoadGpf(PiecewiseSource(file, piece), picture);
    const auto header = plain::HeaderOf(file);
    if (!header)
        return Holds(!loaded && loaded.error().kind == header.error().kind,
                     "a bad header is refused as what it is");
    CheckPicture(file, *header, loaded, picture);
    if (loaded && loaded->decoded.complete) CheckWrittenAnew(file, *loaded, picture);
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
