#include <nlohmann/json.hpp>

#include "support/CliFixture.h"

namespace pictavo::tests {
namespace {

class CheckApplyTest : public CliTest {
  protected:
    CheckApplyTest() { flash = Write("flash.bin", Bytes{0x10, 0x11, 0x12, 0x13, 0x14, 0x15, 0x16, 0x17}); }

    std::string Patch(const std::string& text) {
        return Write("patch " + std::to_string(patchCount++) + ".vkp", text);
    }

    Ended Apply(const std::string& patch, const Arguments& more = {}) const {
        Arguments arguments{"apply", patch, flash, "-o", (temp / "copy.bin").string()};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return Cli(arguments);
    }

    Bytes Copy() const { return ReadFile(temp / "copy.bin"); }
    bool CopyExists() const { return std::filesystem::exists(temp / "copy.bin"); }

    std::string flash;
    int patchCount = 0;
};

TEST_F(CheckApplyTest, CheckIsSilentWhenAllOldBytesStand) {
    const std::string patch = Patch("; a comment\r\n\r\n00000001: 1112 A1A2\r\n00000007: 17 00\r\n");
    ExpectDone(Cli({"check", patch, flash}));
    ExpectDone(Cli({"check", patch, flash, "--json"}), "[]\n");
}

TEST_F(CheckApplyTest, CheckListsEachMismatchWithUpperCaseHex) {
    const std::string patch = Patch("00000000: 10 00\n00000002: abcd 0000\n00000007: FF 00\n");
    const Ended ended = Cli({"check", patch, flash});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out,
              "00000002: expected ABCD found 1213\n"
              "00000007: expected FF found 17\n");
    ExpectOneComplaint(ended, {patch + ": 2 of 3 lines differ"});
}

TEST_F(CheckApplyTest, CheckShowsWhatAFlashThatEndsEarlyHolds) {
    const std::string patch = Patch("00000006: 16171819 00000000\n00001000: AA 00\n");
    const Ended ended = Cli({"check", patch, flash});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out,
              "00000006: expected 16171819 found 1617\n"
              "00001000: expected AA found \n");
}

TEST_F(CheckApplyTest, CheckGivesMismatchesAsJson) {
    const std::string patch = Patch("; comment\n00000002: ABCD 0000\n00000005: FF 00\n");
    const Ended ended = Cli({"check", patch, flash, "--json"});
    EXPECT_EQ(ended.status, 1);
    const auto list =
        nlohmann::ordered_json::parse(R"([{"line":2,"offset":"00000002","expected":"ABCD","found":"1213"},)"
                                      R"({"line":3,"offset":"00000005","expected":"FF","found":"15"}])");
    EXPECT_EQ(ended.out, list.dump(2) + "\n");
}

TEST_F(CheckApplyTest, ALineThatIsNoPatchLineIsNamedByItsNumber) {
    for (const char* bad :
         {"hello", "00000000 10 00", "00000000: 10", "00000000: 10 0000", "00000000: 1 0", "0000000G: 10 00",
          "00000000: 10 00 00", "000000000: 10 00", " ; comment", ": 10 00"}) {
        const std::string patch = Patch(std::string("; fine\r\n00000000: 10 00\r\n") + bad + "\r\n");
        ExpectRefused(Cli({"check", patch, flash}), {patch, "line 3 "});
        ExpectRefused(Apply(patch, {"--force"}), {patch, "line 3 "});
        EXPECT_FALSE(CopyExists());
    }
}

TEST_F(CheckApplyTest, APatchWithoutLinesFitsEverything) {
    const std::string patch = Patch("");
    ExpectDone(Cli({"check", patch, flash}));
    ExpectDone(Apply(patch));
    EXPECT_EQ(Copy(), ReadFile(flash));
}

