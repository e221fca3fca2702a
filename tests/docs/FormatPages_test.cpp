#include <cstdio>
#include <functional>
#include <gmock/gmock.h>
#include <regex>

#include "codec/Bitmap.h"
#include "codec/GPFcodec.h"
#include "codec/PictureEncoder.h"
#include "codec/PictureSignature.h"
#include "config/AppSettings.h"
#include "config/LanguageFile.h"
#include "core/BasicCalculations_Tarsk.h"
#include "docs/FormatPage.h"
#include "patch/PatchReader.h"
#include "patch/PatchWriter.h"
#include "patch/PitBlocks.h"
#include "patch/PitRecord.h"
#include "support/SettingsFlags.h"
#include "tools/EmbeddedFiles.h"
#include "tools/GpnReader.h"
#include "tools/PNGcodec.h"

namespace pictavo::tests {
namespace {

using ::testing::SizeIs;

std::string HexNumber(std::uint64_t number) {
    return "0x" + UpperHex(number);
}

MemorySource SourceOf(const std::string& text) {
    const ByteView bytes = AsBytes(text);
    return MemorySource(Bytes(bytes.begin(), bytes.end()));
}

/// The lines as a file holds them.
std::string Joined(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\r\n";
    return text;
}

// ---------------------------------------------------------------------------------------------- numbers.md

template <typename Number>
std::string TextOf(const Result<Number>& number) {
    return number ? std::to_string(*number) : "error";
}

std::string Spaced(ByteView bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes)
        text += (text.empty() ? "" : " ") + BytesToHex(std::array{byte}, false);
    return text;
}

const std::map<std::string, std::function<std::string(const std::string&)>> kFunctions = {
    {"HexToNumber", [](const std::string& text) { return TextOf(HexToNumber(text)); }},
    {"HexToBytes", [](const std::string& text) { return Spaced(HexToBytes(text, false)); }},
    {"BitsToNumber", [](const std::string& text) { return TextOf(BitsToNumber(text)); }},
    {"NumberText", [](const std::string& text) { return NumberText(text).value_or("error"); }},
};

TEST(FormatPages, NumbersShowsTheStoredAddress) {
    const FormatPage page("numbers.md");
    const Bytes stored = page.Hex("stored-address");
    const Lines lines = {"reversed " + BytesToHex(stored, true),
                         "offset " + UpperHex(BytesToOffset(stored).value_or(0))};
    EXPECT_EQ(lines, page.Text("stored-address"));
}

TEST(FormatPages, NumbersShowsEachCallAsItComesOut) {
    static const std::regex kCall(R"((\w+)\(([\w-]*)\) = (.+))");
    const Lines calls = FormatPage("numbers.md").Text("calls");
    EXPECT_THAT(calls, SizeIs(18));
    for (const std::string& line : calls) {
        std::smatch call;
        ASSERT_TRUE(std::regex_match(line, call, kCall)) << line;
        EXPECT_EQ(kFunctions.at(call[1])(call[2]), call[3]) << line;
    }
}

// -------------------------------------------------------------------------------------------- fullflash.md

FullflashImage Identified(Bytes bytes) {
    auto flash = IdentifyFullflash(std::make_shared<MemorySource>(std::move(bytes)));
    EXPECT_TRUE(flash);
    return flash.value_or(FullflashImage());
}

Lines IdentityLines(const FullflashImage& flash) {
    return {"mModel " + flash.mModel,
            "fw " + flash.fw,
            "lngPack " + flash.lngPack,
            "ManufN " + flash.ManufN,
            "platform " + flash.platform,
            "PITadr " + flash.PITadr,
            "pitOffset " + HexNumber(flash.pitOffset.value_or(0)),
            "FreeSearchOffset " + HexNumber(flash.FreeSearchOffset),
            "record " + std::to_string(RecordSize(flash)) + " bytes"};
}

TEST(FormatPages, FullflashIdentifiesBothPhones) {
    const FormatPage page("fullflash.md");
    for (const char* name : {"new-sgold", "sgold"})
        EXPECT_EQ(IdentityLines(Identified(page.Hex(name))), page.Text(name)) << name;
}

// ---------------------------------------------------------------------------------------- picture-table.md

/// A flash that is nothing but its table.
FullflashImage TableOnly(const Bytes& table, bool hasLongRecords) {
    FullflashImage flash;
    flash.source = std::make_shared<MemorySource>(table);
    flash.NewSGold = hasLongRecords;
    flash.mModel = "E71";
    flash.pitOffset = 0;
    return flash;
}

std::string RowLine(const PictureRecord& record) {
    std::string line;
    for (const Column column : kColumns) line += (line.empty() ? "" : " ") + ColumnText(record, column);
    return line;
}

GpfHeader HeaderOf(const PictureRecord& record) {
    return {static_cast<std::uint16_t>(record.width), static_cast<std::uint16_t>(record.height),
            record.typeCode, 0, true};
}

TEST(FormatPages, PictureTableListsTheRowsOfBothForms) {
    const FormatPage page("picture-table.md");
    for (const std::string name : {"short", "long"}) {
        const auto table = ReadPictureTable(TableOnly(page.Hex(name), name == "long"));
        ASSERT_TRUE(table);
        Lines rows;
        for (const PictureRecord& record : table->rows) rows.push_back(RowLine(record));
        EXPECT_EQ(rows, page.Text(name));
        EXPECT_TRUE(table->endMet);
    }
}

TEST(FormatPages, PictureTableRecordsAreThoseThatAreComposed) {
    const FormatPage page("picture-table.md");
    for (const std::string name : {"short", "long"}) {
        const Bytes bytes = page.Hex(name);
        const FullflashImage flash = TableOnly(bytes, name == "long");
        const PictureRecord record = ReadPictureTable(flash)->rows.at(1);
        Bytes composed = ComposePitRecord(flash, HeaderOf(record), StoredAddressOf(record.picOffset));
        EXPECT_TRUE(std::equal(composed.begin(), composed.end(), bytes.begin() + record.pitOffset)) << name;
    }
}

// --------------------------------------------------------------------------------------- phone-pictures.md

/// Fills the Raster before a decode; a page shows it as a cell that nothing was stored in.
constexpr Cell kUntouched{1, 2, 3, 4};

std::string CellText(const Cell& cell) {
    if (cell == kUntouched) return "--------";
    return BytesToHex(std::array{cell.r, cell.g, cell.b, cell.a}, false);
}

Cell CellOf(const std::string& text) {
    const Bytes bytes = HexToBytes(text, false);
    return {bytes.at(0), bytes.at(1), bytes.at(2), bytes.at(3)};
}

std::string PixelRow(const Picture& picture, int y) {
    std::string line;
    for (int x = 0; x < picture.width; ++x) line += (x == 0 ? "" : " ") + CellText(picture.raster.At(x, y));
    return line;
}

/// Rows of pixels as a picture; `height` of them are the picture, the others stand below it.
Picture PictureOf(const Lines& rows, int height) {
    Picture picture;
    picture.height = height;
    for (int y = 0; y < static_cast<int>(rows.size()); ++y) {
        std::istringstream cells(rows[static_cast<std::size_t>(y)]);
        int x = 0;
        for (std::string cell; cells >> cell; ++x) picture.raster.At(x, y) = CellOf(cell);
        picture.width = x;
    }
    return picture;
}

Picture PictureOf(const Lines& rows) {
    return PictureOf(rows, static_cast<int>(rows.size()));
}

/// The line above the pixels: "type 85, 5 x 1", and of a decoded picture ", consumed 5".
struct Description {
    unsigned type = 0;
    PictureFormat format;
    unsigned consumed = 0;
};

Description DescriptionOf(const std::string& line) {
    Description d;
    const int fields = std::sscanf(line.c_str(), "type %x, %d x %d, consumed %u", &d.type, &d.format.width,
                                   &d.format.height, &d.consumed);
    EXPECT_GE(fields, 3) << line;
    d.format.bitDepth = BitDepthOf(d.type).value_or(0);
    d.format.compressed = IsCompressed(static_cast<std::uint8_t>(d.type));
    return d;
}

struct PixelExample {
    explicit PixelExample(const std::string& name)
        : stored(FormatPage("phone-pictures.md").Hex(name)),
          rows(FormatPage("phone-pictures.md").Text(name)) {
        description = DescriptionOf(rows.at(0));
        rows.erase(rows.begin());
    }

