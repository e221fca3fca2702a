#include "codec/PictureDecoder.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

#include "codec/CellNumber.h"
#include "codec/PictureType.h"
#include "codec/PixelFormats.h"
#include "core/Cursor.h"

namespace pictavo {

namespace {

constexpr unsigned kLiteralBit = 0x80;  // in a control byte

/// Groups without a pixel that are passed over in one picture; with more, a hostile file could have gigabytes
/// read for it.
constexpr int kMostEmptyGroups = 1 << 16;

/// The place in the Raster where the next pixel goes. Pixels run on across row ends.
class RasterWriter {
  public:
    RasterWriter(Raster& raster, int width) : raster_(raster), width_(width) {}

    /// True while no pixel fell outside the Raster.
    bool InRange() const { return inRange_; }
    int Row() const { return y_; }

    /// Pixels up to the end of the row. A width of 0 or less is never met: such a row has no end.
    std::size_t LeftInRow() const {
        return width_ > x_ ? static_cast<std::size_t>(width_ - x_) : std::numeric_limits<std::size_t>::max();
    }

    /// Stores `count` pixels in pieces that each lie in one row: store(cells, done, piece) fills `piece`
    /// cells, `done` pixels being stored already. Only the pieces before the first cell outside the Raster
    /// are stored.
    template <typename Store>
    void Put(std::size_t count, Store store) {
        std::size_t done = 0;
        while (done < count && inRange_) {
            const std::size_t piece = std::min(count - done, RoomInRow());
            if (piece == 0) {
                inRange_ = false;
                return;
            }
            store(raster_.From(x_, y_), done, piece);
            Advance(static_cast<int>(piece));
            done += piece;
        }
    }

    void Fill(const Cell& cell, std::size_t count) {
        Put(count, [&](Cell* cells, std::size_t, std::size_t piece) { std::fill_n(cells, piece, cell); });
    }

  private:
    std::size_t RoomInRow() const {
        if (y_ >= Raster::kRows || x_ >= Raster::kColumns) return 0;
        return std::min(LeftInRow(), static_cast<std::size_t>(Raster::kColumns - x_));
    }

    void Advance(int count) {
        x_ += count;
        if (x_ != width_) return;
        x_ = 0;
        ++y_;
    }

    Raster& raster_;
    int width_;
    int x_ = 0;
    int y_ = 0;
    bool inRange_ = true;
};

/// The decode of one picture: its stored bytes, where its pixels go, and its size.
struct Decode {
    Cursor cursor;
    RasterWriter writer;
    int width;
    int height;
    int emptyGroups = 0;
};

bool Finished(const Decode& decode) {
    return decode.writer.Row() >= decode.height;
}

void StorePixels(RasterWriter& writer, const Cell* pixels, std::size_t count) {
    writer.Put(count, [&](Cell* cells, std::size_t done, std::size_t piece) {
        std::copy_n(pixels + done, piece, cells);
    });
}

template <typename Pixels>
void StoreExpanded(RasterWriter& writer, const std::uint8_t* stored, std::size_t count) {
    writer.Put(count, [&](Cell* cells, std::size_t done, std::size_t piece) {
        Pixels::Expand(stored + done * sizeof(typename Pixels::Unit), cells, piece);
    });
}

/// The pixels of a compressed 1-bit picture outside their groups: a byte each, 1 for black.
struct LooseBits {
    using Unit = std::uint8_t;
    static constexpr std::size_t kInGroup = 7;

    static void Expand(const std::uint8_t* bits, Cell* cells, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) StoreCellNumber(cells + i, (bits[i] - 1U) & kColourBits);
    }
};

/// The pixels of every group that is not a run, in the order in which they are shown.
constexpr auto kBitsOfGroup = [] {
    std::array<std::array<std::uint8_t, LooseBits::kInGroup>, kLiteralBit> groups{};
    for (unsigned group = 0; group < groups.size(); ++group)
        for (unsigned i = 0; i < LooseBits::kInGroup; ++i)
            groups[group][i] = group >> (LooseBits::kInGroup - 1 - i) & 1;
    return groups;
}();

/// Pixels of a compressed picture as they come out of its groups, still in their stored form, so that they
/// can be expanded many at once.
template <typename Pixels>
class Ungrouped {
  public:
    using Unit = typename Pixels::Unit;

    std::size_t Count() const { return count_; }

    /// True while there is room for another group.
    bool HasRoom() const { return count_ <= kRoom; }

