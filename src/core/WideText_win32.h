#pragma once

/// Texts on their way to and from Windows, whose calls take and give UTF-16.

#include <string>
#include <string_view>

namespace pictavo {

/// Bytes that are no UTF-8 become U+FFFD.
std::wstring WideText(std::string_view utf8);

/// UTF-8. Half of a pair that stands alone becomes U+FFFD.
std::string Utf8Text(std::wstring_view wide);

}  // namespace pictavo
