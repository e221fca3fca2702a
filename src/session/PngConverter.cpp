#include "session/PngConverter.h"

#include "codec/Bitmap.h"
#include "core/BasicCalculations_Tarsk.h"
#include "core/OutputFile.h"
#include "core/PathText.h"
#include "core/SystemNames.h"
#include "session/Messages.h"
#include "tools/PNGcodec.h"

namespace pictavo {

namespace {

bool ConvertsWithAlpha(int colourType) {
    return colourType == 0 || colourType == 4 || colourType == 6;
}

/// Absolute, so that no file name reads as an option.
std::string ArgumentOf(const std::filesystem::path& path) {
    return PathText(system_file::WholePath(path));
}

std::vector<std::string> Arguments(const std::string& format, bool withAlpha,
                                   const std::filesystem::path& output, const std::filesystem::path& input) {
    std::vector<std::string> arguments{"-out", format, "-ctype", withAlpha ? "rgba" : "rgb"};
    if (!withAlpha) arguments.emplace_back("-truecolors");
    arguments.insert(arguments.end(), {"-o", ArgumentOf(output), ArgumentOf(input)});
    return arguments;
}

/// What stays under the converter's output name would be written through, or taken for what it wrote.
Status ClearTheWay(const std::filesystem::path& output) {
    RemoveWorkFile(output);
    if (NameIsFree(output)) return {};
    return Fail(ErrorKind::WriteFailed, output, "is in the converter's way and cannot be removed");
}

/// Runs the converter and looks for its output.
Result<std::filesystem::path> Convert(const Session& session, ProcessRunner& processes,
                                      const std::string& format, bool withAlpha,
                                      const std::filesystem::path& output,
                                      const std::filesystem::path& input) {
    PICTAVO_TRY(CheckConverter(session));
    PICTAVO_TRY(ClearTheWay(output));
    const std::string trouble =
        processes.RunAndWait(ConverterOf(session), Arguments(format, withAlpha, output, input));
    if (!FileMissing(output)) return output;
    return Fail(ErrorKind::ConverterFailed, "the converter " + PathText(ConverterOf(session)) +
                                                " wrote no output" +
                                                (trouble.empty() ? "" : ": it " + trouble));
}

/// A converter that ran out of disk, or was killed, may leave half a file.
Status CheckWhole(const Session& session, const std::filesystem::path& png) {
    PICTAVO_TRY(const auto source, FileSource::Open(png));
    PICTAVO_TRY(const bool isWhole, IsWholePng(*source));
    if (isWhole) return {};
    return Fail(ErrorKind::ConverterFailed,
                "the converter " + PathText(ConverterOf(session)) + " wrote no whole PNG file");
}

}  // namespace

std::filesystem::path ConverterOf(const Session& session) {
    return PathOf(session.settings.nConvert);
}

Status CheckConverter(const Session& session) {
    if (!FileMissing(ConverterOf(session))) return {};
    return Fail(ErrorKind::ConverterMissing, ConverterOf(session),
                "the converter (setting nConvert) cannot be opened");
}

Result<std::filesystem::path> ConvertPngToBitmap(const Session& session, ProcessRunner& processes,
                                                 const std::filesystem::path& png, int colourType) {
    RemovePngTemporaries(session);
    return Convert(session, processes, "bmp", ConvertsWithAlpha(colourType), session.workFiles.PngBitmap(),
                   ShortPath(png));
}

Result<std::filesystem::path> ConvertPictureToPng(const Session& session, ProcessRunner& processes,
                                                  bool withAlpha) {
    if (session.picture.width <= 0 || session.picture.height <= 0)
        return Fail(ErrorKind::Malformed, "the picture has no pixels, without which there is no PNG file");
    const bool hasAlpha = withAlpha && session.picture.RasterHasAlpha;
    RemovePngTemporaries(session);
    const std::filesystem::path bitmap = session.workFiles.PngBitmap();
    PICTAVO_TRY(WriteWholeFile(bitmap, ComposeBitmap(session.picture, hasAlpha), CommitMode::KeepExisting));
    const std::filesystem::path png = session.workFiles.Png();
    PICTAVO_TRY(Convert(session, processes, "png", hasAlpha, png, bitmap));
    PICTAVO_TRY(CheckWhole(session, png));
    return png;
}

void RemovePngTemporaries(const Session& session) {
    RemoveWorkFile(session.workFiles.PngBitmap());
    RemoveWorkFile(session.workFiles.Png());
}

}  // namespace pictavo
