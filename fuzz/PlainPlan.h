#pragma once

/// Where the pictures of a patch go, with a mark for every byte of the flash that is spoken for, and the text
/// that puts them there: docs/formats/patch.md, docs/formats/picture-table.md. The product's plan and
/// sections must be the same.

#include <algorithm>
#include <cstdio>

#include "patch/PatchPlan.h"

namespace pictavo::fuzz::plain {

/// One mark a byte.
class Marks {
  public:
    explicit Marks(std::size_t size) : marks_(size) {}

    /// As far as the flash reaches.
    void Set(std::uint64_t offset, std::uint64_t length) {
        for (std::uint64_t at = offset; at < offset + length && at < marks_.size(); ++at)
            marks_[static_cast<std::size_t>(at)] = true;
    }

    bool HasOneIn(std::uint64_t offset, std::uint64_t length) const {
        for (std::uint64_t at = offset; at < offset + length && at < marks_.size(); ++at)
            if (marks_[static_cast<std::size_t>(at)]) return true;
        return false;
    }

  private:
    std::vector<bool> marks_;
};

struct Place {
    Placement placement = Placement::NoWorkFile;
    std::uint64_t offset = 0;  ///< when InPlace or Moved
};

class Planner {
  public:
    Planner(const Bytes& flash, std::uint64_t recordSize, std::uint64_t searchFrom)
        : flash_(flash),
          recordSize_(recordSize),
          next_(searchFrom),
          png_(flash.size()),
          taken_(flash.size()) {}

    void PutPng(const FileRange& range) {
        png_.Set(range.begin, range.Length());
        taken_.Set(range.begin, range.Length());
    }

    void PutPicture(const FileRange& range) { taken_.Set(range.begin, range.Length()); }

    /// What stays is marked before anything is moved.
    std::vector<Place> Plan(const std::vector<ReplacedRow>& rows) {
        std::vector<Place> places;
        for (const ReplacedRow& row : rows) places.push_back(WithoutSearch(row));
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (places[i].placement != Placement::Moved) continue;
            if (!Search(rows[i].picture->length, places[i].offset))
                places[i].placement = Placement::NoFreeMemory;
        }
        return places;
    }

    std::uint64_t Next() const { return next_; }

  private:
    bool IsInFlash(std::uint64_t offset, std::uint64_t length) const {
        return offset + length <= flash_.size();
    }

    Place WithoutSearch(const ReplacedRow& row) {
        if (!row.picture) return {Placement::NoWorkFile};
        const std::uint64_t length = row.picture->length;
        const bool stays = length <= row.room;
        if (!IsInFlash(row.record.pitOffset, recordSize_) ||
            (stays && !IsInFlash(row.record.picOffset, length)))
            return {Placement::BeyondFlash};
        if (png_.HasOneIn(row.record.pitOffset, recordSize_) ||
            (stays && png_.HasOneIn(row.record.picOffset, length)))
            return {Placement::UnderPng};
        taken_.Set(row.record.pitOffset, recordSize_);
        if (!stays) return {Placement::Moved};
        taken_.Set(row.record.picOffset, length);
        return {Placement::InPlace, row.record.picOffset};
    }

    bool IsFree(std::uint64_t chunk) const {
        const auto first = flash_.begin() + static_cast<std::ptrdiff_t>(chunk);
        return std::all_of(first, first + 16, [](std::uint8_t byte) { return byte == 0xFF; }) &&
               !taken_.HasOneIn(chunk, 16);
    }

    /// The first run of free chunks that is long enough; the next search begins behind it.
    bool Search(std::uint64_t length, std::uint64_t& offset) {
        std::uint64_t run = 0;
        for (std::uint64_t at = next_; IsInFlash(at, 16); at += 16) {
            run = IsFree(at) ? run + 16 : 0;
            if (run == 0 || run < length) continue;
            offset = at + 16 - run;
            next_ = at + 16;
            return true;
        }
        return false;
    }

    const Bytes& flash_;
    std::uint64_t recordSize_;
    std::uint64_t next_;
    Marks png_;
    Marks taken_;
};

inline bool IsWritten(const Place& place) {
    return place.placement == Placement::InPlace || place.placement == Placement::Moved;
}

inline void PutNumber(Bytes& bytes, std::uint64_t number, int length) {
    for (; length > 0; --length, number >>= 8) bytes.push_back(static_cast<std::uint8_t>(number & 0xFF));
}

/// The table record of a picture whose data lie at `phoneAddress`.
inline Bytes RecordOf(const GpfHeader& header, std::uint64_t phoneAddress, bool isLong) {
    Bytes record;
    PutNumber(record, header.width, isLong ? 2 : 1);
    PutNumber(record, header.height, isLong ? 2 : 1);
    PutNumber(record, header.type, 2);
    if (isLong) PutNumber(record, 0, 2);
    PutNumber(record, phoneAddress, 4);
    return record;
}

inline std::string Hex(std::uint64_t number, int digits) {
    std::array<char, 20> text{};
    std::snprintf(text.data(), text.size(), "%0*llX", digits, static_cast<unsigned long long>(number));
    return text.data();
}

/// The lines that put `bytes` at `offset`, sixteen of them in each but the last.
inline std::string PatchLinesOf(const Bytes& flash, std::uint64_t offset, const Bytes& bytes) {
    std::string lines;
    for (std::size_t at = 0; at < bytes.size(); at += 16) {
        std::string oldText;
        std::string newText;
        for (std::size_t i = at; i < std::min(at + 16, bytes.size()); ++i) {
            oldText += Hex(flash[static_cast<std::size_t>(offset) + i], 2);
            newText += Hex(bytes[i], 2);
        }
        lines += Hex(offset + at, 8) + ": " + oldText + " " + newText + "\r\n";
    }
    return lines;
}

}  // namespace pictavo::fuzz::plain
