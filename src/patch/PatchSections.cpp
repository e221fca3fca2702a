#include "patch/PatchSections.h"

#include <algorithm>

#include "codec/PictureType.h"
#include "core/PitRecordLayout.h"
#include "patch/PatchLine.h"
#include "patch/SectionTitle.h"

namespace pictavo {

namespace {

/// Lines that are shorter hold no data.
constexpr std::size_t kShortestDataLine = 14;

/// Type codes below this are uncompressed and make a GPF; the others a GPF2.
constexpr std::uint16_t kFirstGpf2Type = kType24Bit + 1;

/// The width or height that a record's field holds.
std::uint16_t SizeIn(ByteView field, const PitRecordLayout& layout) {
    return layout.sizeBytes == 1 ? field[0] : LittleEndian16(field);
}

GpfHeader HeaderOf(ByteView record, const PitRecordLayout& layout) {
    const std::uint16_t type = record[layout.TypeAt()];
    return {SizeIn(record, layout), SizeIn(record.subspan(layout.HeightAt()), layout), type, 0,
            type >= kFirstGpf2Type};
}

/// What the table record that the line writes says of the picture; nothing when it writes none. A line of
/// more bytes than a short record has puts a long one into the table.
std::optional<GpfHeader> HeaderIn(const std::string& line) {
    const auto entry = ParsePatchLine(line, 0);
    if (!entry) return std::nullopt;
    const std::size_t length = entry->newBytes.size();
    const PitRecordLayout& layout = length > kShortRecord.Bytes() ? kLongRecord : kShortRecord;
    if (length < layout.Bytes()) return std::nullopt;
    return HeaderOf(ByteView(entry->newBytes).last(layout.Bytes()), layout);
}

/// Kept: so a picture that itself holds such a line is cut there.
bool IsFreeFlash(const Bytes& bytes) {
    return bytes.size() == kPatchLineBytes &&
           std::all_of(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte == 0xFF; });
}

}  // namespace

Result<std::optional<PatchPart>> PatchSectionReader::NextSection() {
    for (;;) {
        PICTAVO_TRY(const Line line, NextLine());
        if (!line) return std::optional<PatchPart>();
        if (auto name = NameIn(*line, SectionKind::Png))
            return std::optional<PatchPart>(PngPart{std::move(*name)});
        auto name = NameIn(*line, SectionKind::Picture);
        if (!name) continue;
        PICTAVO_TRY(auto picture, ReadPicture(std::move(*name)));
        if (picture) return picture;
    }
}

Result<std::optional<Bytes>> PatchSectionReader::NextData() {
    PICTAVO_TRY(Line line, NextLine());
    if (!line) return std::optional<Bytes>();
    auto entry = line->size() < kShortestDataLine ? std::nullopt : ParsePatchLine(*line, 0);
    if (!entry) {
        returned_ = std::move(line);
        return std::optional<Bytes>();
    }
    if (IsFreeFlash(entry->newBytes)) return std::optional<Bytes>();
    return std::optional(std::move(entry->newBytes));
}

Result<PatchSectionReader::Line> PatchSectionReader::NextLine() {
    if (returned_) return std::exchange(returned_, std::nullopt);
    PICTAVO_TRY(Line line, lines_.Next());
    if (line) line->erase(line->find_last_not_of(" \t") + 1);
    return line;
}

/// The line of the table record, and the empty one behind it.
Result<std::optional<PatchPart>> PatchSectionReader::ReadPicture(std::string name) {
    PICTAVO_TRY(Line recordLine, NextLine());
    const auto header = recordLine ? HeaderIn(*recordLine) : std::nullopt;
    if (!header) {
        returned_ = std::move(recordLine);
        return std::optional<PatchPart>();
    }
    PICTAVO_TRY(Line empty, NextLine());
    if (empty && !empty->empty()) returned_ = std::move(empty);
    return std::optional<PatchPart>(PicturePart{std::move(name), *header});
}

}  // namespace pictavo
