#include "session/Settings.h"

#include <utility>

namespace pictavo {

namespace {

/// Unlike FileMissing it counts a file that is there and can not be opened, which must not be written anew.
bool NameIsFree(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::symlink_status(path, error).type() == std::filesystem::file_type::not_found;
}

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
