#pragma once

/// Texts as standard output shows them.

#include <string>

#include "core/Bytes.h"

namespace pictavo::cli {

/// Bytes of the flash, read as Latin-1, in UTF-8.
std::string FlashText(const std::string& bytes);

/// A line "key: value".
std::string KeyLine(const std::string& key, const std::string& value);

}  // namespace pictavo::cli
