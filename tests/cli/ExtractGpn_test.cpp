#include "codec/GPFcodec.h"
#include "support/CliFixture.h"
#include "support/FileSizeLimit.h"

namespace pictavo::tests {
namespace {

using std::string_literals::operator""s;

class ExtractGpnTest : public CliTest {
  protected:
    Ended Extract(const std::string& container, const Arguments& more = {}) const {
        Arguments arguments{"extract-gpn", container, "-o", Path("out")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return Cli(arguments);
    }

    /// A picture of `stored` bytes of one value.
    static std::string Gpf(int number, std::size_t stored = 16, bool isGPF2 = false) {
        const GpfHeader header{4, 4, 0x05, static_cast<std::uint16_t>(number), isGPF2};
        return std::string(AsText(ComposeGpf(header, Bytes(stored, 0x11))));
    }

    std::string Out(const std::string& name) const { return ReadText(temp / "out" / name); }

    using Names = std::vector<std::string>;
};

TEST_F(ExtractGpnTest, EachPictureBecomesAFileAndNothingIsPrinted) {
    ExpectDone(Extract(Write("a.gpn", Gpf(5, 48) + Gpf(37, 16, true))));
    EXPECT_EQ(ListNames(temp / "out"), (Names{"37.gpf2", "5.gpf"}));
    EXPECT_EQ(Out("5.gpf"), Gpf(5, 48));
    EXPECT_EQ(Out("37.gpf2"), Gpf(37, 16, true));
}

TEST_F(ExtractGpnTest, OptionsChooseTheNames) {
    const std::string container = Write("a.gpn", Gpf(37));
    ExpectDone(Extract(container, {"--zero-names"}));
    ExpectDone(Extract(container, {"--hex-names"}));
    ExpectDone(Extract(container, {"--hex-names", "--zero-names"}));
    EXPECT_EQ(ListNames(temp / "out"), (Names{"0037.gpf", "025.gpf", "25.gpf"}));
}

TEST_F(ExtractGpnTest, KeptANegativeNumberIsAName) {
    ExpectDone(Extract(Write("a.gpn", Gpf(0x8000))));
    EXPECT_EQ(ListNames(temp / "out"), Names{"-32768.gpf"});
}

TEST_F(ExtractGpnTest, ExportedPicturesLaidTogetherComeOutAgain) {
    const std::string flash = Write(FourIcons());
    ExpectDone(Cli({"export", flash, "-o", Path("in"), "--format", "gpf2"}), "exported 4\n");
    std::string container;
    for (const std::string& name : ListNames(temp / "in")) container += ReadText(temp / "in" / name);
    ExpectDone(Extract(Write("a.gpn", container)));
    EXPECT_EQ(ListNames(temp / "out"), ListNames(temp / "in"));
    for (const std::string& name : ListNames(temp / "in")) EXPECT_EQ(Out(name), ReadText(temp / "in" / name));
}

TEST_F(ExtractGpnTest, AFileWithoutAPictureIsOfTheWrongKind) {
    for (const std::string& text : {""s, std::string(100, 'x')}) {
        const std::string container = Write(std::to_string(text.size()) + ".gpn", text);
        ExpectRefused(Extract(container), {container, "no GPN file"});
    }
    ExpectRefused(Extract(Path("missing.gpn")), {Path("missing.gpn")});
    EXPECT_FALSE(std::filesystem::exists(temp / "out"));
}

TEST_F(ExtractGpnTest, KeptAnExistingFileIsLeftAloneAndItsPictureGoesBehindTheOneBefore) {
    const std::string container = Write("a.gpn", Gpf(5) + Gpf(6) + Gpf(7));
    std::filesystem::create_directory(temp / "out");
    WriteFile(temp / "out/6.gpf", "old"s);
    ExpectRefused(Extract(container), {Path("out/6.gpf"), "exists already"});
    EXPECT_EQ(Out("6.gpf"), "old");
    EXPECT_EQ(Out("5.gpf"), Gpf(5) + std::string(16, '\x11'));
    EXPECT_EQ(Out("7.gpf"), Gpf(7));
    ExpectDone(Extract(container, {"--overwrite"}));
    EXPECT_EQ(Out("6.gpf"), Gpf(6));
}

TEST_F(ExtractGpnTest, AFullDiskLosesThePicturesThatDoNotFitAndNoOther) {
    const std::string container = Write("a.gpn", Gpf(5) + Gpf(6, 4800) + Gpf(7));
    Ended ended;
    {
        const FileSizeLimit disk(1000);
        ended = Extract(container);
    }
    ExpectRefused(ended, {"picture 0006: ", Path("out/6.gpf")});
    EXPECT_EQ(ListNames(temp / "out"), (Names{"5.gpf", "7.gpf"}));
}

TEST_F(ExtractGpnTest, TheContainerIsNoOutputEvenWithOverwrite) {
    std::filesystem::create_directory(temp / "out");
    const std::string container = Write("out/5.gpf", Gpf(4) + Gpf(5));
    ExpectRefused(Extract(container, {"--overwrite"}), {"picture 0005: ", container, "is read"});
    EXPECT_EQ(Out("4.gpf"), Gpf(4));
}

TEST_F(ExtractGpnTest, WrongUsageWritesNothing) {
    const std::string container = Write("a.gpn", Gpf(5));
    ExpectWrongUsage(Cli({"extract-gpn", container}), "Usage: pictavo-cli extract-gpn");
    ExpectWrongUsage(Cli({"extract-gpn", "-o", Path("out")}), "Usage: pictavo-cli extract-gpn");
    ExpectWrongUsage(Extract(container, {"--compress"}), "Usage: pictavo-cli extract-gpn");
    EXPECT_FALSE(std::filesystem::exists(temp / "out"));
}

}  // namespace
}  // namespace pictavo::tests
