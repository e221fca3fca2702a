#pragma once

/// Texts as standard output shows them.

#include <string>

#include "core/Bytes.h"

namespace pictavo::cli {

/// A line "key: value".
std::string KeyLine(const std::string& key, const std::string& value);

}  // namespace pictavo::cli
