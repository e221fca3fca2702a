#include "shell/ReadersModule.h"
#include "support/CliFixture.h"

namespace pictavo::tests {
namespace {

/// A copy of the program in a folder of its own, where its settings file may lie.
class SettingsTest : public CliTest {
  protected:
    SettingsTest() {
        std::filesystem::create_directory(temp / "app");
        std::filesystem::copy_file(program, temp / "app" / "pictavo-cli");
        std::filesystem::copy_file(std::filesystem::path(PICTAVO_BIN_DIR) / kReadersModule,
                                   temp / "app" / kReadersModule);
        flash = Write(FourIcons(FlashKind::SGold));
    }

    void Settings(const std::string& text) { Write("app/Pictavo.ini", text); }

    Ended Installed(const Arguments& arguments) const {
        Arguments command{(temp / "app" / "pictavo-cli").string()};
        command.insert(command.end(), arguments.begin(), arguments.end());
        return RunProgram(command, around);
    }

    std::vector<std::string> ExportedNames(const Arguments& more = {}) const {
        Arguments arguments{"export",   flash, "-o",         (temp / "out").string(),
                            "--format", "bmp", "--pictures", "3"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        EXPECT_EQ(Installed(arguments).status, 0);
        return ListNames(temp / "out");
    }

    std::string flash;
};

TEST_F(SettingsTest, TheProgramsFolderMayHaveAnyName) {
    std::filesystem::rename(temp / "app", temp / "p\xE9");
    const std::string bmp = Write("a.bmp", samples::MakeBmp(samples::DrawIcon(16, 16, 7), 24));
    const Ended ended =
        RunProgram({(temp / "p\xE9" / "pictavo-cli").string(), "convert", bmp, Path("a.gpf")}, around);
    EXPECT_EQ(ended.status, 0) << ended.err;
    EXPECT_TRUE(std::filesystem::exists(temp / "a.gpf"));
}

TEST_F(SettingsTest, WithoutTheFileTheDefaultsHoldAndNoneIsWritten) {
    EXPECT_EQ(ExportedNames(), std::vector<std::string>{"3.bmp"});
    EXPECT_EQ(ListNames(temp / "app"), (std::vector<std::string>{"pictavo-cli", kReadersModule}));
}

TEST_F(SettingsTest, AFileThatCannotBeOpenedIsToldOfAndTheDefaultsHold) {
    std::filesystem::create_directory(temp / "app" / "Pictavo.ini");
    const Ended ended = Installed({"export", flash, "-o", Path("out"), "--format", "bmp"});
    EXPECT_EQ(ended.err, "pictavo-cli: " + Path("app/Pictavo.ini") + ": cannot be opened (it is a folder)\n");
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ListNames(temp / "out").front(), "0.bmp");
}

TEST_F(SettingsTest, NamesFollowTheFileBesideTheExecutable) {
    Settings("ZeroFilename=true\r\n");
    EXPECT_EQ(ExportedNames(), std::vector<std::string>{"0003.bmp"});
}

TEST_F(SettingsTest, ARefusalThatComesOfASettingNamesIt) {
    Settings("CompressGPF=true\r\n");
    const std::string bmp = Write("a.bmp", samples::MakeBmp(samples::DrawIcon(16, 16, 7), 24));
    ExpectRefused(Installed({"patch", flash, "-o", Path("a.vkp"), "--picture", "0=" + bmp + "@1"}),
                  {"CompressGPF=true"});
}

TEST_F(SettingsTest, OptionsAddToTheFile) {
    Settings("HEXFilename=true\n");
    EXPECT_EQ(ExportedNames({"--zero-names"}), std::vector<std::string>{"003.bmp"});
}

TEST_F(SettingsTest, TheFileInTheCurrentFolderIsNotMeant) {
    Write("Pictavo.ini", std::string("ZeroFilename=true\n"));
    around.folder = temp.Path();
    EXPECT_EQ(ExportedNames(), std::vector<std::string>{"3.bmp"});
}

TEST_F(SettingsTest, CompressionFollowsTheFile) {
    Settings("CompressGPF=true\n");
    const std::string red =
        Write("red.bmp", samples::MakeBmp(samples::DrawOneColour(16, 16, {255, 0, 0, 255}), 24));
    EXPECT_EQ(Installed({"patch", flash, "-o", Path("a.vkp"), "--picture", "0=" + red}).out,
              "picture 0000: 9 bytes at 00C0000, in place\n");
}

TEST_F(SettingsTest, TheConverterFollowsTheFileAndTheOptionComesFirst) {
    Settings("nConvert=" + Path("mine") + "\n");
    ExpectRefused(Installed({"export", flash, "-o", Path("out"), "--format", "png"}), {Path("mine")});
    const std::string real = std::string(PICTAVO_BIN_DIR) + "/pictavo-convert";
    ExpectDone(Installed({"export", flash, "-o", Path("out"), "--format", "png", "--converter", real}),
               "exported 4\n");
}

TEST_F(SettingsTest, TheConverterBesideTheExecutableIsTheDefault) {
    ExpectRefused(Installed({"export", flash, "-o", Path("out"), "--format", "png"}),
                  {Path("app/pictavo-convert")});
}

TEST_F(SettingsTest, ASettingsFileOfRubbishIsNoFailure) {
    Settings(std::string(5000, '\xE9') + "\n\n=\nZeroFilename\nnonsense=true\n");
    EXPECT_EQ(ExportedNames(), std::vector<std::string>{"3.bmp"});
}

}  // namespace
}  // namespace pictavo::tests
