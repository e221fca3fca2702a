#include "core/PathText.h"

namespace pictavo {

std::string PathText(const std::filesystem::path& path) {
    return path.native();
}

std::filesystem::path PathOf(std::string_view text) {
    return std::string(text);
}

std::filesystem::path ShortPath(const std::filesystem::path& path) {
    return path;
}

}  // namespace pictavo
