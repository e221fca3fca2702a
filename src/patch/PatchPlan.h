#pragma once

/// Decides, before anything is written, where each replaced picture of a patch goes: into its old place when
/// it fits, else into free flash.

#include <vector>

#include "codec/GPFcodec.h"
#include "core/FileRange.h"
#include "core/PictureTable.h"

namespace pictavo {

/// A replacement, as its work file says it.
struct NewPicture {
    std::filesystem::path workFile;
    GpfHeader header;
    std::uint64_t length = 0;  ///< bytes of picture data, from offset 32 of the work file on
};

/// A replaced row, with what it is replaced by; nothing when its work file is gone.
struct ReplacedRow {
    PictureRecord record;
    std::uint64_t room = 0;  ///< bytes of the old place, up to where the next row's data begin
    std::optional<NewPicture> picture;
};

enum class Placement {
    InPlace,
    Moved,
    NoWorkFile,    ///< only an empty and a section line are written
    NoFreeMemory,  ///< the same, and the picture stays pending
    BeyondFlash,   ///< the same: the flash ends before the old bytes do
    UnderPng,      ///< the same: a pending PNG section writes bytes of its old place or of its record
};

struct PatchSection {
    ReplacedRow row;
    Placement placement = Placement::NoWorkFile;
    std::uint64_t offset = 0;  ///< file offset of the new data, when InPlace or Moved

    bool IsWritten() const { return placement == Placement::InPlace || placement == Placement::Moved; }
};

struct PatchPlan {
    std::vector<PatchSection> sections;
    /// Where the next search for free flash starts, once the patch stands.
    std::uint64_t freeSearchOffset = 0;
};

/// The room of row `index`: the next row's data offset less its own, 0 when that is not above it. The last
/// row has the length of its own old data, `lastLength`.
std::uint64_t RoomOf(const std::vector<PictureRecord>& rows, std::size_t index, std::uint64_t lastLength);

/// The bytes of the flash that a written section changes wherever moved pictures go: of its table record, and
/// of data that stay in place.
std::vector<FileRange> RangesInPlace(const FullflashImage& flash, const PatchSection& section);

/// Bytes of the flash that hold something, whatever they look like.
struct HeldRanges {
    std::vector<FileRange> pngs = {};      ///< what the patch's PNG sections write, Merged
    std::vector<FileRange> pictures = {};  ///< old pictures, in any order: FF in one of them is a part of it
};

/// True when one of the rows needs more than its room, so that PlanPatch looks for free flash.
bool MustSearch(const std::vector<ReplacedRow>& rows);

/// Places the rows in their order. Flash that a section of this plan writes in place, places handed out
/// before, and what is held are not free. Fails with ReadFailed.
Result<PatchPlan> PlanPatch(const FullflashImage& flash, std::vector<ReplacedRow> rows,
                            const HeldRanges& held = {});

}  // namespace pictavo
