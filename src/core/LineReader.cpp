#include "core/LineReader.h"

#include <algorithm>

namespace pictavo {

namespace {

constexpr std::size_t kLongestLine = std::size_t{1} << 20;

}  // namespace

Result<std::optional<std::string>> LineReader::Next() {
    if (position_ >= source_.Size()) return std::optional<std::string>();
    std::string line;
    bool ended = false;
    while (!ended) {
        PICTAVO_TRY(const ByteView view, source_.ViewAt(position_));
        if (view.empty()) break;
        const auto end = std::find(view.begin(), view.end(), std::uint8_t{'\n'});
        ended = end != view.end();
        const auto length = static_cast<std::size_t>(end - view.begin());
        if (length > kLongestLine - line.size())
            return Fail(ErrorKind::Malformed, source_.Path(),
                        "line " + std::to_string(number_ + 1) + " is longer than 1 MiB");
        line += AsText(view.first(length));
        position_ += length + (ended ? 1 : 0);
    }
    if (line.ends_with('\r')) line.pop_back();
    ++number_;
    return std::optional<std::string>(std::move(line));
}

}  // namespace pictavo
