#include "core/BasicCalculations_Tarsk.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "core/SystemFile.h"

namespace pictavo {

namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";
constexpr std::size_t kShortNumberDigits = 4;  // up to here a number is signed 16 bit
constexpr std::size_t kLongNumberDigits = 8;
constexpr std::size_t kLongestBits = 255;
constexpr std::uint8_t kLongestNulString = 254;

std::optional<std::uint8_t> DigitValue(char digit) {
    if (digit >= '0' && digit <= '9') return static_cast<std::uint8_t>(digit - '0');
    if (digit >= 'A' && digit <= 'F') return static_cast<std::uint8_t>(digit - 'A' + 10);
    if (digit >= 'a' && digit <= 'f') return static_cast<std::uint8_t>(digit - 'a' + 10);
    return std::nullopt;
}

std::string_view LeadingDigits(std::string_view hex) {
    const auto end =
        std::find_if_not(hex.begin(), hex.end(), [](char c) { return DigitValue(c).has_value(); });
    return hex.substr(0, static_cast<std::size_t>(end - hex.begin()));
}

std::uint32_t UnsignedValue(std::string_view digits) {
    std::uint32_t value = 0;
    for (const char digit : digits) value = value << 4 | *DigitValue(digit);
    return value;
}

std::uint8_t PairValue(std::string_view pair) {
    return static_cast<std::uint8_t>(UnsignedValue(LeadingDigits(pair)));
}

}  // namespace

std::string BytesToHex(ByteView bytes, bool reverse) {
    std::string hex(bytes.size() * 2, '\0');
    char* to = hex.data();
    const auto put = [&to](std::uint8_t byte) {
        *to++ = kDigits[byte >> 4];
        *to++ = kDigits[byte & 15];
    };
    if (reverse)
        std::for_each(bytes.rbegin(), bytes.rend(), put);
    else
        std::for_each(bytes.begin(), bytes.end(), put);
    return hex;
}

Bytes HexToBytes(std::string_view hex, bool reverse) {
    const std::string even = hex.size() % 2 == 0 ? std::string(hex) : "0" + std::string(hex);
    Bytes bytes;
    bytes.reserve(even.size() / 2);
    for (std::size_t i = 0; i < even.size(); i += 2)
        bytes.push_back(PairValue(std::string_view(even).substr(i, 2)));
    if (reverse) std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

Result<std::int32_t> HexToNumber(std::string_view hex) {
    const std::string_view digits = LeadingDigits(hex);
    if (digits.size() > kLongNumberDigits)
        return Fail(ErrorKind::Overflow, "a number of more than eight hex digits");
    const std::uint32_t value = UnsignedValue(digits);
    if (digits.size() <= kShortNumberDigits) return static_cast<std::int16_t>(value);
    return static_cast<std::int32_t>(value);
}

Result<std::uint32_t> BytesToOffset(ByteView bytes) {
    constexpr std::uint32_t kOffsetMask = 0x0FFFFFFF;
    if (bytes.empty()) return Fail(ErrorKind::Malformed, "no byte to take an address from");
    std::uint32_t address = 0;
    for (std::size_t i = 0; i < 4; ++i)
        address |= static_cast<std::uint32_t>(bytes[std::min(i, bytes.size() - 1)]) << (8 * i);
    return address & kOffsetMask;
}

std::string ByteToBits(std::uint8_t value) {
    std::string bits;
    for (int bit = 7; bit >= 0; --bit) bits.push_back((value >> bit & 1) != 0 ? '1' : '0');
    return bits;
}

Result<std::int16_t> BitsToNumber(std::string_view bits) {
    if (bits.size() > kLongestBits) return Fail(ErrorKind::Overflow, "more than 255 binary digits");
    double sum = 0;
    double weight = 1;
    // From the right the sum only grows faster; it leaves the range here exactly when it does from the left,
    // since no term is negative.
    for (auto bit = bits.rbegin(); bit != bits.rend(); ++bit, weight *= 2) {
        if (*bit >= '0' && *bit <= '9') sum += weight * (*bit - '0');
        if (sum > std::numeric_limits<std::int16_t>::max())
            return Fail(ErrorKind::Overflow, "binary digits beyond 16 bits");
    }
    return static_cast<std::int16_t>(sum);
}

Result<std::string> NumberText(std::string_view text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return Fail(ErrorKind::Malformed, "\"" + std::string(text) + "\" is no number");
    std::array<char, 512> digits{};
    const auto written =
        std::to_chars(digits.begin(), digits.end(), std::abs(value), std::chars_format::fixed);
    return std::string(digits.begin(), written.ptr);
}

std::string PadZeros(std::string text, std::size_t width, bool left) {
    if (text.size() >= width) return text;
    text.insert(left ? 0 : text.size(), width - text.size(), '0');
    return text;
}

Result<std::string> NulString(std::uint8_t count) {
    if (count > kLongestNulString) return Fail(ErrorKind::Overflow, "more than 254 NUL characters");
    return std::string(count, '\0');
}

bool FileMissing(const std::filesystem::path& path) {
    const auto opened = system_file::OpenForReading(path);
    if (opened) system_file::Close(opened->handle);
    return !opened;
}

std::string UpperHex(std::uint64_t number) {
    std::array<char, 16> digits{};
    auto first = digits.end();
    do {
        *--first = kDigits[number & 15];
        number >>= 4;
    } while (number != 0);
    return {first, digits.end()};
}

std::string HexText(std::uint64_t number, std::size_t width) {
    return PadZeros(UpperHex(number), width, true);
}

}  // namespace pictavo
