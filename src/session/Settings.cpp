#include "session/Settings.h"

#include <utility>

#include "config/LanguageFile.h"
#include "core/OutputFile.h"

namespace pictavo {

namespace {

Status ReadSettings(Session& session) {
    if (NameIsFree(session.places.settingsFile)) PICTAVO_TRY(SaveSettings(session));
    PICTAVO_TRY(const auto source, FileSource::Open(session.places.settingsFile));
    PICTAVO_TRY(session.settings, ReadAppSettings(*source, session.settings));
    return {};
}

Status ReadLanguage(Session& session) {
    const Places& places = session.places;
    return LoadLanguage(places.languageFolders, session.settings.Language, places.codePage, session.texts);
}

}  // namespace

Status LoadSettings(Session& session) {
    const Status settings = session.places.settingsFile.empty() ? Status() : ReadSettings(session);
    const Status language = ReadLanguage(session);
    return settings ? language : settings;
}

Status SaveSettings(const Session& session) {
    if (session.places.settingsFile.empty()) return {};
    return SaveAppSettings(session.places.settingsFile, session.settings);
}

Status ChangeSettings(Session& session, AppSettings settings) {
    std::swap(session.settings, settings);
    const Status saved = SaveSettings(session);
    if (!saved) std::swap(session.settings, settings);
    return saved;
}

}  // namespace pictavo
