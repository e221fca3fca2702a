#include "core/AsciiText.h"

#include <algorithm>

namespace pictavo {

namespace {

bool IsMadeOf(std::string_view characters, std::string_view text) {
    return !text.empty() && text.find_first_not_of(characters) == std::string_view::npos;
}

}  // namespace

std::string Lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

bool IsDecimal(std::string_view text) {
    return IsMadeOf("0123456789", text);
}

bool IsHex(std::string_view text) {
    return IsMadeOf("0123456789ABCDEFabcdef", text);
}

}  // namespace pictavo
