/// Numbers as text. Bytes become hexadecimal digits and bytes again, and a number reads as its own digits
/// say.

#include "Holds.h"
#include "Input.h"
#include "core/BasicCalculations_Tarsk.h"
#include "core/FlashText.h"

namespace pictavo::fuzz {
namespace {

void CheckBytes(const Bytes& bytes) {
    for (const bool reverse : {false, true}) {
        const std::string hex = BytesToHex(bytes, reverse);
        Holds(hex.size() == 2 * bytes.size(), "a byte takes two digits");
        Holds(HexToBytes(hex, reverse) == bytes, "bytes written as digits are read as the same");
    }
    const auto offset = BytesToOffset(bytes);
    Holds(offset.has_value() != bytes.empty(), "only no bytes give no offset");
    if (offset) Holds(*offset < 0x10000000, "an offset has no more than 28 bits");
}

/// Kept: the count of digits decides between 16 and 32 bits, signed.
void CheckNumber(std::uint32_t number) {
    const std::string hex = UpperHex(number);
    const auto read = HexToNumber(hex);
    const auto expected =
        hex.size() <= 4 ? static_cast<std::int16_t>(number) : static_cast<std::int32_t>(number);
    Holds(read && *read == expected, "a number reads as its digits say");
}

void CheckBits(std::uint8_t byte) {
    const std::string bits = ByteToBits(byte);
    const auto number = BitsToNumber(bits);
    Holds(bits.size() == 8 && number && *number == byte, "a byte written as bits is read as the same");
}

void CheckAnyText(const std::string& text) {
    const auto hex = HexToNumber(text);
    Holds(hex || hex.error().kind == ErrorKind::Overflow, "only too many digits fail");
    const auto bits = BitsToNumber(text);
    Holds(bits || bits.error().kind == ErrorKind::Overflow, "only too large a sum fails");
    const auto plain = NumberText(text);
    Holds(!plain || (!plain->empty() && plain->find('-') == std::string::npos), "a plain number has no sign");
    Holds(HexToBytes(text, false).size() == (text.size() + 1) / 2, "two characters make a byte");
    Holds(FlashText(text).size() >= text.size(), "a byte takes one character or more");
    for (const bool left : {false, true})
        Holds(PadZeros(text, 12, left).size() == std::max<std::size_t>(text.size(), 12),
              "a text is only filled up");
}

void Run(Input input) {
    CheckBits(input.Byte());
    CheckNumber(input.Number32());
    const Bytes rest = input.Rest();
    CheckBytes(rest);
    CheckAnyText(std::string(AsText(rest)));
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
