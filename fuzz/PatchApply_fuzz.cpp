/// The road of replaced pictures: planned, written as a patch, read and applied. Each row must be placed
/// where the plain planner places it, with the lines that say so; and the patched flash must hold the new
/// record and the new picture of each row that is written, and every other byte as it was.

#include <fstream>
#include <iterator>

#include "Holds.h"
#include "Input.h"
#include "PlainPlan.h"
#include "ScratchFolder.h"
#include "core/OutputFile.h"
#include "patch/PatchReader.h"
#include "patch/PatchWriter.h"
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

/// A replaced row, and the data of its new picture.
struct Row {
    ReplacedRow row;
    Bytes data;
};

/// A work file that ends before its picture does is filled up with zeros.
Row RowFrom(Input& input, int number) {
    PictureRecord record{.number = number};
    record.pitOffset = input.Number16();
    record.picOffset = input.Number16();
    Row row{{record, input.Number16(), std::nullopt}, {}};
    const std::uint8_t kind = input.Byte();
    if (kind == 0) return row;
    const GpfHeader header{input.Byte(), input.Byte(), kind, static_cast<std::uint16_t>(number), true};
    const std::size_t length = 1U + input.Number16() % 2000U;
    row.data = input.Take(length);
    const auto path = Scratch() / (std::to_string(number) + ".gpf2");
    WriteScratch(path, ComposeGpf(header, row.data));
    row.data.resize(length);
    row.row.picture = NewPicture{path, header, length};
    return row;
}

/// The flash as it must come out, and the text that makes it so, section after section.
class Expected {
  public:
    Expected(const FullflashImage& flash, const Bytes& bytes)
        : isLong_(flash.NewSGold && flash.mModel == "E71"), old_(bytes), bytes_(bytes) {}

    void Take(const Row& row, const plain::Place& place) {
        text_ += "\r\n; ##### Picture 000" + std::to_string(row.row.record.number) + " #####\r\n";
        if (!plain::IsWritten(place)) return;
        const std::uint64_t at = row.row.record.pitOffset;
        const Bytes record =
            plain::RecordOf(row.row.picture->header, PhoneAddress(row.row.record, place), isLong_);
        text_ += plain::PatchLinesOf(old_, at, record) + "\r\n" +
                 plain::PatchLinesOf(old_, place.offset, row.data);
        Put(at, record);
        Put(place.offset, row.data);
    }

    void Put(std::uint64_t offset, ByteView bytes) {
        Holds(offset <= bytes_.size() && bytes.size() <= bytes_.size() - offset,
              "what is written lies in the flash");
        std::copy(bytes.begin(), bytes.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(offset));
    }

    std::size_t RecordSize() const { return isLong_ ? 12 : 8; }
    const Bytes& Flash() const { return bytes_; }
    const std::string& Text() const { return text_; }

  private:
    /// That of the old record, unless the picture is moved.
    std::uint64_t PhoneAddress(const PictureRecord& record, const plain::Place& place) const {
        if (place.placement == Placement::Moved) return 0xA0000000 + place.offset;
        std::uint64_t address = 0;
        for (std::size_t i = RecordSize(); i > RecordSize() - 4; --i)
            address = address << 8 | old_[record.pitOffset + i - 1];
        return address;
    }

    bool isLong_;
    const Bytes& old_;
    Bytes bytes_;
    std::string text_;
};

std::vector<ReplacedRow> WithoutData(const std::vector<Row>& rows) {
    std::vector<ReplacedRow> replaced;
    for (const Row& row : rows) replaced.push_back(row.row);
    return replaced;
}

/// Plans the rows plainly, and takes them all into `expected`.
void CheckPlan(const PatchPlan& plan, const std::vector<Row>& rows, plain::Planner& planner,
               Expected& expected) {
    const std::vector<plain::Place> places = planner.Plan(WithoutData(rows));
    Holds(plan.sections.size() == rows.size(), "each row has its section");
    for (std::size_t i = 0; i < rows.size(); ++i) {
        Holds(plan.sections[i].placement == places[i].placement, "a row is placed as the plain planner says");
        Holds(!plain::IsWritten(places[i]) || plan.sections[i].offset == places[i].offset,
              "a row is placed where the plain planner says");
        expected.Take(rows[i], places[i]);
    }
    Holds(plan.freeSearchOffset == planner.Next(), "the next search begins behind the last place");
}

/// The text of the sections, without the banner.
std::string WriteSections(const FullflashImage& flash, const PatchPlan& plan) {
    const auto path = Scratch() / "patch.vkp";
    auto file = OutputFile::Create(path);
    Holds(file.has_value(), "a patch can be begun");
    for (const PatchSection& section : plan.sections)
        Holds(WritePatchSection(flash, section, *file).has_value(), "what was placed can be written");
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
    const MemorySource patch(Bytes(bytes.begin(), bytes.end()));
    const auto check = CheckPatch(patch, *flash.source, [](const PatchMismatch&) {});
    Holds(check.has_value(), "a written patch can be read");
    Holds(check->mismatches == 0, "a written patch has the flash's old bytes");
    const auto copy = Scratch() / "copy.bin";
    Holds(ApplyPatch(patch, *flash.source, copy, true).has_value(), "a written patch can be applied");
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

/// Somewhere, of any length.
FileRange HeldPicture(Input& input) {
    const std::uint64_t begin = input.Number16();
    return {begin, begin + input.Byte()};
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
    std::vector<Row> rows;
    for (int number = 0; number < 8 && !input.IsUsedUp(); ++number) rows.push_back(RowFrom(input, number));
    const HeldRanges held{pngRanges, {HeldPicture(input)}};
    const auto plan = PlanPatch(flash, WithoutData(rows), held);
    Holds(plan.has_value(), "memory can be read");
    Expected expected(flash, bytes);
    plain::Planner planner(bytes, expected.RecordSize(), flash.FreeSearchOffset);
    for (const FileRange& range : held.pngs) planner.PutPng(range);
    for (const FileRange& range : held.pictures) planner.PutPicture(range);
    CheckPlan(*plan, rows, planner, expected);
    std::string patch = WriteSections(flash, *plan);
    Holds(patch == expected.Text(), "the sections are the plain ones");
    if (hasPng) patch += WritePngSection(flash, *place, png, expected);
    CheckApplied(PatchBanner(flash) + patch, flash, expected.Flash());
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
