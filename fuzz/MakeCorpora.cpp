/// Makes the inputs that the fuzz targets start from: a folder for each, below the folder that is given. All
/// come from the sample maker, put into the form that the target reads (Input.h).

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "codec/GPFcodec.h"
#include "codec/PictureType.h"
#include "samples/FileMakers.h"
#include "samples/FlashBuilder.h"
#include "samples/PictureEncoders.h"
#include "tests/config/LanguageKeys.h"

namespace pictavo::fuzz {
namespace {

using samples::Drawing;
using samples::FlashBuilder;
using samples::FlashKind;

/// A seed as its target reads it: numbers low byte first, texts with their length before them.
class Seed {
  public:
    Seed& Byte(std::uint32_t value) {
        bytes_.push_back(static_cast<std::uint8_t>(value & 0xFF));
        return *this;
    }
    Seed& Number16(std::uint32_t value) { return Byte(value).Byte(value >> 8); }
    Seed& Number32(std::uint32_t value) { return Number16(value).Number16(value >> 16); }
    Seed& Plain(ByteView bytes) {
        bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
        return *this;
    }
    Seed& Plain(std::string_view text) { return Plain(AsBytes(text)); }
    Seed& Text(std::string_view text) { return Byte(static_cast<std::uint32_t>(text.size())).Plain(text); }

    const Bytes& Stored() const { return bytes_; }

  private:
    Bytes bytes_;
};

class Corpora {
  public:
    explicit Corpora(std::filesystem::path folder) : folder_(std::move(folder)) {}

    void Add(const std::string& target, const std::string& name, const Seed& seed) {
        std::error_code ignored;
        std::filesystem::create_directories(folder_ / target, ignored);
        std::ofstream file(folder_ / target / name, std::ios::binary);
        const Bytes& bytes = seed.Stored();
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        areWritten_ = areWritten_ && file.good();
    }

    bool AreWritten() const { return areWritten_; }