    Bytes stored;
    Lines rows;
    Description description;
};

class DecodedExamples : public ::testing::TestWithParam<const char*> {};

TEST_P(DecodedExamples, GiveThePixelsOfThePage) {
    const PixelExample example(GetParam());
    Picture picture;
    std::fill_n(picture.raster.From(0, 0), Raster::kColumns * Raster::kRows, kUntouched);
    const auto decoded = DecodePicture(MemorySource(example.stored), 0, example.description.format, picture);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->consumed, example.description.consumed);
    Lines rows;
    for (int y = 0; y < static_cast<int>(example.rows.size()); ++y) rows.push_back(PixelRow(picture, y));
    EXPECT_EQ(rows, example.rows);
}

std::string TestName(const ::testing::TestParamInfo<const char*>& name) {
    std::string text = name.param;
    std::replace(text.begin(), text.end(), '-', '_');
    return text;
}

INSTANTIATE_TEST_SUITE_P(FormatPages, DecodedExamples,
                         ::testing::Values("run-and-literals", "bit-groups", "bit-rows", "words", "alpha",
                                           "black-words"),
                         TestName);

class EncodedExamples : public ::testing::TestWithParam<const char*> {};

TEST_P(EncodedExamples, GiveTheBytesOfThePage) {
    const PixelExample example(GetParam());
    const Picture picture = PictureOf(example.rows, example.description.format.height);
    ASSERT_EQ(picture.width, example.description.format.width);
    EXPECT_EQ(EncodePicture(picture, static_cast<std::uint8_t>(example.description.type)), example.stored);
}

