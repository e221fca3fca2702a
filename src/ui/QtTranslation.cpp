#include "ui/QtTranslation.h"

#include <QCoreApplication>

namespace pictavo {

bool InstallQtTranslation(QTranslator& translator, const QLocale& locale, const QString& folder) {
    return translator.load(locale, "qtbase", "_", folder) && QCoreApplication::installTranslator(&translator);
}

}  // namespace pictavo
