#include "shell/QtPictureLoader.h"

#include <QImageReader>

#include "core/SilencedStandardError.h"
#include "shell/SourceDevice.h"

namespace pictavo {

namespace {

constexpr int kMostWidth = 240;
constexpr int kMostHeight = 320;

/// For formats that tell their size only once they are decoded.
constexpr int kMostMegabytes = 16;

/// A colour laid over white.
std::uint8_t OverWhite(int colour, int alpha) {
    return static_cast<std::uint8_t>((colour * alpha + 255 * (255 - alpha) + 127) / 255);
}

Cell CellOf(QRgb pixel) {
    const int alpha = qAlpha(pixel);
    return {OverWhite(qRed(pixel), alpha), OverWhite(qGreen(pixel), alpha), OverWhite(qBlue(pixel), alpha),
            0};
}

ImportedPixels PixelsOf(const QImage& image) {
    const QImage plain = image.convertToFormat(QImage::Format_ARGB32);
    ImportedPixels pixels{plain.width(), plain.height(), {}, false};
    for (int y = 0; y < plain.height(); ++y)
        for (int x = 0; x < plain.width(); ++x) pixels.cells.push_back(CellOf(plain.pixel(x, y)));
    return pixels;
}

Failure TooLarge(const std::filesystem::path& path) {
    return Fail(ErrorKind::TooLarge, path, "the picture is too large (at most 240 x 320)");
}

bool IsTooLarge(const QSize& size) {
    return size.width() > kMostWidth || size.height() > kMostHeight;
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
    if (IsTooLarge(reader.size())) return TooLarge(path);
    const QImage image = reader.read();
    if (image.isNull())
        return Fail(ErrorKind::Malformed, path,
                    "can not be read as a picture (" + reader.errorString().toStdString() + ")");
    if (IsTooLarge(image.size())) return TooLarge(path);
    return PixelsOf(image);
}

}  // namespace pictavo
