#include "Tools.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <functional>
#include <random>

#include "Peers.h"
#include "Timing.h"

namespace pictavo::bench {

namespace {

constexpr std::size_t kMebibyte = std::size_t{1} << 20;
constexpr int kSourceMebibytes = 128;

TimedRun Carve(const std::filesystem::path& folder, const char* kind, const std::string& source) {
    return Clocked([=] { RunProgram({kCli, "carve", kind, source, "-o", Fresh(folder)}); });
}

/// 128 MiB, each made by `fill`.
std::string WriteSource(const std::filesystem::path& path, const std::function<void(std::string&)>& fill) {
    std::ofstream file(path, std::ios::binary);
    std::string mebibyte(kMebibyte, '\0');
    for (int i = 0; i < kSourceMebibytes; ++i) {
        fill(mebibyte);
        file.write(mebibyte.data(), static_cast<std::streamsize>(mebibyte.size()));
    }
    Check(file.good(), "writing a source");
    return path.string();
}

bool BenchPngs(const std::filesystem::path& folder, const std::string& flash) {
    const std::string carved = Fresh(folder);
    RunProgram({kCli, "carve", "png", flash, "-o", carved});
    std::printf("(%td PNG files)\n", std::distance(std::filesystem::directory_iterator(carved), {}));
    const TimedRun carve = Carve(folder, "png", flash);
    const TimedRun peers = Clocked([&] {
        // As much of the signature as stands in one line.
        RunProgram({"env", "LC_ALL=C", "grep", "-c", "-a", "\x89PNG\r", flash});
        RunProgram({"cp", "-r", carved, Fresh(folder)});
    });
    const TimedRun foremost = Clocked([&] {
        RunProgram({"foremost", "-Q", "-t", "png", "-i", flash, "-o", Fresh(folder)});
    });
    bool holds =
        Print("carve png, 1000 in 128 MiB : grep -c -a and cp -r", Compare(kRounds, carve, peers), 1.5);
    holds &= Print("carve png, 1000 in 128 MiB : foremost", Compare(kRounds, carve, foremost), 0.5);
    return holds;
}

bool BenchGifs(const std::filesystem::path& folder, const std::string& what, const std::string& source) {
    const auto comparison = Compare(kRounds, Carve(folder, "gif", source), Clocked([&] {
                                        RunProgram({"cat", source});
                                    }));
    return Print("carve gif over 128 MiB of " + what + " : cat", comparison, 3);
}

void FillWithRandom(std::string& bytes) {
    static std::mt19937_64 random(1);
    for (std::size_t i = 0; i < bytes.size(); i += sizeof(std::uint64_t)) {
        const std::uint64_t eight = random();
        std::copy_n(reinterpret_cast<const char*>(&eight), sizeof eight,
                    bytes.begin() + static_cast<long>(i));
    }
}

/// All pictures of the flash as one container, and the folder that it is made of.
std::string MakeContainer(const std::filesystem::path& folder) {
    const std::string parts = folder / "parts";
    RunProgram({kCli, "export", FlashOf2000(folder), "-o", parts, "--format", "gpf2"});
    const std::string container = folder / "all.gpn";
    std::ofstream file(container, std::ios::binary);
    for (const auto& part : std::filesystem::directory_iterator(parts))
        file << std::ifstream(part.path(), std::ios::binary).rdbuf();
    Check(file.good(), "writing a container");
    return container;
}

}  // namespace

bool BenchCarve(const std::filesystem::path& folder) {
    const std::string flash = MakeFlash(folder, "pngs.bin", {"--pngs", "1000", "--pictures", "2000"});
    bool holds = PrintMemory("carve of 128 MiB, peak memory : --version",
                             RunProgram({kCli, "carve", "png", flash, "-o", Fresh(folder)}),
                             RunProgram({kCli, "--version"}));
    holds &= BenchPngs(folder, flash);
    holds &= BenchGifs(folder, "random bytes", WriteSource(folder / "random", FillWithRandom));
    holds &= BenchGifs(folder, "zeros", WriteSource(folder / "zeros", [](std::string&) {}));
    return holds;
}

bool BenchGpn(const std::filesystem::path& folder) {
    const std::string container = MakeContainer(folder);
    const std::string taken = Fresh(folder);
    RunProgram({kCli, "extract-gpn", container, "-o", taken});
    const auto extract = [&] { RunProgram({kCli, "extract-gpn", container, "-o", Fresh(folder)}); };
    const auto copy = [&] { RunProgram({"cp", "-r", taken, Fresh(folder)}); };
    const auto comparison = Compare(kRounds, Clocked(extract), Clocked(copy));
    return Print("extract-gpn of 2000 pictures : cp -r of the folder", comparison, 1.3);
}

}  // namespace pictavo::bench
