#include "session/Targets.h"

#include <algorithm>

#include "session/Messages.h"

namespace pictavo {

namespace {

bool IsInput(const Session& session, const std::filesystem::path& path, const Inputs& inputs) {
    if (session.flash.IsOpen() && IsSameFile(path, session.flash.source->Path())) return true;
    return std::any_of(inputs.begin(), inputs.end(),
                       [&](const std::filesystem::path& input) { return IsSameFile(path, input); });
}

/// A file can be replaced, and so can a link, whatever it leads to.
Status CheckReplaceable(const std::filesystem::path& path, const std::filesystem::file_status& status) {
    if (std::filesystem::is_regular_file(status) || std::filesystem::is_symlink(status)) return {};
    return Fail(ErrorKind::WriteFailed, path,
                std::filesystem::is_directory(status) ? "is a folder" : "is no regular file");
}

}  // namespace

Result<std::optional<CommitMode>> AskTarget(const Session& session, Ports& ports,
                                            const std::filesystem::path& path, const Inputs& inputs) {
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::symlink_status(path, ignored);
    if (!std::filesystem::exists(status)) return std::optional(CommitMode::KeepExisting);
    PICTAVO_TRY(CheckReplaceable(path, status));
    if (IsInput(session, path, inputs))
        return Fail(ErrorKind::OutputIsInput, path, "is the very file that is read; it is never written");
    if (ports.prompts.Confirm(OverwriteQuestion(session.texts, path)))
        return std::optional(CommitMode::Replace);
    return std::optional<CommitMode>();
}

Result<TargetFolder> TargetFolder::Open(const std::filesystem::path& path) {
    PICTAVO_TRY(EnsureFolder(path));
    TargetFolder folder(path);
    std::error_code error;
    folder.wasEmpty_ = std::filesystem::is_empty(path, error) && !error;
    return folder;
}

std::filesystem::path TargetFolder::PathOf(const std::string& name) const {
    return path_ / pictavo::PathOf(name);
}

Result<std::optional<CommitMode>> TargetFolder::Ask(const Session& session, Ports& ports,
                                                    const std::string& name, const Inputs& inputs) {
    const bool isNew = asked_.insert(name).second;
    if (wasEmpty_ && isNew) return std::optional(CommitMode::KeepExisting);
    return AskTarget(session, ports, PathOf(name), inputs);
}

}  // namespace pictavo
