#include "config/TextEncoding.h"

#include <algorithm>
#include <array>

#include "core/NoOtherValue.h"

namespace pictavo {

namespace {

/// The characters of bytes 80 to BF.
constexpr std::array<char16_t, 64> kWindows1251 = {
    0x0402, 0x0403, 0x201A, 0x0453, 0x201E, 0x2026, 0x2020, 0x2021, 0x20AC, 0x2030, 0x0409, 0x2039, 0x040A,
    0x040C, 0x040B, 0x040F, 0x0452, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x0098, 0x2122,
    0x0459, 0x203A, 0x045A, 0x045C, 0x045B, 0x045F, 0x00A0, 0x040E, 0x045E, 0x0408, 0x00A4, 0x0490, 0x00A6,
    0x00A7, 0x0401, 0x00A9, 0x0404, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x0407, 0x00B0, 0x00B1, 0x0406, 0x0456,
    0x0491, 0x00B5, 0x00B6, 0x00B7, 0x0451, 0x2116, 0x0454, 0x00BB, 0x0458, 0x0405, 0x0455, 0x0457};

/// The characters of bytes 80 to 9F; the others are their own numbers.
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr std::uint8_t kFirstHighByte = 0x80;
constexpr char16_t kCyrillicA = 0x0410;

char16_t CharacterOf(std::uint8_t byte, CodePage codePage) {
    if (byte < kFirstHighByte) return byte;
    const std::size_t high = byte - kFirstHighByte;
    switch (codePage) {
        case CodePage::Windows1251:
            return high < kWindows1251.size()
                       ? kWindows1251[high]
                       : static_cast<char16_t>(kCyrillicA + high - kWindows1251.size());
        case CodePage::Windows1252:
            return high < kWindows1252.size() ? kWindows1252[high] : byte;
    }
    NoOtherValue();
}

constexpr std::uint8_t kFollowing = 0x80;
constexpr std::uint8_t kFollowingMask = 0xC0;
constexpr unsigned kFollowingBits = 6;

char Following(unsigned bits) {
    return static_cast<char>(kFollowing | (bits & 0x3F));
}

/// No character of the 8-bit sets needs more than three bytes.
void AppendUtf8(char16_t character, std::string& text) {
    const unsigned code = character;
    if (code < 0x80) {
        text.push_back(static_cast<char>(code));
    } else if (code < 0x800) {
        text.push_back(static_cast<char>(0xC0 | code >> kFollowingBits));
        text.push_back(Following(code));
    } else {
        text.push_back(static_cast<char>(0xE0 | code >> 2 * kFollowingBits));
        text.push_back(Following(code >> kFollowingBits));
        text.push_back(Following(code));
    }
}

/// A range of first bytes: how many bytes follow one, and the range of the second, by which over-long forms,
/// surrogates and numbers above 10FFFF are told.
struct Lead {
    std::uint8_t first;
    std::uint8_t last;
    int following;
    std::uint8_t least = 0x80;
    std::uint8_t most = 0xBF;
};

constexpr std::array<Lead, 9> kLeads = {{{0x00, 0x7F, 0},
                                         {0xC2, 0xDF, 1},
                                         {0xE0, 0xE0, 2, 0xA0, 0xBF},
                                         {0xE1, 0xEC, 2},
                                         {0xED, 0xED, 2, 0x80, 0x9F},
                                         {0xEE, 0xEF, 2},
                                         {0xF0, 0xF0, 3, 0x90, 0xBF},
                                         {0xF1, 0xF3, 3},
                                         {0xF4, 0xF4, 3, 0x80, 0x8F}}};

class Utf8Check {
  public:
    /// False as soon as the bytes so far cannot begin a text in UTF-8.
    bool Take(std::uint8_t byte) {
        if (pending_ == 0) return TakeLead(byte);
        if (byte < least_ || byte > most_) return false;
        least_ = 0x80;
        most_ = 0xBF;
        --pending_;
        return true;
    }

    bool IsBetweenCharacters() const { return pending_ == 0; }

  private:
    bool TakeLead(std::uint8_t byte) {
        const auto* const lead = std::find_if(kLeads.begin(), kLeads.end(), [byte](const Lead& range) {
            return range.first <= byte && byte <= range.last;
        });
        if (lead == kLeads.end()) return false;
        pending_ = lead->following;
        least_ = lead->least;
        most_ = lead->most;
        return true;
    }

    int pending_ = 0;
    std::uint8_t least_ = 0;
    std::uint8_t most_ = 0;
};

}  // namespace

Result<bool> IsUtf8(const ByteSource& source) {
    Utf8Check check;
    for (std::uint64_t offset = 0; offset < source.Size();) {
        PICTAVO_TRY(const ByteView view, source.ViewAt(offset));
        if (view.empty()) break;
        for (const std::uint8_t byte : view)
            if (!check.Take(byte)) return false;
        offset += view.size();
    }
    return check.IsBetweenCharacters();
}

std::string Utf8FromCodePage(std::string_view text, CodePage codePage) {
    std::string utf8;
    for (const std::uint8_t byte : AsBytes(text)) AppendUtf8(CharacterOf(byte, codePage), utf8);
    return utf8;
}

bool IsFollowingByte(char byte) {
    return (static_cast<std::uint8_t>(byte) & kFollowingMask) == kFollowing;
}

std::size_t CharacterCount(std::string_view utf8) {
    return utf8.size() - static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), IsFollowingByte));
}

}  // namespace pictavo
