#include "core/SilencedStandardError.h"

#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>
#endif

namespace pictavo {

#ifdef _WIN32

SilencedStandardError::SilencedStandardError() : kept_(-1) {}

SilencedStandardError::~SilencedStandardError() = default;

#else

SilencedStandardError::SilencedStandardError() : kept_(dup(STDERR_FILENO)) {
    if (kept_ < 0) return;
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere < 0) return;
    dup2(nowhere, STDERR_FILENO);
    close(nowhere);
}

SilencedStandardError::~SilencedStandardError() {
    if (kept_ < 0) return;
    dup2(kept_, STDERR_FILENO);
    close(kept_);
}

#endif

}  // namespace pictavo
