#include "session/Extraction.h"

#include "core/BasicCalculations_Tarsk.h"
#include "session/Report.h"
#include "session/StatusText.h"

namespace pictavo {

Outcome ChooseAndExtract(const Session& session, Ports& ports, std::vector<FileFilter> filters,
                         MissingForm missing, const ExtractTo& extract) {
    const LanguageTable& texts = session.texts;
    const auto source =
        ports.prompts.ChooseOpen({OpenTitle(texts, texts.cap_mnFileR), std::move(filters), "", ""});
    if (source.empty()) return Outcome::Cancelled();
    if (FileMissing(source)) return RefuseMissing(session, ports, source, missing);
    const auto folder = ports.prompts.BrowseForFolder(FolderTitle(texts, texts.str_4save));
    return folder.empty() ? Outcome::Cancelled() : extract(source, folder);
}

Outcome ExtractInto(const Session& session, Ports& ports, const std::filesystem::path& folder,
                    const ExtractFiles& extract, CompletionForm form) {
    auto targets = TargetFolder::Open(folder);
    if (!targets) return Refuse(session, ports, targets.error());
    Outcome outcome = extract(*targets);
    outcome.note = FilesWrittenText(outcome.written);
    const bool hasCount = form == CompletionForm::WithCount;
    TellBatchEnd(ports, outcome,
                 hasCount ? CountedCompletion(session.texts, outcome.written) : Completion(session.texts));
    return outcome;
}

Result<std::optional<ExtractedFile>> ExtractedFile::Begin(const Session& session, Ports& ports,
                                                          TargetFolder& folder, const std::string& name,
                                                          const std::filesystem::path& source) {
    PICTAVO_TRY(const auto mode, folder.Ask(session, ports, name, {source}));
    if (!mode) return std::optional<ExtractedFile>();
    PICTAVO_TRY(OutputFile file, OutputFile::Create(folder.PathOf(name)));
    return std::optional<ExtractedFile>(ExtractedFile{name, std::move(file), *mode});
}

bool TellPosition(Ports& ports, std::uint64_t position, const ByteSource& source) {
    const bool isDone = position >= source.Size();
    const double part = isDone ? 1.0 : static_cast<double>(position) / static_cast<double>(source.Size());
    return ports.progress.At(100.0 * part);
}

}  // namespace pictavo