INSTANTIATE_TEST_SUITE_P(FormatPages, EncodedExamples,
                         ::testing::Values("extra-row", "lost-pixel", "late-equals", "collision",
                                           "threshold"),
                         TestName);

TEST(FormatPages, ThePageOfPhonePicturesTellsWhatReadsBackOtherwise) {
    Picture picture;
    ASSERT_TRUE(DecodePicture(MemorySource(PixelExample("collision").stored), 0, {1, 1, 8, false}, picture));
    EXPECT_EQ(picture.raster.At(0, 0), kTransparentMarker);
    const PixelExample lost("lost-pixel");
    picture.raster.At(0, 1) = {9, 9, 9, 0};
    ASSERT_TRUE(DecodePicture(MemorySource(lost.stored), 0, lost.description.format, picture));
    EXPECT_NE(CellText(picture.raster.At(0, 1)), lost.rows.at(1));
}

// -------------------------------------------------------------------------------------------------- gpf.md

TEST(FormatPages, GpfReadsAndWritesBothVariants) {
    const FormatPage page("gpf.md");
    for (const std::string name : {"gpf", "gpf2"}) {
        const Bytes file = page.Hex(name);
        Picture picture;
        const auto loaded = LoadGpf(MemorySource(file), picture);
        ASSERT_TRUE(loaded) << name;
        const auto [header, decoded] = *loaded;
        EXPECT_EQ(header.isGPF2, name == "gpf2");
        const std::string line =
            InformationLine(std::to_string(header.number), GpfPictureFormat(header), decoded.consumed);
        EXPECT_EQ(Lines{line}, page.Text("information-line"));
        EXPECT_EQ(Lines{PixelRow(picture, 0)}, page.Text("pixels"));
        const ByteView stored = ByteView(file).subspan(kGpfHeaderSize, decoded.consumed);
        EXPECT_EQ(ComposeGpf(header, stored), file);
    }
}

