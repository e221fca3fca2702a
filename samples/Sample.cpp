#include "samples/Sample.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <utility>

#include "samples/FileMakers.h"
#include "samples/PictureEncoders.h"
#include "samples/Room.h"

namespace pictavo::samples {

namespace {

constexpr std::uint64_t kMiB = 1U << 20;
constexpr std::uint64_t kPicturesStart = kMiB;

/// How many even shares of the room one picture or file may take.
constexpr std::uint64_t kPictureShares = 8;
constexpr std::uint64_t kFileShares = 3;

/// Room for any picture of 8 x 8 pixels (at most 257 bytes), and for any file of one or any document.
constexpr std::uint64_t kLeastPicture = 272;
constexpr std::uint64_t kLeastFile = 1216;

struct Extent {
    int width, height;
};

// Counts without a common divisor with each other and with the numbers of drawings and type codes, so that
// every combination comes up.
constexpr std::array<Extent, 13> kExtents{{{8, 8},
                                           {16, 16},
                                           {24, 24},
                                           {132, 176},
                                           {12, 12},
                                           {31, 17},
                                           {48, 48},
                                           {132, 18},
                                           {20, 14},
                                           {101, 80},
                                           {32, 32},
                                           {64, 64},
                                           {132, 40}}};
constexpr std::array<Extent, 13> kLongExtents{{{8, 8},
                                               {16, 16},
                                               {24, 24},
                                               {240, 320},
                                               {48, 48},
                                               {31, 17},
                                               {64, 64},
                                               {240, 30},
                                               {132, 176},
                                               {20, 14},
                                               {96, 96},
                                               {240, 24},
                                               {40, 40}}};

std::uint64_t Sixteenths(const SampleSpec& spec, std::uint64_t count) {
    return count * static_cast<std::uint64_t>(spec.sizeMiB) * kMiB / 16;
}

std::uint32_t Below(int number, std::size_t count) {
    return static_cast<std::uint32_t>(number) % static_cast<std::uint32_t>(count);
}

bool IsOneOf(int value, std::initializer_list<int> allowed) {
    return std::ranges::find(allowed, value) != allowed.end();
}

bool IsFileCount(int count) {
    return count >= 0 && count <= kLargestFileCount;
}

std::uint32_t SeedOf(const SampleSpec& spec, int number) {
    return spec.seed * 10000 + static_cast<std::uint32_t>(number);
}

DrawingRecipe FirstRecipe(const SampleSpec& spec, int number) {
    const auto& extents = HasLongRecords(spec.kind) ? kLongExtents : kExtents;
    const Extent extent = extents[Below(number, extents.size())];
    const auto kind = static_cast<DrawingKind>(number % kDrawingKindCount);
    return {kind, extent.width, extent.height, SeedOf(spec, number)};
}

void Halve(DrawingRecipe& recipe) {
    recipe.width = std::max(recipe.width / 2, 8);
    recipe.height = std::max(recipe.height / 2, 8);
}

bool IsSmallest(const DrawingRecipe& recipe) {
    return recipe.width <= 8 && recipe.height <= 8;
}

constexpr std::array<int, 7> kFileSides{16, 24, 32, 48, 20, 12, 40};
constexpr std::array<DrawingKind, 6> kFileDrawings{DrawingKind::Icon,     DrawingKind::Photo,
                                                   DrawingKind::Gradient, DrawingKind::SoftDisc,
                                                   DrawingKind::Glyphs,   DrawingKind::TransparencyChecker};
constexpr std::array<PngColour, 5> kPngColours{PngColour::Rgb, PngColour::Rgba, PngColour::Palette,
                                               PngColour::Grey, PngColour::GreyAlpha};

DrawingRecipe FileRecipe(int number, std::uint32_t seed) {
    const int side = kFileSides[Below(number, kFileSides.size())];
    return {kFileDrawings[Below(number, kFileDrawings.size())], side, side, seed};
}

/// Whether the two bytes that end a GIF file stand nowhere else in it: whoever cuts the file out of the flash
/// without reading it takes them for its end.
bool EndsOnce(const Bytes& gif) {
    constexpr std::array<std::uint8_t, 2> kEnd{0x00, 0x3B};
    const auto found = std::search(gif.begin(), gif.end(), kEnd.begin(), kEnd.end());
    return static_cast<std::size_t>(gif.end() - found) == kEnd.size();
}

Bytes MakePicture(FileKind kind, int number, DrawingRecipe recipe) {
    if (kind == FileKind::Png) return MakePng(Draw(recipe), kPngColours[Below(number, kPngColours.size())]);
    Bytes gif = MakeGif(Draw(recipe));
    while (!EndsOnce(gif)) {
        ++recipe.seed;
        gif = MakeGif(Draw(recipe));
    }
    return gif;
}

class SampleMaker {
  public:
    explicit SampleMaker(const SampleSpec& spec)
        : spec_(spec), sample_{FlashBuilder(spec.kind), {}, {}, {}} {}

