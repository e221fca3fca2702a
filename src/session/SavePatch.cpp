#include "session/SavePatch.h"

#include <algorithm>

#include "core/PictureTable.h"
#include "patch/FreeFlash.h"
#include "patch/PatchWriter.h"
#include "session/Messages.h"
#include "session/Names.h"
#include "session/PendingPatch.h"
#include "session/Report.h"
#include "session/StatusText.h"
#include "session/Targets.h"

namespace pictavo {

namespace {

/// What keeps a section's picture out of the patch.
std::optional<Error> ProblemOf(const Session& session, const PatchSection& section) {
    const std::filesystem::path& path = session.flash.source->Path();
    if (section.placement == Placement::NoFreeMemory) return NoFreeMemoryError(path);
    if (section.placement == Placement::BeyondFlash)
        return Error{ErrorKind::Truncated, path, section.row.record.picOffset,
                     "the flash ends before the old bytes of the picture do"};
    if (section.placement == Placement::UnderPng)
        return Error{ErrorKind::Conflict, path, section.row.record.picOffset,
                     "the pending PNG replacements write the same bytes"};
    return std::nullopt;
}

/// The error's boxes, titled with the picture's number.
void TellProblem(const Session& session, Ports& ports, const Problem& problem) {
    for (Notice notice : NoticesOf(session.texts, problem.error)) {
        if (problem.number) notice.title = PictureNumberText(*problem.number);
        ports.prompts.Tell(notice);
    }
}

/// Each picture that the patch will lack has a box of its own, also one whose work file could not be read.
void TellProblems(const Session& session, Ports& ports, const PatchPlan& plan, Outcome& outcome) {
    for (const PatchSection& section : plan.sections)
        if (const auto problem = ProblemOf(session, section))
            outcome.problems.push_back({*problem, section.row.record.number});
    for (const Problem& problem : outcome.problems) TellProblem(session, ports, problem);
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

std::size_t WrittenPictures(const PatchPlan& plan) {
    return static_cast<std::size_t>(std::count_if(plan.sections.begin(), plan.sections.end(),
                                                  [](const PatchSection& one) { return one.IsWritten(); }));
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
        {SaveTitle(texts, texts.cap_mnFileR), {{"ViKlay Patch File", {"*.vkp"}}}, "GP_", "vkp"});
    if (answer.empty()) return {Outcome::Cancelled(), {}};
    return SavePatchTo(session, ports, WithExtension(WithoutTail(answer), ".vkp"));
}

PatchOutcome SavePatchTo(Session& session, Ports& ports, const std::filesystem::path& path) {
    const auto mode = AskTarget(session, ports, path);
    if (!mode) return {Refuse(session, ports, mode.error()), {}};
    if (!*mode) return {Outcome::Cancelled(), {}};
    Outcome outcome;
    auto plan = PlanPendingPatch(session, outcome);
    if (!plan) return {Refuse(session, ports, plan.error()), {}};
    TellProblems(session, ports, *plan, outcome);
    if (const Status written = WritePatch(session, *plan, path, **mode); !written)
        return {Refuse(session, ports, written.error()), {}};
    ConsumeWorkFiles(session, *plan);
    session.savePatchEnabled = !outcome.problems.empty();
    outcome.written = 1;
    outcome.note = WithWaiting(PatchSavedText(path, WrittenPictures(*plan)), session);
    ports.prompts.Tell(Completion(session.texts));
    return {std::move(outcome), std::move(plan->sections)};
}

}  // namespace pictavo