TEST(FormatPages, GpfClampsTheSizesOfItsHeader) {
    const auto header = GpfHeaderBytes({240, 320, 0x88, 0, false});
    EXPECT_EQ(Bytes(header.begin(), header.end()), FormatPage("gpf.md").Hex("clamped"));
}

TEST(FormatPages, GpfJudgesTypesAsText) {
    const Lines lines = FormatPage("gpf.md").Text("types");
    EXPECT_THAT(lines, SizeIs(5));
    for (const std::string& line : lines) {
        GpfHeader header;
        header.type = static_cast<std::uint16_t>(std::stoul(line, nullptr, 16));
        const PictureFormat format = GpfPictureFormat(header);
        EXPECT_EQ(line, PadZeros(UpperHex(header.type), 4, true) + " " + std::to_string(format.bitDepth) +
                            "bit " + (format.compressed ? "compressed" : "uncompressed"));
    }
}

// ----------------------------------------------------------------------------------------------- bitmap.md

TEST(FormatPages, BitmapIsWrittenInAllThreeForms) {
    const FormatPage page("bitmap.md");
    EXPECT_EQ(ComposeBitmap(PictureOf(page.Text("plain")), false), page.Hex("plain"));
    EXPECT_EQ(ComposeBitmap(PictureOf(page.Text("four-bytes")), true), page.Hex("four-bytes"));
    const ChannelFlags redAndGreen{true, true, false, false};
    EXPECT_EQ(ComposeBitmap(PictureOf(page.Text("channels")), false, redAndGreen), page.Hex("channels"));
}

TEST(FormatPages, BitmapOf32BitsIsReadWithItsAlpha) {
    const FormatPage page("bitmap.md");
    const MemorySource source(page.Hex("four-bytes"));
    const auto info = ReadPictureFileInfo(source);
    ASSERT_TRUE(info);
    const auto pixels = ReadBitmap32(source, *info);
    ASSERT_TRUE(pixels);
    Picture picture;
    StoreImportedPixels(*pixels, 32, {}, picture);
    EXPECT_EQ(Lines{PixelRow(picture, 0)}, page.Text("four-bytes-read"));
    EXPECT_TRUE(picture.RasterHasAlpha);
}

// ------------------------------------------------------------------------------------------ pictures-in.md

std::string KindLine(const std::string& name, const PictureFileInfo& info) {
    std::string line = name + " " + std::to_string(info.width) + " x " + std::to_string(info.height) + ", " +
                       std::to_string(info.bitDepth) + "bit";
    if (info.kind == PictureFileKind::Bitmap)
        line += ", pixels at " + std::to_string(info.pixelOffset) + (info.topDown ? ", from the top" : "");
    return line;
}

TEST(FormatPages, PicturesInAreToldApartAndMeasured) {
    const FormatPage page("pictures-in.md");
    Lines lines;
    for (const char* name : {"bmp", "gif", "jpeg"}) {
        const auto info = ReadPictureFileInfo(MemorySource(page.Hex(name)));
        ASSERT_TRUE(info) << name;
        lines.push_back(KindLine(name, *info));
    }
    EXPECT_EQ(lines, page.Text("kinds"));
    EXPECT_EQ(ReadPictureFileInfo(MemorySource(page.Hex("png")))->kind, PictureFileKind::Png);
}

std::string PaletteLine(const PNGInfo& info) {
    std::string line = "palette";
    for (std::size_t i = 0; i < static_cast<std::size_t>(info.paletteEntries); ++i) {
        const PaletteEntry& entry = info.palette.at(i);
        line += " " + CellText({entry.red, entry.green, entry.blue, entry.alpha});
    }
    return line;
}

std::string Number(double number) {
    std::ostringstream text;
    text << number;
    return text.str();
}

