#include "session/PitCommands.h"

#include "codec/GPFcodec.h"
#include "core/FolderIndex.h"
#include "patch/PitBlocks.h"
#include "session/Messages.h"
#include "session/Names.h"
#include "session/Report.h"
#include "session/ShowPicture.h"
#include "session/Targets.h"

namespace pictavo {

namespace {

std::filesystem::path BlockPath(const std::filesystem::path& folder, std::uint64_t offset) {
    return folder / BlockFileName(offset);
}

/// An output begun, and how it will be committed; nothing when its overwrite was declined.
struct Block {
    OutputFile file;
    CommitMode mode;
};

Result<std::optional<Block>> BeginBlock(const Session& session, Ports& ports,
                                        const std::filesystem::path& path, const Inputs& inputs = {}) {
    PICTAVO_TRY(const auto mode, AskTarget(session, ports, path, inputs));
    if (!mode) return std::optional<Block>();
    PICTAVO_TRY(OutputFile file, OutputFile::Create(path));
    return std::optional<Block>(Block{std::move(file), *mode});
}

/// True when the block was written, false when its overwrite was declined.
Result<bool> BackupRange(const Session& session, Ports& ports, const std::filesystem::path& folder,
                         const FileRange& range) {
    PICTAVO_TRY(auto block, BeginBlock(session, ports, BlockPath(folder, range.begin)));
    if (!block) return false;
    PICTAVO_TRY(CopyRange(*session.flash.source, range.begin, range.end - range.begin, block->file));
    PICTAVO_TRY(block->file.Commit(block->mode, Durability::Synced));
    return true;
}

/// Both files are named by the offsets at which they begin.
Status CheckNamesDiffer(const Session& session, const FileRange& table) {
    if (session.rows.front().picOffset != table.begin) return {};
    return Fail(
        ErrorKind::Malformed, session.flash.source->Path(), table.begin,
        "the first picture begins where the picture table does, so that both files would have one name");
}

/// The table stands also where the end of the pictures cannot be told: it is small, and names them all.
Result<std::size_t> BackupBoth(const Session& session, Ports& ports, const std::filesystem::path& folder) {
    PICTAVO_TRY(const FileRange table, PitRange(session.flash));
    if (!session.rows.empty()) PICTAVO_TRY(CheckNamesDiffer(session, table));
    PICTAVO_TRY(EnsureFolder(folder));
    PICTAVO_TRY(const bool tableWritten, BackupRange(session, ports, folder, table));
    PICTAVO_TRY(const FileRange pictures,
                PictureBlockRange(session.flash, session.rows, session.picture.bitDepth));
    PICTAVO_TRY(const bool picturesWritten, BackupRange(session, ports, folder, pictures));
    return (tableWritten ? 1U : 0U) + (picturesWritten ? 1U : 0U);
}

std::optional<std::filesystem::path> FindSource(const Session& session, const FolderIndex& folder,
                                                std::size_t index) {
    if (HasReplacement(session, index)) return session.workFiles.Replacement(session.rows[index].number);
    const std::string name = NumberName(session.settings, session.rows[index].number);
    if (auto path = folder.Find(name + GpfExtension(true))) return path;
    return folder.Find(name + GpfExtension(false));
}

Result<RebuildSource> ReadSource(const Session& session, const FolderIndex& folder,
                                 const std::filesystem::path& from, std::size_t index) {
    const PictureRecord& row = session.rows[index];
    if (const auto path = FindSource(session, folder, index))
        return ReadRebuildSource(session.flash, row, *path);
    return Fail(ErrorKind::SourceMissing, from,
                "holds no GPF file " + NumberName(session.settings, row.number) + ".gpf2 or .gpf");
}

/// The sources of all rows; those that are missing or cannot be used are problems.
std::vector<RebuildSource> ReadSources(const Session& session, const FolderIndex& folder,
                                       const std::filesystem::path& from, std::vector<Problem>& problems) {
    std::vector<RebuildSource> sources;
    for (std::size_t index = 0; index < session.rows.size(); ++index) {
        auto source = ReadSource(session, folder, from, index);
        if (source)
            sources.push_back(std::move(*source));
        else
            problems.push_back({source.error(), session.rows[index].number});
    }
    return sources;
}

Inputs FilesOf(const std::vector<RebuildSource>& sources) {
    Inputs files;
    for (const RebuildSource& source : sources) files.push_back(source.gpf);
    return files;
}

/// What can be told before a source is looked at.
Status CheckRebuildable(const Session& session) {
    PICTAVO_TRY(const FileRange table, PitRange(session.flash));
    if (session.rows.empty())
        return Fail(ErrorKind::EmptyBlock, session.flash.source->Path(),
                    "the picture table holds no picture");
    return CheckNamesDiffer(session, table);
}

Status CommitBlock(std::optional<Block>& block) {
    return block ? block->file.Commit(block->mode, Durability::Synced) : Status();
}

/// Writes both files, commits them also when the block came out too large, and returns how many.
Result<std::size_t> Rebuild(const Session& session, Ports& ports, const std::vector<RebuildSource>& sources,
                            const std::filesystem::path& folder) {
    PICTAVO_TRY(const FileRange tableRange, PitRange(session.flash));
    const Inputs inputs = FilesOf(sources);
    const auto begin = [&](std::uint64_t offset) {
        return BeginBlock(session, ports, BlockPath(folder, offset), inputs);
    };
    PICTAVO_TRY(auto table, begin(tableRange.begin));
    PICTAVO_TRY(auto block, begin(sources.front().record.picOffset));
    const RebuildOutputs outputs{table ? &table->file : nullptr, block ? &block->file : nullptr};
    const double count = static_cast<double>(sources.size());
    const auto step = [&](std::size_t row) {
        return ports.progress.At(100.0 * static_cast<double>(row) / count);
    };
    const Status rebuilt = RebuildBlocks(session.flash, sources, outputs, step);
    if (!rebuilt && rebuilt.error().kind != ErrorKind::BlockTooLarge) return Failure(rebuilt.error());
    PICTAVO_TRY(CommitBlock(table));
    PICTAVO_TRY(CommitBlock(block));
    if (!rebuilt) return Failure(rebuilt.error());
    return (table ? 1U : 0U) + (block ? 1U : 0U);
}

Outcome RefuseSources(Ports& ports, std::vector<Problem> problems) {
    const Outcome outcome{Outcome::End::Refused, std::move(problems), 0};
    TellProblems(ports, outcome);
    return outcome;
}

}  // namespace

Outcome BackupPit(Session& session, Ports& ports) {
    const auto folder = ports.prompts.BrowseForFolder(FolderTitle(session.texts, session.texts.str_4save));
    return folder.empty() ? Outcome::Cancelled() : BackupPitTo(session, ports, folder);
}

Outcome BackupPitTo(Session& session, Ports& ports, const std::filesystem::path& folder) {
    const auto written = BackupBoth(session, ports, folder);
    if (!written) return Refuse(session, ports, written.error());
    ports.prompts.Tell(Completion(session.texts));
    return Outcome::Wrote(*written);
}

Outcome RebuildPit(Session& session, Ports& ports) {
    const auto from = ports.prompts.BrowseForFolder(FolderTitle(session.texts, session.texts.str_4open));
    if (from.empty()) return Outcome::Cancelled();
    const auto to = ports.prompts.BrowseForFolder(FolderTitle(session.texts, session.texts.str_4save));
    return to.empty() ? Outcome::Cancelled() : RebuildPitFrom(session, ports, from, to);
}

Outcome RebuildPitFrom(Session& session, Ports& ports, const std::filesystem::path& from,
                       const std::filesystem::path& to) {
    if (const Status rebuildable = CheckRebuildable(session); !rebuildable)
        return Refuse(session, ports, rebuildable.error());
    const auto folder = FolderIndex::Read(from);
    if (!folder) return Refuse(session, ports, folder.error());
    std::vector<Problem> problems;
    const auto sources = ReadSources(session, *folder, from, problems);
    if (!problems.empty()) return RefuseSources(ports, std::move(problems));
    if (const Status made = EnsureFolder(to); !made) return Refuse(session, ports, made.error());
    const auto written = Rebuild(session, ports, sources, to);
    if (!written) return Refuse(session, ports, written.error());
    ports.prompts.Tell(Completion(session.texts));
    return Outcome::Wrote(*written);
}

}  // namespace pictavo
