#pragma once

/// Texts on their way to Qt.

#include <QString>
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

}  // namespace pictavo
