#include <dlfcn.h>

#include "core/BasicCalculations_Tarsk.h"
#include "shell/LatePictureLoader.h"
#include "shell/ReadersModule.h"

namespace pictavo {

namespace {

std::filesystem::path FindModule(const std::filesystem::path& programFolder) {
    const std::filesystem::path beside = programFolder / kReadersModule;
    if (!FileMissing(beside)) return beside;
    return (programFolder / kInstalledModules / kReadersModule).lexically_normal();
}

}  // namespace

Status LatePictureLoader::LoadModule() {
    const std::filesystem::path path = FindModule(programFolder_);
    void* const module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const find = module == nullptr ? nullptr : dlsym(module, "PictavoPictureLoader");
    if (find == nullptr)
        return Fail(ErrorKind::FileMissing, path,
                    std::string("the picture readers cannot be loaded (") + dlerror() + ")");
    loader_ = reinterpret_cast<PictureLoaderOfModule*>(find)();
    return {};
}

}  // namespace pictavo
