#include "session/ShowPicture.h"

#include "core/OutputFile.h"
#include "core/PathText.h"
#include "session/Messages.h"

namespace pictavo {

namespace {

/// The reason as the frame's line gives it.
std::string ReasonText(const LanguageTable& texts, const Error& error) {
    return error.kind == ErrorKind::TooLarge ? texts.str_LarPic + "!" : error.detail;
}

void ShowDecoded(ShownPicture& shown, const std::string& number, const PictureFormat& format,
                 const DecodedPicture& decoded) {
    shown = {true, decoded.complete, InformationLine(number, format, decoded.consumed), decoded.consumed};
}

Status ShowFlashPicture(Session& session, const PictureRecord& row) {
    const PictureFormat format = FormatOf(row, session.picture.bitDepth);
    const std::string number = ColumnText(row, Column::Number);
    const auto decoded = DecodePicture(*session.flash.source, row.picOffset, format, session.picture);
    if (decoded) {
        ShowDecoded(session.shown, number, format, *decoded);
        return {};
    }
    session.picture.bitDepth = format.bitDepth;
    NothingShown(session.shown, number + " :: " + SizeText(format.width, format.height),
                 ReasonText(session.texts, decoded.error()));
    return Failure(WithPath(decoded.error(), session.flash.source->Path()));
}

/// A file that is no GPF changed nothing: what was shown before still is.
void ShowFailedGpf(Session& session, const ByteSource& source, const Error& error) {
    if (error.kind != ErrorKind::TooLarge && error.kind != ErrorKind::ReadFailed) return;
    const auto header = ReadGpfHeader(source);
    if (!header) return NothingShown(session.shown, PathText(source.Path().filename()), error.detail);
    NothingShown(session.shown,
                 std::to_string(header->number) + " :: " + SizeText(header->width, header->height),
                 ReasonText(session.texts, error));
}

/// Of a bold row. What was shown before must not be saved under this row's number.
Status ShowReplacement(Session& session, const PictureRecord& row) {
    session.shown = {};
    const auto loaded = LoadGPFfile(session, session.workFiles.Replacement(row.number));
    if (loaded) return {};
    if (session.shown.caption.empty())
        NothingShown(session.shown, std::to_string(row.number), ReasonText(session.texts, loaded.error()));
    return Failure(loaded.error());
}

}  // namespace

void NothingShown(ShownPicture& shown, const std::string& subject, const std::string& reason) {
    shown = {false, true, subject + " :: " + reason, 0};
}

bool HasReplacement(const Session& session, std::size_t index) {
    return session.replaced[index] && !NameIsFree(session.workFiles.Replacement(session.rows[index].number));
}

Status ShowRow(Session& session, std::size_t index) {
    const PictureRecord& row = session.rows[index];
    session.pictureNumber = row.number;
    if (!HasReplacement(session, index)) return ShowFlashPicture(session, row);
    return ShowReplacement(session, row);
}

Result<LoadedGpf> LoadGPFfile(Session& session, const std::filesystem::path& path) {
    const auto source = FileSource::Open(path);
    const auto loaded =
        source ? LoadGpf(**source, session.picture) : Result<LoadedGpf>(Failure(source.error()));
    if (loaded) {
        ShowDecoded(session.shown, std::to_string(loaded->header.number), GpfPictureFormat(loaded->header),
                    loaded->decoded);
        return loaded;
    }
    if (source) ShowFailedGpf(session, **source, loaded.error());
    return Failure(WithPath(loaded.error(), path));
}

Status LoadGpfWhole(Session& session, const std::filesystem::path& path) {
    PICTAVO_TRY([[maybe_unused]] const LoadedGpf loaded, LoadGPFfile(session, path));
    if (const auto incomplete = IncompleteError(session.shown, path)) return Failure(*incomplete);
    return {};
}

std::optional<Error> IncompleteError(const ShownPicture& shown, const std::filesystem::path& path) {
    if (shown.isComplete) return std::nullopt;
    return Error{ErrorKind::Truncated, path, std::nullopt, "the file ends inside the picture's data"};
}

}  // namespace pictavo
