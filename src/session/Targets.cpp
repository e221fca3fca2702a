#include "session/Targets.h"

#include "session/Messages.h"

namespace pictavo {

namespace {

bool NameIsTaken(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::exists(std::filesystem::symlink_status(path, error));
}

bool IsInput(const Session& session, const std::filesystem::path& path, const std::filesystem::path& input) {
    if (session.flash.IsOpen() && IsSameFile(path, session.flash.source->Path())) return true;
    return !input.empty() && IsSameFile(path, input);
}

}  // namespace

Result<std::optional<CommitMode>> AskTarget(const Session& session, Ports& ports,
                                            const std::filesystem::path& path,
                                            const std::filesystem::path& input) {
    if (!NameIsTaken(path)) return std::optional(CommitMode::KeepExisting);
    if (IsInput(session, path, input))
        return Fail(ErrorKind::OutputIsInput, path, "is the very file that is read; it is never written");
    if (ports.prompts.Confirm(OverwriteQuestion(session.texts, path)))
        return std::optional(CommitMode::Replace);
    return std::optional<CommitMode>();
}

}  // namespace pictavo
