#include "patch/WorkFiles.h"

#include "codec/GPFcodec.h"
#include "core/AsciiText.h"
#include "core/PathText.h"
#include "core/PictureTable.h"
#include "core/SystemNames.h"

namespace pictavo {

std::filesystem::path WorkFiles::Replacement(int number) const {
    return folder / (PictureNumberText(number) + GpfExtension(true));
}

Result<bool> WorkFiles::IsOne(const std::filesystem::path& path) const {
    const std::filesystem::path name = path.filename();
    const bool isReplacement = name.extension() == GpfExtension(true) && IsDecimal(PathText(name.stem()));
    if (!isReplacement && name != PngBitmap().filename() && name != Png().filename() &&
        name != PngPatch().filename())
        return false;
    return system_file::AreSame(path.parent_path().empty() ? "." : path.parent_path(), folder);
}

void RemoveWorkFile(const std::filesystem::path& path) {
    system_file::RemoveFile(path);
}

}  // namespace pictavo
