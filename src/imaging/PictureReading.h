#pragma once

/// Picture files through Qt's image readers, which need no display. What the readers print to standard error
/// goes nowhere.

#include <QIODevice>

#include "codec/ImportedPixels.h"

namespace pictavo {

/// The pixels of the picture in `device`, which is open for reading, by the reader that its content asks for;
/// of several frames the first. The alpha is straight: the colour of a transparent pixel stays what it is.
/// `path` is what errors name. Readers that are plugins need a QCoreApplication.
/// Fails with UnknownFile when no reader takes it, with Malformed when the reader refuses it, and with
/// TooLarge when the picture does not fit into the Raster.
Result<ImportedPixels> ReadAnyPicture(QIODevice& device, const std::filesystem::path& path);

/// The same for what begins like a picture of one of Qt's formats ("png"), whose reader is asked first. What
/// no reader takes is Malformed here.
Result<ImportedPixels> ReadPictureAs(const char* format, QIODevice& device,
                                     const std::filesystem::path& path);

}  // namespace pictavo
