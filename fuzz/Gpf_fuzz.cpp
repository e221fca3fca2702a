/// Loading of GPF and GPF2 files. A file that loads, written anew from its header and its picture's bytes,
/// loads again as the same picture.

#include "Holds.h"
#include "Input.h"
#include "PiecewiseSource.h"
#include "Rasters.h"
#include "codec/GPFcodec.h"

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

void Run(Input input) {
    const std::size_t piece = PieceLength(input.Byte());
    const Bytes file = input.Rest();
    static Picture kept;
    Picture& picture = Renewed(kept);
    const auto loaded = LoadGpf(PiecewiseSource(file, piece), picture);
    if (!loaded) return;
    const PictureFormat format = GpfPictureFormat(loaded->header);
    Holds(!InformationLine("1", format, loaded->decoded.consumed).empty(), "a picture has its line");
    const std::uint64_t end = kGpfHeaderSize + loaded->decoded.consumed;
    Holds(!loaded->decoded.complete || end <= file.size(), "a complete picture lies in its file");
    Holds(loaded->decoded.complete || end >= file.size(), "a picture that is not complete meets the end");
    if (loaded->decoded.complete) CheckWrittenAnew(file, *loaded, picture);
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
