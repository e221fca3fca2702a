#include "patch/PatchPlan.h"

#include <algorithm>
#include <limits>

#include "patch/FreeFlash.h"

namespace pictavo {

namespace {

bool LiesInFlash(const FullflashImage& flash, std::uint64_t offset, std::uint64_t length) {
    const std::uint64_t size = flash.source->Size();
    return offset <= size && length <= size - offset;
}

bool Outgrows(const ReplacedRow& row) {
    return row.picture && row.picture->length > row.room;
}

/// What is known without a search: everything but the place of a picture that must move.
Placement PlaceWithoutSearch(const FullflashImage& flash, const ReplacedRow& row) {
    if (!row.picture) return Placement::NoWorkFile;
    if (!LiesInFlash(flash, row.record.pitOffset, RecordSize(flash))) return Placement::BeyondFlash;
    if (Outgrows(row)) return Placement::Moved;
    return LiesInFlash(flash, row.record.picOffset, row.picture->length) ? Placement::InPlace
                                                                         : Placement::BeyondFlash;
}

FileRange RecordRange(const FullflashImage& flash, const PatchSection& section) {
    const std::uint64_t begin = section.row.record.pitOffset;
    return {begin, begin + RecordSize(flash)};
}

FileRange DataRange(const PatchSection& section) {
    return {section.offset, section.offset + section.row.picture->length};
}

bool TouchesAny(const std::vector<FileRange>& ranges, const std::vector<FileRange>& others) {
    return std::any_of(ranges.begin(), ranges.end(), [&](const FileRange& range) {
        return std::any_of(others.begin(), others.end(),
                           [&](const FileRange& other) { return range.Touches(other); });
    });
}

/// Everything that is not free, though it may hold FF.
std::vector<FileRange> TakenRanges(const FullflashImage& flash, const std::vector<PatchSection>& sections,
                                   const HeldRanges& held) {
    std::vector<FileRange> ranges = held.pngs;
    ranges.insert(ranges.end(), held.pictures.begin(), held.pictures.end());
    for (const PatchSection& section : sections)
        for (const FileRange& range : RangesInPlace(flash, section)) ranges.push_back(range);
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

std::vector<FileRange> RangesInPlace(const FullflashImage& flash, const PatchSection& section) {
    if (!section.IsWritten()) return {};
    if (section.placement == Placement::Moved) return {RecordRange(flash, section)};
    return {RecordRange(flash, section), DataRange(section)};
}

bool MustSearch(const std::vector<ReplacedRow>& rows) {
    return std::any_of(rows.begin(), rows.end(), Outgrows);
}

Result<PatchPlan> PlanPatch(const FullflashImage& flash, std::vector<ReplacedRow> rows,
                            const HeldRanges& held) {
    PatchPlan plan;
    for (ReplacedRow& row : rows) {
        const Placement placement = PlaceWithoutSearch(flash, row);
        const std::uint64_t oldPlace = row.record.picOffset;
        PatchSection section{std::move(row), placement, oldPlace};
        if (TouchesAny(RangesInPlace(flash, section), held.pngs)) section.placement = Placement::UnderPng;
        plan.sections.push_back(std::move(section));
    }
    Places places(flash, TakenRanges(flash, plan.sections, held));
    for (PatchSection& section : plan.sections)
        if (section.placement == Placement::Moved) PICTAVO_TRY(places.Give(section));
    plan.freeSearchOffset = places.Next();
    return plan;
}

}  // namespace pictavo
