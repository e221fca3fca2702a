#pragma once

/// Small conversions between raw bytes, hexadecimal text, binary text and numbers, and the file-presence
/// test. Hexadecimal text is upper case, two digits a byte, without prefix. Formats: docs/formats/numbers.md.

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "core/Bytes.h"
#include "core/Result.h"

namespace pictavo {

/// Two digits a byte: the first byte first, or with `reverse` the last one first, which is the ordinary
/// hexadecimal form of a little-endian number.
std::string BytesToHex(ByteView bytes, bool reverse);

/// The inverse. A text of odd length gets a "0" in front. Kept: a pair that is not hexadecimal converts as
/// far as its leading digits go ("1G" gives 1, "G1" gives 0).
Bytes HexToBytes(std::string_view hex, bool reverse);

/// The number that the leading hexadecimal digits of `hex` form; 0 without any. Kept: the reading is signed,
/// and the count of digits decides the size: up to four digits are a 16-bit number (FFFF is -1), five to
/// eight a 32-bit one (0FFFF is 65535, FFFFFFFF is -1). More than eight digits fail with Overflow.
/// Offsets therefore stay numbers beside the texts that are shown of them.
Result<std::int32_t> HexToNumber(std::string_view hex);

/// The file offset of a little-endian phone address: its first four bytes with the top four bits cleared.
/// Fewer than four bytes repeat the last one; none fail with Malformed.
Result<std::uint32_t> BytesToOffset(ByteView bytes);

/// Eight characters "0" or "1", the most significant bit first.
std::string ByteToBits(std::uint8_t value);

/// The value of binary digits, the most significant first. Kept: a digit above 1 counts with its own value
/// ("2" is 2), any other character counts 0 ("x1" is 1). Fails with Overflow on a text of more than 255
/// characters, or when the sum leaves the signed 16-bit range.
Result<std::int16_t> BitsToNumber(std::string_view bits);

/// The plain decimal form of a number given as text. Kept: the place of the sign is dropped, so "-12" gives
/// "12"; callers pass counts and sizes. One of the set, though no command uses it. Fails with Malformed on a
/// text that is no number.
Result<std::string> NumberText(std::string_view text);

/// `text` filled up with "0" to `width` characters, on the left or on the right; never cut.
std::string PadZeros(std::string text, std::size_t width, bool left);

/// `count` NUL characters, at most 254; 255 fails with Overflow. One of the set, though no command uses it.
Result<std::string> NulString(std::uint8_t count);

/// True unless `path` is a regular file that can be opened for reading. A folder or a pipe counts as missing,
/// and nothing blocks on one.
bool FileMissing(const std::filesystem::path& path);

/// `number` in upper-case hexadecimal without leading zeros.
std::string UpperHex(std::uint64_t number);

/// The same, filled up with zeros to `width` digits at least.
std::string HexText(std::uint64_t number, std::size_t width);

}  // namespace pictavo
