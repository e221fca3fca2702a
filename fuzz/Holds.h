#pragma once

#include <cstdio>
#include <cstdlib>

namespace pictavo::fuzz {

/// Ends the process with a message that names the property when it does not hold: libFuzzer then keeps the
/// input.
inline void Holds(bool property, const char* name) {
    if (property) return;
    std::fprintf(stderr, "pictavo-fuzz: does not hold: %s\n", name);
    std::abort();
}

}  // namespace pictavo::fuzz
