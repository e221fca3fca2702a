#include "session/ChangePng.h"

#include "session/SavePatch.h"
#include "support/FileSizeLimit.h"
#include "support/Refusal.h"
#include "support/SessionFixture.h"
#include "support/SystemMeans.h"
#include "support/WholePatch.h"

namespace pictavo::tests {
namespace {

constexpr std::uint64_t kPlace = 0x1C0000;
constexpr std::uint64_t kSecondPlace = 0x1D0000;

class ChangePngTest : public SessionFixture {
  protected:
    ChangePngTest() { session.texts.cap_mnFileR = "Files"; }

    /// A whole PNG file of exactly `length` bytes: two chunks of nothing but zeros are added to a small one.
    static Bytes Png(std::size_t length, std::uint32_t seed = 1) {
        const samples::Drawing drawing = samples::DrawIcon(2, 2, seed);
        const std::size_t bare = samples::MakePng(drawing, samples::PngColour::Grey).size();
        const Bytes filler = samples::PngChunk("teSt", Bytes(length - bare - 12));
        const Bytes png = samples::MakePng(drawing, samples::PngColour::Grey, filler);
        EXPECT_EQ(png.size(), length);
        return png;
    }

    /// Two PNG files of 1000 bytes, code around them.
    static FlashBuilder Flash() {
        FlashBuilder flash = FourIcons();
        flash.FillWithCode(0x1B0000, 0x40000, 5);
        return flash.Put(kPlace, Png(1000)).Put(kSecondPlace, Png(1000));
    }

    std::filesystem::path New(const Bytes& bytes, const std::string& name = "001C0000.png") {
        return WriteFile(temp / name, bytes);
    }

    Outcome Change(const std::filesystem::path& path) {
        return ChangePngFrom(session, scripted.ports, path).outcome;
    }

    std::string Pending() const { return ReadText(session.workFiles.PngPatch()); }

    /// Refused with this, and neither a file nor a flag came of it.
    void ExpectRefused(const std::filesystem::path& path, const Error& error, const std::string& box) {
        scripted.prompts.notices.clear();
        const Outcome outcome = Change(path);
        EXPECT_EQ(outcome.end, Outcome::End::Refused);
        ASSERT_EQ(outcome.problems.size(), 1U);
        EXPECT_EQ(outcome.problems[0].error, error);
        EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{box});
        EXPECT_EQ(scripted.prompts.notices.at(0).title, "");
        EXPECT_FALSE(session.pngPatchPending);
        EXPECT_FALSE(session.savePatchEnabled);
        EXPECT_TRUE(ListNames(session.workFiles.folder).empty());
    }

    static std::size_t Count(const std::string& text, const std::string& part) {
        std::size_t count = 0;
        for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at) ++count;
        return count;
    }
};

TEST_F(ChangePngTest, TheFilesNameTellsThePlaceAndTheSectionWritesTheNewBytesThere) {
    Open(Flash());
    const Bytes png = Png(1000, 2);
    const ChangedPng changed = ChangePngFrom(session, scripted.ports, New(png));
    EXPECT_TRUE(changed.outcome.IsClean());
    EXPECT_EQ(changed.name, "001C0000");
    EXPECT_EQ(changed.length, 1000U);
    EXPECT_TRUE(
        Pending().starts_with("\r\n; ##### PNG Picture 001C0000 #####\r\n001C0000: 89504E470D0A1A0A"));
    const MemorySource pending(ReadFile(session.workFiles.PngPatch()));
    const auto entries = ReadWholePatch(pending);
    ASSERT_TRUE(entries);
    EXPECT_TRUE(MismatchesOf(pending, *session.flash.source)->empty());
    Bytes written;
    for (const PatchEntry& entry : *entries) {
        EXPECT_EQ(entry.offset, kPlace + written.size());
        written.insert(written.end(), entry.newBytes.begin(), entry.newBytes.end());
    }
    EXPECT_EQ(written, png);
    EXPECT_EQ(entries->back().newBytes.size(), 8U);
    EXPECT_TRUE(scripted.prompts.notices.empty());
    ExpectFlashUntouched();
}

