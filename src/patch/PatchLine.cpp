#include "patch/PatchLine.h"

#include <algorithm>
#include <cassert>

#include "core/AsciiText.h"
#include "core/BasicCalculations_Tarsk.h"

namespace pictavo {

namespace {

constexpr std::size_t kAddressDigits = 8;

bool IsHexBytes(std::string_view text) {
    return IsHex(text) && text.size() % 2 == 0;
}

std::string_view WithoutTrailingBlanks(std::string_view line) {
    const std::size_t last = line.find_last_not_of(" \t");
    return line.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

std::uint64_t AddressValue(std::string_view digits) {
    std::uint64_t value = 0;
    for (const std::uint8_t byte : HexToBytes(digits, false)) value = value << 8 | byte;
    return value;
}

/// The three fields of a line; empty ones when it has another shape.
struct Fields {
    std::string_view address;
    std::string_view oldBytes;
    std::string_view newBytes;
};

Fields Split(std::string_view line) {
    const std::size_t colon = line.find(": ");
    if (colon == std::string_view::npos) return {};
    const std::string_view bytes = line.substr(colon + 2);
    const std::size_t blank = bytes.find(' ');
    if (blank == std::string_view::npos) return {};
    return {line.substr(0, colon), bytes.substr(0, blank), bytes.substr(blank + 1)};
}

bool IsPatchLine(const Fields& fields) {
    return IsHex(fields.address) && fields.address.size() <= kAddressDigits && IsHexBytes(fields.oldBytes) &&
           IsHexBytes(fields.newBytes) && fields.oldBytes.size() == fields.newBytes.size();
}

}  // namespace

std::string PatchLine(std::uint64_t offset, ByteView oldBytes, ByteView newBytes) {
    assert(oldBytes.size() == newBytes.size());
    return HexText(offset, kAddressDigits) + ": " + BytesToHex(oldBytes, false) + " " +
           BytesToHex(newBytes, false) + kPatchLineEnd;
}

std::string PatchLines(std::uint64_t offset, ByteView oldBytes, ByteView newBytes) {
    std::string lines;
    for (std::size_t at = 0; at < newBytes.size(); at += kPatchLineBytes) {
        const std::size_t length = std::min(kPatchLineBytes, newBytes.size() - at);
        lines += PatchLine(offset + at, oldBytes.subspan(at, length), newBytes.subspan(at, length));
    }
    return lines;
}

std::optional<PatchEntry> ParsePatchLine(std::string_view text, std::size_t line) {
    const Fields fields = Split(WithoutTrailingBlanks(text));
    if (!IsPatchLine(fields)) return std::nullopt;
    return PatchEntry{line, AddressValue(fields.address), HexToBytes(fields.oldBytes, false),
                      HexToBytes(fields.newBytes, false)};
}

}  // namespace pictavo
