#include "session/Targets.h"

#include <algorithm>

#include "core/PathText.h"
#include "core/SystemNames.h"
#include "session/Messages.h"

namespace pictavo {

namespace {

using std::filesystem::file_type;

bool IsInput(const Session& session, const std::filesystem::path& path, const Inputs& inputs) {
    if (session.flash.IsOpen() && IsSameFile(path, session.flash.source->Path())) return true;
    return std::any_of(inputs.begin(), inputs.end(),
                       [&](const std::filesystem::path& input) { return IsSameFile(path, input); });
}

/// A file can be replaced, and so can a link, whatever it leads to.
Status CheckReplaceable(const std::filesystem::path& path, file_type type) {
    if (type == file_type::regular || type == file_type::symlink) return {};
    return Fail(ErrorKind::WriteFailed, path,
                type == file_type::directory ? "is a folder" : "is no regular file");
}

}  // namespace

Status CheckIsNoInput(const Session& session, const std::filesystem::path& path, const Inputs& inputs) {
    if (!IsInput(session, path, inputs)) return {};
    return Fail(ErrorKind::OutputIsInput, path, "is the very file that is read; it is never written");
}

Result<std::optional<CommitMode>> AskTarget(const Session& session, Ports& ports,
                                            const std::filesystem::path& path, const Inputs& inputs) {
    if (session.workFiles.IsOne(path))
        return Fail(ErrorKind::OutputIsInput, path, "is the name of a temporary file of this program");
    const file_type type = system_file::TypeOfName(path);
    if (type == file_type::none || type == file_type::not_found)
        return std::optional(CommitMode::KeepExisting);
    PICTAVO_TRY(CheckReplaceable(path, type));
    PICTAVO_TRY(CheckIsNoInput(session, path, inputs));
    if (ports.prompts.Confirm(OverwriteQuestion(session.texts, path)))
        return std::optional(CommitMode::Replace);
    return std::optional<CommitMode>();
}

Result<TargetFolder> TargetFolder::Open(const std::filesystem::path& path) {
    PICTAVO_TRY(EnsureFolder(path));
    TargetFolder folder(path);
    folder.wasEmpty_ = system_file::IsEmptyFolder(path);
    return folder;
}

std::filesystem::path TargetFolder::PathOf(const std::string& name) const {
    return path_ / pictavo::PathOf(name);
}

bool TargetFolder::IsWorkFolder(const Session& session) {
    if (!isWorkFolder_) isWorkFolder_ = system_file::AreSame(path_, session.workFiles.folder);
    return *isWorkFolder_;
}

Result<std::optional<CommitMode>> TargetFolder::Ask(const Session& session, Ports& ports,
                                                    const std::string& name, const Inputs& inputs) {
    const bool isNew = asked_.insert(name).second;
    if (wasEmpty_ && isNew && !IsWorkFolder(session)) return std::optional(CommitMode::KeepExisting);
    return AskTarget(session, ports, PathOf(name), inputs);
}

}  // namespace pictavo
