#include "support/CliFixture.h"

namespace pictavo::tests {
namespace {

class LargeTest : public CliTest {
  protected:
    static constexpr std::uintmax_t kTwoGibibytes = std::uintmax_t{2} << 30;

    /// The file's end is a hole, which takes no disk.
    std::string WriteTwoGibibytes() {
        const std::filesystem::path path = temp / "large.bin";
        EXPECT_TRUE(FourIcons().WriteTo(path));
        std::filesystem::resize_file(path, kTwoGibibytes);
        return path.string();
    }
};

TEST_F(LargeTest, AFlashOf2GibibytesIsAFlashLikeAnother) {
    const std::string large = WriteTwoGibibytes();
    const std::string small = Write(FourIcons());
    const std::string picture = Write("new.bmp", samples::MakeBmp(samples::DrawIcon(16, 16, 9), 24));
    const auto written = std::filesystem::last_write_time(large);
    EXPECT_EQ(Cli({"list", large}).out, Cli({"list", small}).out);
    EXPECT_EQ(Cli({"info", large}).status, 0);
    const Ended patched = Cli({"patch", large, "-o", Path("new.vkp"), "--picture", "0=" + picture + "@8"});
    EXPECT_EQ(patched.status, 0) << patched.err;
    ExpectDone(Cli({"check", Path("new.vkp"), large}));
    EXPECT_EQ(std::filesystem::file_size(large), kTwoGibibytes);
    EXPECT_EQ(std::filesystem::last_write_time(large), written);
}

TEST_F(LargeTest, AFolderOf2500ReplacementsIsTakenWhole) {
    constexpr int kPictures = 2500;
    FlashBuilder flash(FlashKind::NewSGoldEL71);
    flash.Size(16U << 20);
    const Drawing old = samples::DrawIcon(16, 16, 1);
    for (int i = 0; i < kPictures; ++i) flash.AddDrawing(old, 0x08);
    const std::string path = Write(flash);
    std::filesystem::create_directory(temp / "folder");
    const Bytes bitmap = samples::MakeBmp(samples::DrawIcon(16, 16, 2), 24);
    for (int i = 0; i < kPictures; ++i) WriteFile(temp / ("folder/" + std::to_string(i) + ".bmp"), bitmap);
    const Ended patched = Cli({"patch", path, "-o", Path("new.vkp"), "--folder", Path("folder")});
    EXPECT_EQ(patched.status, 0) << patched.err;
    EXPECT_EQ(Lines(patched.out).size(), static_cast<std::size_t>(kPictures));
    ExpectDone(Cli({"check", Path("new.vkp"), path}));
}

}  // namespace
}  // namespace pictavo::tests