TEST(FormatPages, PicturesInShowsThePngChunks) {
    const FormatPage page("pictures-in.md");
    const auto info = ReadPNGInfo(MemorySource(page.Hex("png")));
    ASSERT_TRUE(info);
    const Lines lines = {
        std::to_string(info->width) + " x " + std::to_string(info->height) + ", " +
            std::to_string(info->bitDepth) + "bit, type " + std::to_string(info->colourType) + " (" +
            info->colourTypeName + ")",
        Number(info->horizontalDpi) + " x " + Number(info->verticalDpi) + " dpi, " + info->note,
        PaletteLine(*info), "notice " + info->notices.at(0)};
    EXPECT_EQ(lines, page.Text("png"));
}

// ------------------------------------------------------------------------------------------------ patch.md

/// A GPF2 file of uncompressed 8-bit pixels.
std::filesystem::path WriteSource(const std::filesystem::path& path, int width, int height,
                                  const Bytes& stored) {
    const GpfHeader header{static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height), kType8Bit,
                           0, true};
    return WriteFile(path, ComposeGpf(header, stored));
}

class PatchPage : public ::testing::Test {
  protected:
    FormatPage page{"patch.md"};
    std::shared_ptr<const MemorySource> source = std::make_shared<MemorySource>(page.Hex("flash"));
    FullflashImage flash = *IdentifyFullflash(source);
    std::vector<PictureRecord> rows = ReadPictureTable(flash)->rows;

    /// Replaces row `index` by the page's picture.
    ReplacedRow Replaced(std::size_t index, int width, int height) {
        const Bytes stored = page.Hex("new-000" + std::to_string(index));
        const auto file = WriteSource(temp / std::to_string(index), width, height, stored);
        const auto header = ReadGpfHeader(**FileSource::Open(file));
        const auto oldLength = StoredLength(flash, rows.at(index)).value_or(0);
        return {rows.at(index), RoomOf(rows, index, oldLength), NewPicture{file, *header, stored.size()}};
    }

    std::string WrittenPatch() {
        const auto plan = PlanPatch(flash, {Replaced(0, 6, 3), Replaced(1, 5, 4)});
        auto file = OutputFile::Create(temp / "new.vkp");
        EXPECT_TRUE(file->Write(AsBytes(PatchBanner(flash))));
        for (const PatchSection& section : plan->sections)
            EXPECT_TRUE(WritePatchSection(flash, section, *file));
        EXPECT_TRUE(file->Commit(CommitMode::Replace));
        return ReadText(temp / "new.vkp");
    }

    /// The page's patch as a file would hold it.
    std::string PagePatch() const {
        std::string text;
        for (const std::string& line : page.Text("patch")) text += line + "\r\n";
        return text;
    }

    TempFolder temp;
};

/// The maker line names the program's version, which is not the page's matter.
std::string WithoutVersion(const std::string& patch) {
    return std::regex_replace(patch, std::regex(R"(Pictavo v[0-9.]+ *)"), "Pictavo ");
}

TEST_F(PatchPage, IsWhatTheProgramWrites) {
    ASSERT_THAT(rows, SizeIs(2));
    EXPECT_EQ(WithoutVersion(WrittenPatch()), WithoutVersion(PagePatch()));
}

TEST_F(PatchPage, IsReadAndStandsInThePagesFlash) {
    const MemorySource patch = SourceOf(PagePatch());
    const auto check = CheckPatch(patch, *source, [](const PatchMismatch&) {});
    ASSERT_TRUE(check);
    EXPECT_EQ(check->lines, 6U);
    EXPECT_EQ(check->mismatches, 0U);
    ASSERT_TRUE(ApplyPatch(patch, *source, temp / "copy.bin", false));
    const auto patched = OpenFullflashImage(temp / "copy.bin");
    ASSERT_TRUE(patched);
    const PictureRecord moved = ReadPictureTable(*patched)->rows.at(1);
    EXPECT_EQ(RowLine(moved), "0001 001 5 4 0500 9024 0040010");
}

// -------------------------------------------------------------------------------------------- pit-blocks.md

