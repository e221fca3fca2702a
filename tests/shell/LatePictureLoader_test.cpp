#include "shell/LatePictureLoader.h"

#include "samples/FileMakers.h"
#include "shell/QtPictureLoader.h"
#include "shell/ReadersModule.h"
#include "support/ChildProcess.h"
#include "support/CoreApplication.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

const std::filesystem::path kPrograms(PICTAVO_BIN_DIR);

class LatePictureLoaderTest : public ::testing::Test {
  protected:
    std::filesystem::path Bitmap() const {
        return WriteFile(temp / "icon.bmp", samples::MakeBmp(samples::DrawIcon(16, 12, 3), 24));
    }

    TempFolder temp;
};

TEST_F(LatePictureLoaderTest, ReadsWhatTheReadersRead) {
    const std::filesystem::path bitmap = Bitmap();
    LatePictureLoader late(kPrograms);
    const auto pixels = late.Load(bitmap);
    const auto expected = QtPictureLoader().Load(bitmap);
    ASSERT_TRUE(pixels && expected);
    EXPECT_EQ(pixels->width, 16);
    EXPECT_EQ(pixels->height, 12);
    EXPECT_EQ(pixels->cells, expected->cells);
}

TEST_F(LatePictureLoaderTest, PassesTheReadersErrorsOn) {
    LatePictureLoader late(kPrograms);
    const auto pixels = late.Load(temp / "missing.bmp");
    ASSERT_FALSE(pixels);
    EXPECT_EQ(pixels.error().kind, ErrorKind::FileMissing);
    EXPECT_EQ(pixels.error().path, temp / "missing.bmp");
}

TEST_F(LatePictureLoaderTest, FindsTheModuleWhereItIsInstalled) {
    const std::filesystem::path programs = temp / "bin";
    const std::filesystem::path modules = (programs / kInstalledModules).lexically_normal();
    std::filesystem::create_directories(programs);
    std::filesystem::create_directories(modules);
    std::filesystem::copy_file(kPrograms / kReadersModule, modules / kReadersModule);
    EXPECT_TRUE(LatePictureLoader(programs).Load(Bitmap()).has_value());
}

TEST_F(LatePictureLoaderTest, AMissingModuleIsNamed) {
    const auto pixels = LatePictureLoader(temp.Path()).Load(Bitmap());
    ASSERT_FALSE(pixels);
    EXPECT_EQ(pixels.error().kind, ErrorKind::FileMissing);
    EXPECT_EQ(pixels.error().path.filename(), kReadersModule);
    EXPECT_TRUE(pixels.error().detail.starts_with("the picture readers cannot be loaded ("))
        << pixels.error().detail;
}

TEST_F(LatePictureLoaderTest, TheCompanionStartsWithoutTheToolkitsDrawingLibrary) {
    const Ended listed =
        RunProgram({(kPrograms / "pictavo-cli").string()}, {{}, {"LD_TRACE_LOADED_OBJECTS=1"}, {}});
    EXPECT_NE(listed.out.find("Qt6Core"), std::string::npos) << listed.out;
    EXPECT_EQ(listed.out.find("Qt6Gui"), std::string::npos) << listed.out;
}

}  // namespace
}  // namespace pictavo::tests
