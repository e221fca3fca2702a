#pragma once

#include "session/Outcome.h"
#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

/// "Extract from GPN": asks for the container and the folder, then ExtractFromGpnTo.
Outcome ExtractFromGpn(Session& session, Ports& ports);

/// Writes each picture of a container as the GPF or GPF2 file that it is, named by its number. A container
/// without a picture is refused; what lies before the first one is passed over. A file that cannot be
/// written is a problem of the outcome, and the others go on.
/// Kept: of a picture whose overwrite is declined all but its first 32 bytes are appended to the file of the
/// picture before, if there is one.
Outcome ExtractFromGpnTo(Session& session, Ports& ports, const std::filesystem::path& container,
                         const std::filesystem::path& folder);

}  // namespace pictavo
