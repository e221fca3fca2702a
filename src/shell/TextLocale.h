#pragma once

namespace pictavo {

/// Whether the user's locale (of texts, else the system's own) is written in Cyrillic letters. On Windows,
/// whether its 8-bit code page is.
bool IsLocaleCyrillic();

}  // namespace pictavo
