#include "session/Channels.h"

#include "codec/Bitmap.h"
#include "session/OpenFiles.h"
#include "session/SavePicture.h"
#include "session/ShowPicture.h"
#include "support/BmpFile.h"
#include "support/SessionFixture.h"

namespace pictavo::tests {
namespace {

constexpr ChannelFlags kRedAndAlpha{true, false, false, true};

class ChannelsTest : public SessionFixture {
  protected:
    /// A picture of 24 bits with alpha, 16 x 16.
    void ShowIcon() {
        Open(FourIcons());
        ASSERT_TRUE(ShowRow(session, 3));
        before = session.picture;
    }

    Outcome Save(const std::filesystem::path& answer, const ChannelFlags& flags = kRedAndAlpha) {
        scripted.prompts.Choose(answer);
        return SaveChannels(session, scripted.ports, flags);
    }

    Outcome Load(const std::filesystem::path& answer, const ChannelFlags& flags = kRedAndAlpha) {
        scripted.prompts.Choose(answer);
        return LoadChannels(session, scripted.ports, flags);
    }

    std::filesystem::path WriteBmp(const std::string& name) {
        return WriteFile(temp / name, samples::MakeBmp(drawing, 32));
    }

    void ExpectPictureUnchanged() const {
        EXPECT_TRUE(std::equal(before.raster.From(0, 0),
                               before.raster.From(0, 0) + Raster::kColumns * Raster::kRows,
                               session.picture.raster.From(0, 0)));
        EXPECT_EQ(session.picture.width, before.width);
    }

    const samples::Drawing drawing = samples::DrawIcon(7, 5, 9);
    Picture before;
};

TEST_F(ChannelsTest, TheFlaggedChannelsAreSavedIn32Bits) {
    ShowIcon();
    EXPECT_TRUE(Save(temp / "out.bmp").IsClean());
    const BmpFile file = ReadBmp(temp / "out.bmp");
    EXPECT_EQ(file.bits, 32);
    ASSERT_EQ(file.shown.width, 16);
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x) {
            const samples::Pixel& pixel = file.shown.At(x, y);
            const Cell cell = CellAt(x, y);
            ASSERT_EQ((Cell{pixel.r, pixel.g, pixel.b, pixel.a}), (Cell{cell.r, 0, 0, cell.a}))
                << x << " " << y;
        }
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"Succes"});
}

TEST_F(ChannelsTest, NoChannelFlaggedSavesWholePixels) {
    ShowIcon();
    EXPECT_TRUE(Save(temp / "out.bmp", {}).IsClean());
    const samples::Pixel pixel = ReadBmp(temp / "out.bmp").shown.At(8, 8);
    EXPECT_EQ((Cell{pixel.r, pixel.g, pixel.b, pixel.a}), CellAt(8, 8));
}

TEST_F(ChannelsTest, TheFlagsHoldForOneSaveAndOneLoadOnly) {
    ShowIcon();
    const auto file = WriteBmp("in.bmp");
    EXPECT_TRUE(Save(temp / "out.bmp").IsClean());
    EXPECT_TRUE(SaveBmpTo(session, scripted.ports, temp / "whole.bmp", true).IsClean());
    EXPECT_EQ(ReadFile(temp / "whole.bmp"), ComposeBitmap(before, true));
    EXPECT_TRUE(Load(file).IsClean());
    EXPECT_TRUE(OpenAs(session, scripted.ports, file, FileKind::Picture).IsClean());
    const samples::Pixel& pixel = drawing.At(3, 2);
    EXPECT_EQ(CellAt(3, 2), (Cell{pixel.r, pixel.g, pixel.b, pixel.a}));
}

TEST_F(ChannelsTest, TheSaveChooserProposesChannels) {
    ShowIcon();
    EXPECT_EQ(Save({}).end, Outcome::End::Cancelled);
    const FileChoice& choice = scripted.prompts.choices.at(0);
    EXPECT_EQ(choice.title, "PlSel File 4save");
    EXPECT_EQ(choice.filters, (std::vector<FileFilter>{{"Bitmap File", {"*.bmp"}}}));
    EXPECT_EQ(choice.suggestedName, "channels");
    EXPECT_EQ(choice.defaultExtension, "bmp");
}

TEST_F(ChannelsTest, ANameWithoutExtensionGetsIt) {
    ShowIcon();
    EXPECT_TRUE(Save(temp / "channels").IsClean());
    EXPECT_TRUE(std::filesystem::exists(temp / "channels.bmp"));
}

TEST_F(ChannelsTest, ADeclinedOverwriteKeepsTheFile) {
    ShowIcon();
    const auto old = WriteFile(temp / "channels.bmp", std::string("old"));
    scripted.prompts.Choose(temp / "channels");
    scripted.prompts.Expect(Asked::Overwrite, false);
    EXPECT_EQ(SaveChannels(session, scripted.ports, kRedAndAlpha).end, Outcome::End::Cancelled);
    EXPECT_EQ(ReadText(old), "old");
}

TEST_F(ChannelsTest, WithoutAPictureNothingIsAskedAndNothingSaved) {
    EXPECT_EQ(SaveChannels(session, scripted.ports, kRedAndAlpha).end, Outcome::End::Refused);
    EXPECT_TRUE(scripted.prompts.choices.empty());
}

