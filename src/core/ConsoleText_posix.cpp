#include "core/ConsoleText.h"

namespace pictavo::console_text {

unsigned Begin() {
    return 0;
}

void End(unsigned /*codePageBefore*/) {}

}  // namespace pictavo::console_text
