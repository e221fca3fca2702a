#include <csignal>

#include "core/FullDisks.h"

namespace pictavo {

void ReportFullDisks() {
    std::signal(SIGXFSZ, SIG_IGN);
}

}  // namespace pictavo
