#pragma once

#include "session/Outcome.h"
#include "session/Ports.h"
#include "session/Session.h"
#include "tools/EmbeddedFiles.h"

namespace pictavo {

/// "Extract GIFs", "Extract PNGs" and "Extract XMLs": ask for the source and the folder, then
/// ExtractEmbeddedTo.
Outcome ExtractEmbedded(Session& session, Ports& ports, const EmbeddedKind& kind);

/// Writes the files of one kind that lie inside any file, each named by the offset at which it begins
/// (0012AB40.png). A piece of the source that cannot be read, and a file that cannot be written, are
/// problems of the outcome, and the search goes on behind them. The
/// completion message has the number of files as its title; a search that was stopped has none.
Outcome ExtractEmbeddedTo(Session& session, Ports& ports, const EmbeddedKind& kind,
                          const std::filesystem::path& source, const std::filesystem::path& folder);

}  // namespace pictavo
