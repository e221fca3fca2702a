#include "patch/PatchWriter.h"

#include <algorithm>

#include "core/BasicCalculations_Tarsk.h"
#include "core/ErrorText.h"
#include "core/Version.h"
#include "patch/PatchLine.h"
#include "patch/PitRecord.h"
#include "patch/SectionTitle.h"

namespace pictavo {

namespace {

constexpr std::size_t kFrameWidth = 70;  // of a framed line, before the "###" that closes it
constexpr std::size_t kRuleMarks = 71;

constexpr const char* kCreditText = "Pictures for your own phone; keep a copy of the fullflash.";
constexpr const char* kWebText = "See ReadMe.txt before you flash.";

std::string RuleLine() {
    return "; " + std::string(kRuleMarks, '#') + kPatchLineEnd;
}

/// Kept: a text that leaves no room for blanks is closed right behind it, and so becomes a longer line.
std::string FramedLine(const std::string& text) {
    std::string line = text.empty() ? "; ###" : "; ### " + text;
    if (line.size() < kFrameWidth) line.resize(kFrameWidth, ' ');
    return line + "###" + kPatchLineEnd;
}

std::string TargetText(const FullflashImage& flash) {
    return OnOneLine("Patch for " + flash.ManufN + " " + flash.mModel + "fw" + flash.fw + " (" +
                     flash.lngPack + ")");
}

std::string SectionLine(const PictureRecord& record) {
    return SectionTitle(SectionKind::Picture, PictureNumberText(record.number)) + kPatchLineEnd;
}

/// The old record keeps its address in place; a moved picture gets that of its new one.
StoredAddress AddressFor(const PatchSection& section, ByteView oldRecord) {
    if (section.placement == Placement::Moved) return StoredAddressOf(section.offset);
    StoredAddress address{};
    std::copy(oldRecord.end() - static_cast<std::ptrdiff_t>(address.size()), oldRecord.end(),
              address.begin());
    return address;
}

Result<std::string> RecordLine(const FullflashImage& flash, const PatchSection& section) {
    const std::uint64_t at = section.row.record.pitOffset;
    PICTAVO_TRY(const Bytes oldRecord, flash.source->ReadExactly(at, RecordSize(flash)));
    const Bytes newRecord =
        ComposePitRecord(flash, section.row.picture->header, AddressFor(section, oldRecord));
    return PatchLine(at, oldRecord, newRecord);
}

/// The work file's picture data. Where the decoder read on past the file's end, there are zeros.
Result<Bytes> NewData(const NewPicture& picture) {
    PICTAVO_TRY(const auto source, FileSource::Open(picture.workFile));
    Bytes data(static_cast<std::size_t>(picture.length));
    PICTAVO_TRY([[maybe_unused]] const std::size_t count, source->ReadAt(kGpfHeaderSize, data));
    return data;
}

Result<std::string> DataLines(const FullflashImage& flash, const PatchSection& section) {
    PICTAVO_TRY(const Bytes newData, NewData(*section.row.picture));
    PICTAVO_TRY(const Bytes oldData, flash.source->ReadExactly(section.offset, newData.size()));
    return PatchLines(section.offset, oldData, newData);
}

}  // namespace

std::string PatchBanner(const FullflashImage& flash) {
    return RuleLine() + FramedLine(std::string("This file is made by ") + kCaption) +
           FramedLine(kCreditText) + FramedLine("") + FramedLine(kWebText) + FramedLine("") +
           FramedLine(TargetText(flash)) + RuleLine();
}

Status WritePatchSection(const FullflashImage& flash, const PatchSection& section, OutputFile& patch) {
    PICTAVO_TRY(patch.Write(AsBytes(kPatchLineEnd + SectionLine(section.row.record))));
    if (!section.IsWritten()) return {};
    PICTAVO_TRY(const std::string recordLine, RecordLine(flash, section));
    PICTAVO_TRY(const std::string dataLines, DataLines(flash, section));
    return patch.Write(AsBytes(recordLine + kPatchLineEnd + dataLines));
}

}  // namespace pictavo
