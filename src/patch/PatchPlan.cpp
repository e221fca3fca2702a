#include "patch/PatchPlan.h"

#include <algorithm>
#include <limits>

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
    return Merged(std::move(ranges));
}

/// Hands out free places, one behind the other.
class Places {
  public:
    Places(const FullflashImage& flash, std::vector<FileRange> taken)
        : flash_(flash), taken_(std::move(taken)), next_(flash.FreeSearchOffset) {}

    /// Where the next search starts.
    std::uint64_t Next() const { return next_; }

    /// Finds a moved section its place, or none.
    Status Give(PatchSection& section) {
        const std::uint64_t needed = section.row.picture->length;
        const auto place = needed < hopeless_ ? FindFreeFlash(*flash_.source, next_, needed, taken_)
                                              : Result<FileRange>(Fail(ErrorKind::NoFreeMemory, {}));
        if (!place) return Refuse(section, place.error());
        section.offset = place->begin;
        next_ = place->end;
        return {};
    }

  private:
    Status Refuse(PatchSection& section, const Error& error) {
        if (error.kind != ErrorKind::NoFreeMemory) return Failure(error);
        section.placement = Placement::NoFreeMemory;
        hopeless_ = std::min(hopeless_, section.row.picture->length);
        return {};
    }

    const FullflashImage& flash_;
    std::vector<FileRange> taken_;
    std::uint64_t next_;
    /// A search that found nothing of this length need not be made again: the searches only move on.
    std::uint64_t hopeless_ = std::numeric_limits<std::uint64_t>::max();
};

}  // namespace

std::uint64_t RoomOf(const std::vector<PictureRecord>& rows, std::size_t index, std::uint64_t lastLength) {
    if (index + 1 == rows.size()) return lastLength;
    const std::uint64_t own = rows[index].picOffset;
    const std::uint64_t next = rows[index + 1].picOffset;
    return next > own ? next - own : 0;
}

Result<PatchPlan> PlanPatch(const FullflashImage& flash, std::vector<ReplacedRow> rows) {
    PatchPlan plan;
    for (ReplacedRow& row : rows) {
        const Placement placement = PlaceWithoutSearch(flash, row);
        const std::uint64_t oldPlace = row.record.picOffset;
        plan.sections.push_back({std::move(row), placement, oldPlace});
    }
    Places places(flash, RangesWrittenInPlace(flash, plan.sections));
    for (PatchSection& section : plan.sections)
        if (section.placement == Placement::Moved) PICTAVO_TRY(places.Give(section));
    plan.freeSearchOffset = places.Next();
    return plan;
}

}  // namespace pictavo
