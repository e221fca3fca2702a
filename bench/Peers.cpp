#include "Peers.h"

#include <cstdio>
#include <cstdlib>

#include "Timing.h"

namespace pictavo::bench {

namespace {

const std::string kSample = std::string(PICTAVO_BIN_DIR) + "/pictavo-sample";

}  // namespace

void Check(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "%s failed\n", what);
    std::exit(1);
}

std::filesystem::path MakeFlash(const std::filesystem::path& folder, const char* name,
                                const std::vector<std::string>& options) {
    const auto path = folder / name;
    std::vector<std::string> command{kSample, "--size", "128", "-o", path};
    command.insert(command.end(), options.begin(), options.end());
    RunProgram(command);
    return path;
}

std::filesystem::path FlashOf2000(const std::filesystem::path& folder) {
    return MakeFlash(folder, "many.bin", {"--pictures", "2000"});
}

std::string Fresh(const std::filesystem::path& folder) {
    static int count = 0;
    return folder / std::to_string(count++);
}

bool PrintMemory(const std::string& what, long used, long peer) {
    constexpr long kBound = 8 * 1024;
    const bool holds = used - peer <= kBound;
    std::printf("%-58s %9.2f MiB %8.2f MiB   more by %5.2f  bound %6.2f  %s\n", what.c_str(),
                static_cast<double>(used) / 1024, static_cast<double>(peer) / 1024,
                static_cast<double>(used - peer) / 1024, kBound / 1024.0, holds ? "holds" : "MISSED");
    return holds;
}

}  // namespace pictavo::bench