TEST_F(ChangePngTest, SetsTheFlagAndEnablesSavingThePatch) {
    Open(Flash());
    ASSERT_FALSE(session.savePatchEnabled);
    EXPECT_TRUE(Change(New(Png(900))).IsClean());
    EXPECT_TRUE(session.pngPatchPending);
    EXPECT_TRUE(session.savePatchEnabled);
}

TEST_F(ChangePngTest, TheNameMayHaveOneToEightDigitsOfEitherCase) {
    for (const char* name : {"1c0000.png", "1C0000.PNG", "001c0000.png", "01C0000.png"}) {
        Open(Flash());
        EXPECT_TRUE(Change(New(Png(900), name)).IsClean()) << name;
        EXPECT_NE(Pending().find("\r\n001C0000: "), std::string::npos) << name;
        EXPECT_NE(Pending().find("PNG Picture " + std::filesystem::path(name).stem().string() + " #####"),
                  std::string::npos);
    }
    FlashBuilder atFive = FourIcons();
    Open(atFive.Put(5, Png(900)));
    EXPECT_TRUE(Change(New(Png(900), "5.png")).IsClean());
    EXPECT_NE(Pending().find("\r\n00000005: 8950"), std::string::npos);
}

TEST_F(ChangePngTest, AnyOtherNameIsRefused) {
    Open(Flash());
    for (const char* name : {"picture.png", "0001C0000.png", ".png", "1C0000x.png", "0x1C0000.png",
                             "-1C0000.png", "1C 0000.png", "+5.png"}) {
        const auto path = New(Png(900), name);
        const std::string why =
            "is not named by the offset of the PNG file that it replaces, such as 0012AB40.png";
        ExpectRefused(path, {ErrorKind::Malformed, path, std::nullopt, why}, path.string() + "\r" + why);
    }
}

TEST_F(ChangePngTest, APlaceWithoutAPngSignatureIsRefused) {
    Open(Flash());
    const auto path = New(Png(900), "1C0001.png");
    ExpectRefused(path, {ErrorKind::Malformed, flashPath, kPlace + 1, "no PNG file begins there"},
                  flashPath.string() + "\rat 0x1C0001: no PNG file begins there");
    const auto beyond = New(Png(900), "FFFFFFFF.png");
    ExpectRefused(beyond, {ErrorKind::Malformed, flashPath, 0xFFFFFFFF, "no PNG file begins there"},
                  flashPath.string() + "\rat 0xFFFFFFFF: no PNG file begins there");
}

TEST_F(ChangePngTest, KeptAFileOfTwoBytesMoreThanTheOldOneIsTakenAndOneOfThreeIsTooLarge) {
    Open(Flash());
    const auto tooLarge = New(Png(1003));
    ExpectRefused(tooLarge, {ErrorKind::PngTooLarge, flashPath, kPlace, "Too large size!"},
                  "Too large size!");
    EXPECT_TRUE(Change(New(Png(1002))).IsClean());
    EXPECT_TRUE(session.pngPatchPending);
}

TEST_F(ChangePngTest, AShorterFileIsFollowedByFFUpToTheEndOfTheOldOne) {
    Open(Flash());
    EXPECT_TRUE(Change(New(Png(950))).IsClean());
    const auto entries = ReadWholePatch(MemorySource(ReadFile(session.workFiles.PngPatch())));
    ASSERT_TRUE(entries);
    const PatchEntry& last = entries->back();
    EXPECT_EQ(last.offset + last.newBytes.size(), kPlace + 1000);
    EXPECT_EQ(last.newBytes, Bytes(2, 0xFF));
    EXPECT_EQ(entries->at(entries->size() - 2).newBytes, Bytes(16, 0xFF));
}

TEST_F(ChangePngTest, AnIENDAcrossABorderOf512BytesIsFound) {
    for (std::size_t length = 508; length < 524; ++length) {
        FlashBuilder flash = FourIcons();
        Open(flash.Put(kPlace, Png(length)));
        EXPECT_TRUE(Change(New(Png(length + 2))).IsClean()) << length;
        scripted.prompts.notices.clear();
        EXPECT_EQ(Change(New(Png(length + 3))).problems.at(0).error.kind, ErrorKind::PngTooLarge) << length;
    }
}