TEST_F(CheckApplyTest, ApplyWritesACopyWithTheNewBytes) {
    ExpectDone(Apply(Patch("00000001: 1112 a1a2\n00000007: 17 FF\n")));
    EXPECT_EQ(Copy(), (Bytes{0x10, 0xA1, 0xA2, 0x13, 0x14, 0x15, 0x16, 0xFF}));
}

TEST_F(CheckApplyTest, ApplyIsRefusedOnAMismatch) {
    ExpectRefused(Apply(Patch("00000000: 10 00\n00000002: FFFF 0000\n")), {flash, "line 2", "old bytes"});
    EXPECT_FALSE(CopyExists());
}

TEST_F(CheckApplyTest, ForceAppliesAllTheSame) {
    ExpectDone(Apply(Patch("00000000: 10 00\n00000002: FFFF 0000\n"), {"--force"}));
    EXPECT_EQ(Copy(), (Bytes{0x00, 0x11, 0x00, 0x00, 0x14, 0x15, 0x16, 0x17}));
}

TEST_F(CheckApplyTest, LinesPastTheEndAreRefusedAlsoWithForce) {
    for (const char* line : {"00000008: FF 00\n", "00000007: 17FF 0000\n", "FFFFFFFF: FF 00\n"}) {
        const std::string patch = Patch(line);
        ExpectRefused(Apply(patch), {flash});
        ExpectRefused(Apply(patch, {"--force"}), {flash, "line 1 ", "past the end"});
        EXPECT_FALSE(CopyExists());
    }
}

TEST_F(CheckApplyTest, ACopyThatExistsIsLeftAloneUnlessOverwritten) {
    const std::string patch = Patch("00000000: 10 99\n");
    WriteFile(temp / "copy.bin", std::string("old"));
    ExpectRefused(Apply(patch), {Path("copy.bin"), "exists"});
    EXPECT_EQ(ReadText(temp / "copy.bin"), "old");
    ExpectDone(Apply(patch, {"--overwrite"}));
    EXPECT_EQ(Copy().size(), 8U);
}

TEST_F(CheckApplyTest, TheInputsAreNoOutputsAlsoThroughLinks) {
    const std::string patch = Patch("00000000: 10 99\n");
    std::filesystem::create_symlink(flash, temp / "soft.bin");
    std::filesystem::create_hard_link(flash, temp / "hard.bin");
    std::filesystem::create_symlink("soft.bin", temp / "softer.bin");
    std::filesystem::create_hard_link(patch, temp / "hard.vkp");
    const std::string detour = (temp.Path() / "run folders" / ".." / "flash.bin").string();
    for (const std::string& output :
         {flash, Path("soft.bin"), Path("hard.bin"), Path("softer.bin"), patch, Path("hard.vkp"), detour})
        ExpectRefused(Cli({"apply", patch, flash, "-o", output, "--overwrite", "--force"}),
                      {output, "is read"});
    EXPECT_EQ(std::filesystem::hard_link_count(flash), 2U);
}

TEST_F(CheckApplyTest, MissingInputsAreNamed) {
    const std::string patch = Patch("00000000: 10 99\n");
    ExpectRefused(Cli({"check", Path("none.vkp"), flash}), {Path("none.vkp")});
    ExpectRefused(Cli({"check", patch, Path("none.bin")}), {Path("none.bin")});
    ExpectRefused(Cli({"apply", patch, Path("none.bin"), "-o", Path("copy.bin")}), {Path("none.bin")});
    EXPECT_FALSE(CopyExists());
}

TEST_F(CheckApplyTest, TheCopyOfAFlashOfSeveralPiecesIsWhole) {
    Bytes big = samples::FlashBuilder(FlashKind::NewSGold).FillWithCode(0, 1U << 20, 5).Build();
    big.resize(big.size() - 3);
    flash = Write("big.bin", big);
    ExpectDone(Apply(Patch("000FFFFC: " + std::string("00 00\n")), {"--force"}));
    big.back() = 0;
    EXPECT_EQ(Copy(), big);
}

}  // namespace
}  // namespace pictavo::tests
