#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <sys/utsname.h>
#include <thread>

#include "Peers.h"
#include "Timing.h"
#include "Tools.h"
#include "codec/PictureDecoder.h"
#include "codec/PictureEncoder.h"
#include "core/PictureTable.h"
#include "patch/FreeFlash.h"

namespace pictavo::bench {

namespace {

const std::string kWindow = std::string(PICTAVO_BIN_DIR) + "/pictavo-bench-window";

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

std::size_t RasterBytes(const Picture& picture) {
    return sizeof(Cell) * static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
}

/// Decodes every picture; the raster bytes produced.
std::size_t DecodeAll(const OpenFlash& flash, Picture& picture) {
    std::size_t bytes = 0;
    for (const PictureRecord& row : flash.rows) {
        Check(DecodePicture(*flash.image.source, row.picOffset, FormatOf(row, 0), picture).has_value(),
              "decoding");
        bytes += RasterBytes(picture);
    }
    return bytes;
}

bool BenchList(const std::filesystem::path& folder) {
    const auto flash = MakeFlash(folder, "large.bin", {"--kind", "el71", "--pictures", "2500"});
    const auto list = [&] { return RunProgram({kCli, "list", flash}); };
    const auto version = [] { return RunProgram({kCli, "--version"}); };
    const bool isSmall = PrintMemory("list, peak memory : --version", list(), version());
    const auto comparison = Compare(2 * kRounds, Clocked(list), Clocked(version));
    return Print("list of 2500 rows in 128 MiB : --version", comparison, 1.5) && isSmall;
}

/// The peer copies each picture's raster bytes, in rows, from where all decoded pictures lie together.
bool BenchDecode(const std::filesystem::path& folder) {
    const OpenFlash flash = Open(FlashOf2000(folder));
    Picture picture;
    const std::size_t bytes = DecodeAll(flash, picture);
    const std::vector<std::uint8_t> decoded(bytes, 1);
    std::vector<std::uint8_t> copy(bytes, 2);
    const auto comparison = Compare(kRounds, Clocked([&] { DecodeAll(flash, picture); }),
                                    Clocked([&] { std::memcpy(copy.data(), decoded.data(), bytes); }));
    std::printf("(%zu pictures, %.1f MiB of raster bytes)\n", flash.rows.size(),
                static_cast<double>(bytes) / 1048576);
    return Print("decode of 2000 pictures : memcpy of the raster bytes", comparison, 3);
}

/// A picture's cells without what lies around them in the Raster.
struct KeptPicture {
    int width;
    int height;
    bool hasAlpha;
    std::vector<Cell> cells;
};

KeptPicture Keep(const Picture& picture) {
    KeptPicture kept{picture.width, picture.height, picture.RasterHasAlpha, {}};
    for (int y = 0; y < picture.height; ++y)
        kept.cells.insert(kept.cells.end(), picture.raster.From(0, y),
                          picture.raster.From(0, y) + picture.width);
    return kept;
}

void PutBack(const KeptPicture& kept, Picture& picture) {
    picture.width = kept.width;
    picture.height = kept.height;
    picture.RasterHasAlpha = kept.hasAlpha;
    for (int y = 0; y < kept.height; ++y)
        std::copy_n(kept.cells.data() + static_cast<std::ptrdiff_t>(y) * kept.width, kept.width,
                    picture.raster.From(0, y));
}

/// As in the program there is one Raster, into which each picture is put before it is encoded; that is timed
/// as well.
bool BenchEncode(const std::filesystem::path& folder) {
    const OpenFlash flash = Open(FlashOf2000(folder));
    Picture picture;
    std::vector<KeptPicture> pictures;
    std::size_t bytes = 0;
    for (const PictureRecord& row : flash.rows) {
        Check(DecodePicture(*flash.image.source, row.picOffset, FormatOf(row, 0), picture).has_value(),
              "decoding");
        pictures.push_back(Keep(picture));
        bytes += RasterBytes(picture);
    }
    const std::vector<std::uint8_t> decoded(bytes, 1);
    std::vector<std::uint8_t> copy(bytes, 2);
    std::size_t stored = 0;
    const auto encodeAll = [&] {
        for (const KeptPicture& kept : pictures) {
            PutBack(kept, picture);
            stored += EncodePicture(picture, kType16BitCompressed).size();
        }
    };
    const auto comparison = Compare(kRounds, Clocked(encodeAll),
                                    Clocked([&] { std::memcpy(copy.data(), decoded.data(), bytes); }));
    Check(stored > 0, "encoding");
    return Print("encode of the same, 16 bit compressed : memcpy", comparison, 5);
}

bool BenchExport(const std::filesystem::path& folder) {
    const auto flash = FlashOf2000(folder);
    const auto exportTo = [&](const std::string& out) {
        RunProgram({kCli, "export", flash, "-o", out, "--format", "bmp"});
    };
    const std::string exported = Fresh(folder);
    exportTo(exported);
    const auto copy = [&] { RunProgram({"cp", "-r", exported, Fresh(folder)}); };
    const auto comparison = Compare(kRounds, Clocked([&] { exportTo(Fresh(folder)); }), Clocked(copy));
    return Print("export of 2000 pictures as bmp : cp -r of the folder", comparison, 1.3);
}

bool BenchFreeFlash(const std::filesystem::path& folder) {
    const auto flash = MakeFlash(folder, "full.bin", {"--pictures", "2000", "--no-erased"});
    const auto search = [&] {
        const auto source = FileSource::Open(flash);
        Check(source.has_value(), "opening");
        Check(!FindFreeFlash(**source, 0, 1U << 20), "finding nothing");
    };
    const auto comparison = Compare(kRounds, Clocked(search), Clocked([&] { RunProgram({"cat", flash}); }));
    return Print("free-flash search over 128 MiB, no hit : cat", comparison, 1.5);
}

bool BenchStart(const std::filesystem::path& folder) {
    const auto flash = MakeFlash(folder, "large.bin", {"--kind", "el71", "--pictures", "2500"});
    const auto open = [&] { RunProgram({kWindow, "open", flash, folder}); };
    const auto empty = [] { RunProgram({kWindow, "empty"}); };
    const auto comparison = Compare(kRounds, Clocked(open), Clocked(empty));
    return Print("window with 2500 rows and a picture : an empty window", comparison, 1.5);
}

/// The bound is on the time itself; that of painting a pixmap tells how fast the machine paints.
bool BenchKeys(const std::filesystem::path& folder) {
    constexpr double kBound = 4;
    const auto flash = MakeFlash(folder, "tall.bin", {"--kind", "e71", "--pictures", "2000"});
    const std::vector<double> times = NumbersOf({kWindow, "keys", flash});
    const bool holds = times[0] <= kBound;
    std::printf("%-58s %9.2f ms %9.2f ms   (bound %.0f ms)  %s\n",
                "arrow key to painted picture, X4 : a ready pixmap", times[0], times[1], kBound,
                holds ? "holds" : "MISSED");
    return holds;
}

bool BenchBmps(const std::filesystem::path& folder) {
    const auto flash = FlashOf2000(folder);
    // Its own time, without the start of the window's program.
    const auto save = [&] { return NumbersOf({kWindow, "bmps", flash, Fresh(folder)})[0] / 1000; };
    const auto exportAll = [&] {
        RunProgram({kCli, "export", flash, "-o", Fresh(folder), "--format", "bmp"});
    };
    const auto comparison = Compare(kRounds, save, Clocked(exportAll));
    return Print("Save as BMPs of 2000 pictures in the window : export", comparison, 1.3);
}

void PrintMachine() {
    utsname name{};
    uname(&name);
    std::printf("%s %s %s, %u processors; median of %d runs in turns with the peer\n", name.sysname,
                name.release, name.machine, std::thread::hardware_concurrency(), kRounds);
}

/// list and carve come first: later ones make this process large.
constexpr std::pair<std::string_view, bool (*)(const std::filesystem::path& folder)> kBenchmarks[] = {
    {"list", BenchList},
    {"carve", BenchCarve},
    {"gpn", BenchGpn},
    {"decode", BenchDecode},
    {"encode", BenchEncode},
    {"export", BenchExport},
    {"free-flash", BenchFreeFlash},
    {"start", BenchStart},
    {"keys", BenchKeys},
    {"bmps", BenchBmps},
};

/// The benchmarks of these names; all when there are none.
bool Run(const std::vector<std::string_view>& names, const std::filesystem::path& folder) {
    bool holds = true;
    for (const auto& [name, benchmark] : kBenchmarks)
        if (names.empty() || std::find(names.begin(), names.end(), name) != names.end())
            holds &= benchmark(folder);
    return holds;
}

std::filesystem::path MakeFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "pictavo-bench-XXXXXX").string();
    Check(mkdtemp(name.data()) != nullptr, "making a folder");
    return name;
}

}  // namespace

}  // namespace pictavo::bench

/// Arguments: the benchmarks to run, all without any. Exit status 1 when a bound is missed.
int main(int count, char** arguments) {
    const auto folder = pictavo::bench::MakeFolder();
    setenv("XDG_RUNTIME_DIR", folder.c_str(), 0);  // else Qt complains of a machine without sessions
    pictavo::bench::PrintMachine();
    const bool holds = pictavo::bench::Run({arguments + 1, arguments + count}, folder);
    std::filesystem::remove_all(folder);
    return holds ? 0 : 1;
}
