/// Encoding into every type that is written: compressed streams must be those of the plain encoder, and what
/// is decoded again must be the picture after quantisation.

#include "Holds.h"
#include "Input.h"
#include "Rasters.h"
#include "codec/PictureEncoder.h"
#include "tests/codec/PlainCodec.h"

namespace pictavo::fuzz {
namespace {

using tests::plain::Rounded;

constexpr std::array<std::uint8_t, 7> kTypes{kType1Bit,           kType8Bit,           kType16Bit,
                                             kType24Bit,          kType8BitCompressed, kType16BitCompressed,
                                             kType24BitCompressed};

/// Few colours give runs; the marker and alphas about the border between the two rules are among them.
std::vector<Cell> Colours(Input& input) {
    std::vector<Cell> colours{kTransparentMarker, {0, 0, 0, 126}, {255, 255, 255, 127}};
    const std::size_t count = 1 + input.Byte() % 6;
    for (std::size_t i = 0; i < count; ++i)
        colours.push_back({input.Byte(), input.Byte(), input.Byte(), input.Byte()});
    return colours;
}

/// Mostly low ones, which take less time.
int HeightFrom(Input& input) {
    const std::uint16_t wish = input.Number16();
    return 1 + wish % (wish >= 0xF000 ? 320 : 24);
}

/// Cells in row order, the row below the picture among them: each byte is a colour and how often it stands.
const Picture& PictureFrom(Input& input) {
    static Picture kept;
    Picture& picture = Renewed(kept);
    picture.width = 1 + input.Byte() % 240;
    picture.height = HeightFrom(input);
    picture.RasterHasAlpha = input.Flag();
    const std::vector<Cell> colours = Colours(input);
    std::uint32_t left = 0;
    Cell cell;
    for (int y = 0; y <= picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            if (left == 0) {
                const std::uint8_t next = input.Byte();
                if (next == 0 && input.IsUsedUp()) return picture;
                cell = colours[next % colours.size()];
                left = 1U + (next / 16U) * (next / 16U);
            }
            picture.raster.At(x, y) = cell;
            --left;
        }
    }
    return picture;
}

/// The transparency of a cell in a picture of `bitDepth`.
Cell Prepared(const Picture& picture, const Cell& cell, int bitDepth) {
    if (bitDepth == 24) {
        if (picture.RasterHasAlpha) return cell;
        return {cell.r, cell.g, cell.b, static_cast<std::uint8_t>(IsMarkerColour(cell) ? 0 : 255)};
    }
    if (picture.RasterHasAlpha && cell.a < 127) return kTransparentMarker;
    return {cell.r, cell.g, cell.b, 0};
}

Cell Quantised(const Cell& cell, int bitDepth) {
    if (bitDepth == 24) return cell;
    if (bitDepth == 1) {
        const bool isWhite = cell.r / 3.0 + cell.g / 3.0 + cell.b / 3.0 >= 127;
        return isWhite ? Cell{255, 255, 255, 0} : Cell{};
    }
    if (IsMarkerColour(cell)) return kTransparentMarker;
    const int green = bitDepth == 8 ? 7 : 63;
    const int red = bitDepth == 8 ? 7 : 31;
    const int blue = bitDepth == 8 ? 3 : 31;
    const auto level = [](int value, int most) {
        return Rounded(Rounded(value * most / 255.0) * 255.0 / most);
    };
    const Cell shown{level(cell.r, red), level(cell.g, green), level(cell.b, blue), 0};
    const Cell stored{255, 0, 0, 0};  // 8 bits: C0 is 6/7 of red; 16 bits: E000 is 28/31 of it
    const bool readsAsTransparent =
        shown.g == stored.g && shown.b == stored.b &&
        shown.r == (bitDepth == 8 ? Rounded(6 * 255 / 7.0) : Rounded(28 * 255 / 31.0));
    return readsAsTransparent ? kTransparentMarker : shown;
}

/// Kept: the closing group of a compressed picture one pixel wide may lose its last pixel.
bool MayBeLost(const Picture& picture, std::uint8_t type, int y) {
    return IsCompressed(type) && picture.width == 1 && y == picture.height - 1;
}

/// What each cell of the picture must be decoded to, one after the other: neighbours are mostly equal, and
/// quantising takes time.
class Quantiser {
  public:
    Quantiser(const Picture& picture, int bitDepth) : picture_(picture), bitDepth_(bitDepth) {}

    const Cell& At(int x, int y) {
        const Cell& cell = picture_.raster.At(x, y);
        if (!last_ || *last_ != cell) quantised_ = Quantised(Prepared(picture_, cell, bitDepth_), bitDepth_);
        last_ = cell;
        return quantised_;
    }

  private:
    const Picture& picture_;
    int bitDepth_;
    std::optional<Cell> last_;
    Cell quantised_;
};

void CheckDecoded(const Picture& picture, const Picture& decoded, std::uint8_t type) {
    Quantiser expected(picture, *BitDepthOf(type));
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
            Holds(MayBeLost(picture, type, y) || decoded.raster.At(x, y) == expected.At(x, y),
                  "a picture encoded and decoded is the picture after quantisation");
}

void Run(Input input) {
    const std::uint8_t type = kTypes[input.Byte() % kTypes.size()];
    const Picture& picture = PictureFrom(input);
    const Bytes stored = EncodePicture(picture, type);
    const int depth = *BitDepthOf(type);
    if (IsCompressed(type))
        Holds(stored == tests::plain::Encoder(picture, depth).Run(),
              "the groups are those of the plain encoder");
    static Picture kept;
    Picture& decoded = Renewed(kept);
    const auto result = DecodePicture(MemorySource(stored), 0,
                                      {picture.width, picture.height, depth, IsCompressed(type)}, decoded);
    Holds(result.has_value(), "what was encoded can be decoded");
    Holds(picture.width == 1 || result->complete, "what was encoded is complete");
    Holds(picture.width == 1 || result->consumed <= stored.size(), "no more is decoded than was encoded");
    CheckDecoded(picture, decoded, type);
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