  private:
    std::filesystem::path folder_;
    bool areWritten_ = true;
};

struct Sketch {
    const char* name;
    Drawing drawing;
};

std::vector<Sketch> Sketches() {
    return {{"icon", samples::DrawIcon(24, 16, 1)},
            {"gradient", samples::DrawGradient(31, 17, 2)},
            {"disc", samples::DrawSoftDisc(9, 12, 3)},
            {"glyphs", samples::DrawGlyphs(40, 16, 4)},
            {"checker", samples::DrawTransparencyChecker(8, 8, 5)},
            {"point", samples::DrawOneColour(1, 1, {200, 100, 50, 255})}};
}

std::string TypeName(std::uint8_t type) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    return {kDigits[type >> 4], kDigits[type & 15]};
}

std::uint32_t Side(int pixels) {
    return static_cast<std::uint32_t>(pixels);
}

/// The number of a type's depth among those of the decoding target.
std::uint32_t DepthChoice(std::uint8_t type) {
    switch (type & 0x0F) {
        case 0x01:
            return 0;
        case 0x05:
            return 1;
        case 0x07:
            return 2;
        case 0x08:
            return 3;
        default:
            return 4;
    }
}

void AddDecode(Corpora& corpora, const Sketch& sketch, std::uint8_t type) {
    Seed seed;
    seed.Byte(DepthChoice(type) | (type & kCompressedBit));
    seed.Number16(Side(sketch.drawing.width)).Number16(Side(sketch.drawing.height));
    seed.Byte(0).Byte(0).Plain(samples::EncodeForPhone(sketch.drawing, type));
    corpora.Add("Decode", sketch.name + TypeName(type), seed);
}

Bytes GpfOf(const Drawing& drawing, std::uint8_t type, bool isGPF2) {
    const GpfHeader header{static_cast<std::uint16_t>(drawing.width),
                           static_cast<std::uint16_t>(drawing.height), type, 7, isGPF2};
    return ComposeGpf(header, samples::EncodeForPhone(drawing, type));
}

void AddGpf(Corpora& corpora, const Sketch& sketch, std::uint8_t type) {
    for (const bool isGPF2 : {false, true}) {
        const std::string name = sketch.name + TypeName(type) + (isGPF2 ? "_2" : "");
        corpora.Add("Gpf", name, Seed().Byte(0).Plain(GpfOf(sketch.drawing, type, isGPF2)));
    }
}

/// The largest picture there can be.
Sketch Whole() {
    return {"whole", samples::DrawGradient(kMostWidth, kMostHeight, 6)};
}

void AddPhonePictures(Corpora& corpora) {
    for (const Sketch& sketch : Sketches()) {
        for (const std::uint8_t type : samples::kTypeCodes) {
            AddDecode(corpora, sketch, type);
            AddGpf(corpora, sketch, type);
        }
    }
    for (const std::uint8_t type : {kType24Bit, kType24BitCompressed}) AddDecode(corpora, Whole(), type);
    AddGpf(corpora, Whole(), kType24Bit);
}

/// The largest picture there can be, and the row below it, of stretches of one pixel.
void AddWholeEncode(Corpora& corpora, std::uint32_t type) {
    constexpr std::uint32_t kHighAs320 = 0xF13F;
    Seed seed;
    seed.Byte(type).Byte(kMostWidth - 1).Number16(kHighAs320).Byte(type).Byte(2);
    for (std::uint32_t i = 0; i < 12; ++i) seed.Byte(i * 41);
    for (std::uint32_t i = 0; i < kMostWidth * (kMostHeight + 1); ++i) seed.Byte(1 + i / 3 % 7);
    corpora.Add("Encode", std::to_string(type) + "whole", seed);
}

/// A picture to encode: size, alpha, colours, and stretches of them.
void AddEncode(Corpora& corpora) {
    for (const std::uint32_t type : {3U, 6U}) AddWholeEncode(corpora, type);
    for (std::uint32_t type = 0; type < 7; ++type) {
        for (const std::uint32_t width : {1U, 8U, 130U}) {
            Seed seed;
            seed.Byte(type).Byte(width - 1).Number16(11).Byte(type).Byte(2);
            for (std::uint32_t i = 0; i < 12; ++i) seed.Byte(i * 41);
            for (std::uint32_t i = 0; i < 200; ++i) seed.Byte(i * i + i % 7);
            corpora.Add("Encode", std::to_string(type) + "w" + std::to_string(width), seed);
        }
    }
}

void AddPictureFiles(Corpora& corpora) {
    for (const Sketch& sketch : Sketches()) {
        const std::string name = sketch.name;
        for (const int bits : {1, 4, 8, 24, 32}) {
            for (const bool topDown : {false, true})
                corpora.Add("Picture", name + std::to_string(bits) + (topDown ? "t" : ""),
                            Seed().Byte(0).Plain(samples::MakeBmp(sketch.drawing, bits, topDown)));
        }
        corpora.Add("Picture", name + "gif", Seed().Byte(0).Plain(samples::MakeGif(sketch.drawing)));
        for (const auto colour :
             {samples::PngColour::Grey, samples::PngColour::Palette, samples::PngColour::Rgba})
            corpora.Add("PngInfo", name + std::to_string(static_cast<int>(colour)),
                        Seed().Byte(0).Number16(0xFFFF).Plain(samples::MakePng(sketch.drawing, colour)));
    }
    for (const int bits : {24, 32})
        corpora.Add("Picture", "whole" + std::to_string(bits),
                    Seed().Byte(0).Plain(samples::MakeBmp(Whole().drawing, bits, false)));
    constexpr std::array<std::uint8_t, 35> kJpeg{0xFF, 0xD8, 0xFF, 0xE0, 0, 4,  1,  2, 0xFF, 0xFF, 0xC0, 0,
                                                 11,   8,    0,    16,   0, 24, 1,  1, 0x11, 0,    0xFF, 0xDA,
                                                 0,    8,    1,    1,    0, 0,  63, 0, 0x5A, 0xFF, 0xD9};
    corpora.Add("Picture", "jpeg", Seed().Byte(0).Plain(kJpeg));
}

void AddPngChunks(Corpora& corpora) {
    const Bytes physical{0, 0, 11, 19, 255, 255, 11, 19, 1};
    const Bytes background{0, 1};
    const Bytes transparency{0, 127, 255};
    Bytes chunks;
    const auto append = [&](std::string_view type, const Bytes& data) {
        const Bytes chunk = samples::PngChunk(type, data);
        chunks.insert(chunks.end(), chunk.begin(), chunk.end());
    };
    append("pHYs", physical);
    append("bKGD", background);
    append("tRNS", transparency);
    const Bytes png = samples::MakePng(samples::DrawIcon(8, 8, 1), samples::PngColour::Palette, chunks);
    corpora.Add("PngInfo", "chunks", Seed().Byte(5).Number16(40).Plain(png));
}

/// The part of a built flash that an input lays into an erased one.
ByteView PartOf(const Bytes& flash, std::uint64_t offset, std::size_t length) {
    return ByteView(flash).subspan(static_cast<std::size_t>(offset), length);
}

/// Records of the largest size and type, and of the next type, which ends a table.
void AddLastRecords(FlashBuilder& builder, bool isLong) {
    for (const std::uint8_t type : {std::uint8_t{0x8F}, std::uint8_t{0x90}})
        builder.AddRecord(isLong ? Bytes{240, 0, 64, 1, type, 0, 7, 7, 0, 0, 0, 0xA0}
                                 : Bytes{255, 255, type, 0, 0, 0, 0, 0xA0});
}

/// A flash of five pictures, and the same one filled with records up to the last possible one and beyond.
void AddFlash(Corpora& corpora, const std::string& name, FlashBuilder& builder, bool isLong) {
    for (int i = 0; i < 5; ++i) builder.AddDrawing(samples::DrawIcon(8 + i, 8, 1), 0x85);
    AddLastRecords(builder, isLong);
    const Bytes flash = builder.Build();
    const auto descriptor = static_cast<std::uint32_t>(builder.DescriptorOffset());
    constexpr std::uint32_t kBehindShortest = 0x100000 - 0x8FD00;
    constexpr std::uint32_t kBefore = 0x40;
    Seed seed;
    seed.Number32(kBehindShortest).Number32(samples::kFlashAddress | descriptor);
    seed.Plain(PartOf(flash, samples::kFirmwareOffset, kBefore));
    seed.Byte(1).Number16(0).Number16(256).Plain(PartOf(flash, descriptor - kBefore, 256));
    const auto table = static_cast<std::uint32_t>(builder.PitOffset());
    seed.Byte(0).Number32(table).Number16(100).Plain(PartOf(flash, table, 100));
    corpora.Add("Flash", name, seed);
    constexpr std::uint32_t kRepeated = 2;
    constexpr std::uint32_t kMoreThanAll = 0x8000;
    seed.Byte(kRepeated).Number32(table).Number16(kMoreThanAll).Byte(23).Plain(PartOf(flash, table, 24));
    corpora.Add("Flash", name + "-full", seed);
}

void AddFlashes(Corpora& corpora) {
    FlashBuilder old(FlashKind::SGold);
    FlashBuilder newer(FlashKind::NewSGold);
    FlashBuilder e71(FlashKind::NewSGoldE71);
    FlashBuilder el71(FlashKind::NewSGoldEL71);
    AddFlash(corpora, "sgold", old, false);
    AddFlash(corpora, "new-sgold", newer, false);
    AddFlash(corpora, "e71", e71, true);
    AddFlash(corpora, "el71", el71, true);
}

constexpr std::string_view kPatch =
    "; ##### Picture 0007 #####\r\n00000010: 0808050000C000A0 0A0A850000C000A0\r\n\r\n"
    "000C0000: 00112233445566778899AABBCCDDEEFF FFEEDDCCBBAA99887766554433221100\r\n"
    "000C0010: 01 02\r\n\r\n; ##### PNG Picture menu #####\r\n000D0000: 8950 8951\r\n"
    "; ##### Picture 8 #####\r\n00000018: 080008000500000000C000A0 0A000A008500000000C000A0\n\n"
    "c0020: ff 00 \n";

/// Lines that a flash of 99 bytes may hold, the second one laid over the first, the last one past its end.
constexpr std::string_view kLines =
    "; lines\r\n0: 01020304 05060708\r\n2: 1122 3344\r\n00000020: AABB CCDD \n5f: FFFFFFFF 00000000\r\n"
    "61: 010203 000000\r\nFFFFFFFF: 0102 0304";

void AddPatches(Corpora& corpora) {
    corpora.Add("PatchText", "sections", Seed().Byte(0).Number16(64).Byte(0xFF).Byte(0x55).Plain(kPatch));
    corpora.Add("PatchText", "line", Seed().Byte(3).Number16(2).Byte(0x0A).Byte(0).Plain("0: 0A0A FFFF"));
    corpora.Add("PatchText", "held", Seed().Byte(2).Number16(99).Byte(0).Byte(0xFD).Plain(kLines));
    for (std::uint32_t kind = 0; kind < 4; ++kind) {
        Seed seed;
        seed.Byte(4).Byte(1).Byte(40).Byte(0).Byte(100).Byte(1).Byte(9).Byte(1).Byte(200);
        seed.Number16(0x120).Text("PIXELS").Byte(kind).Text("SIEMENS").Number16(0x100).Text("NEWPIXELS");
        for (std::uint32_t row = 0; row < 4; ++row) {
            const std::uint32_t length = 18 + 30 * row;
            seed.Number16(16 * row).Number16(0x40 + 48 * row).Number16(48).Byte(0x85).Byte(8).Byte(8);
            seed.Number16(length - 1).Plain(std::string(length, static_cast<char>('a' + row)));
        }
        corpora.Add("PatchApply", std::to_string(kind), seed);
    }
    Seed free;
    free.Byte(0).Number16(5).Number16(40).Byte(1).Number16(100).Byte(20);
    for (std::uint32_t i = 0; i < 60; ++i) free.Byte(i * 37);
    corpora.Add("FreeFlash", "stretches", free);
}

void AddContainers(Corpora& corpora) {
    Seed container;
    container.Byte(0).Plain("sixteen letters.");
    for (const Sketch& sketch : Sketches())
        container.Plain(GpfOf(sketch.drawing, 0x85, false)).Plain(GpfOf(sketch.drawing, 0x88, true));
    corpora.Add("Gpn", "pictures", container);
    for (std::uint32_t kind = 0; kind < 3; ++kind) {
        Seed seed;
        seed.Byte(kind).Byte(0);
        for (std::uint32_t i = 0; i < 8; ++i) seed.Byte(0).Byte(100).Byte(200).Byte(1).Byte(70 + i).Byte(90);
        corpora.Add("Carve", "parts" + std::to_string(kind), seed);
    }
    const Drawing icon = samples::DrawIcon(12, 12, 1);
    corpora.Add("Carve", "gif", Seed().Byte(129).Byte(0).Plain(samples::MakeGif(icon)));
    corpora.Add("Carve", "png",
                Seed().Byte(130).Byte(7).Plain(samples::MakePng(icon, samples::PngColour::Rgb)));
    corpora.Add("Carve", "xml", Seed().Byte(128).Byte(0).Plain(samples::MakeXml(1)).Plain(Bytes{' ', 0}));
}

/// Every byte of an 8-bit character set that can stand in a line.
std::string HighBytes() {
    std::string bytes;
    for (int byte = 0x80; byte <= 0xFF; ++byte) bytes.push_back(static_cast<char>(byte));
    return bytes;
}

/// A line of each key; every character of the 8-bit sets; and lines of as many characters as there may be,
/// and of one more.
void AddLanguages(Corpora& corpora) {
    corpora.Add("Language", "utf-8",
                Seed().Byte(0).Byte(0).Plain("\xEF\xBB\xBFstr_Succes=\xD0\x94\xD0\xB0\r\nstr_all=all\r\n"
                                             "cap_mnTsf=Find\r\nstr_PlSel=Pick\r\ncap_mnSBMP=Save\r\n"));
    corpora.Add("Language", "marks", Seed().Byte(0).Byte(0).Plain("str_save=1\n\xEF\xBB\xBFstr_save=2\n"));
    for (const std::uint32_t set : {0U, 1U})
        corpora.Add("Language", "code-page" + std::to_string(set),
                    Seed().Byte(3).Byte(set).Plain("str_Succes=" + HighBytes() + "\nstr_Def=\xFF\n"));
    Seed keys;
    keys.Byte(0).Byte(0);
    for (const tests::ExpectedKey& key : tests::ExpectedKeys())
        keys.Plain(key.name + "=" + key.name + " text\n");
    corpora.Add("Language", "keys", keys);
    std::string longest = "\xEF\xBB\xBFstr_AdZ=";
    for (int i = 8; i < 255; ++i) longest += "\xD0\x94";
    corpora.Add("Language", "longest", Seed().Byte(0).Byte(0).Plain(longest + "\r\nstr_HfN=1"));
    corpora.Add("Language", "too-long", Seed().Byte(0).Byte(0).Plain(longest + ".\r\nstr_HfN=1"));
}

void AddTexts(Corpora& corpora) {
    corpora.Add(
        "Settings", "file",
        Seed().Byte(0).Byte(0).Plain("nConvert=/opt/convert\r\nLanguage=Nederlands\nTransparency=true\r\n"
                                     "CompressGPF=false\r\nDefaultGPF2=true\r\nZeroFilename=true\r\n"
                                     "HEXFilename=true\r\nChanR=true\r\nChanG=true\r\nChanB=true\r\n"
                                     "ChanA=true\r\nMRU1=a.bin\r\nMRU2=b.bin\r\nMRU3=c.bin\r\n"));
    Seed members;
    members.Byte(0)
        .Byte(1)
        .Text("/opt/convert")
        .Text("\xD0\xA3")
        .Number32(0x01000101)
        .Number32(0x01010001)
        .Byte(1);
    corpora.Add("Settings", "members", members.Byte(3).Text("a.bin").Text("b\n.bin").Text("a.bin"));
    corpora.Add("CommandLine", "line", Seed().Byte(0).Plain("\"C:\\my files\\a.bin\" b.gpf  \"c d.gpf2\" "));
    corpora.Add("CommandLine", "names", Seed().Byte(1).Text("my file.bin").Text("").Text(" b.gpf"));
    Seed arguments;
    for (const std::uint32_t word : {0U, 1U, 3U, 4U, 6U, 8U, 9U}) arguments.Byte(word);
    corpora.Add("Conversion", "rgba", Seed().Byte(0).Plain(arguments.Stored()));
    Seed more;
    for (const std::uint32_t word : {0U, 2U, 3U, 5U, 7U, 6U}) more.Byte(word);
    more.Byte(99).Text("/tmp/a b.bmp").Byte(99).Text("-o");
    corpora.Add("Conversion", "rgb", Seed().Byte(0).Plain(more.Stored()));
    corpora.Add("Conversion", "names", Seed().Byte(1).Byte(1).Byte(0).Text("a.png").Text("b.bmp"));
    corpora.Add("Numbers", "hex", Seed().Byte(0xA5).Number32(0x8FC50).Plain("0FFFF"));
    corpora.Add("Numbers", "sign", Seed().Byte(7).Number32(0xFFFF).Plain("-0012"));
}

bool MakeCorpora(const std::filesystem::path& folder) {
    Corpora corpora(folder);
    AddPhonePictures(corpora);
    AddEncode(corpora);
    AddPictureFiles(corpora);
    AddPngChunks(corpora);
    AddFlashes(corpora);
    AddPatches(corpora);
    AddContainers(corpora);
    AddTexts(corpora);
    AddLanguages(corpora);
    return corpora.AreWritten();
}

}  // namespace
}  // namespace pictavo::fuzz

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "Usage: pictavo_make_corpora FOLDER\n";
        return 2;
    }
    if (pictavo::fuzz::MakeCorpora(argv[1])) return 0;
    std::cerr << "pictavo_make_corpora: not all of " << argv[1] << " could be written\n";
    return 1;
}
