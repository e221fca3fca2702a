#pragma once

/// What every command that writes files asks first: may this name be written, and is a file of it to be
/// replaced?

#include "core/OutputFile.h"
#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

/// How `path` may be written: a new file, a replaced one, or nothing when the user declined to replace what
/// is there. Fails with OutputIsInput, without asking, when `path` is the open flash or `input`, also through
/// a link.
Result<std::optional<CommitMode>> AskTarget(const Session& session, Ports& ports,
                                            const std::filesystem::path& path,
                                            const std::filesystem::path& input = {});

}  // namespace pictavo