TEST_F(ChannelsTest, OnlyTheFlaggedChannelsAreLoaded) {
    ShowIcon();
    EXPECT_TRUE(Load(WriteBmp("in.bmp")).IsClean());
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 7; ++x) {
            const samples::Pixel& pixel = drawing.At(x, y);
            const Cell old = before.raster.At(x, y);
            ASSERT_EQ(CellAt(x, y), (Cell{pixel.r, old.g, old.b, pixel.a})) << x << " " << y;
        }
    EXPECT_EQ(CellAt(7, 5), before.raster.At(7, 5));
    EXPECT_EQ(session.picture.width, 16);
}

TEST_F(ChannelsTest, TheOpenChooserOffersPicturesWithoutGpf) {
    EXPECT_EQ(Load({}).end, Outcome::End::Cancelled);
    const FileChoice& choice = scripted.prompts.choices.at(0);
    EXPECT_EQ(choice.title, "PlSel File 4open");
    EXPECT_EQ(choice.filters,
              (std::vector<FileFilter>{{"Graphic files", {"*.bmp", "*.gif", "*.jpg", "*.png"}}}));
}

TEST_F(ChannelsTest, TheEndingOfAFileToLoadMayBeInAnyCase) {
    for (const char* name : {"a.BMP", "a.Gif", "a.JPG", "a.jpg"}) {
        ShowIcon();
        EXPECT_TRUE(Load(WriteBmp(name)).IsClean()) << name;
        EXPECT_EQ(CellAt(3, 2).r, drawing.At(3, 2).r) << name;
    }
}

TEST_F(ChannelsTest, APngLoadsThroughTheConverter) {
    ShowIcon();
    scripted.processes.effect = [this](const FakeProcesses::Call&) { WriteBmp("work/PNGtemp.bmp"); };
    const auto png = WriteFile(temp / "PICTURE.PNG", samples::MakePng(drawing, samples::PngColour::Rgba));
    EXPECT_TRUE(Load(png).IsClean());
    EXPECT_EQ(CellAt(3, 2).r, drawing.At(3, 2).r);
}

TEST_F(ChannelsTest, OtherFilesDoNothing) {
    ShowIcon();
    for (const char* name : {"a.jpeg", "a.gpf", "a.bin", "bmp"}) {
        EXPECT_EQ(Load(WriteBmp(name)).end, Outcome::End::Refused) << name;
        ExpectPictureUnchanged();
    }
    EXPECT_TRUE(scripted.prompts.notices.empty());
}

TEST_F(ChannelsTest, AMissingFileIsTold) {
    EXPECT_EQ(Load(temp / "gone.txt").end, Outcome::End::Refused);
    EXPECT_EQ(scripted.prompts.NoticeTexts(),
              std::vector<std::string>{(temp / "gone.txt").string() + "\rfnExi!"});
}

TEST_F(ChannelsTest, TheAnswerLosesItsTail) {
    ShowIcon();
    WriteBmp("in.bmp");
    EXPECT_TRUE(Load(temp / "in.bmp (").IsClean());
}

TEST_F(ChannelsTest, APictureThatIsRefusedChangesNothing) {
    ShowIcon();
    const auto large = WriteFile(temp / "large.bmp", samples::MakeBmp(samples::DrawIcon(241, 1, 1), 32));
    EXPECT_EQ(Load(large).end, Outcome::End::Refused);
    EXPECT_EQ(scripted.prompts.NoticeTexts(), std::vector<std::string>{"LarPic!"});
    ExpectPictureUnchanged();
}

TEST_F(ChannelsTest, RememberingChangesTheFourSettingsOnly) {
    session.places.settingsFile = temp / "Pictavo.ini";
    session.settings.ChanG = session.settings.ChanB = true;
    session.settings.HEXFilename = true;
    session.settings.MRU[0] = "/a.bin";
    AppSettings expected = session.settings;
    expected.ChanR = expected.ChanA = true;
    expected.ChanG = expected.ChanB = false;
    ASSERT_TRUE(RememberChannels(session, kRedAndAlpha));
    EXPECT_EQ(session.settings, expected);
    const auto stored = LoadAppSettings(session.places.settingsFile, {});
    ASSERT_TRUE(stored);
    EXPECT_EQ(*stored, expected);
}

TEST_F(ChannelsTest, RememberingTellsThatTheFileCanNotBeWrittenAndTheSettingsStay) {
    session.places.settingsFile = temp / "nowhere" / "Pictavo.ini";
    const AppSettings settings = session.settings;
    const Status remembered = RememberChannels(session, kRedAndAlpha);
    ASSERT_FALSE(remembered);
    EXPECT_EQ(remembered.error().kind, ErrorKind::WriteFailed);
    EXPECT_EQ(session.settings, settings);
}

TEST_F(ChannelsTest, WhatIsNotRememberedStaysOutOfTheSettings) {
    ShowIcon();
    const AppSettings settings = session.settings;
    ASSERT_TRUE(Save(temp / "out.bmp").IsClean());
    EXPECT_EQ(session.settings, settings);
}

}  // namespace
}  // namespace pictavo::tests
