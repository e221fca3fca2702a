#include <csignal>

#include "core/FailedWrites.h"

namespace pictavo {

void ReportFailedWrites() {
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
}

}  // namespace pictavo
