#include "core/FullDisks.h"

namespace pictavo {

/// Such a limit is not known here.
void ReportFullDisks() {}

}  // namespace pictavo
