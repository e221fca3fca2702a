#include "codec/PictureEncoder.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <memory>

#include "codec/CellNumber.h"
#include "codec/PixelFormats.h"

namespace pictavo {

namespace {

constexpr std::uint32_t kLeastOpaqueAlpha = 127;  // of a picture with alpha that goes to a format without
constexpr std::size_t kLongestGroup = 127;
constexpr std::size_t kStep = 8;  // cells that a loop over cells takes at once

/// How a cell's transparency goes over to the target format.
enum class AlphaRule { Keep, MarkTransparent, MakeOpaque, Drop };

AlphaRule RuleFor(bool rasterHasAlpha, bool targetHasAlpha) {
    if (rasterHasAlpha) return targetHasAlpha ? AlphaRule::Keep : AlphaRule::MarkTransparent;
    return targetHasAlpha ? AlphaRule::MakeOpaque : AlphaRule::Drop;
}

template <AlphaRule Rule>
std::uint32_t Applied(std::uint32_t cell) {
    const std::uint32_t colour = cell & kColourBits;
    if constexpr (Rule == AlphaRule::MarkTransparent)
        return cell >> 24 < kLeastOpaqueAlpha ? kMarkerNumber : colour;
    if constexpr (Rule == AlphaRule::MakeOpaque) return IsMarkerNumber(cell) ? colour : colour | kAlphaBits;
    if constexpr (Rule == AlphaRule::Drop) return colour;
    return cell;
}

template <AlphaRule Rule>
void ApplyTo(const Cell* from, Cell* __restrict to, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) StoreCellNumber(to + i, Applied<Rule>(CellNumber(from + i)));
}

/// Room for values that are all written before they are read, with `spare` more behind them. Made as bytes:
/// an array of cells would be filled with zeros first.
template <typename Value>
class Scratch {
  public:
    explicit Scratch(std::size_t size, std::size_t spare = 0)
        : bytes_(std::make_unique_for_overwrite<std::uint8_t[]>((size + spare) * sizeof(Value))),
          size_(size) {}

    Value* Data() { return reinterpret_cast<Value*>(bytes_.get()); }
    const Value* Data() const { return reinterpret_cast<const Value*>(bytes_.get()); }
    std::size_t Size() const { return size_; }

  private:
    std::unique_ptr<std::uint8_t[]> bytes_;
    std::size_t size_;
};

using Cells = Scratch<Cell>;

/// The picture's cells in row order, `rows` rows of them, with the transparency rule applied. Cells that the
/// Raster does not have are zero, and so are the kStep spare ones behind.
template <AlphaRule Rule>
Cells CellsUnder(const Picture& picture, int rows) {
    const auto width = static_cast<std::size_t>(std::max(picture.width, 0));
    const auto inRaster = std::min<std::size_t>(width, Raster::kColumns);
    Cells cells(width * static_cast<std::size_t>(std::max(rows, 0)), kStep);
    Cell* to = cells.Data();
    for (int y = 0; y < rows; ++y) {
        const std::size_t taken = y < Raster::kRows ? inRaster : 0;
        if (taken > 0) ApplyTo<Rule>(picture.raster.From(0, y), to, taken);
        std::fill(to + taken, to + width, Cell{});
        to += width;
    }
    std::fill_n(to, kStep, Cell{});
    return cells;
}

Cells PreparedCells(const Picture& picture, int rows, AlphaRule rule) {
    switch (rule) {
        case AlphaRule::Keep:
            return CellsUnder<AlphaRule::Keep>(picture, rows);
        case AlphaRule::MarkTransparent:
            return CellsUnder<AlphaRule::MarkTransparent>(picture, rows);
        case AlphaRule::MakeOpaque:
            return CellsUnder<AlphaRule::MakeOpaque>(picture, rows);
        default:
            return CellsUnder<AlphaRule::Drop>(picture, rows);
    }
}

/// Each row is filled up to whole bytes.
Bytes EncodeBits(const Cells& cells, int width) {
    Bytes stored;
    for (const Cell* row = cells.Data(); row != cells.Data() + cells.Size(); row += width) {
        for (int x = 0; x < width; x += 8) {
            unsigned byte = 0;
            for (int bit = 0; bit < std::min(8, width - x); ++bit)
                byte |= Pixels1::QuantiseOne(row[x + bit]) << (7 - bit);
            stored.push_back(static_cast<std::uint8_t>(byte));
        }
    }
    return stored;
}

template <typename Pixels>
Bytes EncodeUnits(const Cells& cells) {
    Bytes stored(cells.Size() * Pixels::kBytes);
    Pixels::Quantise(cells.Data(), stored.data(), cells.Size());
    return stored;
}

/// Which cells equal the cell behind them, asked for a stretch at a time.
class Neighbours {
  public:
    explicit Neighbours(const Cells& cells) : equals_(cells.Size() + kWord) {
        Compare(cells.Data(), equals_.Data(), cells.Size() - 1);
        std::fill_n(equals_.Data() + cells.Size() - 1, kWord + 1, std::uint8_t{0});
    }

    /// How many cells from `at` on equal their neighbour; `most` or more count as `most`.
    std::size_t EqualFrom(std::size_t at, std::size_t most) const { return Stretch<kAllOnes>(at, most); }
    std::size_t DifferentFrom(std::size_t at, std::size_t most) const { return Stretch<0>(at, most); }

