#pragma once

/// What the window does at its start, before it opens the files of the command line.

#include "session/Outcome.h"
#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

/// Deletes what an earlier run left of the converter's files and of a pending patch of PNG files. Work files
/// stay. Only for a session that no other one shares its folder with.
void RemoveTemporaries(Session& session);

/// Asks to register GPF and GPF2 files when either is not opened by `executable` (an absolute path); OK
/// registers both. Kept: after Cancel it is asked again at the next start. A failure to register is told in a
/// box. Nothing happens without Associations.
Outcome CheckAssociation(Session& session, Ports& ports, const std::filesystem::path& executable);

}  // namespace pictavo
