#include <cstdlib>

#include "shell/Variable.h"

namespace pictavo {

std::filesystem::path PathOfVariable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::filesystem::path() : std::filesystem::path(value);
}

}  // namespace pictavo
