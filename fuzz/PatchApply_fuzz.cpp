/// The road of replaced pictures: planned, written as a patch, read and applied. The patched flash must hold
/// the new record and the new picture of each section that was placed, and every other byte as it was.

#include <cstring>
#include <fstream>
#include <iterator>

#include "Holds.h"
#include "Input.h"
#include "ScratchFolder.h"
#include "core/OutputFile.h"
#include "patch/PatchReader.h"
#include "patch/PatchWriter.h"
#include "patch/PitRecord.h"
#include "patch/PngPatch.h"

namespace pictavo::fuzz {
namespace {

constexpr std::string_view kPngStart = "\x89PNG\r\n\x1A\n";

const ScratchFolder& Scratch() {
    static const ScratchFolder folder;
    return folder;
}

void WriteScratch(const std::filesystem::path& path, ByteView bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    Holds(file.good(), "the scratch folder has room");
}

Bytes ReadScratch(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), {});
}

/// A flash of up to 64 KiB: a stretch of code, erased and coded stretches by turns, and a PNG file somewhere.
Bytes FlashBytes(Input& input) {
    Bytes bytes(0x100, 0x5A);
    const std::size_t stretches = input.Byte() % 32;
    for (std::size_t i = 0; i < stretches; ++i) {
        const bool isErased = input.Flag();
        bytes.insert(bytes.end(), input.Byte() * (isErased ? 8U : 1U), isErased ? 0xFF : 0x33);
    }
    return bytes;
}

FullflashImage Phone(Input& input, const Bytes& bytes) {
    FullflashImage flash;
    const std::uint8_t kind = input.Byte();
    flash.NewSGold = kind % 2 != 0;
    flash.mModel = kind % 4 == 3 ? "E71" : "T75";
    flash.ManufN = input.Text();
    flash.FreeSearchOffset = input.Number16();
    flash.source = std::make_shared<MemorySource>(bytes);
    return flash;
}

ReplacedRow RowFrom(Input& input, int number) {
    PictureRecord record{.number = number};
    record.pitOffset = input.Number16();
    record.picOffset = input.Number16();
    ReplacedRow row{record, input.Number16(), std::nullopt};
    const std::uint8_t kind = input.Byte();
    if (kind == 0) return row;
    const GpfHeader header{input.Byte(), input.Byte(), kind, static_cast<std::uint16_t>(number), true};
    const std::size_t length = input.Number16() % 2000;
    const Bytes stored = input.Take(length);
    const auto path = Scratch() / (std::to_string(number) + ".gpf2");
    WriteScratch(path, ComposeGpf(header, stored));
    row.picture = NewPicture{path, header, stored.size()};
    return row;
}

bool IsErased(const Bytes& flash, std::uint64_t offset, std::uint64_t length) {
    if (offset > flash.size() || length > flash.size() - offset) return false;
    const auto begin = flash.begin() + static_cast<std::ptrdiff_t>(offset);
    return std::all_of(begin, begin + static_cast<std::ptrdiff_t>(length),
                       [](std::uint8_t byte) { return byte == 0xFF; });
}

/// The flash as it must come out, section after section.
class Expected {
  public:
    Expected(const FullflashImage& flash, const Bytes& bytes) : flash_(flash), old_(bytes), bytes_(bytes) {}

    void Take(const PatchSection& section) {
        if (!section.IsWritten()) return;
        const NewPicture& picture = *section.row.picture;
        Bytes file = ReadScratch(picture.workFile);
        const auto length = static_cast<std::size_t>(picture.length);
        if (section.placement == Placement::Moved) CheckPlace(section.offset, length);
        const std::size_t record = RecordSize(flash_);
        StoredAddress address = StoredAddressOf(section.offset);
        if (section.placement == Placement::InPlace)
            std::memcpy(address.data(), &old_[section.row.record.pitOffset + record - 4], address.size());
        Put(section.row.record.pitOffset, ComposePitRecord(flash_, picture.header, address));
        Put(section.offset, ByteView(file).subspan(kGpfHeaderSize, length));
    }

    void Put(std::uint64_t offset, ByteView bytes) {
        Holds(offset <= bytes_.size() && bytes.size() <= bytes_.size() - offset,
              "what is written lies in the flash");
        std::copy(bytes.begin(), bytes.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(offset));
        written_.push_back({offset, offset + bytes.size()});
    }

