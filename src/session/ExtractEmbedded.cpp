#include "session/ExtractEmbedded.h"

#include "core/BasicCalculations_Tarsk.h"
#include "core/GapSource.h"
#include "session/Extraction.h"
#include "session/Report.h"

namespace pictavo {

namespace {

constexpr std::size_t kNameDigits = 8;

std::string NameOf(const FileRange& found, const EmbeddedKind& kind) {
    return HexText(found.begin, kNameDigits) + std::string(kind.extension);
}

/// True when the file was written, false when its overwrite was declined.
Result<bool> WriteFound(const Session& session, Ports& ports, const ByteSource& source,
                        const FileRange& found, TargetFolder& folder, const std::string& name) {
    PICTAVO_TRY(auto output, ExtractedFile::Begin(session, ports, folder, name, source.Path()));
    if (!output) return false;
    PICTAVO_TRY(CopyRange(source, found.begin, found.Length(), output->file));
    PICTAVO_TRY(output->file.Commit(output->mode));
    return true;
}

Outcome Carve(const Session& session, Ports& ports, const EmbeddedKind& kind, const ByteSource& source,
              TargetFolder& folder) {
    Outcome outcome;
    const auto take = [&](const FileRange& found) {
        const auto written = WriteFound(session, ports, source, found, folder, NameOf(found, kind));
        if (!written) outcome.problems.push_back({written.error(), std::nullopt});
        if (written && *written) ++outcome.written;
    };
    const auto step = [&](std::uint64_t offset) { return TellPosition(ports, offset, source); };
    const auto noteGap = [&](const Error& error) { outcome.problems.push_back({error, std::nullopt}); };
    const GapSource searched(source, noteGap);
    if (const Status carved = CarveEmbeddedFiles(searched, kind, take, step); !carved)
        outcome.problems.push_back({carved.error(), std::nullopt});
    if (!WasStopped(outcome)) ports.progress.At(100);
    return outcome;
}

}  // namespace

Outcome ExtractEmbedded(Session& session, Ports& ports, const EmbeddedKind& kind) {
    const auto extract = [&](const auto& source, const auto& folder) {
        return ExtractEmbeddedTo(session, ports, kind, source, folder);
    };
    return ChooseAndExtract(session, ports, {{"FullFlash files", {"*.bin"}}, {"All files", {"*"}}},
                            MissingForm::PathThenText, extract);
}

Outcome ExtractEmbeddedTo(Session& session, Ports& ports, const EmbeddedKind& kind,
                          const std::filesystem::path& source, const std::filesystem::path& folder) {
    const auto file = FileSource::Open(source);
    if (!file) return Refuse(session, ports, file.error());
    const auto carve = [&](TargetFolder& targets) { return Carve(session, ports, kind, **file, targets); };
    return ExtractInto(session, ports, folder, carve, CompletionForm::WithCount);
}

}  // namespace pictavo
