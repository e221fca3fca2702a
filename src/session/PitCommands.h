#pragma once

/// "BuckUp PIT" and "Rebuild PIT": the picture table and the block of pictures as two files.

#include "session/Outcome.h"
#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

/// Asks for the folder, then BackupPitTo.
Outcome BackupPit(Session& session, Ports& ports);

/// Writes the table and then the block as they stand in the flash. Each file that exists is asked about for
/// itself, and Cancel skips only it. Refused, before anything is written, when the table would be empty or
/// both would have one name; refused behind the table, which then stands, when the block would be empty or
/// its last picture cannot be decoded. A last picture whose type names no depth has that of the one shown
/// before.
Outcome BackupPitTo(Session& session, Ports& ports, const std::filesystem::path& folder);

/// Asks for both folders, then RebuildPitFrom.
Outcome RebuildPit(Session& session, Ports& ports);

/// Writes a new table and a densely packed block from the work files of bold rows and the GPF files in
/// `from`, named by the rows' numbers. Refused, before anything is written, when a row has no source (each is
/// a problem of the outcome) or one that cannot be used. Kept: when the block passes the place where the old
/// last picture began, the files stand as far as they were written and the outcome is refused with
/// BlockTooLarge.
Outcome RebuildPitFrom(Session& session, Ports& ports, const std::filesystem::path& from,
                       const std::filesystem::path& to);

}  // namespace pictavo
