#include <QLibrary>

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
    QLibrary module(QString::fromStdU16String(path.u16string()));
    const auto find = reinterpret_cast<PictureLoaderOfModule*>(module.resolve("PictavoPictureLoader"));
    if (find == nullptr)
        return Fail(ErrorKind::FileMissing, path,
                    "the picture readers cannot be loaded (" + module.errorString().toStdString() + ")");
    loader_ = find();
    return {};
}

}  // namespace pictavo
