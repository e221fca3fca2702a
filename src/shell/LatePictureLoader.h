#pragma once

#include "session/Ports.h"

namespace pictavo {

/// What the module of picture readers exports under the name "PictavoPictureLoader". The loader lives as long
/// as the program.
using PictureLoaderOfModule = PictureLoader*();

/// A QtPictureLoader whose Qt Gui is taken into the process when the first picture is read: starting with it
/// takes longer than most commands of pictavo-cli work, and few of them read pictures. On Windows, where the
/// program is one file, it is there from the start.
class LatePictureLoader final : public PictureLoader {
  public:
    /// `programFolder` is where the executable stands; the module is beside it or where it is installed.
    explicit LatePictureLoader(std::filesystem::path programFolder)
        : programFolder_(std::move(programFolder)) {}

    /// As QtPictureLoader does. Fails with FileMissing, naming the module, when that cannot be loaded.
    Result<ImportedPixels> Load(const std::filesystem::path& path) override;

  private:
    Status LoadModule();

    std::filesystem::path programFolder_;
    PictureLoader* loader_ = nullptr;  // owned by the module
};

}  // namespace pictavo
