#pragma once

/// Twins of the decoder and the encoder that take one pixel after the other, as the formats are described,
/// without any of the product's shortcuts. What they and the product do must be the same, byte for byte.

#include <array>
#include <cmath>
#include <optional>
#include <string>

#include "codec/PictureDecoder.h"

namespace pictavo::tests {

namespace plain {

inline std::uint8_t Rounded(double value) {
    return static_cast<std::uint8_t>(std::floor(value + 0.5));
}

inline Cell Expand(int bitDepth, const std::array<unsigned, 4>& b) {
    if (bitDepth == 8) {
        if (b[0] == 0xC0) return {169, 171, 169, 0};
        return {Rounded((b[0] >> 5) * 255 / 7.0), Rounded((b[0] >> 2 & 7) * 255 / 7.0),
                static_cast<std::uint8_t>((b[0] & 3) * 85), 0};
    }
    if (bitDepth == 12) {
        if (b[0] == 0xFF && b[1] == 0x0F) return {169, 171, 169, 0};
        return {static_cast<std::uint8_t>((b[1] & 15) * 17), static_cast<std::uint8_t>((b[0] >> 4) * 17),
                static_cast<std::uint8_t>((b[0] & 15) * 17), 0};
    }
    if (bitDepth == 16) {
        if (b[0] == 0x00 && b[1] == 0xE0) return {169, 171, 169, 0};
        return {Rounded((b[1] >> 3) * 255 / 31.0), Rounded(((b[1] & 7) * 8 + (b[0] >> 5)) * 255 / 63.0),
                Rounded((b[0] & 31) * 255 / 31.0), 0};
    }
    return {static_cast<std::uint8_t>(b[2]), static_cast<std::uint8_t>(b[1]), static_cast<std::uint8_t>(b[0]),
            static_cast<std::uint8_t>(b[3])};
}

/// Raised by a cell outside the Raster, and by more groups without a pixel than are passed over.
struct OutOfRange {};

class Decoder {
  public:
    Decoder(const Bytes& data, std::size_t start, const PictureFormat& format, Raster& raster)
        : data_(data), at_(start), format_(format), raster_(raster) {}

    void Run() {
        const bool oneBit = format_.bitDepth == 1;
        if (format_.compressed) return oneBit ? CompressedBits() : Compressed();
        return oneBit ? Bits() : Uncompressed();
    }

    std::size_t Position() const { return at_; }

  private:
    unsigned Byte() {
        const unsigned byte = at_ < data_.size() ? data_[at_] : 0;
        ++at_;
        return byte;
    }

    Cell Unit() {
        const int length = format_.bitDepth == 8 ? 1 : format_.bitDepth == 24 ? 4 : 2;
        std::array<unsigned, 4> bytes{};
        for (int i = 0; i < length; ++i) bytes[static_cast<std::size_t>(i)] = Byte();
        return Expand(format_.bitDepth, bytes);
    }

    /// True when it wrapped to a new row.
    bool Store(const Cell& cell) {
        if (x_ > 240 || y_ > 320) throw OutOfRange{};
        raster_.At(x_, y_) = cell;
        if (++x_ != format_.width) return false;
        x_ = 0;
        ++y_;
        return true;
    }

    static Cell Bit(unsigned bit) { return bit != 0 ? Cell{0, 0, 0, 0} : Cell{255, 255, 255, 0}; }

    void Bits() {
        while (y_ < format_.height) {
            const unsigned byte = Byte();
            for (int bit = 7; bit >= 0; --bit)
                if (Store(Bit(byte >> bit & 1))) break;
        }
    }

    void Uncompressed() {
        for (int i = 0; i < format_.width * format_.height; ++i) {
            const Cell cell = Unit();
            Store(format_.bitDepth == 12 ? Cell{} : cell);
        }
    }

    void CountEmptyGroup() {
        if (++emptyGroups_ > 65536) throw OutOfRange{};
    }

    bool Stops() const { return y_ >= format_.height || at_ >= data_.size(); }

    void Compressed() {
        do {
            const unsigned control = Byte();
            if (control == 0) CountEmptyGroup();
            if (control < 0x80) {
                const Cell cell = Unit();
                for (unsigned i = 0; i < control; ++i) Store(cell);
            } else {
                for (unsigned i = 0; i < 256 - control; ++i) Store(Unit());
            }
        } while (!Stops());
    }

