#include "session/Targets.h"

#include "core/PathText.h"
#include "core/SystemNames.h"
#include "session/Messages.h"

namespace pictavo {

namespace {

using std::filesystem::file_type;

Status CheckDiffers(const std::filesystem::path& path, const std::filesystem::path& input) {
    PICTAVO_TRY(const bool isInput, IsSameFile(path, input));
    if (!isInput) return {};
    return Fail(ErrorKind::OutputIsInput, path, "is the very file that is read; it is never written");
}

/// A file can be replaced, and so can a link, whatever it leads to.
Status CheckReplaceable(const std::filesystem::path& path, file_type type) {
    if (type == file_type::regular || type == file_type::symlink) return {};
    return Fail(ErrorKind::WriteFailed, path,
                type == file_type::directory ? "is a folder" : "is no regular file");
}

}  // namespace

Status CheckIsNoInput(const Session& session, const std::filesystem::path& path, const Inputs& inputs) {
    if (session.flash.IsOpen()) PICTAVO_TRY(CheckDiffers(path, session.flash.source->Path()));
    for (const std::filesystem::path& input : inputs) PICTAVO_TRY(CheckDiffers(path, input));
    return {};
}

Result<std::optional<CommitMode>> AskTarget(const Session& session, Ports& ports,
                                            const std::filesystem::path& path, const Inputs& inputs) {
    PICTAVO_TRY(const bool isWorkFile, session.workFiles.IsOne(path));
    if (isWorkFile)
        return Fail(ErrorKind::OutputIsInput, path, "is the name of a temporary file of this program");
    const file_type type = system_file::TypeOfName(path);
    if (type == file_type::none || type == file_type::not_found)  // of none the writing tells why
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

Result<bool> TargetFolder::IsWorkFolder(const Session& session) {
    if (isWorkFolder_) return *isWorkFolder_;
    PICTAVO_TRY(isWorkFolder_, system_file::AreSame(path_, session.workFiles.folder));
    return *isWorkFolder_;
}

Result<std::optional<CommitMode>> TargetFolder::Ask(const Session& session, Ports& ports,
                                                    const std::string& name, const Inputs& inputs) {
    const bool isNew = asked_.insert(name).second;
    PICTAVO_TRY(const bool isWorkFolder, IsWorkFolder(session));
    if (wasEmpty_ && isNew && !isWorkFolder) return std::optional(CommitMode::KeepExisting);
    return AskTarget(session, ports, PathOf(name), inputs);
}

}  // namespace pictavo