TEST_F(ChangePngTest, AnOldPngWithoutAnEndIsRefused) {
    FlashBuilder flash = FourIcons();
    const Bytes whole = Png(1000);
    Open(flash.Put(kPlace, Bytes(whole.begin(), whole.end() - 8)));
    const auto path = New(Png(900));
    ExpectRefused(path, {ErrorKind::Malformed, flashPath, kPlace, "the PNG file there has no end (IEND)"},
                  flashPath.string() + "\rat 0x1C0000: the PNG file there has no end (IEND)");
}

TEST_F(ChangePngTest, AMissingFileIsToldWithoutItsPath) {
    Open(Flash());
    const auto path = temp / "001C0000.png";
    ExpectRefused(path, {ErrorKind::FileMissing, path, std::nullopt, "cannot be opened"}, "fnExi!");
}

TEST_F(ChangePngTest, AFileThatIsNoWholePngIsRefused) {
    Open(Flash());
    const Bytes whole = Png(900);
    for (const Bytes& bytes : {Bytes(), Bytes(900, 'x'), Bytes(whole.begin(), whole.end() - 12)}) {
        const auto path = New(bytes);
        const std::string why = "is no PNG file, or one cut short";
        ExpectRefused(path, {ErrorKind::UnknownFile, path, std::nullopt, why}, path.string() + "\r" + why);
    }
}

TEST_F(ChangePngTest, ASecondReplacementIsAppendedInTheOrderOfReplacing) {
    Open(Flash());
    EXPECT_TRUE(Change(New(Png(900), "001D0000.png")).IsClean());
    const std::string first = Pending();
    EXPECT_TRUE(Change(New(Png(910), "001C0000.png")).IsClean());
    const std::string both = Pending();
    EXPECT_TRUE(both.starts_with(first));
    EXPECT_TRUE(both.substr(first.size()).starts_with("\r\n; ##### PNG Picture 001C0000 #####\r\n"));
    EXPECT_EQ(Count(both, "; ##### PNG Picture "), 2U);
}

TEST_F(ChangePngTest, TheFirstReplacementCreatesThePatchAnew) {
    Open(Flash());
    WriteFile(session.workFiles.PngPatch(), std::string("; of another run\r\n"));
    EXPECT_TRUE(Change(New(Png(900))).IsClean());
    EXPECT_EQ(Pending().find("another run"), std::string::npos);
}

TEST_F(ChangePngTest, AfterASavedPatchTheNextReplacementBeginsAnew) {
    Open(Flash());
    EXPECT_TRUE(Change(New(Png(900))).IsClean());
    EXPECT_TRUE(SavePatchTo(session, scripted.ports, temp / "a.vkp").outcome.IsClean());
    EXPECT_FALSE(session.pngPatchPending);
    EXPECT_TRUE(Change(New(Png(900), "001D0000.png")).IsClean());
    EXPECT_EQ(Count(Pending(), "; ##### PNG Picture "), 1U);
}

TEST_F(ChangePngTest, ARefusedSecondReplacementLeavesTheFirst) {
    Open(Flash());
    EXPECT_TRUE(Change(New(Png(900))).IsClean());
    const std::string first = Pending();
    EXPECT_EQ(Change(New(Png(1003), "001D0000.png")).end, Outcome::End::Refused);
    EXPECT_EQ(Pending(), first);
    EXPECT_TRUE(session.pngPatchPending);
    EXPECT_TRUE(session.savePatchEnabled);
}

TEST_F(ChangePngTest, AFullDiskLeavesThePendingPatchAsItWas) {
    PICTAVO_NEEDS_POSIX("full disks");
    Open(Flash());
    EXPECT_TRUE(Change(New(Png(900))).IsClean());
    const std::string first = Pending();
    const auto second = New(Png(900), "001D0000.png");
    {
        const FileSizeLimit full(first.size() + 10);
        EXPECT_EQ(Change(second).problems.at(0).error.kind, ErrorKind::WriteFailed);
    }
    EXPECT_EQ(Pending(), first);
    EXPECT_EQ(ListNames(session.workFiles.folder), std::vector<std::string>{"PNGpatch.vkp"});
}

