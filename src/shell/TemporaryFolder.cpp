#include "shell/TemporaryFolder.h"

#include "shell/Variable.h"

namespace pictavo {

std::filesystem::path NamedTemporaryFolder() {
    const std::filesystem::path named = PathOfVariable("TMP");
    std::error_code error;
    return std::filesystem::is_directory(named, error) ? named : std::filesystem::path();
}

std::filesystem::path SystemTemporaryFolder() {
    std::error_code error;
    const std::filesystem::path system = std::filesystem::temp_directory_path(error);
    return error ? std::filesystem::path("/tmp") : system;
}

std::filesystem::path TemporaryFolder() {
    const std::filesystem::path named = NamedTemporaryFolder();
    return named.empty() ? SystemTemporaryFolder() : named;
}

}  // namespace pictavo
