#include <cstdio>
#include <fcntl.h>
#include <io.h>

#include "core/SilencedStandardError.h"

namespace pictavo {

namespace {

/// Negative in a program with a window that was started without a console.
int StandardError() {
    return _fileno(stderr);
}

/// Unlike elsewhere, standard error may hold back what is written: that goes where it was to go.
void Redirect(int handle) {
    std::fflush(stderr);
    _dup2(handle, StandardError());
}

}  // namespace

SilencedStandardError::SilencedStandardError() : kept_(StandardError() < 0 ? -1 : _dup(StandardError())) {
    if (kept_ < 0) return;
    const int nowhere = _open("NUL", _O_WRONLY | _O_BINARY | _O_NOINHERIT);
    if (nowhere < 0) return;
    Redirect(nowhere);
    _close(nowhere);
}

SilencedStandardError::~SilencedStandardError() {
    if (kept_ < 0) return;
    Redirect(kept_);
    _close(kept_);
}

}  // namespace pictavo
