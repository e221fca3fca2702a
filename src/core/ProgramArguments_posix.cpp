#include <algorithm>

#include "core/ProgramArguments.h"

namespace pictavo {

std::vector<std::string> ProgramArguments(int count, char** arguments) {
    return {arguments + std::min(count, 1), arguments + count};
}

}  // namespace pictavo
