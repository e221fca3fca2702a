#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include "core/ConsoleText.h"

namespace pictavo {

ConsoleText::ConsoleText() : codePage_(GetConsoleOutputCP()) {
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    if (codePage_ != 0) SetConsoleOutputCP(CP_UTF8);
}

ConsoleText::~ConsoleText() {
    std::fflush(nullptr);  // the console would read what comes later by its own code page
    if (codePage_ != 0) SetConsoleOutputCP(codePage_);
}

}  // namespace pictavo