    Sample Make() {
        sample_.flash.Size(Sixteenths(spec_, 16)).PicturesAt(kPicturesStart);
        sample_.flash.FillWithCode(0, Sixteenths(spec_, 16), spec_.seed);
        AddPictures();
        AddFiles();
        if (spec_.erasedAreas) EraseAreas();
        return std::move(sample_);
    }

  private:
    void AddPictures() {
        Room room(kPicturesStart, Sixteenths(spec_, 8), spec_.pictureCount, kLeastPicture);
        for (int number = 0; number < spec_.pictureCount; ++number) AddPicture(number, room);
    }

    void AddPicture(int number, Room& room) {
        const std::uint8_t typeCode = kTypeCodes[Below(number, kTypeCodes.size())];
        DrawingRecipe recipe = FirstRecipe(spec_, number);
        Bytes bytes = EncodeForPhone(Draw(recipe), typeCode);
        while (!room.Allows(bytes.size(), kPictureShares) && !IsSmallest(recipe)) {
            Halve(recipe);
            bytes = EncodeForPhone(Draw(recipe), typeCode);
        }
        sample_.pictures.push_back(
            {number, recipe.width, recipe.height, typeCode, room.Next(), bytes.size(), recipe});
        room.Take(bytes.size());
        sample_.flash.AddPicture(recipe.width, recipe.height, typeCode, std::move(bytes));
    }

    void AddFiles() {
        const int count = spec_.gifCount + spec_.pngCount + spec_.xmlCount;
        Room room(Sixteenths(spec_, 8), Sixteenths(spec_, 12), count, kLeastFile);
        for (int i = 0; i < kLargestFileCount; ++i) {
            if (i < spec_.gifCount) AddFile(FileKind::Gif, i, room);
            if (i < spec_.pngCount) AddFile(FileKind::Png, i, room);
            if (i < spec_.xmlCount) AddFile(FileKind::Xml, i, room);
        }
    }

    void AddFile(FileKind kind, int number, Room& room) {
        Bytes bytes = kind == FileKind::Xml ? MakeXml(Seed(number)) : PictureFile(kind, number, room);
        sample_.files.push_back({kind, room.Next(), bytes.size()});
        if (kind == FileKind::Xml) AppendBytes(bytes, Bytes{' ', 0x00});
        const std::uint64_t offset = room.Next();
        room.Take(bytes.size());
        sample_.flash.Put(offset, std::move(bytes));
    }

    Bytes PictureFile(FileKind kind, int number, const Room& room) const {
        DrawingRecipe recipe = FileRecipe(number, Seed(number));
        Bytes bytes = MakePicture(kind, number, recipe);
        while (!room.Allows(bytes.size(), kFileShares) && !IsSmallest(recipe)) {
            Halve(recipe);
            bytes = MakePicture(kind, number, recipe);
        }
        return bytes;
    }

    std::uint32_t Seed(int number) const { return SeedOf(spec_, number); }

    void EraseAreas() {
        const std::uint64_t behindPictures = (sample_.flash.NextPictureOffset() + 0xFFFF) / 0x10000 * 0x10000;
        Erase(0x60008, 0x1000);
        Erase(behindPictures, Sixteenths(spec_, 8) - behindPictures);
        Erase(Sixteenths(spec_, 12), Sixteenths(spec_, 2));
        for (std::uint64_t i = 1; i < 8; ++i) Erase(Sixteenths(spec_, 14) + i * 0x20000 + i, i * 0x100);
        Erase(Sixteenths(spec_, 16) - 0x10000, 0x10000);
    }

    void Erase(std::uint64_t offset, std::uint64_t length) {
        if (length == 0 || offset >= sample_.flash.Size()) return;
        sample_.flash.Erase(offset, length);
        sample_.erased.push_back({offset, length});
    }

    SampleSpec spec_;
    Sample sample_;
};

}  // namespace

int LargestPictureCount(FlashKind kind) {
    return HasLongRecords(kind) ? 2501 : 2001;
}

std::string FaultOf(const SampleSpec& spec) {
    const int most = LargestPictureCount(spec.kind);
    if (!IsOneOf(spec.sizeMiB, {16, 32, 64, 128})) return "the size is 16, 32, 64 or 128 MiB";
    if (spec.pictureCount < 0 || spec.pictureCount > most) {
        return "this kind of flash holds 0 to " + std::to_string(most) + " pictures";
    }
    if (!IsFileCount(spec.gifCount) || !IsFileCount(spec.pngCount) || !IsFileCount(spec.xmlCount)) {
        return "of each kind of file a sample holds 0 to " + std::to_string(kLargestFileCount);
    }
    return {};
}

Sample MakeSample(const SampleSpec& spec) {
    return SampleMaker(spec).Make();
}

}  // namespace pictavo::samples
