#include <QLocale>

#include "shell/TextLocale.h"

namespace pictavo {

namespace {

/// The locale that names the character set, by the variables that the system takes it from.
QLocale LocaleOfTexts() {
    for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"})
        if (const QString name = qEnvironmentVariable(variable); !name.isEmpty()) return QLocale(name);
    return QLocale::system();
}

}  // namespace

bool IsLocaleCyrillic() {
    return LocaleOfTexts().script() == QLocale::CyrillicScript;
}

}  // namespace pictavo
