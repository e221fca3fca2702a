/// Each command that writes, with each of its calls on files gone wrong in each way: every output is old or
/// new and whole, no input changes, and what failed is told with the name of a file.

#include "Faults.h"

#include <cstdio>

#include "samples/FileMakers.h"
#include "samples/FlashBuilder.h"

namespace pictavo::tests {
namespace {

using samples::FlashBuilder;
using samples::FlashKind;

class FaultsTest : public ::testing::Test {
  protected:
    /// Three pictures and an embedded PNG file.
    static constexpr std::uint64_t kPngOffset = 0x100000;

    FaultsTest() { WriteFlash(1500U << 10); }

    void WriteFlash(std::uint64_t size) {
        FlashBuilder flash(FlashKind::NewSGold);
        flash.Size(size).Erase(size - 0x40000, 0x40000);
        std::uint32_t seed = 1;
        for (const std::uint8_t type : std::initializer_list<std::uint8_t>{0x05, 0x88, 0x8A})
            flash.AddDrawing(samples::DrawIcon(16, 16, seed++), type);
        flash.Put(kPngOffset, Png(24));
        EXPECT_TRUE(flash.WriteTo(runs.Inputs() / "flash.bin"));
    }

    static Bytes Png(int side) {
        return samples::MakePng(samples::DrawIcon(side, side, 9), samples::PngColour::Rgb);
    }

    std::string Input(const std::string& name, const Bytes& bytes) {
        return WriteFile(runs.Inputs() / name, bytes).string();
    }

    /// What the program itself makes of the flash, as an input of what is tried.
    void Make(const std::vector<std::string>& arguments) {
        std::vector<std::string> command{kProgram};
        for (std::string argument : arguments) {
            if (argument.starts_with("in/")) argument = (runs.Inputs() / argument.substr(3)).string();
            command.push_back(argument);
        }
        const Ended made = RunProgram(command);
        EXPECT_EQ(made.status, 0) << made.err;
    }

    void TryAll(const std::vector<std::string>& arguments) {
        runs.Arguments(arguments);
        ExpectTried(runs.TryAll());
    }

    static void ExpectTried(int faults) {
        std::printf("%d faults tried\n", faults);
        EXPECT_GT(faults, 0);
    }

    /// A patch that lacks a picture which could not be read is whole: its old bytes stand in the flash.
    void PatchesMayLackPictures() {
        runs.isWholeInPart = [this](const std::filesystem::path& patch) {
            const std::string flash = (runs.Inputs() / "flash.bin").string();
            return RunProgram({kProgram, "check", patch.string(), flash}).status == 0;
        };
    }

    /// Over files that stand there already.
    void TryAllOver(const std::vector<std::string>& names, std::vector<std::string> arguments) {
        for (const std::string& name : names) runs.Old(name, "an old file");
        arguments.emplace_back("--overwrite");
        TryAll(arguments);
    }

