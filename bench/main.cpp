#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sys/utsname.h>
#include <thread>

#include "Timing.h"
#include "codec/PictureDecoder.h"
#include "codec/PictureEncoder.h"
#include "core/PictureTable.h"
#include "patch/FreeFlash.h"
#include "samples/Sample.h"

namespace pictavo::bench {

namespace {

constexpr int kRounds = 9;
const std::string kCli = std::string(PICTAVO_BIN_DIR) + "/pictavo-cli";

void Check(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "%s failed\n", what);
    std::exit(1);
}

std::filesystem::path MakeFlash(const std::filesystem::path& folder, samples::SampleSpec spec,
                                const char* name) {
    const auto path = folder / name;
    const samples::Outcome written = samples::MakeSample(spec).flash.WriteTo(path);
    Check(static_cast<bool>(written), written.Reason().c_str());
    return path;
}

/// A flash with its rows, open.
struct OpenFlash {
    FullflashImage image;
    std::vector<PictureRecord> rows;
};

OpenFlash Open(const std::filesystem::path& path) {
    auto image = OpenFullflashImage(path);
    Check(image.has_value(), "opening");
    auto table = ReadPictureTable(*image);
    Check(table.has_value(), "reading the table");
    return {std::move(*image), std::move(table->rows)};
}

PictureFormat FormatOf(const PictureRecord& row) {
    return {row.width, row.height, BitDepthOf(row.typeCode).value_or(0), IsCompressed(row.typeCode)};
}

std::size_t RasterBytes(const Picture& picture) {
    return sizeof(Cell) * static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
}

/// Decodes every picture; the raster bytes produced.
std::size_t DecodeAll(const OpenFlash& flash, Picture& picture) {
    std::size_t bytes = 0;
    for (const PictureRecord& row : flash.rows) {
        Check(DecodePicture(*flash.image.source, row.picOffset, FormatOf(row), picture).has_value(),
              "decoding");
        bytes += RasterBytes(picture);
    }
    return bytes;
}

bool BenchList(const std::filesystem::path& flash) {
    const auto comparison = Compare(2 * kRounds,
                                    {{},
                                     [&] {
                                         RunProgram({kCli, "list", flash});
                                     }},
                                    {{}, [] {
                                         RunProgram({kCli, "--version"});
                                     }});
    const long extra = RunProgram({kCli, "list", flash}) - RunProgram({kCli, "--version"});
    std::printf("%-58s %9.2f MiB (bound 8)  %s\n", "  its peak memory above that",
                static_cast<double>(extra) / 1024, extra <= 8192 ? "holds" : "MISSED");
    return Print("list of 2500 rows in 128 MiB : --version", comparison, 1.5) && extra <= 8192;
}

/// The peer copies each picture's raster bytes, in rows, from where all decoded pictures lie together.
bool BenchDecode(const OpenFlash& flash) {
    Picture picture;
    const std::size_t bytes = DecodeAll(flash, picture);
    const std::vector<std::uint8_t> decoded(bytes, 1);
    std::vector<std::uint8_t> copy(bytes, 2);
    const auto comparison = Compare(kRounds, {{}, [&] { DecodeAll(flash, picture); }},
                                    {{}, [&] { std::memcpy(copy.data(), decoded.data(), bytes); }});
    std::printf("(%zu pictures, %.1f MiB of raster bytes)\n", flash.rows.size(),
                static_cast<double>(bytes) / 1048576);
    return Print("decode of 2000 pictures : memcpy of the raster bytes", comparison, 3);
}

bool BenchEncode(const OpenFlash& flash) {
    std::vector<Picture> pictures;
    std::size_t bytes = 0;
    for (const PictureRecord& row : flash.rows) {
        Picture& picture = pictures.emplace_back();
        Check(DecodePicture(*flash.image.source, row.picOffset, FormatOf(row), picture).has_value(),
              "decoding");
        bytes += RasterBytes(picture);
    }
    const std::vector<std::uint8_t> decoded(bytes, 1);
    std::vector<std::uint8_t> copy(bytes, 2);
    std::size_t stored = 0;
    const auto encodeAll = [&] {
        for (const Picture& picture : pictures) stored += EncodePicture(picture, kType16BitCompressed).size();
    };
    const auto comparison =
        Compare(kRounds, {{}, encodeAll}, {{}, [&] { std::memcpy(copy.data(), decoded.data(), bytes); }});
    Check(stored > 0, "encoding");
    return Print("encode of the same, 16 bit compressed : memcpy", comparison, 5);
}

bool BenchExport(const std::filesystem::path& folder, const std::filesystem::path& flash) {
    const std::string out = folder / "out";
    const std::string copy = folder / "copy";
    const auto clear = [](const std::string& path) { std::filesystem::remove_all(path); };
    const auto work = [&] { RunProgram({kCli, "export", flash, "-o", out, "--format", "bmp"}); };
    const auto peer = [&] { RunProgram({"cp", "-r", out, copy}); };
    const auto comparison = Compare(kRounds, {[&] { clear(out); }, work}, {[&] { clear(copy); }, peer});
    return Print("export of 2000 pictures as bmp : cp -r of the folder", comparison, 1.3);
}

bool BenchFreeFlash(const std::filesystem::path& flash) {
    const auto comparison = Compare(kRounds,
                                    {{},
                                     [&] {
                                         const auto source = FileSource::Open(flash);
                                         Check(source.has_value(), "opening");
                                         Check(!FindFreeFlash(**source, 0, 1U << 20), "finding nothing");
                                     }},
                                    {{}, [&] {
                                         RunProgram({"cat", flash});
                                     }});
    return Print("free-flash search over 128 MiB, no hit : cat", comparison, 1.5);
}

void PrintMachine() {
    utsname name{};
    uname(&name);
    std::printf("%s %s %s, %u processors; median of %d runs in turns with the peer\n", name.sysname,
                name.release, name.machine, std::thread::hardware_concurrency(), kRounds);
}

bool RunAll(const std::filesystem::path& folder) {
    using samples::FlashKind;
    const auto large = MakeFlash(
        folder, {.kind = FlashKind::NewSGoldEL71, .sizeMiB = 128, .pictureCount = 2500}, "large.bin");
    const auto many =
        MakeFlash(folder, {.kind = FlashKind::NewSGold, .sizeMiB = 128, .pictureCount = 2000}, "many.bin");
    const auto full = MakeFlash(
        folder, {.kind = FlashKind::NewSGold, .sizeMiB = 128, .pictureCount = 2000, .erasedAreas = false},
        "full.bin");
    const OpenFlash flash = Open(many);
    bool holds = BenchList(large);
    holds &= BenchDecode(flash);
    holds &= BenchEncode(flash);
    holds &= BenchExport(folder, many);
    holds &= BenchFreeFlash(full);
    return holds;
}

}  // namespace

}  // namespace pictavo::bench

int main() {
    const auto folder =
        std::filesystem::temp_directory_path() / ("pictavo-bench-" + std::to_string(std::rand()));
    std::filesystem::create_directories(folder);
    pictavo::bench::PrintMachine();
    const bool holds = pictavo::bench::RunAll(folder);
    std::filesystem::remove_all(folder);
    return holds ? 0 : 1;
}
