#include "session/OpenFiles.h"

#include "core/BasicCalculations_Tarsk.h"
#include "core/NoOtherValue.h"
#include "core/PathText.h"
#include "core/SystemNames.h"
#include "session/Messages.h"
#include "session/Names.h"
#include "session/OpenFullflash.h"
#include "session/PicturesLoader.h"
#include "session/Report.h"
#include "session/ShowPicture.h"
#include "session/StatusText.h"

namespace pictavo {

namespace {

Outcome RefusedSilently(ErrorKind kind, const std::filesystem::path& path, const std::string& detail) {
    return Outcome::Refused({kind, path, std::nullopt, detail});
}

/// Whole paths are kept, for the next start may be from elsewhere. The settings file has one line for each:
/// what stands behind a line break would be a setting.
Status NoteAsRecent(Session& session, const std::filesystem::path& path) {
    const std::string text = PathText(system_file::WholePath(path));
    if (text.find_first_of("\r\n") != std::string::npos)
        return Fail(ErrorKind::Malformed, path, "is not kept as a recent file, for a line break in its name");
    NoteRecentFile(session.settings, text);
    if (session.places.settingsFile.empty()) return {};
    return AppendRecentFiles(session.places.settingsFile, session.settings);
}

Outcome OpenGpf(Session& session, Ports& ports, const std::filesystem::path& path) {
    if (const auto loaded = LoadGPFfile(session, path); !loaded)
        return Refuse(session, ports, loaded.error());
    Outcome outcome;
    if (const auto incomplete = IncompleteError(session.shown, path))
        outcome.problems.push_back({*incomplete, std::nullopt});
    return outcome;
}

Outcome OpenPicture(Session& session, Ports& ports, const std::filesystem::path& path,
                    const ChannelFlags& flags) {
    const Status loaded = PicturesLoader(session, ports, path, flags);
    return loaded ? Outcome() : Refuse(session, ports, loaded.error());
}

FileChoice Choice(const LanguageTable& texts) {
    return {OpenTitle(texts, texts.cap_mnFileR), {{"FullFlash files", {"*.bin"}}, GraphicFiles()}, "", ""};
}

}  // namespace

Outcome OpenFlash(Session& session, Ports& ports, const std::filesystem::path& path) {
    if (const Status opened = OpenFullflash(session, path, ports.progress); !opened)
        return Refuse(session, ports, opened.error());
    Outcome outcome;
    outcome.note = OpenedText(session);
    if (const Status noted = NoteAsRecent(session, path); !noted)
        outcome.problems.push_back({noted.error(), std::nullopt});
    return outcome;
}

Outcome OpenAs(Session& session, Ports& ports, const std::filesystem::path& path, FileKind kind,
               const ChannelFlags& flags) {
    switch (kind) {
        case FileKind::Fullflash:
            return OpenFlash(session, ports, path);
        case FileKind::Gpf:
            return OpenGpf(session, ports, path);
        case FileKind::Picture:
            return OpenPicture(session, ports, path, flags);
        case FileKind::Unknown:
            return RefusedSilently(ErrorKind::UnknownFile, path, "is not named as a file that can be opened");
    }
    NoOtherValue();
}

Outcome OpenFile(Session& session, Ports& ports) {
    const std::filesystem::path answer = ports.prompts.ChooseOpen(Choice(session.texts));
    if (answer.empty()) return Outcome::Cancelled();
    return OpenDropped(session, ports, WithoutTail(answer));
}

Outcome OpenDropped(Session& session, Ports& ports, const std::filesystem::path& path) {
    if (FileMissing(path)) return RefuseMissing(session, ports, path, MissingForm::TextBeforePathEnd);
    return OpenAs(session, ports, path, KindWhenChosen(path));
}

Outcome OpenRecent(Session& session, Ports& ports, std::size_t index) {
    const auto& entries = session.settings.MRU;
    if (index >= entries.size() || !entries[index]) return Outcome::Cancelled();
    const std::filesystem::path path = PathOf(*entries[index]);
    if (FileMissing(path)) return RefusedSilently(ErrorKind::FileMissing, path, "cannot be opened");
    return OpenFlash(session, ports, path);
}

}  // namespace pictavo
