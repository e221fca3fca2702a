#include "support/CliFixture.h"

namespace pictavo::tests {
namespace {

/// A converter that cannot be used, or fails in its own way.
struct Broken {
    const char* title;
    const char* script;  ///< of a program; nothing is made for ""
    bool isFolder = false;
    std::filesystem::perms rights = std::filesystem::perms::owner_all;
    const char* bitmapFault = "the converter";  ///< part of what is said when it should have made a bitmap

    friend void PrintTo(const Broken& broken, std::ostream* out) { *out << broken.title; }
};

class ConverterTroubleTest : public CliTest, public ::testing::WithParamInterface<Broken> {
  protected:
    ConverterTroubleTest() {
        if (GetParam().isFolder)
            std::filesystem::create_directory(converter);
        else if (*GetParam().script != '\0')
            WriteFile(converter, std::string("#!/bin/sh\n") + GetParam().script + "\n");
        if (std::filesystem::is_regular_file(converter))
            std::filesystem::permissions(converter, GetParam().rights);
        flash = Write(FourIcons(FlashKind::SGold));
        png = Write("new.png", samples::MakePng(samples::DrawIcon(16, 16, 7), samples::PngColour::Rgba));
        bmp = Write("new.bmp", samples::MakeBmp(samples::DrawIcon(16, 16, 7), 32));
        std::filesystem::create_directory(temp / "out");
    }

    /// A file that stands where an output is to go.
    std::string Old(const std::string& name) {
        WriteFile(temp / name, std::string("old"));
        return Path(name);
    }

    void ExpectOld(const std::string& name) const { EXPECT_EQ(ReadText(temp / name), "old") << name; }

    /// By the broken converter, over files that may be overwritten.
    Ended Convert(const Arguments& command) const {
        Arguments arguments = command;
        arguments.insert(arguments.end(), {"--overwrite", "--converter", converter.string()});
        return Cli(arguments);
    }

    const std::filesystem::path converter = temp / "the converter";
    std::string flash;
    std::string png;
    std::string bmp;
};

TEST_P(ConverterTroubleTest, IsToldWhenAPngIsReadAndTheOldPictureStays) {
    ExpectRefused(Convert({"convert", png, Old("a.bmp")}), {GetParam().bitmapFault});
    ExpectRefused(Convert({"convert", png, Old("a.gpf")}), {GetParam().bitmapFault});
    ExpectOld("a.bmp");
    ExpectOld("a.gpf");
}

TEST_P(ConverterTroubleTest, IsToldWhenAPngIsWrittenAndTheOldPictureStays) {
    ExpectRefused(Convert({"convert", bmp, Old("a.png")}), {converter.string()});
    ExpectOld("a.png");
}

TEST_P(ConverterTroubleTest, IsToldByAnExportThatLeavesEveryFileAsItWas) {
    for (const char* name : {"out/0.png", "out/1.png", "out/2.png", "out/3.png"}) Old(name);
    const Ended ended = Convert({"export", flash, "-o", Path("out"), "--format", "png"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.err, HasSubstr(converter.string()));
    for (const char* name : {"out/0.png", "out/1.png", "out/2.png", "out/3.png"}) ExpectOld(name);
    EXPECT_EQ(ListNames(temp / "out").size(), 4U);
}

TEST_P(ConverterTroubleTest, IsToldByAPatchThatIsNotWritten) {
    ExpectRefused(Convert({"patch", flash, "-o", Old("a.vkp"), "--picture", "0=" + png}),
                  {"picture 0000", GetParam().bitmapFault});
    ExpectOld("a.vkp");
}

INSTANTIATE_TEST_SUITE_P(
    Broken, ConverterTroubleTest,
    ::testing::Values(Broken{"Missing", ""}, Broken{"AFolder", "", true}, Broken{"Crashing", "kill -SEGV $$"},
                      Broken{"Failing", "exit 3"}, Broken{"WritingNothing", "exit 0"},
                      Broken{"WritingAnEmptyFile", "while [ $1 != -o ]; do shift; done; : >\"$2\"", false,
                             std::filesystem::perms::owner_all, "made no bitmap of it that can be read"},
                      Broken{"NotExecutable", "exit 0", false, std::filesystem::perms::owner_read}),
    [](const auto& test) { return test.param.title; });

/// A converter that works once and then does nothing: what it made first must not be taken again.
TEST_F(CliTest, AnEarlierResultOfTheConverterIsNotTakenForALaterOne) {
    const std::string script = "#!/bin/sh\n[ -e '" + Path("ran") + "' ] && exit 0\n: >'" + Path("ran") +
                               "'\nexec '" + std::string(PICTAVO_BIN_DIR) + "/pictavo-convert' \"$@\"\n";
    const std::string once = WriteProgram("once", script);
    const std::string flash = Write(FourIcons());
    const Ended ended = Cli({"export", flash, "-o", Path("out"), "--format", "png", "--converter", once});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out, "exported 1\n");
    EXPECT_EQ(ListNames(temp / "out"), std::vector<std::string>{"0.png"});
    EXPECT_EQ(Lines(ended.err).size(), 3U) << ended.err;
}

}  // namespace
}  // namespace pictavo::tests
