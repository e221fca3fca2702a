#pragma once

#include "session/Outcome.h"
#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

/// "Extract from Graph.Patch": asks for the patch and the folder, then ExtractFromPatchTo.
Outcome ExtractFromPatch(Session& session, Ports& ports);

/// Writes each picture of a ViKlay patch as a GPF or GPF2 file named by its number, and each PNG file under
/// its name. Kept: with HEXFilename the number in the patch is read as hexadecimal too. A section whose name
/// is no number, or that would lay a PNG file elsewhere than in the folder, is passed over as a problem of
/// the outcome, and so is a file that cannot be written; a declined overwrite is nothing wrong.
Outcome ExtractFromPatchTo(Session& session, Ports& ports, const std::filesystem::path& patch,
                           const std::filesystem::path& folder);

}  // namespace pictavo
