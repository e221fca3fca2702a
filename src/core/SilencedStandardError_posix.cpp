#include <fcntl.h>
#include <unistd.h>

#include "core/SilencedStandardError.h"

namespace pictavo {

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

}  // namespace pictavo
