#include "ui/ProgramInformation.h"

#include "core/Version.h"

namespace pictavo {

namespace {

constexpr const char* kUsage =
    "Usage: pictavo [FILE ...]\n"
    "Opens a fullflash (.bin) or picture files (.gpf, .gpf2, .png, .gif, .bmp, .jpg) in a window.\n"
    "pictavo-cli works on them without a window: see pictavo-cli --help\n";

}  // namespace

std::optional<std::string> InformationAskedFor(const std::vector<std::string>& arguments) {
    if (arguments == std::vector<std::string>{"--help"}) return kUsage;
    if (arguments == std::vector<std::string>{"--version"}) return std::string("pictavo ") + kVersion + "\n";
    return std::nullopt;
}

}  // namespace pictavo
