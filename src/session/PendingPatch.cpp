#include "session/PendingPatch.h"

#include "core/OutputFile.h"
#include "patch/FreeFlash.h"
#include "patch/PatchReader.h"
#include "patch/PitBlocks.h"

namespace pictavo {

namespace {

constexpr int kUnknownDepth = 0;  // which is refused

Result<NewPicture> ReadNewPicture(const std::filesystem::path& workFile) {
    Picture scratch;
    PICTAVO_TRY(const auto source, FileSource::Open(workFile));
    PICTAVO_TRY(const LoadedGpf loaded, LoadGpf(*source, scratch));
    return NewPicture{workFile, loaded.header, loaded.decoded.consumed};
}

/// Room of the last row: the length of its own old picture, 0 when that cannot be decoded.
std::uint64_t RoomOfRow(const Session& session, std::size_t index) {
    const bool isLast = index + 1 == session.rows.size();
    const std::uint64_t lastLength =
        isLast ? StoredLength(session.flash, session.rows[index]).value_or(0) : 0;
    return RoomOf(session.rows, index, lastLength);
}

/// A work file that is gone leaves its row without a picture.
std::vector<ReplacedRow> ReplacedRows(const Session& session, Outcome& outcome) {
    std::vector<ReplacedRow> rows;
    for (std::size_t index = 0; index < session.rows.size(); ++index) {
        if (!session.replaced[index]) continue;
        ReplacedRow row{session.rows[index], RoomOfRow(session, index), std::nullopt};
        const std::filesystem::path workFile = session.workFiles.Replacement(row.record.number);
        if (!NameIsFree(workFile)) {
            const auto picture = ReadNewPicture(workFile);
            if (picture) row.picture = *picture;
            if (!picture) outcome.problems.push_back({picture.error(), row.record.number});
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

/// Where the table's pictures lie. One that cannot be decoded has no length, and holds nothing.
Result<std::vector<FileRange>> RangesOfPictures(const Session& session) {
    std::vector<FileRange> ranges;
    Picture scratch;
    for (const PictureRecord& row : session.rows) {
        const auto decoded =
            DecodePicture(*session.flash.source, row.picOffset, FormatOf(row, kUnknownDepth), scratch);
        if (decoded) ranges.push_back({row.picOffset, row.picOffset + decoded->consumed});
        if (!decoded && decoded.error().kind == ErrorKind::ReadFailed) return Failure(decoded.error());
    }
    return ranges;
}

}  // namespace

Result<std::vector<FileRange>> PendingPngRanges(const Session& session) {
    std::vector<FileRange> ranges;
    if (!session.pngPatchPending) return ranges;
    PICTAVO_TRY(const auto source, FileSource::Open(session.workFiles.PngPatch()));
    PatchReader lines(*source);
    for (;;) {
        PICTAVO_TRY(const auto line, lines.Next());
        if (!line) return Merged(std::move(ranges));
        ranges.push_back({line->offset, line->offset + line->newBytes.size()});
    }
}

Result<PatchPlan> PlanPendingPatch(const Session& session, Outcome& outcome) {
    HeldRanges held;
    PICTAVO_TRY(held.pngs, PendingPngRanges(session));
    std::vector<ReplacedRow> rows = ReplacedRows(session, outcome);
    if (MustSearch(rows)) {
        PICTAVO_TRY(held.pictures, RangesOfPictures(session));
    }
    return PlanPatch(session.flash, std::move(rows), held);
}

}  // namespace pictavo
