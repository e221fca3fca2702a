#pragma once

/// Texts and paths on their way to and from Qt.

#include <QString>
#include <filesystem>
#include <string>

namespace pictavo {

/// UTF-8 as shown: the carriage returns of messages become line breaks, zero bytes blanks.
inline QString Shown(const std::string& utf8) {
    return QString::fromStdString(utf8).replace('\r', '\n').replace(QChar('\0'), ' ');
}

/// A text that must not be read as holding a mnemonic.
inline QString WithoutMnemonic(QString text) {
    return text.replace('&', "&&");
}

inline QString QtPath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// Parted as the system does it, and not, as Qt does, by slashes on every one.
inline std::filesystem::path StdPath(const QString& path) {
    const QByteArray bytes = path.toUtf8();
    return std::filesystem::path(std::u8string(bytes.begin(), bytes.end())).make_preferred();
}

}  // namespace pictavo
