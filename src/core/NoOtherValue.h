#pragma once

#include <cstdlib>

namespace pictavo {

/// Stands behind a switch that names every value of an enumeration, where a compiler wants a return.
[[noreturn]] inline void NoOtherValue() {
    std::abort();
}

}  // namespace pictavo
