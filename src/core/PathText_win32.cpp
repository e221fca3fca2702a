#include "core/PathText.h"
#include "core/WideText_win32.h"

namespace pictavo {

// The conversions of the standard library throw on what is no Unicode; the system's replace it.

std::string PathText(const std::filesystem::path& path) {
    return Utf8Text(path.native());
}

std::filesystem::path PathOf(std::string_view text) {
    return WideText(text);
}

}  // namespace pictavo
