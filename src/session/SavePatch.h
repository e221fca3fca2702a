#pragma once

/// Writes what was replaced as a patch, and consumes the work files.

#include "patch/PatchPlan.h"
#include "session/Outcome.h"
#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

struct PatchOutcome {
    Outcome outcome;
    std::vector<PatchSection> sections;  ///< of the patch that was written, in the order of the list
};

/// "Save Patch": asks for the name, then SavePatchTo.
PatchOutcome SavePatch(Session& session, Ports& ports);

/// Writes the patch. Only when it stands complete are the work files of the written pictures deleted, the
/// PNG patch (appended when it is pending) too, and the search for free flash moved on; rows stay bold. A
/// picture for which there is no free memory, or whose old bytes the flash does not hold, is a problem of the
/// outcome: it stays pending, and saving a patch stays enabled.
PatchOutcome SavePatchTo(Session& session, Ports& ports, const std::filesystem::path& path);

}  // namespace pictavo
