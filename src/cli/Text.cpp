#include "cli/Text.h"

namespace pictavo::cli {

namespace {

/// The bytes of the control character at the start of `text`; 0 when there is none. Those of 80h to 9Fh take
/// two in UTF-8, of which the first is C2h.
std::size_t ControlLength(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x20 || first == 0x7F) return 1;
    const unsigned second = text.size() > 1 ? static_cast<unsigned char>(text[1]) : 0U;
    return first == 0xC2 && second >= 0x80 && second < 0xA0 ? 2 : 0;
}

}  // namespace

std::string OnOneLine(std::string_view text) {
    std::string line;
    while (!text.empty()) {
        const std::size_t control = ControlLength(text);
        line.push_back(control > 0 ? ' ' : text[0]);
        text.remove_prefix(control > 0 ? control : 1);
    }
    return line;
}

std::string KeyLine(const std::string& key, const std::string& value) {
    return key + ": " + OnOneLine(value) + "\n";
}

}  // namespace pictavo::cli