class PitBlocksPage : public ::testing::Test {
  protected:
    FormatPage page{"pit-blocks.md"};
    TempFolder temp;
    FullflashImage flash = TableOnly(page.Hex("old-table"), false);
    std::vector<PictureRecord> rows = ReadPictureTable(flash)->rows;
    std::filesystem::path table = temp / BlockFileName(0x901C);
    std::filesystem::path block = temp / BlockFileName(rows.at(0).picOffset);

    RebuildSource Source(std::size_t index, const std::string& name, int width, int height) {
        const Bytes stored(static_cast<std::size_t>(width * height), 0x11);
        const auto file = WriteSource(temp / name, width, height, stored);
        return *ReadRebuildSource(flash, rows.at(index), file);
    }

    Status Rebuild() {
        const std::vector sources = {Source(0, "first", 13, 1), Source(1, "second", 6, 7)};
        auto tableFile = OutputFile::Create(table);
        auto blockFile = OutputFile::Create(block);
        const Status status =
            RebuildBlocks(flash, sources, {&*tableFile, &*blockFile}, [](std::size_t) { return true; });
        EXPECT_TRUE(tableFile->Commit(CommitMode::Replace));
        EXPECT_TRUE(blockFile->Commit(CommitMode::Replace));
        return status;
    }

    std::string SizeLine(const std::filesystem::path& path) const {
        return path.filename().string() + " " + std::to_string(std::filesystem::file_size(path)) + " bytes";
    }
};

TEST_F(PitBlocksPage, IsWhatARebuildWrites) {
    const Status status = Rebuild();
    EXPECT_TRUE(status) << status.error().detail;
    EXPECT_EQ(ReadFile(table), page.Hex("new-table"));
    const Lines sizes = {SizeLine(temp / "first"), SizeLine(temp / "second"), SizeLine(table),
                         SizeLine(block)};
    EXPECT_EQ(sizes, page.Text("rebuild"));
}

TEST_F(PitBlocksPage, IsTooLargeWhenTheOldLastPictureBeganOneByteEarlier) {
    --rows.at(1).picOffset;
    const Status status = Rebuild();
    ASSERT_FALSE(status);
    EXPECT_EQ(status.error().kind, ErrorKind::BlockTooLarge);
    EXPECT_EQ(ReadFile(table), page.Hex("new-table"));
}

// -------------------------------------------------------------------------------------------------- gpn.md

std::string RangeText(const FileRange& range) {
    return HexNumber(range.begin) + "-" + HexNumber(range.end);
}

TEST(FormatPages, GpnHoldsThePicturesThatThePageSays) {
    const FormatPage page("gpn.md");
    const auto pictures = ReadGpn(MemorySource(page.Hex("container")));
    ASSERT_TRUE(pictures);
    Lines lines;
    for (const GpnPicture& picture : *pictures)
        lines.push_back(RangeText(picture.place) + " " + std::to_string(picture.number) +
                        (picture.isGPF2 ? " gpf2" : " gpf"));
    EXPECT_EQ(lines, page.Text("pictures"));
}

// --------------------------------------------------------------------------------------- embedded-files.md

TEST(FormatPages, EmbeddedFilesAreFoundWhereThePageSays) {
    const FormatPage page("embedded-files.md");
    Lines lines;
    for (const EmbeddedKind& kind : {kEmbeddedGif, kEmbeddedPng, kEmbeddedXml}) {
        std::string line(kind.extension.substr(1));
        const auto take = [&](const FileRange& file) { line += " " + RangeText(file); };
        ASSERT_TRUE(CarveEmbeddedFiles(MemorySource(page.Hex("source")), kind, take,
                                       [](std::uint64_t) { return true; }));
        lines.push_back(line);
    }
    EXPECT_EQ(lines, page.Text("files"));
}

// --------------------------------------------------------------------------------------------- settings.md