    const std::string kProgram = std::string(PICTAVO_BIN_DIR) + "/pictavo-cli";
    FaultyRuns runs{{kProgram}};
};

TEST_F(FaultsTest, ExportAsBmp) {
    TryAll({"export", "{in}/flash.bin", "-o", "{out}/pictures", "--format", "bmp"});
}

TEST_F(FaultsTest, ExportAsGpf) {
    TryAll({"export", "{in}/flash.bin", "-o", "{out}", "--format", "gpf"});
}

TEST_F(FaultsTest, ExportAsGpf2OverOldFiles) {
    TryAllOver({"0.gpf2", "1.gpf2"}, {"export", "{in}/flash.bin", "-o", "{out}", "--format", "gpf2"});
}

TEST_F(FaultsTest, ExportWhereFilesHaveNamesFromTheStart) {
    runs.lacks = "nameless files";
    TryAllOver({"0.bmp"}, {"export", "{in}/flash.bin", "-o", "{out}", "--format", "bmp"});
}

TEST_F(FaultsTest, ExportWhereRenamesAlwaysReplace) {
    runs.lacks = "nameless files, exclusive renames";
    TryAllOver({"0.bmp"}, {"export", "{in}/flash.bin", "-o", "{out}", "--format", "bmp"});
}

TEST_F(FaultsTest, ExportWhereNothingButALookKeepsAFile) {
    runs.lacks = "nameless files, exclusive renames, hard links";
    TryAllOver({"0.bmp"}, {"export", "{in}/flash.bin", "-o", "{out}", "--format", "bmp"});
}

TEST_F(FaultsTest, ExportWhereAnOpenFileIsNamedByItsPathOnly) {
    runs.lacks = "links by handle";
    TryAllOver({"0.bmp"}, {"export", "{in}/flash.bin", "-o", "{out}", "--format", "bmp"});
}

TEST_F(FaultsTest, ExportAsPngThroughTheConverter) {
    TryAllOver({"0.png"}, {"export", "{in}/flash.bin", "-o", "{out}", "--format", "png", "--pictures", "0"});
}

/// Two of these files are more than is held back: they are written while the others are made.
TEST_F(FaultsTest, ExportOfLargePictures) {
    FlashBuilder flash(FlashKind::NewSGold);
    for (std::uint32_t seed = 1; seed <= 4; ++seed) flash.AddDrawing(samples::DrawIcon(200, 240, seed), 0x88);
    ASSERT_TRUE(flash.WriteTo(runs.Inputs() / "flash.bin"));
    TryAll({"export", "{in}/flash.bin", "-o", "{out}", "--format", "bmp"});
}

TEST_F(FaultsTest, ConvertToGpf2) {
    Input("icon.bmp", samples::MakeBmp(samples::DrawIcon(16, 16, 3), 24));
    TryAllOver({"icon.gpf2"}, {"convert", "{in}/icon.bmp", "{out}/icon.gpf2"});
}

TEST_F(FaultsTest, ConvertPngToBmpThroughTheConverter) {
    Input("icon.png", Png(16));
    TryAllOver({"icon.bmp"}, {"convert", "{in}/icon.png", "{out}/icon.bmp"});
}

TEST_F(FaultsTest, PatchWithPicturesAndAPng) {
    runs.mustBeOnDisk = true;
    PatchesMayLackPictures();
    const std::string bmp = Input("icon.bmp", samples::MakeBmp(samples::DrawIcon(16, 16, 3), 24));
    const std::string png = Input("100000.png", Png(16));
    TryAllOver({"new.vkp"}, {"patch", "{in}/flash.bin", "-o", "{out}/new.vkp", "--picture", "0=" + bmp + "@8",
                             "--png", png});
}

/// The second one is added to the work file of the first.
TEST_F(FaultsTest, PatchWithTwoPngs) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.AddDrawing(samples::DrawIcon(16, 16, 1), 0x05)
        .Put(kPngOffset / 2, Png(24))
        .Put(kPngOffset, Png(24));
    ASSERT_TRUE(flash.Size(1500U << 10).WriteTo(runs.Inputs() / "flash.bin"));
    runs.mustBeOnDisk = true;
    const std::string one = Input("80000.png", Png(16));
    const std::string other = Input("100000.png", Png(20));
    TryAll({"patch", "{in}/flash.bin", "-o", "{out}/new.vkp", "--png", one, "--png", other});
}

TEST_F(FaultsTest, PatchWithAMovedPicture) {
    runs.mustBeOnDisk = true;
    PatchesMayLackPictures();
    WriteFlash(17U << 20);  // free memory is looked for behind 16 MiB
    const std::string grown = Input("grown.bmp", samples::MakeBmp(samples::DrawIcon(40, 40, 4), 24));
    TryAllOver({"new.vkp"},
               {"patch", "{in}/flash.bin", "-o", "{out}/new.vkp", "--picture", "1=" + grown + "@24"});
}

TEST_F(FaultsTest, PatchFromAFolder) {
    runs.mustBeOnDisk = true;
    PatchesMayLackPictures();
    std::filesystem::create_directory(runs.Inputs() / "folder");
    Input("folder/0.bmp", samples::MakeBmp(samples::DrawIcon(16, 16, 3), 24));
    Make({"export", "in/flash.bin", "-o", "in/folder", "--format", "gpf2", "--pictures", "1"});
    TryAll({"patch", "{in}/flash.bin", "-o", "{out}/new.vkp", "--folder", "{in}/folder", "--compress"});
}

TEST_F(FaultsTest, ApplyToACopy) {
    runs.mustBeOnDisk = true;
    const std::string bmp = Input("icon.bmp", samples::MakeBmp(samples::DrawIcon(16, 16, 3), 24));
    Make({"patch", "in/flash.bin", "-o", "in/new.vkp", "--picture", "0=" + bmp + "@8"});
    TryAllOver({"copy.bin"}, {"apply", "{in}/new.vkp", "{in}/flash.bin", "-o", "{out}/copy.bin"});
}

TEST_F(FaultsTest, NothingIsEverWrittenOverTheFlashThatIsRead) {
    const std::string bmp = Input("icon.bmp", samples::MakeBmp(samples::DrawIcon(16, 16, 3), 24));
    Make({"patch", "in/flash.bin", "-o", "in/new.vkp", "--picture", "0=" + bmp + "@8"});
    runs.Arguments({"apply", "{in}/new.vkp", "{in}/flash.bin", "-o", "{in}/flash.bin", "--overwrite"});
    ExpectTried(runs.TryAllRefused());
}

TEST_F(FaultsTest, NoPatchIsWrittenOverAFileThatItIsMadeOf) {
    const std::string bmp = Input("icon.bmp", samples::MakeBmp(samples::DrawIcon(16, 16, 3), 24));
    runs.Arguments(
        {"patch", "{in}/flash.bin", "-o", "{in}/icon.bmp", "--picture", "0=" + bmp + "@8", "--overwrite"});
    ExpectTried(runs.TryAllRefused());
}

TEST_F(FaultsTest, BackupPit) {
    runs.mustBeOnDisk = true;
    TryAll({"backup-pit", "{in}/flash.bin", "-o", "{out}/blocks"});
}

TEST_F(FaultsTest, RebuildPit) {
    runs.mustBeOnDisk = true;
    std::filesystem::create_directory(runs.Inputs() / "folder");
    Input("small.bmp", samples::MakeBmp(samples::DrawIcon(8, 8, 3), 24));
    for (const std::string number : {"0", "1", "2"})
        Make({"convert", "in/small.bmp", "in/folder/" + number + ".gpf2", "--type", "05"});
    TryAll({"rebuild-pit", "{in}/flash.bin", "--from", "{in}/folder", "-o", "{out}"});
}

TEST_F(FaultsTest, ExtractFromAPatch) {
    const std::string bmp = Input("icon.bmp", samples::MakeBmp(samples::DrawIcon(16, 16, 3), 24));
    const std::string png = Input("100000.png", Png(16));
    Make({"patch", "in/flash.bin", "-o", "in/new.vkp", "--picture", "0=" + bmp + "@8", "--png", png});
    TryAllOver({"0.gpf"}, {"extract-patch", "{in}/new.vkp", "-o", "{out}"});
}

TEST_F(FaultsTest, ExtractFromAGpn) {
    std::filesystem::create_directory(runs.Inputs() / "parts");
    Make({"export", "in/flash.bin", "-o", "in/parts", "--format", "gpf2"});
    Bytes container;
    for (const auto& [name, bytes] : ReadTree(runs.Inputs() / "parts"))
        container.insert(container.end(), bytes.begin(), bytes.end());
    Input("all.gpn", container);
    TryAllOver({"0.gpf2"}, {"extract-gpn", "{in}/all.gpn", "-o", "{out}"});
}

TEST_F(FaultsTest, SettingsWrittenAnew) {
    FaultyRuns settings({PICTAVO_SETTINGS_WRITER, "whole"});
    settings.mustBeOnDisk = true;
    settings.Old("Pictavo.ini", "Language=Polish\r\n");
    settings.Arguments({"{out}/Pictavo.ini"});
    ExpectTried(settings.TryAll());
}

TEST_F(FaultsTest, FileTypesRegisteredWithTheDesktop) {
    FaultyRuns associations({PICTAVO_ASSOCIATIONS_WRITER});
    associations.Old("config/mimeapps.list", "[Default Applications]\ntext/plain=editor.desktop;\n");
    associations.Old("data/applications/pictavo-gpffile.desktop", "[Desktop Entry]\nExec=/old/pictavo %f\n");
    associations.Old("templates/letter.txt", "Dear");
    associations.Arguments({"{out}"});
    ExpectTried(associations.TryAll());
}

TEST_F(FaultsTest, RecentFilesAddedToTheSettings) {
    FaultyRuns settings({PICTAVO_SETTINGS_WRITER, "recent"});
    settings.mustBeOnDisk = true;
    settings.Old("Pictavo.ini", "Language=Polish\r\n");
    settings.Arguments({"{out}/Pictavo.ini"});
    ExpectTried(settings.TryAll());
}

TEST_F(FaultsTest, CarvePngs) {
    TryAllOver({"00100000.png"}, {"carve", "png", "{in}/flash.bin", "-o", "{out}"});
}

}  // namespace
}  // namespace pictavo::tests
