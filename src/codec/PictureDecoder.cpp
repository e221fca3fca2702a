#include "codec/PictureDecoder.h"

#include <algorithm>
#include <limits>

#include "codec/PixelFormats.h"
#include "core/Cursor.h"

namespace pictavo {

namespace {

constexpr unsigned kLiteralBit = 0x80;  // in a control byte

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
};

bool Finished(const Decode& decode) {
    return decode.writer.Row() >= decode.height;
}

template <typename Pixels>
void StoreLiterals(Decode& decode, std::size_t count) {
    const std::uint8_t* stored = decode.cursor.Take(count * Pixels::kBytes);
    decode.writer.Put(count, [&](Cell* cells, std::size_t done, std::size_t piece) {
        Pixels::Expand(stored + done * Pixels::kBytes, cells, piece);
    });
}

template <typename Pixels>
void StoreRun(Decode& decode, std::size_t count) {
    Cell cell;
    Pixels::Expand(decode.cursor.Take(Pixels::kBytes), &cell, 1);
    decode.writer.Fill(cell, count);
}

void StorePixels(Decode& decode, const Cell* pixels, std::size_t count) {
    decode.writer.Put(count, [&](Cell* cells, std::size_t done, std::size_t piece) {
        std::copy_n(pixels + done, piece, cells);
    });
}

/// A group of a compressed picture: a control byte below 0x80 is a count of copies of one pixel (0 consumes
/// the pixel and stores nothing), any other is 256 less a count of pixels.
template <typename Pixels>
void StoreGroup(Decode& decode) {
    const unsigned control = decode.cursor.Byte();
    if (control < kLiteralBit)
        StoreRun<Pixels>(decode, control);
    else
        StoreLiterals<Pixels>(decode, 256 - control);
}

/// A group of a compressed 1-bit picture: seven pixels, or with the top bit set a colour and a count up
/// to 63.
void StoreBitGroup(Decode& decode) {
    constexpr std::size_t kPixelsInGroup = 7;
    const unsigned control = decode.cursor.Byte();
    if (control >= kLiteralBit) {
        decode.writer.Fill(Pixels1::ExpandBit(control >> 6 & 1), control & 0x3F);
        return;
    }
    const Cell* pixels = Pixels1::ExpandByte(static_cast<std::uint8_t>(control)).data() + 1;
    StorePixels(decode, pixels, kPixelsInGroup);
}

bool DecodeGroups(Decode& decode, void (*storeGroup)(Decode&)) {
    do {
        storeGroup(decode);
        if (Finished(decode)) return true;
    } while (decode.writer.InRange() && !decode.cursor.AtEnd());
    return false;
}

template <typename Pixels>
void DecodeUnits(Decode& decode) {
    constexpr std::int64_t kPiece = Cursor::kLongestTake / Pixels::kBytes;
    std::int64_t left = static_cast<std::int64_t>(decode.width) * decode.height;
    for (; left > 0 && decode.writer.InRange(); left -= kPiece)
        StoreLiterals<Pixels>(decode, static_cast<std::size_t>(std::min(left, kPiece)));
}

/// Rows are padded to whole bytes: what is left of a byte when a row ends is dropped.
void DecodeBits(Decode& decode) {
    while (!Finished(decode) && decode.writer.InRange()) {
        const auto& pixels = Pixels1::ExpandByte(decode.cursor.Byte());
        StorePixels(decode, pixels.data(), std::min(pixels.size(), decode.writer.LeftInRow()));
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
            return DecodeGroups(decode, StoreBitGroup);
        case 8:
            return DecodeGroups(decode, StoreGroup<Pixels8>);
        case 12:
            return DecodeGroups(decode, StoreGroup<Pixels12>);
        case 16:
            return DecodeGroups(decode, StoreGroup<Pixels16>);
        default:
            return DecodeGroups(decode, StoreGroup<Pixels24>);
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

bool IsBitDepth(int bitDepth) {
    return bitDepth == 1 || bitDepth == 8 || bitDepth == 12 || bitDepth == 16 || bitDepth == 24;
}

/// A compressed picture may end, with its file, before it meets the end of the Raster.
bool FitsRaster(const PictureFormat& format) {
    return format.width <= Raster::kColumns && format.height <= Raster::kRows;
}

/// The number in the form that leaves a place for a sign, as the box shows it.
Failure RefuseBitDepth(int bitDepth) {
    return Fail(ErrorKind::BadBitDepth, (bitDepth < 0 ? "" : " ") + std::to_string(bitDepth) + "bit");
}

std::string SizeText(const PictureFormat& format) {
    return std::to_string(format.width) + " x " + std::to_string(format.height);
}

}  // namespace

Result<DecodedPicture> DecodePicture(const ByteSource& source, std::uint64_t offset,
                                     const PictureFormat& format, Picture& picture) {
    if (!IsBitDepth(format.bitDepth)) return RefuseBitDepth(format.bitDepth);
    DecodedPicture decoded;
    if (format.height > 0) {
        Decode decode{Cursor(source, offset), RasterWriter(picture.raster, format.width), format.width,
                      format.height};
        if (format.compressed)
            decoded.complete = DecodeCompressed(decode, format.bitDepth);
        else
            DecodeUncompressed(decode, format.bitDepth);
        if (!decode.cursor.Health()) return Failure(WithPath(decode.cursor.Health().error(), source.Path()));
        if (!decode.writer.InRange() || !FitsRaster(format))
            return Fail(ErrorKind::TooLarge, source.Path(), offset,
                        "the picture (" + SizeText(format) + ") is too large to show");
        decoded.consumed = decode.cursor.Consumed();
        if (decode.cursor.Position() > source.Size()) decoded.complete = false;
    }
    picture.width = format.width;
    picture.height = format.height;
    picture.bitDepth = format.bitDepth;
    picture.RasterHasAlpha = format.bitDepth == 24;
    return decoded;
}

}  // namespace pictavo
