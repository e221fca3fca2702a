#include "core/SystemNames.h"

namespace pictavo::system_file {

std::filesystem::path WholePath(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::path whole = std::filesystem::absolute(path, error);
    return error ? path : whole;
}

}  // namespace pictavo::system_file
