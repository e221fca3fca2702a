#pragma once

/// Language files: one text or caption a line, KEY=TEXT. Layout: docs/formats/language.md.

#include <filesystem>
#include <string>
#include <vector>

#include "config/LanguageTable.h"
#include "config/TextEncoding.h"

namespace pictavo {

/// Reads the lines of a language file into `table`; what it does not name keeps its text. The file is UTF-8
/// when all of it is valid as such, else text in `codePage`. `language` is the name of the language, which
/// one caption shows.
///
/// Kept: a line belongs to the key that it begins with, and the one character behind the key is dropped
/// whatever it is. Kept: captions that end in str_all have the one read before them, also from an earlier
/// file.
///
/// Fails with Overflow when the file is larger than 1 MiB, of which nothing is taken, or at a line of more
/// than 255 characters, with ReadFailed, and as LineReader does; the lines before the failure have been
/// taken.
Status ReadLanguageFile(const ByteSource& source, const std::string& language, CodePage codePage,
                        LanguageTable& table);

/// Reads `language` + ".lng" from the first of `folders` that has it, and fails as ReadLanguageFile does, or
/// with FileMissing when what stands there under that name cannot be opened. Where there is none, nothing
/// changes, which is no failure.
Status LoadLanguage(const std::vector<std::filesystem::path>& folders, const std::string& language,
                    CodePage codePage, LanguageTable& table);

/// True when one of `folders` holds the file that LoadLanguage would read, be it that it cannot be read.
bool HasLanguageFile(const std::vector<std::filesystem::path>& folders, const std::string& language);

/// Where language files are to be chosen from: the first of `folders` that holds one; the first where none
/// does, empty without folders.
std::filesystem::path LanguageFolder(const std::vector<std::filesystem::path>& folders);

}  // namespace pictavo
