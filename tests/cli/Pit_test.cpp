#include "support/CliFixture.h"

namespace pictavo::tests {
namespace {

class PitTest : public CliTest {
  protected:
    /// Pictures in the middle of the second MiB, with room between them.
    static FlashBuilder Flash() {
        FlashBuilder flash(FlashKind::NewSGold);
        flash.Size(2U << 20).PicturesAt(0x180000).Align(1024);
        std::uint32_t seed = 1;
        for (const std::uint8_t type : std::initializer_list<std::uint8_t>{0x05, 0x85, 0x88})
            flash.AddDrawing(samples::DrawIcon(16, 16, seed++), type);
        return flash;
    }

    Ended Rebuild(const std::string& flash, const Arguments& more = {}) const {
        Arguments arguments{"rebuild-pit",          flash, "--from", (temp / "from").string(), "-o",
                            (temp / "out").string()};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return Cli(arguments);
    }

    Ended ExportTo(const std::string& flash, const std::string& folder, const Arguments& more = {}) const {
        Arguments arguments{"export", flash, "-o", (temp / folder).string(), "--format", "gpf"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return Cli(arguments);
    }
};

TEST_F(PitTest, BackupWritesTheTableAndTheBlockAsTheyStandInTheFlash) {
    const FlashBuilder flash = Flash();
    const Bytes bytes = flash.Build();
    ExpectDone(Cli({"backup-pit", Write(flash), "-o", Path("deep/out")}));
    EXPECT_EQ(ListNames(temp / "deep/out"), (std::vector<std::string>{"0x00A0000.bin", "0x0180000.bin"}));
    EXPECT_EQ(ReadFile(temp / "deep/out/0x00A0000.bin"),
              Bytes(bytes.begin() + 0xA0000, bytes.begin() + 0xA0000 + 3 * 8));
    const auto end = static_cast<std::ptrdiff_t>(flash.PictureOffset(2) + flash.PictureLength(2));
    const Bytes block = ReadFile(temp / "deep/out/0x0180000.bin");
    ASSERT_GE(block.size(), static_cast<std::size_t>(end - 0x180000));
    EXPECT_TRUE(std::equal(bytes.begin() + 0x180000, bytes.begin() + end, block.begin()));
}

TEST_F(PitTest, BackupLeavesAFileThatExistsAloneAndWritesTheOther) {
    const std::string flash = Write(Flash());
    std::filesystem::create_directory(temp / "out");
    WriteFile(temp / "out/0x00A0000.bin", std::string("old"));
    ExpectRefused(Cli({"backup-pit", flash, "-o", Path("out")}), {Path("out/0x00A0000.bin"), "exists"});
    EXPECT_EQ(ReadText(temp / "out/0x00A0000.bin"), "old");
    EXPECT_TRUE(std::filesystem::exists(temp / "out/0x0180000.bin"));
    ExpectDone(Cli({"backup-pit", flash, "-o", Path("out"), "--overwrite"}));
    EXPECT_EQ(std::filesystem::file_size(temp / "out/0x00A0000.bin"), 24U);
}

TEST_F(PitTest, ATableWithoutPicturesIsRefused) {
    const std::string flash = Write(FlashBuilder(FlashKind::NewSGold));
    std::filesystem::create_directory(temp / "from");
    ExpectRefused(Cli({"backup-pit", flash, "-o", Path("out")}), {flash});
    ExpectRefused(Rebuild(flash), {flash});
    EXPECT_FALSE(std::filesystem::exists(temp / "out"));
}

TEST_F(PitTest, RebuiltFromItsOwnPicturesTheFlashShowsTheSamePictures) {
    const FlashBuilder builder = Flash();
    const std::string flash = Write(builder);
    ExpectDone(ExportTo(flash, "from"), "exported 3\n");
    ExpectDone(Rebuild(flash));
    Bytes bytes = builder.Build();
    for (const std::string& name : ListNames(temp / "out")) {
        const Bytes part = ReadFile(temp / "out" / name);
        const auto at = std::stoll(name.substr(2, 7), nullptr, 16);
        std::copy(part.begin(), part.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at));
    }
    ExpectDone(ExportTo(Write("rebuilt.bin", bytes), "again"), "exported 3\n");
    for (const char* name : {"0.gpf", "1.gpf", "2.gpf"})
        EXPECT_EQ(ReadFile(temp / "again" / name), ReadFile(temp / "from" / name)) << name;
    EXPECT_NE(Cli({"list", Path("rebuilt.bin")}).out, Cli({"list", flash}).out);  // packed more densely
}

TEST_F(PitTest, MissingSourcesAreReportedByNumberAndNothingIsWritten) {
    const std::string flash = Write(Flash());
    ExpectDone(ExportTo(flash, "from", {"--pictures", "1"}), "exported 1\n");
    const Ended ended = Rebuild(flash);
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out, "");
    ASSERT_EQ(Lines(ended.err).size(), 2U);
    EXPECT_TRUE(Lines(ended.err)[0].starts_with("pictavo-cli: picture 0000: " + Path("from") + ": "));
    EXPECT_THAT(Lines(ended.err)[0], HasSubstr("0.gpf"));
    EXPECT_TRUE(Lines(ended.err)[1].starts_with("pictavo-cli: picture 0002: "));
    EXPECT_FALSE(std::filesystem::exists(temp / "out"));
}

TEST_F(PitTest, ASourceThatIsNoGpfIsReportedWithItsName) {
    const std::string flash = Write(Flash());
    ExpectDone(ExportTo(flash, "from"), "exported 3\n");
    WriteFile(temp / "from/1.gpf", std::string("no picture"));
    ExpectRefused(Rebuild(flash), {"picture 0001: ", Path("from/1.gpf")});
    EXPECT_FALSE(std::filesystem::exists(temp / "out"));
}

TEST_F(PitTest, SourceNamesFollowTheNameOptions) {
    const std::string flash = Write(Flash());
    for (const Arguments& names : {Arguments{"--zero-names"}, Arguments{"--zero-names", "--hex-names"}}) {
        std::filesystem::remove_all(temp / "from");
        ExpectDone(ExportTo(flash, "from", names), "exported 3\n");
        EXPECT_EQ(Rebuild(flash).status, 1);
        Arguments more = names;
        more.push_back("--overwrite");
        ExpectDone(Rebuild(flash, more));
    }
}

TEST_F(PitTest, ABlockThatIsTooLargeFailsAndItsFilesStay) {
    const std::string flash = Write(Flash());
    ExpectDone(ExportTo(flash, "from"), "exported 3\n");
    ExpectDone(Cli({"convert", Write("big.bmp", samples::MakeBmp(samples::DrawNoise(64, 64, 1), 32)),
                    Path("from/1.gpf"), "--overwrite"}));
    const Ended ended = Rebuild(flash);
    ExpectRefused(ended, {flash, "pass the start"});
    EXPECT_EQ(ListNames(temp / "out"), (std::vector<std::string>{"0x00A0000.bin", "0x0180000.bin"}));
}

TEST_F(PitTest, RebuildLeavesFilesThatExistAlone) {
    const std::string flash = Write(Flash());
    ExpectDone(ExportTo(flash, "from"), "exported 3\n");
    std::filesystem::create_directory(temp / "out");
    WriteFile(temp / "out/0x0180000.bin", std::string("old"));
    ExpectRefused(Rebuild(flash), {Path("out/0x0180000.bin"), "exists"});
    EXPECT_EQ(ReadText(temp / "out/0x0180000.bin"), "old");
    EXPECT_EQ(std::filesystem::file_size(temp / "out/0x00A0000.bin"), 24U);
}

TEST_F(PitTest, AFolderThatIsNotThereIsRefused) {
    ExpectRefused(Rebuild(Write(Flash())), {Path("from")});
    EXPECT_FALSE(std::filesystem::exists(temp / "out"));
}

}  // namespace
}  // namespace pictavo::tests
