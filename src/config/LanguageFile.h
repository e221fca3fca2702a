#pragma once

/// Language files: one text or caption a line, KEY=TEXT. Layout: docs/formats/language.md.

#include <filesystem>
#include <string>
#include <vector>

#include "config/LanguageTable.h"
#include "core/ByteSource.h"

namespace pictavo {

/// The system's 8-bit character set, for files that are not UTF-8.
enum class CodePage { Windows1251, Windows1252 };

/// Reads the lines of a language file into `table`; what it does not name keeps its text. `language` is the
/// name of the language, which one caption shows. Kept: a line belongs to the key that it begins with, and
/// the one character behind the key is dropped whatever it is. Fails with Overflow at a line of more than 255
/// characters (the lines before it have been taken) and with ReadFailed.
Status ReadLanguageFile(const ByteSource& source, const std::string& language, CodePage codePage,
                        LanguageTable& table);

/// Reads `language` + ".lng" from the first of `folders` that has it. Where none has, nothing changes, which
/// is no failure.
Status LoadLanguage(const std::vector<std::filesystem::path>& folders, const std::string& language,
                    CodePage codePage, LanguageTable& table);

}  // namespace pictavo
