#include "tools/EmbeddedFiles.h"

#include <array>
#include <gmock/gmock.h>
#include <random>

#include "PlainCarver.h"
#include "core/GapSource.h"
#include "tests/support/BrokenSource.h"
#include "tests/support/TempFolder.h"

namespace pictavo::tests {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using std::string_literals::operator""s;

const std::string kGifEnd = "\x00\x3B"s;
const std::string kPngStart = "\x89PNG\r\n\x1A\n"s;
const std::string kXmlEnd = "\x20\x00"s;

bool GoOn(std::uint64_t) {
    return true;
}

std::vector<FileRange> CarveFrom(const ByteSource& source, const EmbeddedKind& kind) {
    std::vector<FileRange> found;
    EXPECT_TRUE(CarveEmbeddedFiles(
        source, kind, [&](const FileRange& file) { found.push_back(file); }, GoOn));
    return found;
}

std::vector<FileRange> Carve(const std::string& source, const EmbeddedKind& kind) {
    const ByteView bytes = AsBytes(source);
    return CarveFrom(MemorySource(Bytes(bytes.begin(), bytes.end())), kind);
}

std::string Fill(std::size_t count) {
    return std::string(count, 'x');
}

/// A GIF of `length` bytes, at least 8.
std::string Gif(std::size_t length) {
    return "GIF89a" + Fill(length - 8) + kGifEnd;
}

TEST(EmbeddedFiles, AGifReachesFromItsGThroughTheTrailerByte) {
    EXPECT_THAT(Carve(Fill(1000) + Gif(40) + Fill(500), kEmbeddedGif), ElementsAre(FileRange{1000, 1040}));
}

TEST(EmbeddedFiles, APngReachesThroughTheChecksumBehindIEND) {
    const std::string png = kPngStart + Fill(300) + "IEND" + "CRC!";
    EXPECT_THAT(Carve(Fill(77) + png + Fill(500), kEmbeddedPng), ElementsAre(FileRange{77, 77 + png.size()}));
}

TEST(EmbeddedFiles, AfterAPngTheSearchGoesOnAtTheChecksum) {
    const std::string source = kPngStart + "IEND" + kPngStart + "IEND" + "CRC!";
    EXPECT_THAT(Carve(source, kEmbeddedPng), ElementsAre(FileRange{0, 16}, FileRange{12, 28}));
}

TEST(EmbeddedFiles, AnXmlEndsBeforeTheBlankOfTheFirstBlankAndZero) {
    const std::string document = "<?xml version=\"1.0\"?><a> </a>";
    EXPECT_THAT(Carve(Fill(10) + document + kXmlEnd + Fill(400), kEmbeddedXml),
                ElementsAre(FileRange{10, 10 + document.size()}));
}

TEST(EmbeddedFiles, TheEndOfAnXmlMayLieFarBehindIt) {
    const std::string source = "<?xml " + Fill(100'000) + kXmlEnd;
    EXPECT_THAT(Carve(source, kEmbeddedXml), ElementsAre(FileRange{0, 100'006}));
}

TEST(EmbeddedFiles, AnXmlWithoutABlankAndZeroBehindItIsNone) {
    EXPECT_THAT(Carve(kXmlEnd + "<?xml ?>" + Fill(600), kEmbeddedXml), IsEmpty());
}

TEST(EmbeddedFiles, KeptTheBlankOfTheXmlSignatureCanEndTheDocument) {
    EXPECT_THAT(Carve("<?xml " + "\x00"s + Fill(9), kEmbeddedXml), ElementsAre(FileRange{0, 5}));
}

TEST(EmbeddedFiles, KeptOnlyVersion89aStartsAGif) {
    EXPECT_THAT(Carve("GIF87a" + Fill(20) + kGifEnd, kEmbeddedGif), IsEmpty());
}

TEST(EmbeddedFiles, KeptAnXmlNeedsTheBlankBehindItsName) {
    EXPECT_THAT(Carve("<?xml\tversion?>" + kXmlEnd, kEmbeddedXml), IsEmpty());
}

TEST(EmbeddedFiles, ASecondStart260BehindTheFirstTakesItsPlace) {
    const std::string source = "GIF89a" + Fill(254) + Gif(300);
    EXPECT_THAT(Carve(source, kEmbeddedGif), ElementsAre(FileRange{260, 560}));
}

TEST(EmbeddedFiles, KeptASecondStart100BehindTheFirstIsNotSeen) {
    const std::string source = "GIF89a" + Fill(94) + Gif(300);
    EXPECT_THAT(Carve(source, kEmbeddedGif), ElementsAre(FileRange{0, 400}));
}

TEST(EmbeddedFiles, ASecondStartIsSeenFromThePlaceOnWhereTheNextBlockBegins) {
    for (std::size_t distance : {247U, 248U}) {
        const std::string source = "GIF89a" + Fill(distance - 6) + Gif(300);
        const FileRange expected{distance == 247 ? 0U : 248U, distance + 300};
        EXPECT_THAT(Carve(source, kEmbeddedGif), ElementsAre(expected)) << distance;
    }
}

TEST(EmbeddedFiles, SignaturesAcrossEveryBorderAreFound) {
    for (std::size_t before = 230; before < 520; ++before) {
        const std::string source = Fill(before) + Gif(before) + Fill(300);
        EXPECT_THAT(Carve(source, kEmbeddedGif), ElementsAre(FileRange{before, 2 * before})) << before;
    }
}

TEST(EmbeddedFiles, SignaturesAcrossTheWindowsOfAFileAreFound) {
    const TempFolder folder;
    for (std::size_t before = 128 * 1024 - 12; before < 128 * 1024 + 4; ++before) {
        const std::string text = Fill(before) + kPngStart + Fill(128 * 1024 - 8) + "IENDCRC!";
        const auto path = WriteFile(folder / "source", text);
        EXPECT_THAT(CarveFrom(**FileSource::Open(path), kEmbeddedPng),
                    ElementsAre(FileRange{before, text.size()}));
    }
}

TEST(EmbeddedFiles, EndsWithoutAStartGiveNothing) {
    EXPECT_THAT(Carve(kGifEnd + Fill(300) + kGifEnd + kGifEnd, kEmbeddedGif), IsEmpty());
    EXPECT_THAT(Carve(Gif(20) + kGifEnd + Fill(400) + kGifEnd, kEmbeddedGif), ElementsAre(FileRange{0, 20}));
}

TEST(EmbeddedFiles, AStartWithoutAnEndGivesNothing) {
    EXPECT_THAT(Carve("GIF89a" + Fill(5000), kEmbeddedGif), IsEmpty());
}

TEST(EmbeddedFiles, ASourceMayBeOneFileAndNothingElse) {
    for (const std::size_t length : {8U, 100U, 253U, 254U, 255U, 256U, 257U, 800U})
        EXPECT_THAT(Carve(Gif(length), kEmbeddedGif), ElementsAre(FileRange{0, length})) << length;
}

TEST(EmbeddedFiles, SeveralShortFilesOneBehindTheOtherAreAllFound) {
    EXPECT_THAT(Carve(Gif(10) + Gif(20) + Fill(3) + Gif(30), kEmbeddedGif),
                ElementsAre(FileRange{0, 10}, FileRange{10, 30}, FileRange{33, 63}));
}

TEST(EmbeddedFiles, NothingPastTheEndCompletesASignature) {
    EXPECT_THAT(Carve("GIF89a" + Fill(10) + "\x00"s, kEmbeddedGif), IsEmpty());
    EXPECT_THAT(Carve("<?xml " + Fill(10) + " ", kEmbeddedXml), IsEmpty());
    EXPECT_THAT(Carve(kPngStart + "IEN", kEmbeddedPng), IsEmpty());
    EXPECT_THAT(Carve("GIF89", kEmbeddedGif), IsEmpty());
    EXPECT_THAT(Carve("", kEmbeddedGif), IsEmpty());
}

TEST(EmbeddedFiles, APngCutInsideItsChecksumKeepsWhatThereIs) {
    for (std::size_t left = 0; left <= 4; ++left) {
        const std::string source = kPngStart + Fill(30) + "IEND" + Fill(left);
        EXPECT_THAT(Carve(source, kEmbeddedPng), ElementsAre(FileRange{0, source.size()})) << left;
    }
}

TEST(EmbeddedFiles, TheOffsetToldNeverGoesBack) {
    const std::string source = Fill(500'000) + "GIF89a" + Fill(300'000) + Gif(900) + Fill(500'000);
    std::vector<std::uint64_t> told;
    const auto step = [&](std::uint64_t offset) {
        told.push_back(offset);
        return true;
    };
    const ByteView bytes = AsBytes(source);
    EXPECT_TRUE(CarveEmbeddedFiles(
        MemorySource(Bytes(bytes.begin(), bytes.end())), kEmbeddedGif, [](const FileRange&) {}, step));
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_GT(told.size(), 1U);
}

TEST(EmbeddedFiles, TheSearchGoesOnBehindWhatCannotBeRead) {
    const std::string text = Gif(20) + "GIF89a" + Fill(20'000) + kGifEnd + Gif(30);
    const ByteView bytes = AsBytes(text);
    const BrokenSource source(Bytes(bytes.begin(), bytes.end()), {4096, 8192});
    int noted = 0;
    const GapSource searched(source, [&noted](const Error&) { ++noted; });
    EXPECT_THAT(CarveFrom(searched, kEmbeddedGif),
                ElementsAre(FileRange{0, 20}, FileRange{20, 20'028}, FileRange{20'028, 20'058}));
    EXPECT_EQ(noted, 1);
}

TEST(EmbeddedFiles, AnUnreadablePieceCompletesNoSignature) {
    for (const EmbeddedKind& kind : {kEmbeddedGif, kEmbeddedPng, kEmbeddedXml})
        for (const std::string_view signature : {kind.start.bytes, kind.end.bytes})
            EXPECT_EQ(signature.find('\xFF'), std::string_view::npos);
}

TEST(EmbeddedFiles, AStopEndsTheSearch) {
    const auto status = CarveEmbeddedFiles(
        MemorySource(Bytes(10)), kEmbeddedGif, [](const FileRange&) {}, [](std::uint64_t) { return false; });
    ASSERT_FALSE(status);
    EXPECT_EQ(status.error().kind, ErrorKind::Stopped);
}

/// Bytes, halves of signatures and whole ones, at distances around the length of a block.
std::string DenseSource(std::mt19937& random, const EmbeddedKind& kind) {
    const auto any = [&](std::size_t count) { return static_cast<std::size_t>(random() % count); };
    const std::array<std::size_t, 8> gaps{0, 1, 5, 240, 247, 248, 255, 300};
    const auto part = [&](std::string_view whole) {
        return std::string(whole.substr(0, any(whole.size() + 1)));
    };
    std::string source;
    for (std::size_t pieces = 1 + any(9); pieces > 0; --pieces) {
        const std::size_t gap = gaps[any(gaps.size())] + any(12);
        source += std::string(gap, any(2) == 0 ? '\0' : ' ');
        switch (any(6)) {
            case 0:
            case 1:
                source += kind.start.bytes;
                break;
            case 2:
            case 3:
                source += kind.end.bytes;
                break;
            case 4:
                source += part(kind.start.bytes);
                break;
            default:
                source += part(kind.end.bytes);
        }
    }
    return source;
}

/// `rounds` random sources: the same files come out of both; how many files that were.
std::size_t CompareWithPlain(const EmbeddedKind& kind, std::uint32_t seed, int rounds) {
    std::mt19937 random(seed);
    std::size_t files = 0;
    for (int round = 0; round < rounds; ++round) {
        const std::string source = DenseSource(random, kind);
        const auto found = Carve(source, kind);
        const auto expected = PlainCarver(AsBytes(source), kind).Run();
        EXPECT_EQ(found, expected) << "round " << round;
        if (found != expected) break;
        files += found.size();
    }
    return files;
}

constexpr int kRounds = 40'000;

TEST(EmbeddedFiles, GifsComeOutAsBlockAfterBlock) {
    EXPECT_GT(CompareWithPlain(kEmbeddedGif, 1, kRounds), std::size_t{kRounds} / 2);
}

TEST(EmbeddedFiles, PngsComeOutAsBlockAfterBlock) {
    EXPECT_GT(CompareWithPlain(kEmbeddedPng, 2, kRounds), std::size_t{kRounds} / 2);
}

TEST(EmbeddedFiles, XmlsComeOutAsBlockAfterBlock) {
    EXPECT_GT(CompareWithPlain(kEmbeddedXml, 3, kRounds), std::size_t{kRounds} / 2);
}

}  // namespace
}  // namespace pictavo::tests