    const Bytes& Flash() const { return bytes_; }

  private:
    /// A moved picture goes where flash is free, behind where the search began, and under no other section.
    void CheckPlace(std::uint64_t offset, std::size_t length) const {
        Holds(offset >= flash_.FreeSearchOffset, "a picture is moved behind the start of the search");
        Holds(IsErased(old_, offset, length), "a picture is moved to erased flash");
        for (const FileRange& range : written_)
            Holds(!range.Touches({offset, offset + length}), "a picture is moved to where no other goes");
    }

    const FullflashImage& flash_;
    const Bytes& old_;
    Bytes bytes_;
    std::vector<FileRange> written_;
};

/// The text of the sections, and the flash that they make.
std::string WriteSections(const FullflashImage& flash, const PatchPlan& plan, Expected& expected) {
    const auto path = Scratch() / "patch.vkp";
    auto file = OutputFile::Create(path);
    Holds(file && file->Write(AsBytes(PatchBanner(flash))), "a patch can be begun");
    for (const PatchSection& section : plan.sections) {
        Holds(WritePatchSection(flash, section, *file).has_value(), "what was placed can be written");
        expected.Take(section);
    }
    Holds(file->Commit(CommitMode::Replace).has_value(), "a patch can be finished");
    const Bytes text = ReadScratch(path);
    return std::string(AsText(text));
}

/// A section that puts a new PNG file over one in the flash.
std::string WritePngSection(const FullflashImage& flash, const FileRange& place, const Bytes& png,
                            Expected& expected) {
    const auto section = PngSection(*flash.source, place, "1", png);
    if (!section) {
        Holds(section.error().kind == ErrorKind::Truncated,
              "only the end of the flash stops a PNG file that fits");
        return {};
    }
    Bytes written = png;
    written.resize(std::max<std::size_t>(png.size(), static_cast<std::size_t>(place.Length())), 0xFF);
    expected.Put(place.begin, written);
    return *section;
}

void CheckApplied(const std::string& text, const FullflashImage& flash, const Bytes& expected) {
    const ByteView bytes = AsBytes(text);
    const auto entries = ReadPatch(MemorySource(Bytes(bytes.begin(), bytes.end())));
    Holds(entries.has_value(), "a written patch can be read");
    const auto mismatches = CheckPatch(*entries, *flash.source);
    Holds(mismatches && mismatches->empty(), "a written patch has the flash's old bytes");
    const auto copy = Scratch() / "copy.bin";
    Holds(ApplyPatch(*entries, *flash.source, copy, true).has_value(), "a written patch can be applied");
    Holds(ReadScratch(copy) == expected,
          "a patch gives the new bytes at their places and touches nothing else");
}

/// Puts a PNG file into the flash at a place of the input's choice; nothing when it does not fit.
std::optional<FileRange> PlantPng(Input& input, Bytes& flash) {
    const std::uint64_t at = input.Number16();
    const std::string png = std::string(kPngStart) + input.Text() + "IEND" + "CRC!";
    if (at > flash.size() || png.size() > flash.size() - at) return std::nullopt;
    std::copy(png.begin(), png.end(), flash.begin() + static_cast<std::ptrdiff_t>(at));
    const auto place = FindPngInFlash(MemorySource(flash), at);
    Holds(place && place->begin == at && place->end <= at + png.size(), "a PNG file in the flash is found");
    return *place;
}

void Run(Input input) {
    Bytes bytes = FlashBytes(input);
    const auto place = PlantPng(input, bytes);
    const FullflashImage flash = Phone(input, bytes);
    const std::string text = input.Text();
    const Bytes png(text.begin(), text.end());
    const bool hasPng = place && CheckPngFits(*flash.source, *place, png.size());
    std::vector<FileRange> pngRanges;
    if (hasPng) pngRanges.push_back(PngSectionRange(*place, png.size()));
    std::vector<ReplacedRow> rows;
    for (int number = 0; number < 8 && !input.IsUsedUp(); ++number) rows.push_back(RowFrom(input, number));
    const auto plan = PlanPatch(flash, rows, pngRanges);
    Holds(plan && plan->sections.size() == rows.size(), "each row has its section");
    Expected expected(flash, bytes);
    std::string patch = WriteSections(flash, *plan, expected);
    if (hasPng) patch += WritePngSection(flash, *place, png, expected);
    CheckApplied(patch, flash, expected.Flash());
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
