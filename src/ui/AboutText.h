#pragma once

#include <string>

#include "config/LanguageTable.h"

namespace pictavo {

/// What the About box says, lines parted by a carriage return.
std::string AboutText(const LanguageTable& texts);

}  // namespace pictavo
