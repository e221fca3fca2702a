#include "imaging/PictureReading.h"

#include <QImage>
#include <QImageReader>

#include "core/SilencedStandardError.h"

namespace pictavo {

namespace {

/// For formats that tell their size only once they are decoded.
constexpr int kMostMegabytes = 16;

Cell CellOf(QRgb pixel) {
    return {static_cast<std::uint8_t>(qRed(pixel)), static_cast<std::uint8_t>(qGreen(pixel)),
            static_cast<std::uint8_t>(qBlue(pixel)), static_cast<std::uint8_t>(qAlpha(pixel))};
}

ImportedPixels PixelsOf(const QImage& image) {
    const QImage straight = image.convertToFormat(QImage::Format_ARGB32);
    ImportedPixels pixels{straight.width(), straight.height(), {}, true};
    for (int y = 0; y < straight.height(); ++y)
        for (int x = 0; x < straight.width(); ++x) pixels.cells.push_back(CellOf(straight.pixel(x, y)));
    return pixels;
}

Result<ImportedPixels> Read(QImageReader& reader, const std::filesystem::path& path) {
    QImageReader::setAllocationLimit(kMostMegabytes);
    reader.setAutoTransform(false);
    PICTAVO_TRY(CheckPictureSize(path, reader.size().width(), reader.size().height()));
    const QImage image = reader.read();
    if (image.isNull())
        return Fail(ErrorKind::Malformed, path,
                    "cannot be read as a picture (" + reader.errorString().toStdString() + ")");
    PICTAVO_TRY(CheckPictureSize(path, image.width(), image.height()));
    return PixelsOf(image);
}

}  // namespace

Result<ImportedPixels> ReadAnyPicture(QIODevice& device, const std::filesystem::path& path) {
    const SilencedStandardError silence;
    QImageReader reader(&device);
    reader.setDecideFormatFromContent(true);
    if (!reader.canRead()) return Fail(ErrorKind::UnknownFile, path, "is no picture file of a known kind");
    return Read(reader, path);
}

Result<ImportedPixels> ReadPictureAs(const char* format, QIODevice& device,
                                     const std::filesystem::path& path) {
    const SilencedStandardError silence;
    QImageReader reader(&device, format);
    return Read(reader, path);
}

}  // namespace pictavo
