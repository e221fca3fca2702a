#include "session/Channels.h"

#include "core/BasicCalculations_Tarsk.h"
#include "session/FileKind.h"
#include "session/Messages.h"
#include "session/Names.h"
#include "session/OpenFiles.h"
#include "session/Report.h"
#include "session/SavePicture.h"
#include "session/Settings.h"

namespace pictavo {

namespace {

constexpr const char* kSuggestedName = "channels";

FileChoice SourceChoice(const LanguageTable& texts) {
    return {OpenTitle(texts, texts.cap_mnFileR), {PlainGraphicFiles()}, "", ""};
}

}  // namespace

Outcome SaveChannels(Session& session, Ports& ports, const ChannelFlags& flags) {
    return SaveChannelsAsBmp(session, ports, kSuggestedName, flags);
}

Outcome LoadChannels(Session& session, Ports& ports, const ChannelFlags& flags) {
    const std::filesystem::path answer = ports.prompts.ChooseOpen(SourceChoice(session.texts));
    if (answer.empty()) return Outcome::Cancelled();
    const std::filesystem::path path = WithoutTail(answer);
    if (FileMissing(path)) return RefuseMissing(session, ports, path, MissingForm::PathThenText);
    const FileKind kind = KindWhenChosen(path);
    return OpenAs(session, ports, path, kind == FileKind::Picture ? kind : FileKind::Unknown, flags);
}

Status RememberChannels(Session& session, const ChannelFlags& flags) {
    AppSettings settings = session.settings;
    settings.ChanR = flags.red;
    settings.ChanG = flags.green;
    settings.ChanB = flags.blue;
    settings.ChanA = flags.alpha;
    return ChangeSettings(session, std::move(settings));
}

}  // namespace pictavo
