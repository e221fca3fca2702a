#pragma once

/// Opening files: fullflash dumps, which go to the top of the recent files, and picture files, which are
/// shown.

#include "session/FileKind.h"
#include "session/Outcome.h"
#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

/// Opens a fullflash and notes it as recent, in the settings and behind the settings file. That this could
/// not be stored is a problem of a Done outcome and is told in no box. After a refusal all is as it was.
Outcome OpenFlash(Session& session, Ports& ports, const std::filesystem::path& path);

/// Opens the file as what it was told apart for. A picture that its file ends inside is shown, which is a
/// problem of the outcome; one of an unknown kind is refused without a box. With flags a picture file goes
/// into the flagged channels only.
Outcome OpenAs(Session& session, Ports& ports, const std::filesystem::path& path, FileKind kind,
               const ChannelFlags& flags = {});

/// "Open": asks for the file.
Outcome OpenFile(Session& session, Ports& ports);

/// Opens a file that was dropped on the window as "Open" does one that was chosen.
Outcome OpenDropped(Session& session, Ports& ports, const std::filesystem::path& path);

/// Opens a recent file again; `index` counts from 0. Kept: when the file is missing nothing happens, without
/// a box, and the entry stays.
Outcome OpenRecent(Session& session, Ports& ports, std::size_t index);

}  // namespace pictavo
