#pragma once

/// The files that the command line names: one is opened; of several the pictures can be saved as well, one
/// after the other, without a chooser.

#include <functional>
#include <string>
#include <vector>

#include "session/FileKind.h"
#include "session/Outcome.h"
#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

/// The most names that a command line may hold.
inline constexpr std::size_t kMostNames = 257;

/// Told what a name was opened as; Unknown when it was not opened.
using FileShown = std::function<void(FileKind opened)>;

/// Splits a command line (without the program itself) that a system hands over in one piece. Names are
/// parted by blanks outside quotation marks; then a blank and a quotation mark are taken off either end of
/// each. Kept: nothing between two blanks, or behind the last, is a name too, an empty one.
std::vector<std::string> SplitCommandLine(const std::string& line);

/// Opens the files of these names (UTF-8) in turn, told apart by their exact endings, and calls `shown` after
/// each, so that it can be seen. A name of no known ending is passed over.
///
/// Of several names each picture that could be loaded is offered for saving beside its file, under its name
/// with another extension: by the popup menu until the user has what was picked last applied to all, which is
/// asked after every name that was not passed over. A declined menu saves nothing. Overwriting is asked about
/// each time, the file just loaded included; other questions are asked as often as the menu, and their
/// answers kept once it is not shown any more. One box at the end tells that files were written. Esc stops
/// between two names, without that box.
///
/// What was passed over or refused is told by the problems of the outcome. More than kMostNames names are
/// refused with Overflow before anything is opened.
Outcome OpenNames(Session& session, Ports& ports, const std::vector<std::string>& names,
                  const FileShown& shown);

}  // namespace pictavo
