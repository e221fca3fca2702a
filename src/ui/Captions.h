#pragma once

/// Puts the captions of a language file on a window's controls.

#include <QWidget>
#include <map>
#include <string>

namespace pictavo {

/// `captions` goes from object name to text. Of a dialog those count that begin with its name and a dot, and
/// its name alone for its title; of the main window those without a dot. Controls that are not named keep
/// what they show, names without a control are passed over.
void ApplyCaptions(QWidget& window, const std::map<std::string, std::string>& captions);

}  // namespace pictavo
