#include "core/CommandLine_win32.h"
#include "session/OpenNames.h"
#include "ui/GivenNames.h"

namespace pictavo {

std::vector<std::string> GivenNames(int, char**) {
    return SplitCommandLine(CommandLineOfProgram());
}

}  // namespace pictavo
