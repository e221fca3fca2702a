#pragma once

/// The file by which a desktop learns of the program's picture files: their type, the endings of their names
/// and the bytes that they begin with.

#include <set>
#include <string>

namespace pictavo {

/// The MIME type of both kinds of picture files.
inline constexpr const char* kPictureMimeType = "image/x-gpffile";

/// What a desktop calls the files of that type.
inline constexpr const char* kPictureTypeDescription = "Graphic Patch File";

/// The type's icon, by its name in the icon theme.
inline constexpr const char* kPictureMimeIcon = "image-x-gpffile";

/// Whether files of an extension such as ".gpf" are of that type.
bool IsPictureExtension(const std::string& extension);

/// The package, for extensions of which IsPictureExtension holds. `description` is UTF-8 and may be empty.
std::string MimePackageText(const std::set<std::string>& extensions, const std::string& description);

/// Whether a package knows an extension.
bool HasExtension(const std::string& package, const std::string& extension);

/// The description in a package that MimePackageText made; empty when it has none.
std::string DescriptionOf(const std::string& package);

}  // namespace pictavo
