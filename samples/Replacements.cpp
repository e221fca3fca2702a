#include "samples/Replacements.h"

#include <array>
#include <cstddef>

#include "samples/FileMakers.h"

namespace pictavo::samples {

namespace {

enum class Format { Bmp8, Bmp24, Bmp32, PngRgb, PngRgba, Gif };

struct Plan {
    int number;
    Format format;
    DrawingKind drawing;
};

constexpr std::array<Plan, 8> kPlans{{{0, Format::Bmp24, DrawingKind::Photo},
                                      {1, Format::Bmp32, DrawingKind::SoftDisc},
                                      {2, Format::PngRgba, DrawingKind::Icon},
                                      {3, Format::PngRgb, DrawingKind::Gradient},
                                      {4, Format::Gif, DrawingKind::AnimationFrame},
                                      {6, Format::Bmp8, DrawingKind::Glyphs},
                                      {8, Format::Bmp24, DrawingKind::OneColour},
                                      {9, Format::PngRgba, DrawingKind::SoftDisc}}};

constexpr int kGrownSide = 64;
constexpr std::uint32_t kSeed = 4711;

Bytes FileOf(const Drawing& drawing, Format format) {
    switch (format) {
        case Format::Bmp8:
            return MakeBmp(drawing, 8);
        case Format::Bmp24:
            return MakeBmp(drawing, 24);
        case Format::Bmp32:
            return MakeBmp(drawing, 32);
        case Format::PngRgb:
            return MakePng(drawing, PngColour::Rgb);
        case Format::PngRgba:
            return MakePng(drawing, PngColour::Rgba);
        case Format::Gif:
            return MakeGif(drawing);
    }
    return {};
}

std::string NameOf(const Plan& plan) {
    const bool isPng = plan.format == Format::PngRgb || plan.format == Format::PngRgba;
    const std::string digits = std::to_string(plan.number);
    return std::string(4 - digits.size(), '0') + digits +
           (isPng                        ? ".png"
            : plan.format == Format::Gif ? ".gif"
                                         : ".bmp");
}

Drawing DrawingOf(const Plan& plan, const SamplePicture& picture) {
    const bool grows = plan.number == 0;
    return Draw(
        {plan.drawing, grows ? kGrownSide : picture.width, grows ? kGrownSide : picture.height, kSeed});
}

}  // namespace

std::vector<ReplacementFile> MakeReplacements(const Sample& sample) {
    std::vector<ReplacementFile> files;
    for (const Plan& plan : kPlans) {
        const auto number = static_cast<std::size_t>(plan.number);
        if (number >= sample.pictures.size()) break;
        files.push_back({NameOf(plan), FileOf(DrawingOf(plan, sample.pictures[number]), plan.format)});
    }
    return files;
}

}  // namespace pictavo::samples