    void CompressedBits() {
        do {
            const unsigned control = Byte();
            if (control == 0x80 || control == 0xC0) CountEmptyGroup();
            if (control < 0x80)
                for (int bit = 6; bit >= 0; --bit) Store(Bit(control >> bit & 1));
            else
                for (unsigned i = 0; i < (control & 63); ++i) Store(Bit(control >> 6 & 1));
        } while (!Stops());
    }

    const Bytes& data_;
    std::size_t at_;
    PictureFormat format_;
    Raster& raster_;
    int x_ = 0;
    int y_ = 0;
    int emptyGroups_ = 0;
};

/// The compressed encoder, as a walk of a cursor over the picture and the row below it.
class Encoder {
  public:
    Encoder(const Picture& picture, int bitDepth) : picture_(picture), bitDepth_(bitDepth) {}

    Bytes Run() {
        for (;;) {
            previous_ = Take();
            run_ = 1;
            if (!Scan()) return stored_;
        }
    }

  private:
    using Pixel = std::array<std::uint8_t, 4>;  // B, G, R, A

    Pixel Prepared(const Cell& c) const {
        const bool isMarker = c.r == 169 && c.g == 171 && c.b == 169;
        if (picture_.RasterHasAlpha) {
            if (bitDepth_ == 24) return {c.b, c.g, c.r, c.a};
            return c.a >= 127 ? Pixel{c.b, c.g, c.r, 0} : Pixel{169, 171, 169, 0};
        }
        if (bitDepth_ == 24) return {c.b, c.g, c.r, static_cast<std::uint8_t>(isMarker ? 0 : 255)};
        return {c.b, c.g, c.r, 0};
    }

    Pixel Take() {
        const bool isInside = x_ <= 240 && y_ <= 320;
        const Pixel pixel = isInside ? Prepared(picture_.raster.At(x_, y_)) : Pixel{};
        if (++x_ == picture_.width) {
            x_ = 0;
            ++y_;
        }
        return pixel;
    }

    void StepBack() {
        if (--x_ >= 0) return;
        x_ = picture_.width - 1;
        --y_;
    }

    /// From a new previous pixel to the end of a run; false when the picture ended.
    bool Scan() {
        while (y_ <= picture_.height) {
            const Pixel current = Take();
            if (y_ > picture_.height) {
                last_ = current;
                break;
            }
            if (current != previous_) {
                if (run_ > 1) {
                    WriteRun(run_);
                    StepBack();
                    return true;
                }
                literals_.push_back(previous_);
                previous_ = current;
                if (literals_.size() == 127) WriteLiterals();
            } else {
                WriteLiterals();
                if (++run_ == 127) {
                    WriteRun(run_);
                    return true;
                }
            }
        }
        Close();
        return false;
    }

    void Close() {
        if (literals_.empty()) return WriteRun(run_ + 1);
        WriteLiterals();
        Put(last_);
    }

    void WriteRun(std::size_t count) {
        stored_.push_back(static_cast<std::uint8_t>(count));
        Put(previous_);
    }

    void WriteLiterals() {
        if (literals_.empty()) return;
        stored_.push_back(static_cast<std::uint8_t>(256 - literals_.size()));
        for (const Pixel& pixel : literals_) Put(pixel);
        literals_.clear();
    }

    void Put(const Pixel& p) {
        const bool isMarker = p[2] == 169 && p[1] == 171 && p[0] == 169;
        if (bitDepth_ == 24) {
            stored_.insert(stored_.end(), p.begin(), p.end());
        } else if (bitDepth_ == 8) {
            const int value =
                Rounded(p[2] * 7 / 255.0) * 32 + Rounded(p[1] * 7 / 255.0) * 4 + Rounded(p[0] * 3 / 255.0);
            stored_.push_back(static_cast<std::uint8_t>(isMarker ? 0xC0 : value));
        } else {
            int word = Rounded(p[2] * 31 / 255.0) * 2048 + Rounded(p[1] * 63 / 255.0) * 32 +
                       Rounded(p[0] * 31 / 255.0);
            if (isMarker) word = 0xE000;
            stored_.push_back(static_cast<std::uint8_t>(word & 255));
            stored_.push_back(static_cast<std::uint8_t>(word >> 8));
        }
    }

    const Picture& picture_;
    int bitDepth_;
    int x_ = 0;
    int y_ = 0;
    Pixel previous_{};
    Pixel last_{};
    std::size_t run_ = 1;
    std::vector<Pixel> literals_;
    Bytes stored_;
};

}  // namespace plain

}  // namespace pictavo::tests
