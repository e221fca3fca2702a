#pragma once

/// What the bytes of a text file stand for: UTF-8 is told from the system's 8-bit character sets, and both
/// become UTF-8. Knows nothing of lines.

#include <string>

#include "core/ByteSource.h"

namespace pictavo {

/// The system's 8-bit character set, for files that are not UTF-8.
enum class CodePage { Windows1251, Windows1252 };

/// The three bytes that some editors put in front of UTF-8; they are no part of the text.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// True when the whole of `source` is UTF-8: shortest forms only, no surrogates, nothing above 10FFFF, no
/// character cut by the end. Fails with ReadFailed.
Result<bool> IsUtf8(const ByteSource& source);

/// The characters of an 8-bit text in UTF-8. Every byte has one; those that the character set leaves open
/// become the control characters of the same number.
std::string Utf8FromCodePage(std::string_view text, CodePage codePage);

/// True for the bytes of a character in UTF-8 behind its first one.
bool IsFollowingByte(char byte);

/// Number of characters of a text in UTF-8.
std::size_t CharacterCount(std::string_view utf8);

}  // namespace pictavo
