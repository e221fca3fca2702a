#pragma once

/// Paths on their way to and from Qt. On systems whose names are bytes, a byte that is no UTF-8 becomes
/// U+FFFD in Qt's text, and no path leads back from there.

#include <QString>

#include "core/PathText.h"

namespace pictavo {

inline QString QtPath(const std::filesystem::path& path) {
    return QString::fromStdString(PathText(path));
}

/// Parted as the system does it, and not, as Qt does, by slashes on every one.
inline std::filesystem::path StdPath(const QString& path) {
    return PathOf(path.toStdString()).make_preferred();
}

}  // namespace pictavo