    /// May write up to kAtOnce too many behind the last one; the next group goes over them.
    void Fill(Unit unit, std::size_t count) {
        std::size_t done = 0;
        do {
            std::fill_n(units_.data() + count_ + done, kAtOnce, unit);
            done += kAtOnce;
        } while (done < count);
        count_ += count;
    }

    void Append(const std::uint8_t* stored, std::size_t count) {
        std::memcpy(units_.data() + count_, stored, count * sizeof(Unit));
        count_ += count;
    }

    /// Empties it into the Raster.
    void Flush(RasterWriter& writer) {
        StoreExpanded<Pixels>(writer, reinterpret_cast<const std::uint8_t*>(units_.data()), count_);
        count_ = 0;
    }

  private:
    static constexpr std::size_t kRoom = 2048;
    static constexpr std::size_t kLongestGroup = 128;
    static constexpr std::size_t kAtOnce = 32 / sizeof(Unit);  // most runs are shorter, and end in one step

    std::array<Unit, kRoom + kLongestGroup + kAtOnce> units_;
    std::size_t count_ = 0;
};

/// A group of a compressed picture: a control byte below 0x80 is a count of copies of one pixel (0 consumes
/// the pixel and stores nothing), any other is 256 less a count of pixels.
template <typename Pixels>
void TakeGroup(Cursor& cursor, Ungrouped<Pixels>& pixels) {
    const unsigned control = cursor.Byte();
    if (control >= kLiteralBit) {
        const std::size_t count = 256 - control;
        pixels.Append(cursor.Take(count * Pixels::kBytes), count);
        return;
    }
    typename Pixels::Unit unit = 0;
    std::memcpy(&unit, cursor.Take(Pixels::kBytes), Pixels::kBytes);
    pixels.Fill(unit, control);
}

/// A group of a compressed 1-bit picture: seven pixels, or with the top bit set a colour and a count up
/// to 63.
void TakeGroup(Cursor& cursor, Ungrouped<LooseBits>& pixels) {
    const unsigned control = cursor.Byte();
    if (control >= kLiteralBit)
        pixels.Fill(control >> 6 & 1, control & 0x3F);
    else
        pixels.Append(kBitsOfGroup[control].data(), LooseBits::kInGroup);
}

/// How many pixels, in rows of this width, go into the Raster.
std::int64_t RoomFor(int width) {
    const bool runsOn = width > 0 && width <= Raster::kColumns;
    return runsOn ? std::int64_t{width} * Raster::kRows : Raster::kColumns;
}

/// After how many pixels the groups are over: the picture is done, or the Raster is left. One group is always
/// taken, also by a picture without rows.
std::int64_t EndOfGroups(const Decode& decode) {
    if (decode.height <= 0) return 0;
    const std::int64_t tooMany = RoomFor(decode.width) + 1;
    return decode.width > 0 ? std::min(std::int64_t{decode.width} * decode.height, tooMany) : tooMany;
}

template <typename Pixels>
bool DecodeGroups(Decode& decode) {
    Ungrouped<Pixels> pixels;
    std::int64_t left = EndOfGroups(decode);
    do {
        const std::size_t before = pixels.Count();
        TakeGroup(decode.cursor, pixels);
        const std::size_t gained = pixels.Count() - before;
        if (gained == 0 && ++decode.emptyGroups > kMostEmptyGroups) break;
        left -= static_cast<std::int64_t>(gained);
        if (!pixels.HasRoom()) pixels.Flush(decode.writer);
    } while (left > 0 && !decode.cursor.AtEnd());
    pixels.Flush(decode.writer);
    return Finished(decode);
}

template <typename Pixels>
void DecodeUnits(Decode& decode) {
    constexpr std::int64_t kPiece = Cursor::kLongestTake / Pixels::kBytes;
    std::int64_t left = static_cast<std::int64_t>(decode.width) * decode.height;
    for (; left > 0 && decode.writer.InRange(); left -= kPiece) {
        const auto count = static_cast<std::size_t>(std::min(left, kPiece));
        StoreExpanded<Pixels>(decode.writer, decode.cursor.Take(count * Pixels::kBytes), count);
    }
}

/// Rows are padded to whole bytes: what is left of a byte when a row ends is dropped.
void DecodeBits(Decode& decode) {
    while (!Finished(decode) && decode.writer.InRange()) {
        const auto& pixels = Pixels1::ExpandByte(decode.cursor.Byte());
        StorePixels(decode.writer, pixels.data(), std::min(pixels.size(), decode.writer.LeftInRow()));
    }
}

/// Kept: the converter is never called for uncompressed 12-bit pictures, so that every cell is black; the
/// bytes are passed over all the same.
void DecodeUncompressed12(Decode& decode) {
    const std::int64_t pixels = static_cast<std::int64_t>(decode.width) * decode.height;
    if (pixels <= 0) return;
    decode.writer.Fill(Cell{}, static_cast<std::size_t>(pixels));
    decode.cursor.Skip(static_cast<std::uint64_t>(pixels) * Pixels12::kBytes);
}

/// True unless the groups ended before the picture did.
bool DecodeCompressed(Decode& decode, int bitDepth) {
    switch (bitDepth) {
        case 1:
            return DecodeGroups<LooseBits>(decode);
        case 8:
            return DecodeGroups<Pixels8>(decode);
        case 12:
            return DecodeGroups<Pixels12>(decode);
        case 16:
            return DecodeGroups<Pixels16>(decode);
        default:
            return DecodeGroups<Pixels24>(decode);
    }
}

void DecodeUncompressed(Decode& decode, int bitDepth) {
    switch (bitDepth) {
        case 1:
            return DecodeBits(decode);
        case 8:
            return DecodeUnits<Pixels8>(decode);
        case 12:
            return DecodeUncompressed12(decode);
        case 16:
            return DecodeUnits<Pixels16>(decode);
        default:
            return DecodeUnits<Pixels24>(decode);
    }
}

/// A compressed picture may end, with its file, before it meets the end of the Raster.
bool FitsRaster(const PictureFormat& format) {
    if (format.height <= 0) return true;
    return format.width <= Raster::kColumns && format.height <= Raster::kRows;
}

Failure RefuseSize(const ByteSource& source, std::uint64_t offset, const PictureFormat& format) {
    return Fail(ErrorKind::TooLarge, source.Path(), offset,
                "the picture (" + SizeText(format.width, format.height) + ") is too large to show");
}

Failure RefuseEmptyGroups(const ByteSource& source, std::uint64_t offset) {
    return Fail(
        ErrorKind::Malformed, source.Path(), offset,
        "is no picture: more than " + std::to_string(kMostEmptyGroups) + " of its groups hold no pixel");
}

/// The number in the form that leaves a place for a sign, as the box shows it.
Failure RefuseBitDepth(const ByteSource& source, int bitDepth) {
    return Fail(ErrorKind::BadBitDepth, source.Path(),
                (bitDepth < 0 ? "" : " ") + std::to_string(bitDepth) + "bit");
}

/// True unless the picture ended before its last pixel.
bool Run(Decode& decode, const PictureFormat& format) {
    if (format.compressed) return DecodeCompressed(decode, format.bitDepth);
    DecodeUncompressed(decode, format.bitDepth);
    return true;
}

/// What a decode that ran met.
Status Check(const Decode& decode, const PictureFormat& format, const ByteSource& source,
             std::uint64_t offset) {
    const Status& health = decode.cursor.Health();
    if (!health) return Failure(WithPath(health.error(), source.Path()));
    if (!decode.writer.InRange() || !FitsRaster(format)) return RefuseSize(source, offset, format);
    if (decode.emptyGroups > kMostEmptyGroups) return RefuseEmptyGroups(source, offset);
    return {};
}

Result<DecodedPicture> DecodePixels(const ByteSource& source, std::uint64_t offset,
                                    const PictureFormat& format, Raster& raster) {
    Decode decode{Cursor(source, offset), RasterWriter(raster, format.width), format.width, format.height};
    const bool isWhole = Run(decode, format);
    PICTAVO_TRY(Check(decode, format, source, offset));
    return DecodedPicture{decode.cursor.Consumed(), isWhole && decode.cursor.Position() <= source.Size()};
}

void SetFormat(const PictureFormat& format, Picture& picture) {
    picture.width = format.width;
    picture.height = format.height;
    picture.bitDepth = format.bitDepth;
    picture.RasterHasAlpha = format.bitDepth == 24;
}

}  // namespace

PictureFormat FormatOf(const PictureRecord& record, int depthOfUnknown) {
    return {record.width, record.height, BitDepthOf(record.typeCode).value_or(depthOfUnknown),
            IsCompressed(record.typeCode)};
}

Result<DecodedPicture> DecodePicture(const ByteSource& source, std::uint64_t offset,
                                     const PictureFormat& format, Picture& picture) {
    if (!IsBitDepth(format.bitDepth)) return RefuseBitDepth(source, format.bitDepth);
    PICTAVO_TRY(const DecodedPicture decoded, DecodePixels(source, offset, format, picture.raster));
    SetFormat(format, picture);
    return decoded;
}

}  // namespace pictavo
