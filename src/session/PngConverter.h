#pragma once

/// PNG files by way of the converter: pictures go out and come in as bitmaps in the temporary folder, named
/// fixedly and deleted before each run, so that an earlier picture can never be taken for the new one.

#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

/// The converter that the settings name.
std::filesystem::path ConverterOf(const Session& session);

/// Fails with ConverterMissing unless the converter is a file that can be opened.
Status CheckConverter(const Session& session);

/// Converts a PNG file to a bitmap and returns its path. Kept: colour types 0, 4 and 6 are converted with
/// alpha, every other one without. Fails with ConverterMissing, when no bitmap came out with
/// ConverterFailed, and with WriteFailed when an old result cannot be removed.
Result<std::filesystem::path> ConvertPngToBitmap(const Session& session, ProcessRunner& processes,
                                                 const std::filesystem::path& png, int colourType);

/// Converts the picture to a PNG file in the temporary folder and returns its path; with alpha when
/// RasterHasAlpha and `withAlpha`. Fails with Malformed when the picture has no pixels, with
/// ConverterMissing, with WriteFailed, and with ConverterFailed when no PNG file came out or not all of one.
Result<std::filesystem::path> ConvertPictureToPng(const Session& session, ProcessRunner& processes,
                                                  bool withAlpha);

/// Deletes both temporary files.
void RemovePngTemporaries(const Session& session);

}  // namespace pictavo
