#include "session/ReplacePictures.h"

#include <algorithm>
#include <array>

#include "codec/GPFcodec.h"
#include "codec/PictureEncoder.h"
#include "core/AsciiText.h"
#include "core/BasicCalculations_Tarsk.h"
#include "core/FolderIndex.h"
#include "core/OutputFile.h"
#include "core/PathText.h"
#include "patch/PitRecord.h"
#include "session/Compression.h"
#include "session/Messages.h"
#include "session/Names.h"
#include "session/PicturesLoader.h"
#include "session/PngConverter.h"
#include "session/Report.h"
#include "session/ShowPicture.h"
#include "session/StatusText.h"

namespace pictavo {

namespace {

/// In the order in which a folder is searched for a picture.
constexpr std::array kSearchedExtensions = {
    GpfExtension(true), GpfExtension(false), ".bmp", ".png", ".jpg", ".gif"};

/// The kind of a file is told by the last four characters of its name.
std::string LoweredEnd(const std::filesystem::path& path) {
    std::string end = PathText(path);
    if (end.size() > 4) end.erase(0, end.size() - 4);
    return Lowered(std::move(end));
}

Status LoadSource(Session& session, Ports& ports, const std::filesystem::path& path) {
    if (FileMissing(path)) return Fail(ErrorKind::FileMissing, path, "cannot be opened");
    const std::string end = LoweredEnd(path);
    if (end == "gpf2" || end == ".gpf") return LoadGpfWhole(session, path);
    if (end == ".png") PICTAVO_TRY(CheckConverter(session));  // whatever the file holds
    return PicturesLoader(session, ports, path);
}

/// Who was not asked is told why it was to be compressed.
Error NamingSetting(const AppSettings& settings, Error error) {
    if (settings.CompressGPF) error.detail += "; the settings say CompressGPF=true";
    return error;
}

Status WriteWorkFile(const Session& session, int number, std::uint8_t typeCode) {
    if (const Status writable = CheckWritable(typeCode); !writable)
        return Failure(NamingSetting(session.settings, writable.error()));
    const GpfHeader header = HeaderFor(session.picture, typeCode, number, true);
    const Bytes file = ComposeGpf(header, EncodePicture(session.picture, typeCode));
    return WriteWholeFile(session.workFiles.Replacement(number), file, CommitMode::Replace);
}

Status CheckFits(const Session& session, const std::filesystem::path& path, std::uint8_t typeCode) {
    const Status fits = CheckFitsRecord(session.flash, HeaderFor(session.picture, typeCode, 0, true));
    if (fits) return {};
    return Failure(WithPath(fits.error(), path));
}

/// What was loaded from `path` becomes the row's replacement.
Status TakeLoaded(Session& session, Ports& ports, std::size_t index, const std::filesystem::path& path,
                  std::uint8_t typeCode) {
    const int number = session.rows[index].number;
    PICTAVO_TRY(CheckFits(session, path, typeCode));
    if (const Status written = WriteWorkFile(session, number, AskCompression(session, ports, typeCode));
        !written)
        return Failure(WithPath(written.error(), path));
    PICTAVO_TRY([[maybe_unused]] const LoadedGpf shown,
                LoadGPFfile(session, session.workFiles.Replacement(number)));
    session.replaced[index] = true;
    return {};
}

Status Replace(Session& session, Ports& ports, std::size_t index, const std::filesystem::path& path,
               std::uint8_t typeCode) {
    PICTAVO_TRY(LoadSource(session, ports, path));
    return TakeLoaded(session, ports, index, path, typeCode);
}

/// A refused file must not stand in the view beside the row that it was meant for. What keeps the row itself
/// from being shown stands in the caption.
void ShowRowAgain(Session& session, std::size_t index) {
    [[maybe_unused]] const Status shown = ShowRow(session, index);
}

std::optional<std::filesystem::path> FindSource(const Session& session, const FolderIndex& folder,
                                                int number) {
    for (const char* extension : kSearchedExtensions)
        if (auto path = folder.Find(NumberName(session.settings, number) + extension)) return path;
    return std::nullopt;
}

FileChoice SourceChoice(const Session& session, int number) {
    return {OpenTitle(session.texts, session.texts.cap_mnLoad),
            {GraphicFiles()},
            NumberName(session.settings, number),
            ""};
}

/// The refusal of compressed 1 bit is told picture by picture, since its question was.
void NoteProblem(const Session& session, Ports& ports, const Error& error, int number, Outcome& outcome) {
    if (error.kind == ErrorKind::OneBitCompressed) Tell(session, ports, error);
    outcome.problems.push_back({error, number});
}

}  // namespace

bool HasPictureExtension(const std::filesystem::path& path) {
    const std::string extension = Lowered(PathText(path.extension()));
    return std::find(kSearchedExtensions.begin(), kSearchedExtensions.end(), extension) !=
           kSearchedExtensions.end();
}

Outcome ReplacePicture(Session& session, Ports& ports, std::size_t index, std::uint8_t typeCode) {
    const auto answer = ports.prompts.ChooseOpen(SourceChoice(session, session.rows[index].number));
    if (answer.empty()) return Outcome::Cancelled();
    return ReplaceFrom(session, ports, index, WithoutTail(answer), typeCode);
}

Outcome ReplaceFrom(Session& session, Ports& ports, std::size_t index, const std::filesystem::path& path,
                    std::uint8_t typeCode) {
    session.pictureNumber = session.rows[index].number;
    if (FileMissing(path)) return RefuseMissing(session, ports, path, MissingForm::TextThenPath);
    const ShownPicture before = session.shown;
    const Status loaded = LoadSource(session, ports, path);
    const Status taken = loaded ? TakeLoaded(session, ports, index, path, typeCode) : loaded;
    if (!taken) {
        if (loaded || session.shown != before) ShowRowAgain(session, index);
        return Refuse(session, ports, taken.error());
    }
    session.savePatchEnabled = true;
    Outcome outcome;
    outcome.note = WaitingText(session);
    return outcome;
}

Outcome ReplacePictures(Session& session, Ports& ports, std::uint8_t typeCode) {
    const auto folder = ports.prompts.BrowseForFolder(FolderTitle(session.texts, session.texts.str_4open));
    if (folder.empty()) return Outcome::Cancelled();
    return ReplaceFromFolder(session, ports, folder, typeCode);
}

Outcome ReplaceFromFolder(Session& session, Ports& ports, const std::filesystem::path& folder,
                          std::uint8_t typeCode) {
    const auto index = FolderIndex::Read(folder);
    if (!index) return Refuse(session, ports, index.error());
    Outcome outcome;
    for (std::size_t row = 0; row < session.rows.size(); ++row) {
        const int number = session.rows[row].number;
        session.pictureNumber = number;
        if (const auto path = FindSource(session, *index, number)) {
            const Status status = Replace(session, ports, row, *path, typeCode);
            if (status) ++outcome.written;
            if (!status) NoteProblem(session, ports, status.error(), number, outcome);
        }
        if (!GoOn(ports, row + 1, session.rows.size(), outcome)) break;
    }
    session.savePatchEnabled = true;
    outcome.note = WithWaiting(LoadedText(session.settings, outcome.written, session.rows.size()), session);
    TellBatchEnd(session, ports, outcome);
    return outcome;
}

}  // namespace pictavo
