#pragma once

#include "support/Environment.h"
#include "support/TempFolder.h"

namespace pictavo::tests {

/// As long as it lives, what children count of the lines that they run through is thrown away: where files
/// have a limit, the counts do not fit, and a child would say so.
class UncountedChildren {
  public:
    UncountedChildren() {
        environment_.Set("GCOV_PREFIX", counts_.Path().string());
        environment_.Set("GCOV_ERROR_FILE", "/dev/null");
    }

  private:
    const TempFolder counts_;
    Environment environment_;
};

}  // namespace pictavo::tests
