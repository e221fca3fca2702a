/// Splitting a command line. Names in quotation marks, joined by blanks, are split into the same names, and
/// any line gives as many names as it has blanks outside of quotation marks, and one.

#include "Holds.h"
#include "Input.h"
#include "session/OpenNames.h"

namespace pictavo::fuzz {
namespace {

std::size_t NamesIn(const std::string& line) {
    std::size_t names = line.empty() ? 0 : 1;
    bool isQuoted = false;
    for (const char c : line) {
        if (c == '"') isQuoted = !isQuoted;
        if (c == ' ' && !isQuoted) ++names;
    }
    return names;
}

/// What stands in the line, in its order, but for blanks and quotation marks.
std::string WithoutMarks(const std::string& text) {
    std::string left;
    for (const char c : text)
        if (c != ' ' && c != '"') left += c;
    return left;
}

void CheckAnyLine(const std::string& line) {
    const auto names = SplitCommandLine(line);
    Holds(names.size() == NamesIn(line), "there are as many names as blanks part");
    std::string joined;
    for (const std::string& name : names) joined += name;
    Holds(WithoutMarks(joined) == WithoutMarks(line), "nothing but blanks and quotation marks is lost");
}

void CheckJoined(Input& input) {
    std::vector<std::string> names;
    std::string line;
    while (!input.IsUsedUp()) {
        std::string name = input.Text();
        std::erase(name, '"');
        line += (names.empty() ? "\"" : " \"") + name + "\"";
        names.push_back(std::move(name));
    }
    Holds(SplitCommandLine(line) == names, "names joined are split into the same");
}

void Run(Input input) {
    if (input.Flag()) return CheckJoined(input);
    const Bytes line = input.Rest();
    CheckAnyLine(std::string(AsText(line)));
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
