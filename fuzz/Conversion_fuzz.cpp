/// The converter's arguments. Those that are accepted are exactly the command lines in use, word for word.

#include "Holds.h"
#include "Input.h"
#include "converter/Conversion.h"

namespace pictavo::fuzz {
namespace {

constexpr std::array<const char*, 10> kWords{"-out", "png", "bmp",         "-ctype", "rgba",
                                             "rgb",  "-o",  "-truecolors", "a.png",  "b.bmp"};

/// A word of those in use, or any text.
std::string WordFrom(Input& input) {
    const std::size_t choice = input.Byte();
    return choice < kWords.size() ? kWords[choice] : input.Text();
}

std::string Utf8Of(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

/// The command line that asks for `conversion`.
std::vector<std::string> ArgumentsOf(const Conversion& conversion) {
    const bool isPng = conversion.format == Conversion::Format::Png;
    std::vector<std::string> arguments{"-out", isPng ? "png" : "bmp", "-ctype"};
    if (conversion.withAlpha)
        arguments.push_back("rgba");
    else
        arguments.insert(arguments.end(), {"rgb", "-truecolors"});
    arguments.insert(arguments.end(), {"-o", Utf8Of(conversion.output), Utf8Of(conversion.input)});
    return arguments;
}

/// Each of the four conversions, with names of the input's choice, is understood.
void CheckComposed(Input& input) {
    const Conversion wanted{input.Flag() ? Conversion::Format::Png : Conversion::Format::Bmp, input.Flag(),
                            input.Text(), input.Text()};
    const auto parsed = ParseConversion(ArgumentsOf(wanted));
    Holds(parsed && parsed->format == wanted.format && parsed->withAlpha == wanted.withAlpha &&
              parsed->output == wanted.output && parsed->input == wanted.input,
          "the arguments of a conversion ask for it");
}

void Run(Input input) {
    if (input.Flag()) return CheckComposed(input);
    std::vector<std::string> arguments;
    while (!input.IsUsedUp()) arguments.push_back(WordFrom(input));
    const auto conversion = ParseConversion(arguments);
    if (conversion)
        Holds(ArgumentsOf(*conversion) == arguments, "accepted arguments are those of the conversion");
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