  private:
    static void Compare(const Cell* cells, std::uint8_t* __restrict equals, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i)
            equals[i] = CellNumber(cells + i) == CellNumber(cells + i + 1) ? 1 : 0;
    }

    static constexpr std::size_t kWord = sizeof(std::uint64_t);
    static constexpr std::uint64_t kAllOnes = 0x0101010101010101U;

    /// Eight answers at once: the first byte that is not as in `Wanted` ends the stretch.
    template <std::uint64_t Wanted>
    std::size_t Stretch(std::size_t at, std::size_t most) const {
        for (std::size_t count = 0; count < most; count += kWord) {
            std::uint64_t word = 0;
            std::memcpy(&word, equals_.Data() + at + count, kWord);
            if (word != Wanted)
                return std::min(most, count + static_cast<std::size_t>(std::countr_zero(word ^ Wanted)) / 8);
        }
        return most;
    }

    static_assert(std::endian::native == std::endian::little, "the first answer is the lowest byte here");
    Scratch<std::uint8_t> equals_;
};

/// The groups of a compressed picture as bytes.
template <typename Pixels>
class GroupWriter {
  public:
    /// `most`: how many cells the groups hold together.
    explicit GroupWriter(std::size_t most) : stored_(most * (1 + Pixels::kBytes) + kClosing) {}

    void Run(std::size_t count, const Cell& cell) {
        Control(count);
        Append(cell);
    }

    /// Reads and writes whole steps, which is faster for the short stretches that most are: kStep cells must
    /// lie behind these, and what is written too much goes under the next group.
    void Literals(const Cell* cells, std::size_t count) {
        Control(256 - count);
        Pixels::Quantise(cells, stored_.Data() + length_, (count + kStep - 1) / kStep * kStep);
        length_ += count * Pixels::kBytes;
    }

    void Append(const Cell& cell) {
        const typename Pixels::Unit unit = Pixels::QuantiseOne(cell);
        std::memcpy(stored_.Data() + length_, &unit, sizeof unit);
        length_ += sizeof unit;
    }

    Bytes Take() const { return Bytes(stored_.Data(), stored_.Data() + length_); }

  private:
    static constexpr std::size_t kClosing = 16 + kStep * Pixels::kBytes;

    void Control(std::size_t value) { stored_.Data()[length_++] = static_cast<std::uint8_t>(value); }

    /// As long as the groups can become: a control byte and a pixel or more each.
    Scratch<std::uint8_t> stored_;
    std::size_t length_ = 0;
};

/// Finds the groups in a picture's cells, its extra row included. The last cell is only ever taken by the
/// closing group, whatever it holds.
template <typename Pixels>
class GroupScan {
  public:
    explicit GroupScan(const Cells& cells)
        : neighbours_(cells), cells_(cells.Data()), last_(cells.Size() - 1), writer_(cells.Size()) {}

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
        return 1 + neighbours_.EqualFrom(at_, std::min(kLongestGroup, last_ - at_) - 1);
    }

    /// Different neighbours from here on, at most a group of them, short of the last cell; stops before the
    /// first of two equal ones.
    std::size_t LiteralLength() const {
        return 1 + neighbours_.DifferentFrom(
                       at_ + 1, std::min(kLongestGroup, std::max(last_ - at_, std::size_t{2}) - 1) - 1);
    }

    void TakeRun(std::size_t run) {
        writer_.Run(run, cells_[at_]);
        at_ += run;
    }

    /// False when the literals met the end and closed the stream.
    bool TakeLiterals() {
        const std::size_t count = LiteralLength();
        writer_.Literals(cells_ + at_, count);
        at_ += count;
        const bool closes = count < kLongestGroup && at_ + 1 == last_;
        if (closes) writer_.Append(cells_[last_]);
        return !closes;
    }

    /// Kept: the closing run counts one more than the cells it was found for.
    Bytes CloseRun(std::size_t run) {
        writer_.Run(run + 1, cells_[at_]);
        return writer_.Take();
    }

    const Neighbours neighbours_;
    const Cell* const cells_;
    const std::size_t last_;
    GroupWriter<Pixels> writer_;
    std::size_t at_ = 0;
};

template <typename Pixels>
Bytes EncodeGroups(const Cells& cells) {
    return cells.Size() == 0 ? Bytes() : GroupScan<Pixels>(cells).Encode();
}

}  // namespace

bool CanEncode(std::uint8_t typeCode) {
    const PictureType* type = FindPictureType(typeCode);
    if (type == nullptr) return false;
    if (typeCode == type->digit) return type->isWritten;
    return typeCode == (type->digit | kCompressedBit) && type->isWrittenCompressed;
}

Bytes EncodePicture(const Picture& picture, std::uint8_t typeCode) {
    assert(CanEncode(typeCode));
    const int extraRows = IsCompressed(typeCode) ? 1 : 0;
    const AlphaRule rule = RuleFor(picture.RasterHasAlpha, BitDepthOf(typeCode) == 24);
    const Cells cells = PreparedCells(picture, picture.height + extraRows, rule);
    switch (typeCode) {
        case kType1Bit:
            return EncodeBits(cells, picture.width);
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
