#include "shell/TemporaryFolder.h"

#include "core/SystemNames.h"
#include "shell/Variable.h"

namespace pictavo {

std::filesystem::path NamedTemporaryFolder() {
    const std::filesystem::path named = PathOfVariable("TMP");
    const bool isFolder = system_file::TypeOfFile(named) == std::filesystem::file_type::directory;
    return isFolder ? named : std::filesystem::path();
}

std::filesystem::path TemporaryFolder() {
    const std::filesystem::path named = NamedTemporaryFolder();
    return named.empty() ? system_file::TemporaryFolder() : named;
}

}  // namespace pictavo
