#include "cli/RunFolder.h"

#include "core/SystemFile.h"
#include "shell/TemporaryFolder.h"

namespace pictavo::cli {

Result<RunFolder> RunFolder::Create() {
    PICTAVO_TRY(std::filesystem::path path,
                system_file::CreatePrivateFolder(TemporaryFolder(), kPrivateFolderPrefix));
    return RunFolder(std::move(path));
}

RunFolder::~RunFolder() {
    std::error_code ignored;
    if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
}

}  // namespace pictavo::cli
