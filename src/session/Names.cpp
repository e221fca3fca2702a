#include "session/Names.h"

#include "codec/GPFcodec.h"
#include "core/AsciiText.h"
#include "core/BasicCalculations_Tarsk.h"
#include "core/PathText.h"

namespace pictavo {

namespace {

constexpr std::size_t kDecimalWidth = 4;
constexpr std::size_t kHexWidth = 3;
constexpr unsigned kFirstKeptCode = 41;

bool EndsWith(const std::filesystem::path& name, const std::string& end) {
    return name.native().ends_with(PathOf(end).native());
}

std::filesystem::path Appended(std::filesystem::path name, const std::string& text) {
    name += PathOf(text).native();
    return name;
}

}  // namespace

std::string NumberName(const AppSettings& settings, int number) {
    std::string name =
        settings.HEXFilename ? UpperHex(static_cast<std::uint16_t>(number)) : std::to_string(number);
    if (!settings.ZeroFilename) return name;
    return PadZeros(std::move(name), settings.HEXFilename ? kHexWidth : kDecimalWidth, true);
}

std::filesystem::path WithoutTail(const std::filesystem::path& name) {
    std::filesystem::path::string_type text = name.native();
    using Unit = std::make_unsigned_t<std::filesystem::path::value_type>;
    while (!text.empty() && static_cast<Unit>(text.back()) < kFirstKeptCode) text.pop_back();
    return text;
}

std::filesystem::path WithExtensionOfAnyCase(const std::filesystem::path& name,
                                             const std::string& extension) {
    std::string end = PathText(name);
    if (end.size() > extension.size()) end.erase(0, end.size() - extension.size());
    return Lowered(std::move(end)) == extension ? name : Appended(name, extension);
}

std::filesystem::path WithExtension(const std::filesystem::path& name, const std::string& extension) {
    return EndsWith(name, extension) ? name : Appended(name, extension);
}

std::filesystem::path GpfName(const std::filesystem::path& answer, bool isGPF2) {
    std::filesystem::path name = isGPF2 && !EndsWith(answer, "2") ? Appended(answer, "2") : answer;
    if (EndsWith(name, "gpf2") || EndsWith(name, ".gpf")) return name;
    return Appended(name, ".gpf2");
}

bool NamesGpf2(const std::filesystem::path& name) {
    return EndsWith(name, GpfExtension(true));
}

}  // namespace pictavo
