#include "shell/MimePackage.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "codec/GPFcodec.h"

namespace pictavo {

namespace {

/// Each extension with the magic of its files.
const std::vector<std::pair<std::string, std::string>>& Magics() {
    static const std::vector<std::pair<std::string, std::string>> magics{
        {GpfExtension(false), std::string(kGpfMagic)}, {GpfExtension(true), std::string(kGpf2Magic)}};
    return magics;
}

const std::vector<std::pair<std::string, std::string>>& Entities() {
    static const std::vector<std::pair<std::string, std::string>> entities{
        {"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}};
    return entities;
}

std::string Replaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size())
        text.replace(at, what.size(), by);
    return text;
}

std::string Escaped(std::string text) {
    for (const auto& [plain, entity] : Entities()) text = Replaced(std::move(text), plain, entity);
    return text;
}

/// The ampersand last, so that what it gives is not taken for an entity.
std::string Unescaped(std::string text) {
    for (auto pair = Entities().rbegin(); pair != Entities().rend(); ++pair)
        text = Replaced(std::move(text), pair->second, pair->first);
    return text;
}

std::string Pattern(const std::string& extension) {
    return "pattern=\"*" + extension + "\"";
}

}  // namespace

bool IsPictureExtension(const std::string& extension) {
    return std::any_of(Magics().begin(), Magics().end(),
                       [&](const auto& pair) { return pair.first == extension; });
}

std::string MimePackageText(const std::set<std::string>& extensions, const std::string& description) {
    std::string globs;
    std::string matches;
    for (const auto& [extension, magic] : Magics()) {
        if (!extensions.contains(extension)) continue;
        globs += "    <glob " + Pattern(extension) + "/>\n";
        matches += "      <match type=\"string\" offset=\"0\" value=\"" + magic + "\"/>\n";
    }
    const std::string comment =
        description.empty() ? "" : "    <comment>" + Escaped(description) + "</comment>\n";
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<mime-info xmlns=\"http://www.freedesktop.org/standards/shared-mime-info\">\n"
           "  <mime-type type=\"" +
           std::string(kPictureMimeType) + "\">\n" + comment + "    <icon name=\"" + kPictureMimeIcon +
           "\"/>\n"
           "    <generic-icon name=\"image-x-generic\"/>\n" +
           globs + "    <magic>\n" + matches + "    </magic>\n  </mime-type>\n</mime-info>\n";
}

bool HasExtension(const std::string& package, const std::string& extension) {
    return package.find(Pattern(extension)) != std::string::npos;
}

std::string DescriptionOf(const std::string& package) {
    const std::string open = "<comment>";
    const std::size_t begin = package.find(open);
    const std::size_t end = package.find("</comment>");
    if (begin == std::string::npos || end == std::string::npos) return {};
    const std::size_t from = begin + open.size();
    return end < from ? "" : Unescaped(package.substr(from, end - from));
}

}  // namespace pictavo
