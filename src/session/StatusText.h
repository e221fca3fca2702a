#pragma once

/// The texts of the status line that no language file has: English, on one line, and without a full stop.

#include <string>

#include "config/AppSettings.h"
#include "config/LanguageTable.h"
#include "session/Outcome.h"

namespace pictavo {

struct Session;

/// While a command runs that Esc stops.
inline constexpr const char* kStopText = "Esc stops this command";

/// Of the flash just opened: how many pictures it has and what can be done with them, or that it has no
/// picture table.
std::string OpenedText(const Session& session);

/// How many of `count` rows were replaced; for none, the names by which files are sought.
std::string LoadedText(const AppSettings& settings, std::size_t loaded, std::size_t count);

std::string PatchSavedText(const std::filesystem::path& path, std::size_t pictures);

/// Of a PNG file that waits for the next patch.
std::string PngTakenText(const std::filesystem::path& path);

std::string FilesWrittenText(std::size_t count);

/// A warning of so many GPF files whose pictures are higher than a GPF can say; empty when there are none.
std::string CutHeightsText(std::size_t count);

/// How many replaced pictures are in no patch yet.
std::size_t WaitingPictures(const Session& session);

/// The same as text; empty for none.
std::string WaitingText(const Session& session);

/// `text`, and behind it what waits.
std::string WithWaiting(std::string text, const Session& session);

/// That the language file which the settings name was not found; empty when it was.
std::string MissingLanguageText(const Session& session);

/// The number of the picture, what the box said, and the error's own reason where the box did not say it.
std::string ProblemText(const LanguageTable& texts, const Problem& problem);

/// What a command leaves in the line: its last problem and its note; "done" in the user's language when it
/// wrote something and has no more to say.
std::string OutcomeText(const LanguageTable& texts, const Outcome& outcome);

}  // namespace pictavo
