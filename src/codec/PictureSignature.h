#pragma once

/// Tells what kind of picture file a file is by its first two bytes, whatever its name, and reads its size.
/// Layouts: docs/formats/pictures-in.md.

#include <cstdint>

#include "core/ByteSource.h"

namespace pictavo {

enum class PictureFileKind { Bitmap, Gif, Jpeg, Png, Unknown };

struct PictureFileInfo {
    PictureFileKind kind = PictureFileKind::Unknown;
    std::int64_t width = 0;         ///< pixels; of a PNG or an unknown file 0
    std::int64_t height = 0;        ///< pixels
    int bitDepth = 0;               ///< bits per pixel as the file's kind counts them
    std::uint64_t pixelOffset = 0;  ///< of a bitmap: file offset of the pixel data
    bool isCompressed = false;      ///< of a bitmap: its pixels are run-length coded or embedded
    bool topDown = false;  ///< of a bitmap: the rows are stored from the top (its height is negative)
};

/// Reads signature and header. A PNG gives its kind only: PNGcodec reads the rest. Fails with Truncated when
/// the file ends before its size is told, with Malformed when it tells none, and with ReadFailed.
Result<PictureFileInfo> ReadPictureFileInfo(const ByteSource& source);

/// Fails with Malformed when a JPEG file is cut short, that is when no end marker follows the start of its
/// first scan (readers would fill up what is missing), with Malformed when it holds more than a thousand
/// scans (readers would take seconds), and with ReadFailed.
Status CheckJpegScans(const ByteSource& source);

}  // namespace pictavo
