#pragma once

#include <functional>
#include <string>

#include "shell/KeyStore.h"

namespace pictavo {

/// The command that opens files of an extension such as ".gpf". Where there is none, one of two texts that
/// say so. A type's name that cannot be read is told as the system's number for it, and the result is empty.
/// A value ends before its first NUL, if there is one.
std::string GetAssociatedProgram(const KeyStore& store, const std::string& extension,
                                 const std::function<void(const std::string&)>& tell);

}  // namespace pictavo
