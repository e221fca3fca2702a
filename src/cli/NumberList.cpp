#include "cli/NumberList.h"

#include <charconv>

#include "core/AsciiText.h"

namespace pictavo::cli {

namespace {

constexpr std::size_t kMostDigits = 5;

bool InsertRange(std::string_view text, std::set<int>& numbers) {
    const std::size_t dash = text.find('-');
    const auto first = ParsePictureNumber(text.substr(0, dash));
    const auto last = dash == std::string_view::npos ? first : ParsePictureNumber(text.substr(dash + 1));
    if (!first || !last || *first > *last) return false;
    for (int number = *first; number <= *last; ++number) numbers.insert(number);
    return true;
}

}  // namespace

std::optional<int> ParsePictureNumber(std::string_view text) {
    if (!IsDecimal(text) || text.size() > kMostDigits) return std::nullopt;
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

std::optional<std::set<int>> ParseNumberList(std::string_view text) {
    std::set<int> numbers;
    for (;;) {
        const std::size_t comma = text.find(',');
        if (!InsertRange(text.substr(0, comma), numbers)) return std::nullopt;
        if (comma == std::string_view::npos) return numbers;
        text.remove_prefix(comma + 1);
    }
}

}  // namespace pictavo::cli
