#pragma once

#include <csignal>
#include <sys/resource.h>

namespace pictavo::tests {

/// While one exists, no file that this process or a child of it writes can grow beyond `bytes`: to the writer
/// it looks like a full disk.
class SmallDisk {
  public:
    explicit SmallDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &limit_);
        const rlimit small{bytes, limit_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallDisk() {
        setrlimit(RLIMIT_FSIZE, &limit_);
        std::signal(SIGXFSZ, handler_);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

  private:
    rlimit limit_{};
    void (*handler_)(int);
};

}  // namespace pictavo::tests
