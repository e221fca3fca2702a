#include "core/SystemError_win32.h"

#include <system_error>

namespace pictavo::system_file {

std::string Reason(DWORD code) {
    if (code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION) return "another program has it open";
    // The system's own words come in the language of the user, whom no English sentence around them helps.
    const std::error_condition known = std::system_category().default_error_condition(static_cast<int>(code));
    if (known.category() == std::generic_category()) return known.message();
    return "error " + std::to_string(code) + " of the system";
}

}  // namespace pictavo::system_file
