#include "shell/QtPictureLoader.h"

#include <QImageReader>

#include "core/SilencedStandardError.h"
#include "shell/SourceDevice.h"

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
    LayOverWhite(pixels);
    return pixels;
}

}  // namespace

Result<ImportedPixels> QtPictureLoader::Load(const std::filesystem::path& path) {
    PICTAVO_TRY(const auto source, FileSource::Open(path));
    SourceDevice device(*source);
    const SilencedStandardError silence;
    QImageReader::setAllocationLimit(kMostMegabytes);
    QImageReader reader(&device);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(false);
    if (!reader.canRead()) return Fail(ErrorKind::UnknownFile, path, "is no picture file of a known kind");
    PICTAVO_TRY(CheckPictureSize(path, reader.size().width(), reader.size().height()));
    const QImage image = reader.read();
    if (image.isNull())
        return Fail(ErrorKind::Malformed, path,
                    "cannot be read as a picture (" + reader.errorString().toStdString() + ")");
    PICTAVO_TRY(CheckPictureSize(path, image.width(), image.height()));
    return PixelsOf(image);
}

}  // namespace pictavo
