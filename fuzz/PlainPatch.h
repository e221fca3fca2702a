#pragma once

/// The lines of a patch taken letter by letter, and held against a flash byte by byte, as
/// docs/formats/patch.md describes them. What the product reads and finds must be the same.

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "patch/PatchReader.h"

namespace pictavo::fuzz::plain {

/// A line of text from its front on.
class Letters {
  public:
    explicit Letters(std::string_view text) : text_(text) {}

    bool TakeThis(std::string_view expected) {
        const bool isThere = text_.starts_with(expected);
        if (isThere) text_.remove_prefix(expected.size());
        return isThere;
    }

    /// All hexadecimal digits from here on, as their values.
    std::vector<unsigned> TakeDigits() {
        constexpr std::string_view kDigits = "0123456789ABCDEF0123456789abcdef";
        std::vector<unsigned> values;
        for (; !text_.empty() && kDigits.find(text_.front()) != std::string_view::npos;
             text_.remove_prefix(1))
            values.push_back(static_cast<unsigned>(kDigits.find(text_.front()) % 16));
        return values;
    }

    bool HasOnlyBlanks() const {
        return std::all_of(text_.begin(), text_.end(), [](char c) { return c == ' ' || c == '\t'; });
    }

  private:
    std::string_view text_;
};

/// Two digits a byte; nothing for an odd number of them, or none.
inline std::optional<Bytes> BytesOf(const std::vector<unsigned>& digits) {
    if (digits.empty() || digits.size() % 2 != 0) return std::nullopt;
    Bytes bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2)
        bytes.push_back(static_cast<std::uint8_t>(digits[i] * 16 + digits[i + 1]));
    return bytes;
}

/// ADDRESS: OLD NEW; nothing for a line of another shape.
inline std::optional<PatchEntry> EntryOf(std::string_view line, std::size_t number) {
    Letters letters(line);
    const std::vector<unsigned> address = letters.TakeDigits();
    if (address.empty() || address.size() > 8 || !letters.TakeThis(": ")) return std::nullopt;
    const auto oldBytes = BytesOf(letters.TakeDigits());
    if (!oldBytes || !letters.TakeThis(" ")) return std::nullopt;
    const auto newBytes = BytesOf(letters.TakeDigits());
    if (!newBytes || newBytes->size() != oldBytes->size() || !letters.HasOnlyBlanks()) return std::nullopt;
    std::uint64_t offset = 0;
    for (const unsigned digit : address) offset = offset * 16 + digit;
    return PatchEntry{number, offset, *oldBytes, *newBytes};
}

/// The lines without their ends.
inline std::vector<std::string_view> LinesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.ends_with('\r')) line.remove_suffix(1);
        lines.push_back(line);
    }
    return lines;
}

/// The patch lines; nothing when another line is neither empty nor a comment.
inline std::optional<std::vector<PatchEntry>> EntriesOf(std::string_view patch) {
    std::vector<PatchEntry> entries;
    std::size_t number = 0;
    for (const std::string_view line : LinesOf(patch)) {
        ++number;
        if (line.starts_with(';') || Letters(line).HasOnlyBlanks()) continue;
        const auto entry = EntryOf(line, number);
        if (!entry) return std::nullopt;
        entries.push_back(*entry);
    }
    return entries;
}

inline bool AreEqual(const PatchEntry& one, const PatchEntry& other) {
    return one.line == other.line && one.offset == other.offset && one.oldBytes == other.oldBytes &&
           one.newBytes == other.newBytes;
}

inline bool AreEqual(const PatchMismatch& one, const PatchMismatch& other) {
    return one.line == other.line && one.offset == other.offset && one.expected == other.expected &&
           one.found == other.found;
}

template <typename Item>
bool AreEqual(const std::vector<Item>& ones, const std::vector<Item>& others) {
    return std::equal(ones.begin(), ones.end(), others.begin(), others.end(),
                      [](const Item& one, const Item& other) { return AreEqual(one, other); });
}

/// The lines whose old bytes do not stand in the flash, or not all of them.
inline std::vector<PatchMismatch> MismatchesOf(const std::vector<PatchEntry>& entries, const Bytes& flash) {
    std::vector<PatchMismatch> mismatches;
    for (const PatchEntry& entry : entries) {
        Bytes found;
        for (std::uint64_t at = entry.offset; at < flash.size() && found.size() < entry.oldBytes.size(); ++at)
            found.push_back(flash[static_cast<std::size_t>(at)]);
        if (found != entry.oldBytes) mismatches.push_back({entry.line, entry.offset, entry.oldBytes, found});
    }
    return mismatches;
}

}  // namespace pictavo::fuzz::plain
