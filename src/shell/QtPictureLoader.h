#pragma once

#include "session/Ports.h"

namespace pictavo {

/// Reads bitmaps, GIF and JPEG files through Qt's image readers, which need no display; GIF and JPEG are
/// plugins, so a QCoreApplication must exist.
class QtPictureLoader final : public PictureLoader {
  public:
    Result<ImportedPixels> Load(const std::filesystem::path& path) override;
};

}  // namespace pictavo
