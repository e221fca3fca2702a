#include "converter/Conversion.h"

#include <QBuffer>
#include <QImage>

#include "codec/Bitmap.h"
#include "core/OutputFile.h"
#include "core/PathText.h"
#include "imaging/PictureReading.h"

namespace pictavo {

namespace {

constexpr std::uint64_t kLongestFile = std::uint64_t{64} << 20;

/// Read whole and not by name: a name on Linux may hold bytes that a QString cannot.
Result<QByteArray> WholeFile(const ByteSource& source) {
    if (source.Size() > kLongestFile)
        return Fail(ErrorKind::TooLarge, source.Path(), "the file is longer than 64 MiB");
    PICTAVO_TRY(const Bytes bytes, source.ReadExactly(0, source.Size()));
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
}

Result<ImportedPixels> ReadWithQt(const ByteSource& source, const char* format) {
    PICTAVO_TRY(const QByteArray file, WholeFile(source));
    QBuffer buffer;
    buffer.setData(file);
    buffer.open(QIODevice::ReadOnly);
    return ReadPictureAs(format, buffer, source.Path());
}

/// Bitmaps of 32 bits are read here, since Qt's reader would drop their alpha.
Result<ImportedPixels> ReadBitmap(const ByteSource& source, const PictureFileInfo& info) {
    PICTAVO_TRY(CheckPictureSize(source.Path(), info.width, info.height));
    if (info.bitDepth == kDirectlyReadDepth) return ReadBitmap32(source, info);
    PICTAVO_TRY(CheckBitmapFilled(source, info));
    return ReadWithQt(source, "bmp");
}

Result<ImportedPixels> ReadInput(const std::filesystem::path& path) {
    PICTAVO_TRY(const auto source, FileSource::Open(path));
    PICTAVO_TRY(const PictureFileInfo info, ReadPictureFileInfo(*source));
    if (info.kind == PictureFileKind::Bitmap) return ReadBitmap(*source, info);
    if (info.kind == PictureFileKind::Png) return ReadWithQt(*source, "png");
    return Fail(ErrorKind::UnknownFile, path, "is neither a PNG file nor a bitmap");
}

Bytes ComposeBmp(const ImportedPixels& pixels, bool withAlpha) {
    Picture picture;
    StoreImportedPixels(pixels, 0, {}, picture);
    picture.RasterHasAlpha = withAlpha;
    return ComposeBitmap(picture, withAlpha);
}

Result<Bytes> ComposePng(const ImportedPixels& pixels, bool withAlpha, const std::filesystem::path& path) {
    QImage image(pixels.width, pixels.height, withAlpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    auto cell = pixels.cells.begin();
    for (int y = 0; y < pixels.height; ++y)
        for (int x = 0; x < pixels.width; ++x, ++cell)
            image.setPixel(x, y, qRgba(cell->r, cell->g, cell->b, cell->a));
    QByteArray file;
    QBuffer buffer(&file);
    if (!image.save(&buffer, "png"))
        return Fail(ErrorKind::WriteFailed, path, "cannot be composed as a PNG file");
    return Bytes(file.begin(), file.end());
}

Result<Bytes> Compose(const Conversion& conversion, const ImportedPixels& pixels) {
    if (conversion.format == Conversion::Format::Png)
        return ComposePng(pixels, conversion.withAlpha, conversion.output);
    return ComposeBmp(pixels, conversion.withAlpha);
}

}  // namespace

std::optional<Conversion> ParseConversion(const std::vector<std::string>& arguments) {
    const bool withAlpha = arguments.size() == 7 && arguments[3] == "rgba";
    const bool withoutAlpha = arguments.size() == 8 && arguments[3] == "rgb" && arguments[4] == "-truecolors";
    if (!withAlpha && !withoutAlpha) return std::nullopt;
    const bool isPng = arguments[1] == "png";
    const std::size_t o = arguments.size() - 3;
    if (arguments[0] != "-out" || (!isPng && arguments[1] != "bmp") || arguments[2] != "-ctype" ||
        arguments[o] != "-o")
        return std::nullopt;
    return Conversion{isPng ? Conversion::Format::Png : Conversion::Format::Bmp, withAlpha,
                      PathOf(arguments[o + 1]), PathOf(arguments[o + 2])};
}

Status RunConversion(const Conversion& conversion) {
    PICTAVO_TRY(const bool isInput, IsSameFile(conversion.output, conversion.input));
    if (isInput)
        return Fail(ErrorKind::OutputIsInput, conversion.output, "is the very file that is to be read");
    PICTAVO_TRY(ImportedPixels pixels, ReadInput(conversion.input));
    if (!conversion.withAlpha) LayOverWhite(pixels);
    PICTAVO_TRY(const Bytes file, Compose(conversion, pixels));
    return WriteWholeFile(conversion.output, file, CommitMode::Replace);
}

}  // namespace pictavo
