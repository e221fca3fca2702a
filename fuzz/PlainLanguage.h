#pragma once

/// Language files taken character after character, as docs/formats/language.md describes them. What the
/// product reads must be the same.

#include <algorithm>
#include <iconv.h>
#include <optional>

#include "Holds.h"
#include "config/TextEncoding.h"
#include "core/Bytes.h"
#include "tests/config/LanguageKeys.h"

namespace pictavo::fuzz::plain {

/// How many bytes a character of UTF-8 has that begins with this one; 0 for a byte that begins none.
inline std::size_t LengthFrom(std::uint8_t first) {
    if (first < 0x80) return 1;
    if (first >= 0xC0 && first < 0xE0) return 2;
    if (first >= 0xE0 && first < 0xF0) return 3;
    return first >= 0xF0 && first < 0xF8 ? 4 : 0;
}

/// The character of `length` bytes that begins at `at`; nothing when it is none, or not in its shortest form.
inline std::optional<char32_t> CharacterAt(const Bytes& file, std::size_t at, std::size_t length) {
    constexpr std::array<char32_t, 5> kLeast{0, 0, 0x80, 0x800, 0x10000};
    if (length == 0 || length > file.size() - at) return std::nullopt;
    char32_t code = length == 1 ? file[at] : file[at] & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if (file[at + i] < 0x80 || file[at + i] > 0xBF) return std::nullopt;
        code = code * 64 + file[at + i] - 0x80;
    }
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < kLeast[length] || code > 0x10FFFF || isSurrogate) return std::nullopt;
    return code;
}

/// The characters of UTF-8 without a byte order mark; nothing when the file is not all UTF-8.
inline std::optional<std::u32string> FromUtf8(const Bytes& file) {
    std::u32string text;
    for (std::size_t at = 0; at < file.size();) {
        const std::size_t length = LengthFrom(file[at]);
        const auto code = CharacterAt(file, at, length);
        if (!code) return std::nullopt;
        text.push_back(*code);
        at += length;
    }
    if (text.starts_with(U'\uFEFF')) text.erase(0, 1);
    return text;
}

/// The characters of all bytes, as the system converts them; one that the set leaves open is its own number.
inline std::u32string CharactersOf(const char* set) {
    const iconv_t converter = iconv_open("UTF-32LE", set);
    Holds(converter != iconv_t(-1), "the system knows the 8-bit character sets");
    std::u32string characters;
    for (unsigned byte = 0; byte < 256; ++byte) {
        std::array<char, 1> from{static_cast<char>(byte)};
        std::array<std::uint8_t, 4> to{};
        char* in = from.data();
        char* out = reinterpret_cast<char*>(to.data());
        std::size_t inLeft = from.size();
        std::size_t outLeft = to.size();
        const bool isSet = iconv(converter, &in, &inLeft, &out, &outLeft) != std::size_t(-1);
        characters.push_back(isSet ? char32_t{LittleEndian32(to)} : char32_t{byte});
    }
    iconv_close(converter);
    return characters;
}

inline std::u32string FromCodePage(const Bytes& file, CodePage codePage) {
    static const std::u32string cyrillic = CharactersOf("CP1251");
    static const std::u32string western = CharactersOf("CP1252");
    std::u32string text;
    for (const std::uint8_t byte : file)
        text.push_back((codePage == CodePage::Windows1251 ? cyrillic : western)[byte]);
    return text;
}

inline std::string ToUtf8(std::u32string_view text) {
    std::string bytes;
    const auto append = [&](char32_t value) { bytes.push_back(static_cast<char>(value)); };
    for (const char32_t code : text) {
        if (code < 0x80) append(code);
        if (code >= 0x80 && code < 0x800) append(0xC0 + code / 64);
        if (code >= 0x800 && code < 0x10000) append(0xE0 + code / 4096);
        if (code >= 0x10000) append(0xF0 + code / 262144);
        if (code >= 0x10000) append(0x80 + code / 4096 % 64);
        if (code >= 0x800) append(0x80 + code / 64 % 64);
        if (code >= 0x80) append(0x80 + code % 64);
    }
    return bytes;
}

/// The first line without its end, taken off the text.
inline std::u32string_view TakeLine(std::u32string_view& text) {
    const std::size_t end = std::min(text.find(U'\n'), text.size());
    std::u32string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.ends_with(U'\r')) line.remove_suffix(1);
    return line;
}

inline bool BeginsWith(std::u32string_view line, std::string_view key) {
    return line.size() >= key.size() &&
           std::equal(key.begin(), key.end(), line.begin(),
                      [](char letter, char32_t code) { return static_cast<std::uint8_t>(letter) == code; });
}

/// What the line says of each key that it begins with: all but the key and one character.
inline void Take(std::u32string_view line, const std::string& language, LanguageTable& table) {
    for (const tests::ExpectedKey& key : tests::ExpectedKeys()) {
        if (!BeginsWith(line, key.name)) continue;
        const std::string value = ToUtf8(line.substr(std::min(line.size(), key.name.size() + 1)));
        if (key.text != nullptr) table.*key.text = value;
        for (const tests::ExpectedCaption& caption : key.captions)
            table.captions[caption.control] = tests::CaptionOf(caption, value, table.str_all, language);
    }
}

/// Reads the file into the table. False when a line was too long, which ends the reading.
inline bool ReadInto(LanguageTable& table, const Bytes& file, CodePage codePage,
                     const std::string& language) {
    const auto unicode = FromUtf8(file);
    const std::u32string characters = unicode ? *unicode : FromCodePage(file, codePage);
    std::u32string_view text = characters;
    while (!text.empty()) {
        const std::u32string_view line = TakeLine(text);
        if (line.size() > 255) return false;
        Take(line, language, table);
    }
    return true;
}

inline bool AreEqual(const LanguageTable& one, const LanguageTable& other) {
    for (const tests::ExpectedKey& key : tests::ExpectedKeys())
        if (key.text != nullptr && one.*key.text != other.*key.text) return false;
    return one.captions == other.captions;
}

}  // namespace pictavo::fuzz::plain
