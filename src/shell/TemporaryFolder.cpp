#include "shell/TemporaryFolder.h"

#include "core/SystemNames.h"
#include "shell/Variable.h"

namespace pictavo {

std::filesystem::path NamedTemporaryFolder() {
    const std::filesystem::path named = PathOfVariable("TMP");
    const bool isFolder = system_file::TypeOfFile(named) == std::filesystem::file_type::directory;
    return isFolder ? named : std::filesystem::path();
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
