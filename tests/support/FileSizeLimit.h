#pragma once

/// As long as it lives, writes past `bytes` of any file fail as on a full disk, in this process and in the
/// children that it starts. For tests that begin with PICTAVO_NEEDS_POSIX.

#include <csignal>
#include <cstdint>
#include <cstdlib>

#include "support/SystemMeans.h"

#ifndef _WIN32
#include <sys/resource.h>

#include "support/UncountedChildren.h"
#endif

namespace pictavo::tests {

#ifdef _WIN32

class FileSizeLimit {
  public:
    explicit FileSizeLimit(std::uint64_t /*bytes*/) { std::abort(); }
};

#else

class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) : oldHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
        if (getrlimit(RLIMIT_FSIZE, &old_) != 0) std::abort();
        const rlimit limited{bytes, old_.rlim_max};
        if (setrlimit(RLIMIT_FSIZE, &limited) != 0) std::abort();
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, oldHandler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

  private:
    UncountedChildren children_;
    rlimit old_{};
    void (*oldHandler_)(int);
};

#endif

}  // namespace pictavo::tests
