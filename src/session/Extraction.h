#pragma once

/// What the commands of the Tools menu have in common. They take files out of other files, whether a flash is
/// open or not; the source is never written, and a file appears whole or not at all.

#include <functional>

#include "core/OutputFile.h"
#include "session/Messages.h"
#include "session/Outcome.h"
#include "session/Session.h"
#include "session/Targets.h"

namespace pictavo {

using ExtractTo =
    std::function<Outcome(const std::filesystem::path& source, const std::filesystem::path& folder)>;

/// Asks for the source and for the folder, and extracts. A source that cannot be opened is told, in the form
/// given, before the folder is asked for.
Outcome ChooseAndExtract(const Session& session, Ports& ports, std::vector<FileFilter> filters,
                         MissingForm missing, const ExtractTo& extract);

using ExtractFiles = std::function<Outcome(TargetFolder& folder)>;

enum class CompletionForm {
    Plain,
    WithCount,  ///< the number of files is its title
};

/// Opens the folder, or refuses it, extracts into it and ends the command: its note tells how many files were
/// written, and the boxes are those of TellBatchEnd.
Outcome ExtractInto(const Session& session, Ports& ports, const std::filesystem::path& folder,
                    const ExtractFiles& extract, CompletionForm form = CompletionForm::Plain);

/// A file of an extraction while it is written.
struct ExtractedFile {
    std::string name;  ///< in its folder
    OutputFile file;
    CommitMode mode;

    /// Asks whether the file of this name may be written; nothing when that was declined. Fails as AskTarget
    /// and OutputFile::Create do.
    static Result<std::optional<ExtractedFile>> Begin(const Session& session, Ports& ports,
                                                      TargetFolder& folder, const std::string& name,
                                                      const std::filesystem::path& source);
};

/// Tells how much of `source` is done, all of it when it is empty; false asks to stop.
bool TellPosition(Ports& ports, std::uint64_t position, const ByteSource& source);

}  // namespace pictavo
