#include "core/FailedWrites.h"

namespace pictavo {

/// Such a limit is not known here.
void ReportFailedWrites() {}

}  // namespace pictavo
