#include <cstdlib>

#include "core/WideText_win32.h"
#include "shell/Variable.h"

namespace pictavo {

std::filesystem::path PathOfVariable(const char* name) {
    const wchar_t* value = _wgetenv(WideText(name).c_str());
    return value == nullptr ? std::filesystem::path() : std::filesystem::path(value);
}

}  // namespace pictavo
