#pragma once

/// What every command that writes files asks first: may this name be written, and is a file of it to be
/// replaced?

#include <set>

#include "core/OutputFile.h"
#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

/// Files that a command reads beside the open flash.
using Inputs = std::vector<std::filesystem::path>;

/// Fails with OutputIsInput when `path` is the open flash or one of `inputs`, also through a link, and with
/// WriteFailed when the system does not tell. For what is written at the end of long work, so that it can be
/// told before.
Status CheckIsNoInput(const Session& session, const std::filesystem::path& path, const Inputs& inputs);

/// How `path` may be written: a new file, a replaced one, or nothing when the user declined to replace what
/// is there. Fails without asking: as CheckIsNoInput does; with OutputIsInput also when `path` has the name
/// of a work file, which is not the user's; and with WriteFailed when it is neither a regular file nor a
/// link.
Result<std::optional<CommitMode>> AskTarget(const Session& session, Ports& ports,
                                            const std::filesystem::path& path, const Inputs& inputs = {});

/// A folder that a batch writes many files into.
class TargetFolder {
  public:
    /// Makes the folder when it is missing. Fails with WriteFailed.
    static Result<TargetFolder> Open(const std::filesystem::path& path);

    /// The file of this name, which is UTF-8.
    std::filesystem::path PathOf(const std::string& name) const;

    /// AskTarget for the file of this name. In a folder that was empty at first only a name that comes again
    /// is looked up; a file that another program made meanwhile stays, and CommitMode::KeepExisting fails.
    Result<std::optional<CommitMode>> Ask(const Session& session, Ports& ports, const std::string& name,
                                          const Inputs& inputs = {});

  private:
    explicit TargetFolder(std::filesystem::path path) : path_(std::move(path)) {}

    Result<bool> IsWorkFolder(const Session& session);

    std::filesystem::path path_;
    bool wasEmpty_ = false;
    std::optional<bool> isWorkFolder_;
    std::set<std::string> asked_;
};

}  // namespace pictavo
