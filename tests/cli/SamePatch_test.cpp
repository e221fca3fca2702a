#include "session/SavePatch.h"
#include "support/ChildProcess.h"
#include "support/SessionFixture.h"

namespace pictavo::tests {
namespace {

/// The same pictures replaced by the commands of the window, with scripted answers, and by pictavo-cli.
class SamePatchTest : public SessionFixture {
  protected:
    SamePatchTest() {
        photo = Write("photo.bmp", samples::MakeBmp(samples::DrawPhoto(61, 47, 3), 32));
        disc = Write("disc.bmp", samples::MakeBmp(samples::DrawSoftDisc(15, 14, 5), 32));
        const Bytes stored = samples::EncodeForPhone(samples::DrawIcon(16, 16, 9), 0x88);
        icon = WriteGpf2("icon.gpf2", 16, 16, 0x88, stored).string();
        std::filesystem::create_directory(temp / "run folders");
    }

    std::string Write(const std::string& name, const Bytes& bytes) const {
        return WriteFile(temp / name, bytes).string();
    }

    void Replace(std::size_t row, const std::string& file, std::uint8_t type, bool compress) {
        scripted.prompts.Choose(file);
        scripted.prompts.Expect(Asked::Compress, compress);
        EXPECT_TRUE(ReplacePicture(session, scripted.ports, row, type).IsClean());
    }

    std::string PatchOfTheWindow() {
        scripted.prompts.Choose(temp / "window.vkp");
        EXPECT_TRUE(SavePatch(session, scripted.ports).outcome.IsClean());
        return ReadText(temp / "window.vkp");
    }

    std::string PatchOfTheCompanion(const std::vector<std::string>& options) const {
        const std::string patch = (temp / "companion.vkp").string();
        std::vector<std::string> command{std::string(PICTAVO_BIN_DIR) + "/pictavo-cli", "patch",
                                         flashPath.string(), "-o", patch};
        command.insert(command.end(), options.begin(), options.end());
        Surroundings around;
        around.environment.push_back("TMP=" + (temp / "run folders").string());
        const Ended ended = RunProgram(command, around);
        EXPECT_EQ(ended.status, 0) << ended.err;
        return ReadText(patch);
    }

    std::string photo;
    std::string disc;
    std::string icon;
};

TEST_F(SamePatchTest, OfSinglePictures) {
    for (const bool compress : {false, true}) {
        Open(FourIcons(FlashKind::SGold));
        Replace(0, photo, 0x88, compress);
        Replace(3, disc, 0x8A, compress);
        Replace(1, icon, 0x85, compress);
        std::vector<std::string> options{"--picture", "0=" + photo,       "--picture",  "3=" + disc + "@24",
                                         "--picture", "1=" + icon + "@8", "--overwrite"};
        if (compress) options.emplace_back("--compress");
        const std::string patch = PatchOfTheWindow();
        EXPECT_NE(patch.find("Picture 0003"), std::string::npos);
        EXPECT_EQ(PatchOfTheCompanion(options), patch);
        std::filesystem::remove(temp / "window.vkp");
    }
}

TEST_F(SamePatchTest, OfAFolderOfPictures) {
    Open(FourIcons(FlashKind::SGold));
    std::filesystem::create_directory(temp / "in");
    std::filesystem::rename(photo, temp / "in/1.bmp");
    std::filesystem::rename(icon, temp / "in/2.gpf2");
    scripted.prompts.Choose(temp / "in");
    for (int picture = 0; picture < 2; ++picture) scripted.prompts.Expect(Asked::Compress, false);
    EXPECT_TRUE(ReplacePictures(session, scripted.ports, 0x85).IsClean());
    const std::string patch = PatchOfTheWindow();
    EXPECT_NE(patch.find("Picture 0002"), std::string::npos);
    EXPECT_EQ(PatchOfTheCompanion({"--folder", (temp / "in").string(), "--bits", "8"}), patch);
}

TEST_F(SamePatchTest, OfNoPictureAtAll) {
    Open(FourIcons());
    EXPECT_EQ(PatchOfTheCompanion({}), PatchOfTheWindow());
}

}  // namespace
}  // namespace pictavo::tests
