#pragma once

/// File names: those made from picture numbers, and what is made of the names that choosers return.

#include <filesystem>
#include <string>

#include "config/AppSettings.h"

namespace pictavo {

/// The picture's number, -32768 to 65535, as a file's base name: decimal, or upper-case hexadecimal with
/// HEXFilename; filled up with zeros to four decimal or three hexadecimal digits with ZeroFilename. Kept: a
/// negative number, which a GPN container can hold, has a sign in decimal and is 8000 to FFFF in hexadecimal.
std::string NumberName(const AppSettings& settings, int number);

/// Kept: trailing characters with a code below 41 are cut off a name that was typed ("Hello!" gives "Hello").
std::filesystem::path WithoutTail(const std::filesystem::path& name);

/// `name` with `extension` appended unless it ends in that, in whatever case.
std::filesystem::path WithExtensionOfAnyCase(const std::filesystem::path& name, const std::string& extension);

/// Kept: `name` with `extension` appended unless it ends in exactly that ("X.VKP" gives "X.VKP.vkp").
std::filesystem::path WithExtension(const std::filesystem::path& name, const std::string& extension);

/// What a GPF chooser's answer becomes. Kept: for GPF2 a "2" is appended unless the name ends in "2"; kept: a
/// name that then ends neither in "gpf2" nor in ".gpf" gets ".gpf2", whatever the variant.
std::filesystem::path GpfName(const std::filesystem::path& answer, bool isGPF2);

/// The name's ending decides a GPF file's variant.
bool NamesGpf2(const std::filesystem::path& name);

}  // namespace pictavo
