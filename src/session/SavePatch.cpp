#include "session/SavePatch.h"

#include "core/BasicCalculations_Tarsk.h"
#include "patch/PatchWriter.h"
#include "patch/PitBlocks.h"
#include "session/Messages.h"
#include "session/Names.h"
#include "session/Report.h"
#include "session/Targets.h"

namespace pictavo {

namespace {

Result<NewPicture> ReadNewPicture(const std::filesystem::path& workFile) {
    Picture scratch;
    PICTAVO_TRY(const auto source, FileSource::Open(workFile));
    PICTAVO_TRY(const LoadedGpf loaded, LoadGpf(*source, scratch));
    return NewPicture{workFile, loaded.header, loaded.decoded.consumed};
}

/// Room of the last row: the length of its own old picture, 0 when that can not be decoded.
std::uint64_t RoomOfRow(const Session& session, std::size_t index) {
    const bool isLast = index + 1 == session.rows.size();
    const std::uint64_t lastLength =
        isLast ? StoredLength(session.flash, session.rows[index]).value_or(0) : 0;
    return RoomOf(session.rows, index, lastLength);
}

/// The bold rows. A work file that is gone, or can not be read, leaves its row without a picture; the latter
/// is a problem too.
std::vector<ReplacedRow> ReplacedRows(const Session& session, Outcome& outcome) {
    std::vector<ReplacedRow> rows;
    for (std::size_t index = 0; index < session.rows.size(); ++index) {
        if (!session.replaced[index]) continue;
        ReplacedRow row{session.rows[index], RoomOfRow(session, index), std::nullopt};
        const std::filesystem::path workFile = session.workFiles.Replacement(row.record.number);
        if (!FileMissing(workFile)) {
            const auto picture = ReadNewPicture(workFile);
            if (picture) row.picture = *picture;
            if (!picture) outcome.problems.push_back({picture.error(), row.record.number});
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

/// What keeps a section's picture out of the patch.
std::optional<Error> ProblemOf(const Session& session, const PatchSection& section) {
    const std::filesystem::path& path = session.flash.source->Path();
    if (section.placement == Placement::NoFreeMemory)
        return Error{ErrorKind::NoFreeMemory, path, std::nullopt, "Can't find free memory in fullflash!"};
    if (section.placement == Placement::BeyondFlash)
        return Error{ErrorKind::Truncated, path, section.row.record.picOffset,
                     "the flash ends before the old bytes of the picture do"};
    return std::nullopt;
}

/// Notes them, and shows the box of each picture without free memory.
void NoteProblems(const Session& session, Ports& ports, const PatchPlan& plan, Outcome& outcome) {
    for (const PatchSection& section : plan.sections) {
        const auto problem = ProblemOf(session, section);
        if (!problem) continue;
        Tell(session, ports, *problem);
        outcome.problems.push_back({*problem, section.row.record.number});
    }
}

Status AppendPngPatch(const Session& session, OutputFile& patch) {
    if (!session.pngPatchPending) return {};
    PICTAVO_TRY(const auto source, FileSource::Open(session.workFiles.PngPatch()));
    return CopyRange(*source, 0, source->Size(), patch);
}

Status WritePatch(const Session& session, const PatchPlan& plan, const std::filesystem::path& path,
                  CommitMode mode) {
    PICTAVO_TRY(OutputFile patch, OutputFile::Create(path));
    PICTAVO_TRY(patch.Write(AsBytes(PatchBanner(session.flash))));
    for (const PatchSection& section : plan.sections)
        PICTAVO_TRY(WritePatchSection(session.flash, section, patch));
    PICTAVO_TRY(AppendPngPatch(session, patch));
    return patch.Commit(mode, Durability::Synced);
}

void ConsumeWorkFiles(Session& session, const PatchPlan& plan) {
    for (const PatchSection& section : plan.sections)
        if (section.IsWritten()) RemoveWorkFile(session.workFiles.Replacement(section.row.record.number));
    session.flash.FreeSearchOffset = plan.freeSearchOffset;
    session.pngPatchPending = false;
    RemoveWorkFile(session.workFiles.PngPatch());
}

}  // namespace

PatchOutcome SavePatch(Session& session, Ports& ports) {
    const LanguageTable& texts = session.texts;
    const auto answer = ports.prompts.ChooseSave(
        {SaveTitle(texts, texts.cap_mnFileR), {{"ViKlay Patch File (*.vkp)", {"*.vkp"}}}, "GP_", "vkp"});
    if (answer.empty()) return {Outcome::Cancelled(), {}};
    return SavePatchTo(session, ports, WithExtension(WithoutTail(answer), ".vkp"));
}

PatchOutcome SavePatchTo(Session& session, Ports& ports, const std::filesystem::path& path) {
    const auto mode = AskTarget(session, ports, path);
    if (!mode) return {Refuse(session, ports, mode.error()), {}};
    if (!*mode) return {Outcome::Cancelled(), {}};
    Outcome outcome;
    auto plan = PlanPatch(session.flash, ReplacedRows(session, outcome));
    if (!plan) return {Refuse(session, ports, plan.error()), {}};
    NoteProblems(session, ports, *plan, outcome);
    if (const Status written = WritePatch(session, *plan, path, **mode); !written)
        return {Refuse(session, ports, written.error()), {}};
    ConsumeWorkFiles(session, *plan);
    session.savePatchEnabled = !outcome.problems.empty();
    outcome.written = 1;
    ports.prompts.Tell(Completion(session.texts));
    return {std::move(outcome), std::move(plan->sections)};
}

}  // namespace pictavo
