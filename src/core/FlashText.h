#pragma once

#include <string>

namespace pictavo {

/// Bytes of the flash, read as Latin-1, in UTF-8.
std::string FlashText(const std::string& bytes);

}  // namespace pictavo
