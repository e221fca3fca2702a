#include "core/ErrorText.h"

#include "core/BasicCalculations_Tarsk.h"
#include "core/PathText.h"

namespace pictavo {

std::size_t ControlLength(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x20 || first == 0x7F) return 1;
    const unsigned second = text.size() > 1 ? static_cast<unsigned char>(text[1]) : 0U;
    return first == 0xC2 && second >= 0x80 && second < 0xA0 ? 2 : 0;
}

std::string DetailText(const Error& error) {
    if (!error.offset) return error.detail;
    return "at 0x" + UpperHex(*error.offset) + ": " + error.detail;
}

std::string ErrorText(const Error& error) {
    return error.path.empty() ? DetailText(error) : PathText(error.path) + ": " + DetailText(error);
}

std::string OnOneLine(std::string_view text) {
    std::string line;
    while (!text.empty()) {
        const std::size_t control = ControlLength(text);
        line.push_back(control > 0 ? ' ' : text[0]);
        text.remove_prefix(control > 0 ? control : 1);
    }
    return line;
}

}  // namespace pictavo
