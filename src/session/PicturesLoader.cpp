#include "session/PicturesLoader.h"

#include "codec/Bitmap.h"
#include "core/ByteSource.h"
#include "core/PathText.h"
#include "session/PngConverter.h"
#include "tools/PNGcodec.h"

namespace pictavo {

namespace {

constexpr int kUnknownFileDepth = 24;  // what the system's readers hand over

/// A picture on its way in.
struct Import {
    ImportedPixels pixels;
    int bitDepth = 0;
};

Result<Import> ImportBitmap32(const ByteSource& source, const PictureFileInfo& info) {
    PICTAVO_TRY(ImportedPixels pixels, ReadBitmap32(source, info));
    return Import{std::move(pixels), info.bitDepth};
}

/// Everything but PNG.
Result<Import> ImportPlain(PictureLoader& loader, const ByteSource& source, const PictureFileInfo& info) {
    PICTAVO_TRY(CheckPictureSize(source.Path(), info.width, info.height));
    const bool isBitmap = info.kind == PictureFileKind::Bitmap;
    if (isBitmap && info.bitDepth == kDirectlyReadDepth) return ImportBitmap32(source, info);
    if (isBitmap) PICTAVO_TRY(CheckBitmapFilled(source, info));
    if (info.kind == PictureFileKind::Jpeg) PICTAVO_TRY(CheckJpegScans(source));
    PICTAVO_TRY(ImportedPixels pixels, loader.Load(source.Path()));
    PICTAVO_TRY(CheckPictureSize(source.Path(), pixels.width, pixels.height));
    const int depth = info.kind == PictureFileKind::Unknown ? kUnknownFileDepth : info.bitDepth;
    return Import{std::move(pixels), depth};
}

/// The converter's bitmap is read like any other file; that it must be no PNG keeps a converter that only
/// copies from running in circles.
Result<Import> ImportConverted(PictureLoader& loader, const std::filesystem::path& bitmap) {
    PICTAVO_TRY(const auto source, FileSource::Open(bitmap));
    PICTAVO_TRY(const PictureFileInfo info, ReadPictureFileInfo(*source));
    if (info.kind == PictureFileKind::Png)
        return Fail(ErrorKind::ConverterFailed, bitmap, "it is a PNG file");
    return ImportPlain(loader, *source, info);
}

/// Whoever reads the message knows the PNG file, and nothing of the bitmap in between.
Error ConversionError(const Session& session, const std::filesystem::path& png, const Error& ofBitmap) {
    if (ofBitmap.kind == ErrorKind::TooLarge) return WithPath(ofBitmap, png);
    return {ErrorKind::ConverterFailed, png, std::nullopt,
            "the converter " + PathText(ConverterOf(session)) + " made no bitmap of it that can be read (" +
                ofBitmap.detail + ")"};
}

Result<Import> ImportPng(const Session& session, Ports& ports, const ByteSource& source) {
    PICTAVO_TRY(const PNGInfo png, ReadPNGInfo(source));
    PICTAVO_TRY(CheckPictureSize(source.Path(), png.width, png.height));
    PICTAVO_TRY(const auto bitmap,
                ConvertPngToBitmap(session, ports.processes, source.Path(), png.colourType));
    auto import = ImportConverted(ports.pictures, bitmap);
    RemovePngTemporaries(session);
    if (!import) return Failure(ConversionError(session, source.Path(), import.error()));
    return import;
}

Result<Import> ImportFile(const Session& session, Ports& ports, const std::filesystem::path& path) {
    PICTAVO_TRY(const auto source, FileSource::Open(path));
    PICTAVO_TRY(const PictureFileInfo info, ReadPictureFileInfo(*source));
    if (info.kind == PictureFileKind::Png) return ImportPng(session, ports, *source);
    return ImportPlain(ports.pictures, *source, info);
}

std::string Caption(const Picture& picture) {
    return SizeText(picture.width, picture.height) + " :: " + std::to_string(picture.bitDepth) + "bit";
}

}  // namespace

Status PicturesLoader(Session& session, Ports& ports, const std::filesystem::path& path,
                      const ChannelFlags& flags) {
    const auto import = ImportFile(session, ports, path);
    if (!import) return Failure(WithPath(import.error(), path));
    StoreImportedPixels(import->pixels, import->bitDepth, flags, session.picture);
    session.shown = {true, true, Caption(session.picture), 0};
    return {};
}

}  // namespace pictavo
