#include "shell/QtPictureLoader.h"

#include "imaging/PictureReading.h"
#include "shell/SourceDevice.h"

namespace pictavo {

Result<ImportedPixels> QtPictureLoader::Load(const std::filesystem::path& path) {
    PICTAVO_TRY(const auto source, FileSource::Open(path));
    SourceDevice device(*source);
    PICTAVO_TRY(ImportedPixels pixels, ReadAnyPicture(device, path));
    LayOverWhite(pixels);
    return pixels;
}

}  // namespace pictavo
