/// A program that tells how it was started. Teller OUT ARGUMENTS...: writes each argument, ended by a zero
/// byte, to OUT; but "loud" as the only one has it fill its standard output and error first, "slow" has it
/// write late, and "crash" has it end as one that crashed does.

#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>
#include <thread>
#include <vector>
#include <windows.h>

#include "core/PathText.h"
#include "core/ProgramArguments.h"

namespace {

void BeLoud() {
    const std::string line(1000, 'x');
    for (int i = 0; i < 200; ++i) {
        std::puts(line.c_str());
        std::fputs(line.c_str(), stderr);
    }
}

}  // namespace

int main(int count, char** given) {
    const std::vector<std::string> arguments = pictavo::ProgramArguments(count, given);
    if (arguments.size() == 2 && arguments[1] == "loud") BeLoud();
    if (arguments.size() == 2 && arguments[1] == "slow") std::this_thread::sleep_for(std::chrono::seconds(1));
    if (arguments.size() == 2 && arguments[1] == "crash") TerminateProcess(GetCurrentProcess(), 0xC0000005);
    std::ofstream out(pictavo::PathOf(arguments.at(0)), std::ios::binary);
    for (std::size_t i = 1; i < arguments.size(); ++i) out << arguments[i] << '\0';
    return std::getchar() == EOF ? 0 : 1;
}
