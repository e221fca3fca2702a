#include "shell/KeyFile.h"

#include <algorithm>

namespace pictavo {

namespace {

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool IsHead(std::string_view line) {
    return Trimmed(line).starts_with('[');
}

bool IsOfKey(std::string_view line, const std::string& key) {
    const std::size_t sign = line.find('=');
    return sign != std::string_view::npos && Trimmed(line.substr(0, sign)) == key;
}

std::string_view LineEnd(std::string_view line) {
    if (line.ends_with("\r\n")) return "\r\n";
    return "\n";
}

}  // namespace

KeyFile::KeyFile(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('\n'), text.size() - 1) + 1;
        lines_.emplace_back(text.substr(0, length));
        text.remove_prefix(length);
    }
}

std::optional<std::string> KeyFile::Value(const std::string& group, const std::string& key) const {
    const auto at = FindLine(group, key);
    if (!at) return std::nullopt;
    const std::string_view line = lines_[*at];
    return std::string(Trimmed(line.substr(line.find('=') + 1)));
}

void KeyFile::Set(const std::string& group, const std::string& key, const std::string& value) {
    const std::string line = key + "=" + value;
    if (const auto at = FindLine(group, key)) {
        lines_[*at] = line + std::string(LineEnd(lines_[*at]));
        return;
    }
    if (!FindGroup(group)) Insert(lines_.size(), "[" + group + "]\n");
    Insert(*FindGroup(group) + 1, line + "\n");
}

void KeyFile::Remove(const std::string& group, const std::string& key) {
    if (!FindLine(group, key)) return;
    while (const auto at = FindLine(group, key))
        lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(*at));
    if (*FindGroup(group) + 1 == lines_.size()) lines_.pop_back();
}

std::string KeyFile::Text() const {
    std::string text;
    for (const std::string& line : lines_) text += line;
    return text;
}

std::optional<std::size_t> KeyFile::FindGroup(const std::string& group) const {
    for (std::size_t i = 0; i < lines_.size(); ++i)
        if (Trimmed(lines_[i]) == "[" + group + "]") return i;
    return std::nullopt;
}

std::optional<std::size_t> KeyFile::FindLine(const std::string& group, const std::string& key) const {
    const auto head = FindGroup(group);
    if (!head) return std::nullopt;
    std::optional<std::size_t> last;
    for (std::size_t i = *head + 1; i < lines_.size() && !IsHead(lines_[i]); ++i)
        if (IsOfKey(lines_[i], key)) last = i;
    return last;
}

void KeyFile::Insert(std::size_t at, std::string line) {
    if (at > 0 && !lines_[at - 1].ends_with('\n')) lines_[at - 1] += '\n';
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(at), std::move(line));
}

std::vector<std::string> ListItems(std::string_view list) {
    std::vector<std::string> items;
    while (!list.empty()) {
        const std::size_t length = std::min(list.find(';'), list.size());
        if (const auto item = Trimmed(list.substr(0, length)); !item.empty()) items.emplace_back(item);
        list.remove_prefix(std::min(length + 1, list.size()));
    }
    return items;
}

}  // namespace pictavo
