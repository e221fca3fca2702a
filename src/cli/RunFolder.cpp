#include "cli/RunFolder.h"

#include "core/SystemFile.h"
#include "core/SystemNames.h"
#include "shell/TemporaryFolder.h"

namespace pictavo::cli {

Result<RunFolder> RunFolder::Create() {
    PICTAVO_TRY(std::filesystem::path path,
                system_file::CreatePrivateFolder(TemporaryFolder(), kPrivateFolderPrefix));
    return RunFolder(std::move(path));
}

RunFolder::~RunFolder() {
    if (!path_.empty()) system_file::RemoveFolder(path_);
}

}  // namespace pictavo::cli