Lines SettingsLines(const AppSettings& settings) {
    std::string on = "on";
    for (const Flag& flag : kFlags)
        if (settings.*flag.member) on += std::string(" ") + flag.key;
    Lines lines = {"nConvert \"" + settings.nConvert + "\"", "Language \"" + settings.Language + "\"", on};
    for (std::size_t i = 0; i < settings.MRU.size(); ++i)
        if (settings.MRU[i]) lines.push_back("MRU" + std::to_string(i + 1) + " \"" + *settings.MRU[i] + "\"");
    return lines;
}

TEST(FormatPages, SettingsAreReadAsThePageSays) {
    const FormatPage page("settings.md");
    AppSettings initial;
    initial.CompressGPF = initial.DefaultGPF2 = initial.HEXFilename = true;
    initial.Language = "/old.lng";
    const auto settings = ReadAppSettings(SourceOf(Joined(page.Text("file"))), initial);
    ASSERT_TRUE(settings);
    EXPECT_EQ(SettingsLines(*settings), page.Text("settings"));
}

TEST(FormatPages, SettingsAreSavedAsThePageSays) {
    const FormatPage page("settings.md");
    const auto settings = ReadAppSettings(SourceOf(Joined(page.Text("file"))), {});
    ASSERT_TRUE(settings);
    const TempFolder temp;
    ASSERT_TRUE(SaveAppSettings(temp / "Pictavo.ini", *settings));
    EXPECT_EQ(ReadText(temp / "Pictavo.ini"), Joined(page.Text("saved")));
}

std::string RecentText(const AppSettings& settings) {
    std::string text;
    for (const auto& entry : settings.MRU) text += (text.empty() ? "" : " ") + entry.value_or("-");
    return text;
}

TEST(FormatPages, RecentFilesMoveAsThePageSays) {
    static const std::regex kLine(R"((\S) (\S) (\S) \+ (\S) = (.+))");
    const Lines lines = FormatPage("settings.md").Text("recent");
    EXPECT_THAT(lines, SizeIs(9));
    for (const std::string& line : lines) {
        std::smatch part;
        ASSERT_TRUE(std::regex_match(line, part, kLine)) << line;
        AppSettings settings;
        for (std::size_t i = 0; i < settings.MRU.size(); ++i)
            if (part[i + 1] != "-") settings.MRU[i] = part[i + 1];
        NoteRecentFile(settings, part[4]);
        EXPECT_EQ(RecentText(settings), part[5]) << line;
    }
}

// --------------------------------------------------------------------------------------------- language.md

LanguageTable ReadLanguage(const ByteSource& source) {
    LanguageTable table;
    EXPECT_TRUE(ReadLanguageFile(source, "Nederlands", CodePage::Windows1251, table));
    return table;
}

struct Message {
    const char* key;
    std::string LanguageTable::*text;
};

constexpr std::array<Message, 6> kMessages = {{{"str_Succes", &LanguageTable::str_Succes},
                                               {"str_PlSel", &LanguageTable::str_PlSel},
                                               {"str_save", &LanguageTable::str_save},
                                               {"str_open", &LanguageTable::str_open},
                                               {"str_fnExi", &LanguageTable::str_fnExi},
                                               {"str_all", &LanguageTable::str_all}}};

Lines TableLines(const LanguageTable& table) {
    Lines lines;
    for (const Message& message : kMessages)
        if (!(table.*message.text).empty())
            lines.push_back(std::string(message.key) + " \"" + table.*message.text + "\"");
    for (const auto& [control, caption] : table.captions) lines.push_back(control + " \"" + caption + "\"");
    return lines;
}

TEST(FormatPages, LanguageFilesAreReadAsThePageSays) {
    const FormatPage page("language.md");
    EXPECT_EQ(TableLines(ReadLanguage(SourceOf(Joined(page.Text("file"))))), page.Text("table"));
}

TEST(FormatPages, LanguageFilesMayBeWrittenInEachOfTheWaysShown) {
    const FormatPage page("language.md");
    for (const std::string way : {"utf-8", "code-page", "byte-order-mark"})
        EXPECT_EQ(ReadLanguage(MemorySource(page.Hex(way))).str_Succes, "Да") << way;
}

}  // namespace
}  // namespace pictavo::tests
