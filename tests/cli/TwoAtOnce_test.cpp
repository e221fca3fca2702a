#include "support/CliFixture.h"
#include "support/StartedProgram.h"

namespace pictavo::tests {
namespace {

/// Two programs that run at the same time, with one folder for their temporary files.
class TwoAtOnceTest : public CliTest {
  protected:
    /// The flash of `kind`, with its first picture replaced by one that goes through the converter.
    Arguments PatchOf(FlashKind kind, std::uint32_t seed, const std::string& name) {
        const Bytes png = samples::MakePng(samples::DrawIcon(8, 8, seed), samples::PngColour::Rgba);
        const std::string flash = Write(FourIcons(kind), name + ".bin");
        return {program,
                "patch",
                flash,
                "-o",
                Path(name + ".vkp"),
                "--overwrite",
                "--picture",
                "0=" + Write(name + ".png", png) + "@16"};
    }

    Bytes Made(const std::string& name) { return ReadFile(temp / (name + ".vkp")); }

    Bytes MadeAlone(const Arguments& command, const std::string& name) {
        EXPECT_EQ(RunProgram(command, around).status, 0);
        return Made(name);
    }
};

TEST_F(TwoAtOnceTest, NeitherSeesThePicturesOfTheOther) {
    const Arguments one = PatchOf(FlashKind::SGold, 1, "one");
    const Arguments other = PatchOf(FlashKind::NewSGold, 2, "other");
    const Bytes ofOne = MadeAlone(one, "one");
    const Bytes ofOther = MadeAlone(other, "other");
    ASSERT_NE(ofOne, ofOther);
    for (int round = 0; round < 10; ++round) {
        StartedProgram first(one, around);
        StartedProgram second(other, around);
        EXPECT_EQ(first.AwaitEnd().status, 0);
        EXPECT_EQ(second.AwaitEnd().status, 0);
        EXPECT_EQ(Made("one"), ofOne);
        EXPECT_EQ(Made("other"), ofOther);
    }
}

TEST_F(TwoAtOnceTest, OfTwoThatWriteOneFileOneIsWhole) {
    const Arguments one = PatchOf(FlashKind::SGold, 1, "one");
    Arguments other = PatchOf(FlashKind::NewSGold, 2, "other");
    const Bytes ofOne = MadeAlone(one, "one");
    const Bytes ofOther = MadeAlone(other, "other");
    other[4] = Path("one.vkp");
    for (int round = 0; round < 10; ++round) {
        WriteFile(temp / "one.vkp", std::string("old"));
        StartedProgram first(one, around);
        StartedProgram second(other, around);
        EXPECT_EQ(first.AwaitEnd().status, 0);
        EXPECT_EQ(second.AwaitEnd().status, 0);
        EXPECT_TRUE(Made("one") == ofOne || Made("one") == ofOther);
    }
}

}  // namespace
}  // namespace pictavo::tests
