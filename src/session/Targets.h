#pragma once

/// What every command that writes files asks first: may this name be written, and is a file of it to be
/// replaced?

#include "core/OutputFile.h"
#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

/// Files that a command reads beside the open flash.
using Inputs = std::vector<std::filesystem::path>;

/// How `path` may be written: a new file, a replaced one, or nothing when the user declined to replace what
/// is there. Fails without asking: with OutputIsInput when `path` is the open flash or one of `inputs`, also
/// through a link, and with WriteFailed when it is neither a regular file nor a link.
Result<std::optional<CommitMode>> AskTarget(const Session& session, Ports& ports,
                                            const std::filesystem::path& path, const Inputs& inputs = {});

}  // namespace pictavo