TEST_F(ChangePngTest, WithoutAWorkFolderNothingBecomesPending) {
    Open(Flash());
    session.workFiles.folder = temp / "no folder";
    EXPECT_EQ(Change(New(Png(900))).problems.at(0).error.kind, ErrorKind::WriteFailed);
    EXPECT_FALSE(session.pngPatchPending);
    EXPECT_FALSE(session.savePatchEnabled);
}

TEST_F(ChangePngTest, TheTwoBytesMoreMustLieInTheFlash) {
    FlashBuilder flash = FourIcons();
    Open(flash.Put((2U << 20) - 1000, Png(1000)));
    const auto path = New(Png(1002), PadZeros(UpperHex((2U << 20) - 1000), 8, true) + ".png");
    EXPECT_EQ(Change(path).problems.at(0).error.kind, ErrorKind::Truncated);
    EXPECT_FALSE(session.pngPatchPending);
    EXPECT_TRUE(Change(New(Png(1000), path.filename().string())).IsClean());
}

TEST_F(ChangePngTest, TheChooserOffersPngFilesAndCancelEndsSilently) {
    Open(Flash());
    scripted.prompts.Choose({});
    EXPECT_EQ(ChangePng(session, scripted.ports).end, Outcome::End::Cancelled);
    const FileChoice& choice = scripted.prompts.choices.at(0);
    EXPECT_EQ(choice.title, "PlSel Files 4open");
    EXPECT_EQ(choice.filters, (std::vector<FileFilter>{{"Portable Network Graphic files", {"*.png"}}}));
    EXPECT_TRUE(scripted.prompts.notices.empty());
    EXPECT_FALSE(session.pngPatchPending);
}

TEST_F(ChangePngTest, KeptTheTailOfATypedNameIsCutOff) {
    Open(Flash());
    New(Png(900));
    scripted.prompts.Choose(temp / "001C0000.png !");
    EXPECT_TRUE(ChangePng(session, scripted.ports).IsClean());
    EXPECT_TRUE(session.pngPatchPending);
}

TEST_F(ChangePngTest, BytesThatAReplacedPictureWritesInPlaceAreRefusedByItsNumber) {
    FlashBuilder flash = FourIcons();
    Bytes png = Png(1000);
    Open(flash.AddPictureAt(0x1C0100, 16, 16, 0x05, Bytes(256, 0)).Put(kPlace, png));
    ReplaceBy(4, samples::DrawIcon(16, 16, 9), 0x85);
    const std::string pictures = "the replaced picture 0004 writes the same bytes";
    const Outcome outcome = Change(New(Png(900)));
    EXPECT_EQ(outcome.end, Outcome::End::Refused);
    EXPECT_EQ(outcome.problems.at(0).error, (Error{ErrorKind::Conflict, flashPath, kPlace, pictures}));
    EXPECT_EQ(scripted.prompts.NoticeTexts(),
              std::vector<std::string>{flashPath.string() + "\rat 0x1C0000: " + pictures});
    EXPECT_FALSE(session.pngPatchPending);
    EXPECT_EQ(ListNames(session.workFiles.folder), std::vector<std::string>{"0004.gpf2"});
}

TEST_F(ChangePngTest, APictureThatMovesFindsItsPlaceBesideThePng) {
    FlashBuilder flash = Flash();
    flash.FillWithCode(0x40000, 0x4F000, 3).FillWithCode(0x8F000, 0xC00, 4).Erase(kPlace + 1000, 0x800);
    Open(flash);
    session.flash.FreeSearchOffset = 0x1BFFF8;  // the first free step would be the byte behind the old PNG
    ReplaceBy(0, samples::DrawPhoto(32, 32, 9), 0x85);
    EXPECT_TRUE(Change(New(Png(1002))).IsClean());
    const PatchOutcome saved = SavePatchTo(session, scripted.ports, temp / "a.vkp");
    EXPECT_TRUE(saved.outcome.IsClean());
    ASSERT_EQ(saved.sections.at(0).placement, Placement::Moved);
    EXPECT_GE(saved.sections[0].offset, kPlace + 1002);
}

}  // namespace
}  // namespace pictavo::tests
