#include "shell/LatePictureLoader.h"

namespace pictavo {

Result<ImportedPixels> LatePictureLoader::Load(const std::filesystem::path& path) {
    if (loader_ == nullptr) PICTAVO_TRY(LoadModule());
    return loader_->Load(path);
}

}  // namespace pictavo
