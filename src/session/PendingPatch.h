#pragma once

/// What the next patch will hold: the replaced pictures, and the pending sections of replaced PNG files.

#include "patch/PatchPlan.h"
#include "session/Outcome.h"
#include "session/Session.h"

namespace pictavo {

/// The bytes of the flash that the pending PNG sections write, Merged; none when nothing is pending. Fails as
/// PatchReader does.
Result<std::vector<FileRange>> PendingPngRanges(const Session& session);

/// Decides where the replaced pictures go. A work file that cannot be read leaves its row without a picture
/// and is a problem of `outcome`. Fails as PlanPatch and PendingPngRanges do.
Result<PatchPlan> PlanPendingPatch(const Session& session, Outcome& outcome);

}  // namespace pictavo
