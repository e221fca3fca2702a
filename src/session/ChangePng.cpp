#include "session/ChangePng.h"

#include <algorithm>

#include "core/AsciiText.h"
#include "core/BasicCalculations_Tarsk.h"
#include "core/OutputFile.h"
#include "core/PathText.h"
#include "patch/PngPatch.h"
#include "session/Names.h"
#include "session/PendingPatch.h"
#include "session/Report.h"
#include "session/StatusText.h"
#include "tools/PNGcodec.h"

namespace pictavo {

namespace {

constexpr std::size_t kExtensionLength = 4;  // of ".png"
constexpr std::size_t kMostDigits = 8;

/// The file's name without its last four characters, whatever they are.
std::string WithoutFourLast(const std::filesystem::path& path) {
    std::string name = PathText(path.filename());
    name.resize(name.size() - std::min(name.size(), kExtensionLength));
    return name;
}

/// The offset that the base name tells.
Result<std::uint64_t> PlaceNamed(const std::filesystem::path& path) {
    const std::string name = WithoutFourLast(path);
    if (!IsHex(name) || name.size() > kMostDigits)
        return Fail(ErrorKind::Malformed, path,
                    "is not named by the offset of the PNG file that it replaces, such as 0012AB40.png");
    return std::stoull(name, nullptr, 16);
}

Status CheckIsPng(const ByteSource& file) {
    PICTAVO_TRY(const bool isWhole, IsWholePng(file));
    if (isWhole) return {};
    return Fail(ErrorKind::UnknownFile, file.Path(), "is no PNG file, or one cut short");
}

/// Pictures come first in a patch, so they keep their bytes. One that moves has none yet: it will find a
/// place beside the PNG files.
Status CheckMeetsNoPicture(const Session& session, const FileRange& range) {
    Outcome ignored;
    PICTAVO_TRY(const PatchPlan plan, PlanPendingPatch(session, ignored));
    for (const PatchSection& section : plan.sections)
        for (const FileRange& written : RangesInPlace(session.flash, section))
            if (range.Touches(written))
                return Fail(ErrorKind::Conflict, session.flash.source->Path(), range.begin,
                            "the replaced picture " + ColumnText(section.row.record, Column::Number) +
                                " writes the same bytes");
    return {};
}

struct NewPng {
    std::string name;
    FileRange place;  ///< of the old one
    Bytes bytes;
};

/// The new file, when it may take the old one's place.
Result<NewPng> ReadNewPng(const Session& session, const std::filesystem::path& path) {
    PICTAVO_TRY(const std::uint64_t start, PlaceNamed(path));
    PICTAVO_TRY(const auto file, FileSource::Open(path));
    PICTAVO_TRY(CheckIsPng(*file));
    const ByteSource& flash = *session.flash.source;
    PICTAVO_TRY(const FileRange place, FindPngInFlash(flash, start));
    PICTAVO_TRY(CheckPngFits(flash, place, file->Size()));
    PICTAVO_TRY(CheckMeetsNoPicture(session, PngSectionRange(place, file->Size())));
    PICTAVO_TRY(Bytes bytes, file->ReadExactly(0, file->Size()));
    return NewPng{WithoutFourLast(path), place, std::move(bytes)};
}

/// The pending patch is written anew as a whole, so that it is never half.
Status AppendToPending(Session& session, const NewPng& png) {
    PICTAVO_TRY(const std::string section, PngSection(*session.flash.source, png.place, png.name, png.bytes));
    const std::filesystem::path path = session.workFiles.PngPatch();
    PICTAVO_TRY(OutputFile patch, OutputFile::Create(path));
    if (session.pngPatchPending) {
        PICTAVO_TRY(const auto before, FileSource::Open(path));
        PICTAVO_TRY(CopyRange(*before, 0, before->Size(), patch));
    }
    PICTAVO_TRY(patch.Write(AsBytes(section)));
    PICTAVO_TRY(patch.Commit(CommitMode::Replace));
    session.pngPatchPending = true;
    session.savePatchEnabled = true;
    return {};
}

}  // namespace

Outcome ChangePng(Session& session, Ports& ports) {
    const LanguageTable& texts = session.texts;
    const auto answer = ports.prompts.ChooseOpen(
        {OpenTitle(texts, texts.cap_mnFileR), {{"Portable Network Graphic files", {"*.png"}}}, "", ""});
    if (answer.empty()) return Outcome::Cancelled();
    return ChangePngFrom(session, ports, WithoutTail(answer)).outcome;
}

ChangedPng ChangePngFrom(Session& session, Ports& ports, const std::filesystem::path& path) {
    if (FileMissing(path)) return {RefuseMissing(session, ports, path, MissingForm::TextAlone), {}};
    const auto png = ReadNewPng(session, path);
    if (!png) return {Refuse(session, ports, png.error()), {}};
    if (const Status appended = AppendToPending(session, *png); !appended)
        return {Refuse(session, ports, appended.error()), {}};
    Outcome outcome;
    outcome.note = PngTakenText(path);
    return {std::move(outcome), png->name, png->bytes.size()};
}

}  // namespace pictavo
