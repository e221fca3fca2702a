#pragma once

#include <QLocale>
#include <QTranslator>

namespace pictavo {

/// Qt's own words (those of its choosers) in the language of `locale`, where `folder` holds them; from then
/// on they are in use as long as `translator` lives. False, and they stay English, where it does not.
bool InstallQtTranslation(QTranslator& translator, const QLocale& locale, const QString& folder);

}  // namespace pictavo
