#include "patch/PatchSections.h"

#include <gmock/gmock.h>
#include <random>

#include "patch/PatchLine.h"
#include "support/Refusal.h"
#include "support/WholePatch.h"

namespace pictavo::tests {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A section with all that was read of it.
struct ReadSection {
    std::string name;
    std::optional<GpfHeader> header;  ///< of a picture
    Bytes data;
};

ReadSection Begun(const PatchPart& part) {
    if (const auto* png = std::get_if<PngPart>(&part)) return {png->name, std::nullopt, {}};
    const auto& picture = std::get<PicturePart>(part);
    return {picture.name, picture.header, {}};
}

Result<std::vector<ReadSection>> TryRead(const ByteSource& source) {
    std::vector<ReadSection> sections;
    PatchSectionReader reader(source);
    for (;;) {
        PICTAVO_TRY(const auto part, reader.NextSection());
        EXPECT_LE(reader.Position(), source.Size());
        if (!part) return sections;
        sections.push_back(Begun(*part));
        for (;;) {
            PICTAVO_TRY(const auto data, reader.NextData());
            if (!data) break;
            sections.back().data.insert(sections.back().data.end(), data->begin(), data->end());
        }
    }
}

std::vector<ReadSection> Read(const std::string& patch) {
    const auto sections = TryRead(SourceOf(patch));
    EXPECT_TRUE(sections);
    return sections.value_or(std::vector<ReadSection>());
}

std::vector<std::string> Names(const std::string& patch) {
    std::vector<std::string> names;
    for (const ReadSection& section : Read(patch)) names.push_back(section.name);
    return names;
}

/// A table record of 4 x 1 pixels in type 05.
constexpr const char* kRecordLine = "000A0000: 10100500000018A0 04010500000018A0\r\n";

std::string Title(const std::string& name) {
    return "\r\n; ##### Picture " + name + " #####\r\n";
}

std::string PngTitle(const std::string& name) {
    return "\r\n; ##### PNG Picture " + name + " #####\r\n";
}

/// A section of a picture with these lines of data.
std::string Section(const std::string& name, const std::string& data,
                    const std::string& record = kRecordLine) {
    return Title(name) + record + "\r\n" + data;
}

std::string Line(const Bytes& newBytes, std::uint64_t offset = 0x180000) {
    return PatchLine(offset, Bytes(newBytes.size(), 0x11), newBytes);
}

Bytes Counted(std::uint8_t first, std::size_t count) {
    Bytes bytes(count);
    for (std::uint8_t& byte : bytes) byte = first++;
    return bytes;
}

/// Head of the only section in `patch`.
GpfHeader HeaderOf(const std::string& patch) {
    const auto sections = Read(patch);
    if (sections.size() == 1 && sections[0].header) return *sections[0].header;
    ADD_FAILURE() << sections.size() << " sections in " << patch;
    return {};
}

void ExpectHeader(const GpfHeader& header, int width, int height, int type, bool isGPF2) {
    EXPECT_EQ(header.width, width);
    EXPECT_EQ(header.height, height);
    EXPECT_EQ(header.type, type);
    EXPECT_EQ(header.number, 0);
    EXPECT_EQ(header.isGPF2, isGPF2);
}

TEST(PatchSections, PicturesAndPngFilesAreToldByTheirTitles) {
    const auto sections =
        Read(Section("0007", Line(Counted(1, 4))) + PngTitle("0012AB40") + Line(Counted(9, 3)));
    ASSERT_EQ(sections.size(), 2U);
    EXPECT_EQ(sections[0].name, "0007");
    ASSERT_TRUE(sections[0].header);
    ExpectHeader(*sections[0].header, 4, 1, 0x05, false);
    EXPECT_EQ(sections[0].data, Counted(1, 4));
    EXPECT_EQ(sections[1].name, "0012AB40");
    EXPECT_FALSE(sections[1].header);
    EXPECT_EQ(sections[1].data, Counted(9, 3));
}

TEST(PatchSections, LinesThatOpenNoSectionArePassedOver) {
    const std::string data = Line(Counted(1, 4));
    for (const char* other :
         {"; ####### Picture 1 #####", ";##### Picture 1 #####", "; ##### picture 1 #####",
          "; ##### PNG  Picture 1 #####", " ; ##### Picture 1 #####", "; ##### Picture"})
        EXPECT_THAT(Names(std::string(other) + "\r\n" + kRecordLine + "\r\n" + data), IsEmpty()) << other;
    EXPECT_THAT(Names("; ### banner\r\nany text\r\n" + data + Section("1", data)), ElementsAre("1"));
}

TEST(PatchSections, ANameIsWhatStandsBetweenTitleAndItsLastSixCharacters) {
    EXPECT_THAT(Names(Section("a name with # and blanks", "")), ElementsAre("a name with # and blanks"));
    EXPECT_THAT(Names("; ##### PNG Picture abc~~~~~~\r\n"), ElementsAre("abc"));
    EXPECT_THAT(Names(PngTitle("")), ElementsAre(""));
    EXPECT_THAT(Names("; ##### PNG Picture ####\r\n"), IsEmpty());
}

TEST(PatchSections, AShortRecordTellsWidthHeightAndTypeInOneByteEach) {
    ExpectHeader(HeaderOf(Section("1", "", "000A0000: 0000000000000000 F0FE08FF000018A0\r\n")), 0xF0, 0xFE,
                 0x08, false);
}

TEST(PatchSections, ALongRecordTellsWidthAndHeightInTwoBytes) {
    ExpectHeader(
        HeaderOf(Section("1", "", "000A0000: 000000000000000000000000 F00040018800FFFF12003456\r\n")), 240,
        320, 0x88, true);
}

TEST(PatchSections, KeptTypesFrom0BOnMakeAGpf2AndThoseBelowAGpf) {
    const auto record = [](const std::string& type) {
        return "000A0000: 0000000000000000 0401" + type + "00000018A0\r\n";
    };
    for (const char* type : {"00", "01", "05", "08", "0A"})
        EXPECT_FALSE(HeaderOf(Section("1", "", record(type))).isGPF2) << type;
    for (const char* type : {"0B", "81", "85", "8A", "FF"})
        EXPECT_TRUE(HeaderOf(Section("1", "", record(type))).isGPF2) << type;
}

TEST(PatchSections, ASectionWhoseNextLineIsNoRecordIsPassedOver) {
    for (const char* line : {"", "000A0000: 00000000000000 00000000000000", "no record", "; comment",
                             "000A0000: 0000000000000000000000 0000000000000000000000", "000A0000: 00 0",
                             "000A0000: 0000000000000000 0401050000001"})
        EXPECT_THAT(Names(Title("1") + line + "\r\n\r\n" + Line(Counted(1, 4)) + Section("2", "")),
                    ElementsAre("2"))
            << line;
}

TEST(PatchSections, AnEmptySectionDoesNotSwallowTheNextOne) {
    EXPECT_THAT(Names(Title("0001") + Title("0002") + Section("0003", Line(Counted(1, 4)))),
                ElementsAre("0003"));
    EXPECT_THAT(Names(Title("0001") + PngTitle("a") + Title("0002") + PngTitle("b")), ElementsAre("a", "b"));
    EXPECT_THAT(Names("; ##### Picture 1 #####\r\n; ##### Picture 2 #####\r\n" + std::string(kRecordLine)),
                ElementsAre("2"));
}

TEST(PatchSections, WithoutAnEmptyLineBehindTheRecordTheDataBeginAtOnce) {
    const auto sections = Read(Title("1") + kRecordLine + Line(Counted(1, 4)));
    ASSERT_EQ(sections.size(), 1U);
    EXPECT_EQ(sections[0].data, Counted(1, 4));
}

TEST(PatchSections, ATitleRightBehindARecordOpensTheNextSection) {
    EXPECT_THAT(Names(Title("1") + kRecordLine + "; ##### PNG Picture a #####\r\n"), ElementsAre("1", "a"));
}

TEST(PatchSections, DataEndAtAShortLineAndGoOnInNoOther) {
    const auto sections = Read(Section("1", Line(Counted(1, 4)) + "7: 11 22\r\n" + Line(Counted(5, 4))) +
                               Section("2", Line(Counted(9, 4))));
    ASSERT_EQ(sections.size(), 2U);
    EXPECT_EQ(sections[0].data, Counted(1, 4));
    EXPECT_EQ(sections[1].data, Counted(9, 4));
}

TEST(PatchSections, ALineOfFourteenCharactersHoldsData) {
    EXPECT_EQ(Read(Section("1", "0180000: 11 22\r\n"))[0].data, Bytes{0x22});
    EXPECT_EQ(Read(Section("1", "180000: 11 22\r\n"))[0].data, Bytes());
}

TEST(PatchSections, DataEndAtALineThatIsNoPatchLine) {
    for (const char* line :
         {"", "; a comment of some length", "00180000: 11 2G", "00180000: 1122 33", "what?"})
        EXPECT_EQ(Read(Section("1", Line(Counted(1, 4)) + line + "\r\n" + Line(Counted(5, 4))))[0].data,
                  Counted(1, 4))
            << line;
}

TEST(PatchSections, KeptALineOfSixteenBytesFFEndsThePicture) {
    const auto sections = Read(
        Section("1", Line(Counted(1, 16)) + Line(Bytes(16, 0xFF)) + Line(Counted(5, 16))) + Section("2", ""));
    ASSERT_EQ(sections.size(), 2U);
    EXPECT_EQ(sections[0].data, Counted(1, 16));
}

TEST(PatchSections, FewerOrMoreBytesFFAreData) {
    EXPECT_EQ(Read(Section("1", Line(Bytes(15, 0xFF)) + Line(Bytes(17, 0xFF))))[0].data, Bytes(32, 0xFF));
}

TEST(PatchSections, OldBytesFFEndNothing) {
    const std::string line = PatchLine(0, Bytes(16, 0xFF), Counted(1, 16));
    EXPECT_EQ(Read(Section("1", line))[0].data, Counted(1, 16));
}

TEST(PatchSections, LineEndsMayBeWithoutCRAndTheLastOneMissing) {
    std::string patch = Section("1", Line(Counted(1, 4))) + PngTitle("a") + Line(Counted(9, 4));
    std::erase(patch, '\r');
    patch.pop_back();
    const auto sections = Read(patch);
    ASSERT_EQ(sections.size(), 2U);
    EXPECT_EQ(sections[0].data, Counted(1, 4));
    EXPECT_EQ(sections[1].data, Counted(9, 4));
}

TEST(PatchSections, HexDigitsMayBeOfLowerCase) {
    const auto sections =
        Read(Section("1", "0018abcd: 1122 abcd\r\n", "000a0000: 0000000000000000 0a0b8a00000018a0\r\n"));
    ExpectHeader(*sections.at(0).header, 10, 11, 0x8A, true);
    EXPECT_EQ(sections[0].data, (Bytes{0xAB, 0xCD}));
    const std::string ff = "00180000: " + std::string(32, '1') + " " + std::string(32, 'f') + "\r\n";
    EXPECT_EQ(Read(Section("1", ff + Line(Counted(1, 4))))[0].data, Bytes());
}

TEST(PatchSections, BlanksBehindLinesDoNotMatter) {
    std::string patch = Section("0007", Line(Counted(1, 4)));
    for (std::size_t at = 0; (at = patch.find("\r\n", at)) != std::string::npos; at += 4)
        patch.insert(at, " \t");
    const auto sections = Read(patch);
    ASSERT_EQ(sections.size(), 1U);
    EXPECT_EQ(sections[0].name, "0007");
    EXPECT_EQ(sections[0].data, Counted(1, 4));
}

TEST(PatchSections, AnUnreadSectionIsPassedOver) {
    const MemorySource source =
        SourceOf(Section("1", Line(Counted(1, 4))) + Section("2", Line(Counted(5, 4))));
    PatchSectionReader reader(source);
    EXPECT_EQ(Begun(**reader.NextSection()).name, "1");
    EXPECT_EQ(Begun(**reader.NextSection()).name, "2");
    EXPECT_EQ(**reader.NextData(), Counted(5, 4));
    EXPECT_FALSE(*reader.NextData());
    EXPECT_FALSE(*reader.NextSection());
    EXPECT_EQ(reader.Position(), source.Size());
}

TEST(PatchSections, APatchWithoutSectionsHasNone) {
    EXPECT_THAT(Names(""), IsEmpty());
    EXPECT_THAT(Names("\r\n\n\r"), IsEmpty());
    EXPECT_THAT(Names(std::string(5000, '\0')), IsEmpty());
}

TEST(PatchSections, ALongLineIsReadAndAnEndlessOneEndsItsSectionAndNoOther) {
    const std::string half(500'000, '2');
    const auto sections = Read(Section("1", "00180000: " + half + " " + half + "\r\n" + Line(Counted(1, 4))));
    EXPECT_EQ(sections.at(0).data.size(), 250'004U);
    const std::string endless = "00180000: " + std::string(3'000'000, '2') + "\r\n";
    const auto around = Read(Section("1", endless + Line(Counted(1, 4))) + Section("2", Line(Counted(5, 4))));
    ASSERT_EQ(around.size(), 2U);
    EXPECT_EQ(around[0].data, Bytes());
    EXPECT_EQ(around[1].data, Counted(5, 4));
}

TEST(PatchSections, APatchCutAnywhereGivesTheBytesOfWholeLinesBeforeTheCut) {
    const std::string patch =
        Section("0007", Line(Counted(1, 16)) + Line(Counted(17, 16)) + Line(Counted(33, 5)));
    const Bytes whole = Counted(1, 37);
    for (std::size_t length = 0; length <= patch.size(); ++length) {
        const auto sections = Read(patch.substr(0, length));
        ASSERT_LE(sections.size(), 1U);
        if (sections.empty()) continue;
        const Bytes& data = sections[0].data;
        ASSERT_LE(data.size(), whole.size());
        EXPECT_TRUE(std::equal(data.begin(), data.end(), whole.begin())) << length;
    }
    EXPECT_EQ(Read(patch).at(0).data, whole);
}

/// A good patch with some bytes changed, doubled or taken out.
std::string Mutated(std::string patch, std::mt19937& random) {
    static const std::string kLikely = "\r\n; #:0Ff PN\0\xFF";
    for (auto changes = 1 + random() % 8; changes > 0; --changes) {
        const std::size_t at = random() % patch.size();
        const char byte =
            random() % 4 != 0 ? kLikely[random() % kLikely.size()] : static_cast<char>(random());
        switch (random() % 4) {
            case 0:
                patch[at] = byte;
                break;
            case 1:
                patch.insert(at, 1, byte);
                break;
            case 2:
                patch.erase(at, 1 + random() % 40);
                break;
            default:
                patch.insert(at, patch.substr(random() % patch.size(), random() % 90));
        }
        if (patch.empty()) patch = "\n";
    }
    return patch;
}

TEST(PatchSections, ReadsAHundredThousandSpoiltPatchesWithinTheirBytes) {
    const std::string good = "; banner\r\n" + Section("0007", Line(Counted(1, 16)) + Line(Counted(17, 3))) +
                             Title("0008") + PngTitle("0012AB40") + Line(Counted(9, 9)) +
                             Section("0009", Line(Bytes(16, 0xFF)),
                                     "000A0000: 000000000000000000000000 F00040018800FFFF12003456\r\n");
    std::mt19937 random(35);
    std::size_t intact = 0;
    for (int round = 0; round < 100'000; ++round) {
        const std::string patch = Mutated(good, random);
        const auto sections = TryRead(SourceOf(patch));
        ASSERT_TRUE(sections);
        std::size_t bytes = 0;
        for (const ReadSection& section : *sections) bytes += section.data.size();
        ASSERT_LE(bytes * 4, patch.size());
        if (sections->size() == 3) ++intact;
    }
    EXPECT_GT(intact, 1'000U);
    EXPECT_LT(intact, 99'000U);
}

}  // namespace
}  // namespace pictavo::tests
