#include <memory>
#include <windows.h>

#include "core/ProgramArguments.h"
// Behind what it builds on.
#include <shellapi.h>

#include "core/WideText_win32.h"

namespace pictavo {

std::vector<std::string> ProgramArguments(int, char**) {
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&LocalFree)> words(CommandLineToArgvW(GetCommandLineW(), &count),
                                                                LocalFree);
    std::vector<std::string> arguments;
    for (int i = 1; words != nullptr && i < count; ++i) arguments.push_back(Utf8Text(words.get()[i]));
    return arguments;
}

}  // namespace pictavo
