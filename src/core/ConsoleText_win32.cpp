#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include "core/ConsoleText.h"

namespace pictavo::console_text {

unsigned Begin() {
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    const unsigned codePage = GetConsoleOutputCP();
    if (codePage != 0) SetConsoleOutputCP(CP_UTF8);
    return codePage;
}

void End(unsigned codePageBefore) {
    std::fflush(nullptr);  // the console would read what comes later by its own code page
    if (codePageBefore != 0) SetConsoleOutputCP(codePageBefore);
}

}  // namespace pictavo::console_text
