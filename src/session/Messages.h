#pragma once

/// The texts of every box and chooser, composed from the language table. Lines are parted by a carriage
/// return.

#include "config/LanguageTable.h"
#include "core/PathText.h"
#include "core/Result.h"
#include "session/Ports.h"

namespace pictavo {

Question OverwriteQuestion(const LanguageTable& texts, const std::filesystem::path& path);
Question CompressQuestion(const LanguageTable& texts);
Question Gpf2Question(const LanguageTable& texts);
Question AlphaQuestion(const LanguageTable& texts);
Question RegisterTypesQuestion(const LanguageTable& texts);

/// Kept: its text is Russian in every language.
Question ApplyToAllQuestion();

/// The forms in which commands tell that a file cannot be opened.
enum class MissingForm {
    PathThenText,       ///< path, carriage return, text and "!": most of them
    TextThenPath,       ///< text and "!", carriage return, path: replacing a picture
    TextBeforePathEnd,  ///< text, carriage return, path and "!": opening a file
    TextAlone,          ///< text and "!": replacing a PNG file, extracting from a patch
};

Notice MissingFile(const LanguageTable& texts, const std::filesystem::path& path, MissingForm form);

Notice Completion(const LanguageTable& texts);

/// The same with the number of files written, behind a blank, as its title.
Notice CountedCompletion(const LanguageTable& texts, std::size_t count);

/// The box, or in the case of a file that is no GPF the two boxes, that tell an error.
std::vector<Notice> NoticesOf(const LanguageTable& texts, const Error& error);

/// What choosers offer where any picture will do, and where a GPF will not.
FileFilter GraphicFiles();
FileFilter PlainGraphicFiles();

std::string OpenTitle(const LanguageTable& texts, const std::string& subject);
std::string SaveTitle(const LanguageTable& texts, const std::string& subject);
std::string FolderTitle(const LanguageTable& texts, const std::string& purpose);

}  // namespace pictavo
