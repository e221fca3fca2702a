#include "session/SaveAllPictures.h"

#include <algorithm>
#include <limits>

#include "codec/Bitmap.h"
#include "codec/GPFcodec.h"
#include "core/NoOtherValue.h"
#include "core/WriteBehind.h"
#include "session/Messages.h"
#include "session/Names.h"
#include "session/PngConverter.h"
#include "session/Report.h"
#include "session/SavePicture.h"
#include "session/ShowPicture.h"
#include "session/StatusText.h"
#include "session/Targets.h"

namespace pictavo {

namespace {

/// Where a problem of no row, the stop of the batch, is told.
constexpr int kBehindAllRows = std::numeric_limits<int>::max();

std::string ExtensionOf(BatchFormat format) {
    switch (format) {
        case BatchFormat::Bmp:
            return ".bmp";
        case BatchFormat::Gpf:
            return GpfExtension(false);
        case BatchFormat::Gpf2:
            return GpfExtension(true);
        case BatchFormat::Png:
            return ".png";
    }
    NoOtherValue();
}

/// Where the stored bytes of the picture shown stand, and its type.
struct StoredPicture {
    const ByteSource& source;
    std::uint64_t offset;
    std::uint16_t type;
};

/// The file as the flash or work file holds it. Bytes past the end of a cut source are zeros.
Result<Bytes> ComposeStored(const Session& session, const StoredPicture& stored, bool isGPF2) {
    Bytes bytes(static_cast<std::size_t>(session.shown.consumed));
    PICTAVO_TRY([[maybe_unused]] const std::size_t count, stored.source.ReadAt(stored.offset, bytes));
    return ComposeGpf(HeaderFor(session.picture, stored.type, session.pictureNumber, isGPF2), bytes);
}

Result<Bytes> ComposeRowGpf(const Session& session, std::size_t index, bool isGPF2) {
    const PictureRecord& row = session.rows[index];
    if (!HasReplacement(session, index))
        return ComposeStored(session, {*session.flash.source, row.picOffset, row.typeCode}, isGPF2);
    PICTAVO_TRY(const auto workFile, FileSource::Open(session.workFiles.Replacement(row.number)));
    PICTAVO_TRY(const GpfHeader header, ReadGpfHeader(*workFile));
    return ComposeStored(session, {*workFile, kGpfHeaderSize, header.type}, isGPF2);
}

Result<Bytes> ComposePng(const Session& session, Ports& ports) {
    PICTAVO_TRY(const auto path, ConvertPictureToPng(session, ports.processes, true));
    PICTAVO_TRY(const auto source, FileSource::Open(path));
    return source->ReadExactly(0, source->Size());
}

Result<Bytes> ComposeFile(const Session& session, Ports& ports, std::size_t index, BatchFormat format) {
    switch (format) {
        case BatchFormat::Bmp:
            return ComposeBitmap(session.picture, session.picture.RasterHasAlpha);
        case BatchFormat::Gpf:
            return ComposeRowGpf(session, index, false);
        case BatchFormat::Gpf2:
            return ComposeRowGpf(session, index, true);
        case BatchFormat::Png:
            return ComposePng(session, ports);
    }
    NoOtherValue();
}

/// A batch at work: the files made so far are written while the next ones are made.
struct Batch {
    BatchFormat format;
    TargetFolder folder;
    WriteBehind files;
    std::vector<int> numbers;  // of the pictures in `files`
    std::size_t cutHeights = 0;
    Outcome outcome;
};

/// Makes the row's file, unless its overwrite is declined.
Status SaveRow(Session& session, Ports& ports, std::size_t index, Batch& batch) {
    const int number = session.rows[index].number;
    const std::string name = NumberName(session.settings, number) + ExtensionOf(batch.format);
    PICTAVO_TRY(const auto mode, batch.folder.Ask(session, ports, name));
    if (!mode) return {};
    PICTAVO_TRY(Bytes bytes, ComposeFile(session, ports, index, batch.format));
    batch.files.Add({batch.folder.PathOf(name), std::move(bytes), *mode});
    batch.numbers.push_back(number);
    if (batch.format == BatchFormat::Gpf && session.picture.height > kGpfLargestSize) ++batch.cutHeights;
    return {};
}

void ShowAndSaveRow(Session& session, Ports& ports, std::size_t index, Batch& batch) {
    const auto note = [&](const Error& error) {
        batch.outcome.problems.push_back({error, session.rows[index].number});
    };
    if (const Status shown = ShowRow(session, index); !shown) return note(shown.error());
    const auto incomplete = IncompleteError(session.shown, session.flash.source->Path());
    if (incomplete) note(*incomplete);
    if (const Status saved = SaveRow(session, ports, index, batch); !saved) note(saved.error());
}

bool IsMeant(const SaveRequest& request, int number) {
    return !request.numbers || request.numbers->contains(number);
}

/// Waits for the files, and tells of those that could not be written where their rows stand.
void FinishFiles(Batch& batch) {
    const std::vector<Status> ends = batch.files.Finish();
    std::vector<Problem>& problems = batch.outcome.problems;
    for (std::size_t i = 0; i < ends.size(); ++i) {
        if (ends[i])
            ++batch.outcome.written;
        else
            problems.push_back({ends[i].error(), batch.numbers[i]});
    }
    const auto row = [](const Problem& problem) { return problem.number.value_or(kBehindAllRows); };
    std::stable_sort(problems.begin(), problems.end(),
                     [&](const Problem& one, const Problem& other) { return row(one) < row(other); });
}

/// All rows that are meant, until the user stops it.
void SaveRows(Session& session, Ports& ports, const SaveRequest& request, Batch& batch) {
    for (std::size_t index = 0; index < session.rows.size(); ++index) {
        if (IsMeant(request, session.rows[index].number)) ShowAndSaveRow(session, ports, index, batch);
        if (!GoOn(ports, index + 1, session.rows.size(), batch.outcome)) break;
    }
    FinishFiles(batch);
}

}  // namespace

Outcome SavePictures(Session& session, Ports& ports, const SaveRequest& request) {
    if (request.format == BatchFormat::Png)
        if (const Status converter = CheckConverter(session); !converter)
            return Refuse(session, ports, converter.error());
    auto folder = TargetFolder::Open(request.folder);
    if (!folder) return Refuse(session, ports, folder.error());
    Batch batch{request.format, std::move(*folder), {}, {}, 0, {}};
    SaveRows(session, ports, request, batch);
    if (request.format == BatchFormat::Png) RemovePngTemporaries(session);
    Outcome outcome = std::move(batch.outcome);
    outcome.note = FilesWrittenText(outcome.written);
    outcome.warning = CutHeightsText(batch.cutHeights);
    TellBatchEnd(session, ports, outcome);
    return outcome;
}

Outcome SaveAsBmps(Session& session, Ports& ports) {
    const auto folder = ports.prompts.BrowseForFolder(FolderTitle(session.texts, session.texts.str_4save));
    if (folder.empty()) return Outcome::Cancelled();
    return SavePictures(session, ports, {folder, BatchFormat::Bmp, std::nullopt});
}

Outcome SaveAsGpfs(Session& session, Ports& ports) {
    const auto folder = ports.prompts.BrowseForFolder(FolderTitle(session.texts, session.texts.str_4save));
    if (folder.empty()) return Outcome::Cancelled();
    const BatchFormat format = AskGpf2(session, ports) ? BatchFormat::Gpf2 : BatchFormat::Gpf;
    return SavePictures(session, ports, {folder, format, std::nullopt});
}

}  // namespace pictavo
