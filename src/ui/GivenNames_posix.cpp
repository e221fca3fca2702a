#include "core/ProgramArguments.h"
#include "ui/GivenNames.h"

namespace pictavo {

std::vector<std::string> GivenNames(int count, char** arguments) {
    return ProgramArguments(count, arguments);
}

}  // namespace pictavo
