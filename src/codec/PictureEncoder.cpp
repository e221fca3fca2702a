#include "codec/PictureEncoder.h"

#include <algorithm>
#include <cassert>

#include "codec/PixelFormats.h"

namespace pictavo {

namespace {

constexpr std::uint8_t kOpaque = 255;
constexpr std::uint8_t kLeastOpaqueAlpha = 127;  // of a picture with alpha that goes to a format without
constexpr std::size_t kLongestGroup = 127;

/// How a cell's transparency goes over to the target format.
enum class AlphaRule { Keep, MarkTransparent, MakeOpaque, Drop };

AlphaRule RuleFor(bool rasterHasAlpha, bool targetHasAlpha) {
    if (rasterHasAlpha) return targetHasAlpha ? AlphaRule::Keep : AlphaRule::MarkTransparent;
    return targetHasAlpha ? AlphaRule::MakeOpaque : AlphaRule::Drop;
}

template <AlphaRule Rule>
Cell Applied(Cell cell) {
    if constexpr (Rule == AlphaRule::MarkTransparent) {
        const bool isTransparent = cell.a < kLeastOpaqueAlpha;
        cell.a = 0;
        return isTransparent ? kTransparentMarker : cell;
    }
    if constexpr (Rule == AlphaRule::MakeOpaque) cell.a = IsMarkerColour(cell) ? 0 : kOpaque;
    if constexpr (Rule == AlphaRule::Drop) cell.a = 0;
    return cell;
}

/// The picture's cells in row order, `rows` rows of them, with the transparency rule applied. Cells that the
/// Raster does not have are zero.
template <AlphaRule Rule>
std::vector<Cell> CellsUnder(const Picture& picture, int rows) {
    const auto width = static_cast<std::size_t>(std::max(picture.width, 0));
    const auto inRaster = std::min<std::size_t>(width, Raster::kColumns);
    std::vector<Cell> cells(width * static_cast<std::size_t>(std::max(rows, 0)));
    for (int y = 0; y < std::min(rows, Raster::kRows); ++y) {
        const Cell* from = picture.raster.From(0, y);
        std::transform(from, from + inRaster, cells.data() + width * static_cast<std::size_t>(y),
                       Applied<Rule>);
    }
    return cells;
}

std::vector<Cell> PreparedCells(const Picture& picture, int rows, AlphaRule rule) {
    switch (rule) {
        case AlphaRule::Keep:
            return CellsUnder<AlphaRule::Keep>(picture, rows);
        case AlphaRule::MarkTransparent:
            return CellsUnder<AlphaRule::MarkTransparent>(picture, rows);
        case AlphaRule::MakeOpaque:
            return CellsUnder<AlphaRule::MakeOpaque>(picture, rows);
        case AlphaRule::Drop:
            return CellsUnder<AlphaRule::Drop>(picture, rows);
    }
    return {};
}

Bytes EncodeBits(const Picture& picture) {
    Bytes stored;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; x += 8) {
            unsigned byte = 0;
            for (int bit = 0; bit < std::min(8, picture.width - x); ++bit)
                byte |= Pixels1::QuantiseOne(picture.raster.At(x + bit, y)) << (7 - bit);
            stored.push_back(static_cast<std::uint8_t>(byte));
        }
    }
    return stored;
}

template <typename Pixels>
Bytes EncodeUnits(const std::vector<Cell>& cells) {
    Bytes stored(cells.size() * Pixels::kBytes);
    Pixels::Quantise(cells.data(), stored.data(), cells.size());
    return stored;
}

/// The groups of a compressed picture as bytes.
template <typename Pixels>
class GroupWriter {
  public:
    explicit GroupWriter(std::size_t pixels) : stored_(2 * pixels * Pixels::kBytes + 16) {}

    void Run(std::size_t count, const Cell& cell) {
        Control(count);
        Append(&cell, 1);
    }

    void Literals(const Cell* cells, std::size_t count) {
        Control(256 - count);
        Append(cells, count);
    }

    void Append(const Cell* cells, std::size_t count) {
        Pixels::Quantise(cells, stored_.data() + length_, count);
        length_ += count * Pixels::kBytes;
    }

