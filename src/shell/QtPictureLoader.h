#pragma once

#include "session/Ports.h"

namespace pictavo {

/// Reads bitmaps, GIF and JPEG files through Qt's image readers, which need no display. The file's content
/// decides on the reader, never its name. GIF and JPEG are plugins: a QCoreApplication must exist, which the
/// program's main creates. What the readers print to standard error goes nowhere.
class QtPictureLoader final : public PictureLoader {
  public:
    Result<ImportedPixels> Load(const std::filesystem::path& path) override;
};

}  // namespace pictavo
