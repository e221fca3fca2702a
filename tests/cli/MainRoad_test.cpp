#include "support/CliFixture.h"

namespace pictavo::tests {
namespace {

/// From pictures to a patched copy of the flash, and back out of it.
class MainRoadTest : public CliTest {
  protected:
    /// Colours that the type holds exactly, so that what comes out must be what went in.
    static Drawing Exact(const Drawing& drawing, std::uint8_t typeCode) {
        Drawing exact{drawing.width, drawing.height, samples::ExpectedPixels(drawing, typeCode)};
        for (samples::Pixel& pixel : exact.pixels) pixel.a = 255;
        return exact;
    }

    /// Patches, checks, applies, and exports the copy's pictures as bitmaps to "out".
    void Travel(const std::string& flash, const Arguments& pictures) {
        Arguments patch{"patch", flash, "-o", Path("new.vkp")};
        patch.insert(patch.end(), pictures.begin(), pictures.end());
        const Ended patched = Cli(patch);
        ASSERT_EQ(patched.status, 0) << patched.err;
        Protect(temp / "new.vkp");
        ExpectDone(Cli({"check", Path("new.vkp"), flash}));
        ExpectDone(Cli({"apply", Path("new.vkp"), flash, "-o", Path("copy.bin")}));
        EXPECT_EQ(std::filesystem::file_size(temp / "copy.bin"), std::filesystem::file_size(flash));
        Protect(temp / "copy.bin");
        EXPECT_EQ(Cli({"info", Path("copy.bin")}).out, Cli({"info", flash}).out);
        const Ended exported = Cli({"export", Path("copy.bin"), "-o", Path("out"), "--format", "bmp"});
        EXPECT_EQ(exported.status, 0) << exported.err;
    }
};

TEST_F(MainRoadTest, TheCopyShowsTheNewPicturesAndTheOldOthersPixelForPixel) {
    const std::vector<Stored> old = OneOfEachType();
    const Drawing photo = Exact(samples::DrawPhoto(61, 47, 3), 0x08);
    const Drawing gradient = Exact(samples::DrawGradient(132, 176, 4), 0x05);
    const Drawing disc = samples::DrawSoftDisc(33, 31, 5);
    const Drawing ball = samples::DrawAnimationFrame(20, 20, 1, 8);
    const std::string flash = Write(FlashOf(old, FlashKind::SGold));
    Travel(flash,
           {"--picture", "0=" + Write("photo.bmp", samples::MakeBmp(photo, 24)),  //
            "--picture", "3=" + Write("gradient.bmp", samples::MakeBmp(gradient, 24)) + "@8", "--picture",
            "5=" + Write("disc.bmp", samples::MakeBmp(disc, 32)) + "@24",  //
            "--picture", "9=" + Write("ball.png", samples::MakePng(ball, samples::PngColour::Rgb)) + "@24"});
    ExpectShows(temp / "out/0.bmp", photo, 0x08);
    ExpectShows(temp / "out/3.bmp", gradient, 0x05);
    ExpectShows(temp / "out/5.bmp", disc, 0x0A);
    ExpectShows(temp / "out/9.bmp", ball, 0x0A);
    for (const std::size_t number : {1U, 2U, 4U, 6U, 7U, 8U})
        ExpectShows(temp / ("out/" + std::to_string(number) + ".bmp"), old[number].drawing,
                    old[number].typeCode);
}

TEST_F(MainRoadTest, CompressedPicturesArriveToo) {
    const Drawing photo = Exact(samples::DrawPhoto(61, 47, 3), 0x88);
    const Drawing gradient = Exact(samples::DrawGradient(40, 30, 4), 0x85);
    const Drawing disc = samples::DrawSoftDisc(33, 31, 5);
    const std::string flash = Write(FourIcons(FlashKind::SGold));
    Travel(flash, {"--compress",                                                                 //
                   "--picture", "0=" + Write("photo.bmp", samples::MakeBmp(photo, 24)) + "@16",  //
                   "--picture", "1=" + Write("gradient.bmp", samples::MakeBmp(gradient, 24)) + "@8",
                   "--picture", "2=" + Write("disc.bmp", samples::MakeBmp(disc, 32)) + "@24"});
    ExpectShows(temp / "out/0.bmp", photo, 0x88);
    ExpectShows(temp / "out/1.bmp", gradient, 0x85);
    ExpectShows(temp / "out/2.bmp", disc, 0x8A);
    const auto lines = Lines(Cli({"list", Path("copy.bin")}).out);
    EXPECT_TRUE(lines.at(1).starts_with("0000\t000\t61\t47\t8800\t")) << lines.at(1);
}

TEST_F(MainRoadTest, TallPicturesOfLongRecordsArriveToo) {
    const Drawing photo = Exact(samples::DrawPhoto(240, 320, 3), 0x08);
    FlashBuilder flash = FourIcons(FlashKind::NewSGoldEL71);
    flash.Size(18U << 20);
    Travel(Write(flash), {"--picture", "2=" + Write("photo.bmp", samples::MakeBmp(photo, 24))});
    ExpectShows(temp / "out/2.bmp", photo, 0x08);
}

TEST_F(MainRoadTest, APictureExportedAndPutBackGivesTheSameFlash) {
    const std::string flash = Write(FlashOf(OneOfEachType(), FlashKind::SGold));
    ExpectDone(Cli({"export", flash, "-o", Path("first"), "--format", "gpf2", "--pictures", "3-4"}),
               "exported 2\n");
    Travel(flash, {"--picture", "3=" + Path("first/3.gpf2") + "@16", "--picture",
                   "4=" + Path("first/4.gpf2") + "@24"});
    EXPECT_EQ(ReadFile(temp / "copy.bin"), ReadFile(flash));
}

TEST_F(MainRoadTest, AFolderOfExportedPicturesIsAFolderOfReplacements) {
    std::vector<Stored> old = OneOfEachType();
    for (Stored& picture : old) picture.drawing = samples::DrawGradient(19, 13, 4);  // nothing transparent
    const std::string flash = Write(FlashOf(old, FlashKind::SGold));
    ExpectDone(Cli({"export", flash, "-o", Path("first"), "--format", "bmp"}), "exported 10\n");
    Travel(flash, {"--folder", Path("first"), "--bits", "24"});
    for (std::size_t number = 0; number < old.size(); ++number) {
        const std::string name = std::to_string(number) + ".bmp";
        EXPECT_TRUE(ReadBmp(temp / "out" / name).shown.pixels == ReadBmp(temp / "first" / name).shown.pixels)
            << name;
    }
}

TEST_F(MainRoadTest, ThePatchedCopyFailsTheCheckOfItsOwnPatch) {
    const std::string flash = Write(FourIcons(FlashKind::SGold));
    Travel(flash, {"--picture", "0=" + Write("a.bmp", samples::MakeBmp(samples::DrawPhoto(16, 16, 3), 24))});
    const Ended ended = Cli({"check", Path("new.vkp"), Path("copy.bin")});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(Lines(ended.out).size(), 1U + 512 / 16);
    ExpectRefused(Cli({"apply", Path("new.vkp"), Path("copy.bin"), "-o", Path("twice.bin")}),
                  {Path("copy.bin")});
}

}  // namespace
}  // namespace pictavo::tests