    Bytes Take() {
        stored_.resize(length_);
        return std::move(stored_);
    }

  private:
    void Control(std::size_t value) { stored_[length_++] = static_cast<std::uint8_t>(value); }

    Bytes stored_;  // as long as the groups can ever become: each takes a control byte and a pixel or more
    std::size_t length_ = 0;
};

/// Finds the groups in a picture's cells, its extra row included. The last cell is only ever taken by the
/// closing group, whatever it holds.
template <typename Pixels>
class GroupScan {
  public:
    explicit GroupScan(const std::vector<Cell>& cells)
        : cells_(cells), last_(cells.size() - 1), writer_(cells.size()) {}

    Bytes Encode() {
        while (at_ < last_) {
            const std::size_t run = RunLength();
            if (run < kLongestGroup && at_ + run == last_) return CloseRun(run);
            if (run > 1)
                TakeRun(run);
            else if (!TakeLiterals())
                return writer_.Take();
        }
        return CloseRun(1);
    }

  private:
    /// Equal cells from here on, at most a group of them, short of the last cell.
    std::size_t RunLength() const {
        std::size_t run = 1;
        while (run < kLongestGroup && at_ + run < last_ && cells_[at_ + run] == cells_[at_]) ++run;
        return run;
    }

    /// Different neighbours from here on, at most a group of them; stops before the first of two equal ones.
    std::size_t LiteralLength() const {
        std::size_t count = 1;
        while (count < kLongestGroup && at_ + count + 1 < last_ &&
               cells_[at_ + count] != cells_[at_ + count + 1])
            ++count;
        return count;
    }

    void TakeRun(std::size_t run) {
        writer_.Run(run, cells_[at_]);
        at_ += run;
    }

    /// False when the literals met the end and closed the stream.
    bool TakeLiterals() {
        const std::size_t count = LiteralLength();
        writer_.Literals(&cells_[at_], count);
        at_ += count;
        const bool closes = count < kLongestGroup && at_ + 1 == last_;
        if (closes) writer_.Append(&cells_[last_], 1);
        return !closes;
    }

    /// Kept: the closing run counts one more than the cells it was found for.
    Bytes CloseRun(std::size_t run) {
        writer_.Run(run + 1, cells_[at_]);
        return writer_.Take();
    }

    const std::vector<Cell>& cells_;
    const std::size_t last_;
    GroupWriter<Pixels> writer_;
    std::size_t at_ = 0;
};

template <typename Pixels>
Bytes EncodeGroups(const std::vector<Cell>& cells) {
    return cells.empty() ? Bytes() : GroupScan<Pixels>(cells).Encode();
}

}  // namespace

bool CanEncode(std::uint8_t typeCode) {
    switch (typeCode) {
        case kType1Bit:
        case kType8Bit:
        case kType16Bit:
        case kType24Bit:
        case kType8BitCompressed:
        case kType16BitCompressed:
        case kType24BitCompressed:
            return true;
        default:
            return false;
    }
}

Bytes EncodePicture(const Picture& picture, std::uint8_t typeCode) {
    assert(CanEncode(typeCode));
    if (typeCode == kType1Bit) return EncodeBits(picture);
    const int extraRows = IsCompressed(typeCode) ? 1 : 0;
    const AlphaRule rule = RuleFor(picture.RasterHasAlpha, BitDepthOf(typeCode) == 24);
    const std::vector<Cell> cells = PreparedCells(picture, picture.height + extraRows, rule);
    switch (typeCode) {
        case kType8Bit:
            return EncodeUnits<Pixels8>(cells);
        case kType16Bit:
            return EncodeUnits<Pixels16>(cells);
        case kType24Bit:
            return EncodeUnits<Pixels24>(cells);
        case kType8BitCompressed:
            return EncodeGroups<Pixels8>(cells);
        case kType16BitCompressed:
            return EncodeGroups<Pixels16>(cells);
        default:
            return EncodeGroups<Pixels24>(cells);
    }
}

}  // namespace pictavo
