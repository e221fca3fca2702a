#pragma once

/// The folder of temporary files, and the names in it: the replacement of each picture as a GPF2 file, the
/// two files exchanged with the converter, and the pending patch of replaced PNG files.

#include <filesystem>

#include "core/Result.h"

namespace pictavo {

struct WorkFiles {
    std::filesystem::path folder;

    /// The replacement of a picture. Always named in decimal with four digits, whatever the settings say.
    std::filesystem::path Replacement(int number) const;

    /// Whether `path` is, or would be, one of these files. Fails with WriteFailed when the system does not
    /// tell.
    Result<bool> IsOne(const std::filesystem::path& path) const;

    std::filesystem::path PngBitmap() const { return folder / "PNGtemp.bmp"; }
    std::filesystem::path Png() const { return folder / "PNGtemp.png"; }
    std::filesystem::path PngPatch() const { return folder / "PNGpatch.vkp"; }
};

/// Deletes a temporary file; one that is not there is fine.
void RemoveWorkFile(const std::filesystem::path& path);

}  // namespace pictavo
