#pragma once

/// As long as it lives, writes past `bytes` of any file fail as on a full disk.

#include <csignal>
#include <cstdlib>
#include <sys/resource.h>

namespace pictavo::tests {

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
    rlimit old_{};
    void (*oldHandler_)(int);
};

}  // namespace pictavo::tests
