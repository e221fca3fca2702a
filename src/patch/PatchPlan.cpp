#include "patch/PatchPlan.h"

namespace pictavo {

namespace {

bool LiesInFlash(const FullflashImage& flash, std::uint64_t offset, std::uint64_t length) {
    const std::uint64_t size = flash.source->Size();
    return offset <= size && length <= size - offset;
}

/// What is known without a search: everything but the place of a picture that must move.
Placement PlaceWithoutSearch(const FullflashImage& flash, const ReplacedRow& row) {
    if (!row.picture) return Placement::NoWorkFile;
    if (!LiesInFlash(flash, row.record.pitOffset, RecordSize(flash))) return Placement::BeyondFlash;
    if (row.room < row.picture->length) return Placement::Moved;
    return LiesInFlash(flash, row.record.picOffset, row.picture->length) ? Placement::InPlace
                                                                         : Placement::BeyondFlash;
}

std::vector<FileRange> RangesWrittenInPlace(const FullflashImage& flash,
                                            const std::vector<PatchSection>& sections) {
    std::vector<FileRange> ranges;
    for (const PatchSection& section : sections) {
        if (!section.IsWritten()) continue;
        const PictureRecord& record = section.row.record;
        ranges.push_back({record.pitOffset, record.pitOffset + RecordSize(flash)});
        if (section.placement == Placement::InPlace)
            ranges.push_back({record.picOffset, record.picOffset + section.row.picture->length});
    }
    return ranges;
}

/// Finds the section a place and moves the search on behind it.
Status PlaceMoved(const FullflashImage& flash, const std::vector<FileRange>& taken, PatchPlan& plan,
                  PatchSection& section) {
    const auto place =
        FindFreeFlash(*flash.source, plan.freeSearchOffset, section.row.picture->length, taken);
    if (place) {
        section.offset = place->begin;
        plan.freeSearchOffset = place->end;
        return {};
    }
    if (place.error().kind != ErrorKind::NoFreeMemory) return Failure(place.error());
    section.placement = Placement::NoFreeMemory;
    return {};
}

}  // namespace

std::uint64_t RoomOf(const std::vector<PictureRecord>& rows, std::size_t index, std::uint64_t lastLength) {
    if (index + 1 == rows.size()) return lastLength;
    const std::uint64_t own = rows[index].picOffset;
    const std::uint64_t next = rows[index + 1].picOffset;
    return next > own ? next - own : 0;
}

Result<PatchPlan> PlanPatch(const FullflashImage& flash, std::vector<ReplacedRow> rows) {
    PatchPlan plan;
    plan.freeSearchOffset = flash.FreeSearchOffset;
    for (ReplacedRow& row : rows) {
        const Placement placement = PlaceWithoutSearch(flash, row);
        const std::uint64_t oldPlace = row.record.picOffset;
        plan.sections.push_back({std::move(row), placement, oldPlace});
    }
    const std::vector<FileRange> taken = RangesWrittenInPlace(flash, plan.sections);
    for (PatchSection& section : plan.sections)
        if (section.placement == Placement::Moved) PICTAVO_TRY(PlaceMoved(flash, taken, plan, section));
    return plan;
}

}  // namespace pictavo
