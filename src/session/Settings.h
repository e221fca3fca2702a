#pragma once

/// The settings file and the language file of one session.

#include "session/Session.h"

namespace pictavo {

/// Reads the settings file over the session's settings, then the language file that they name. A file that
/// does not exist is first created from the session's settings; without a place for one only the language is
/// read. One that is there and cannot be read is left alone. What fails does not stop the rest; the first
/// failure is returned, and the session keeps what it had in its place. Fails as SaveAppSettings,
/// ReadAppSettings and LoadLanguage do, and with FileMissing.
Status LoadSettings(Session& session);

/// Writes the settings file whole, where there is a place for one. Fails as SaveAppSettings does.
Status SaveSettings(const Session& session);

/// Puts `settings` in force and writes them. Fails as SaveSettings does; then the session keeps those it had.
Status ChangeSettings(Session& session, AppSettings settings);

}  // namespace pictavo
