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
        const std::size_t room = kLongestLine - line.size();
        if (length > room && longLines_ == LongLines::Refuse)
            return Fail(ErrorKind::Malformed, source_.Path(),
                        "line " + std::to_string(number_ + 1) + " is longer than 1 MiB");
        line += AsText(view.first(std::min(length, room)));
        position_ += length + (ended ? 1 : 0);
    }
    if (line.ends_with('\r')) line.pop_back();
    ++number_;
    return std::optional<std::string>(std::move(line));
}

}  // namespace pictavo
