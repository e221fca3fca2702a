#include <gmock/gmock.h>

#include "core/Version.h"
#include "samples/FileMakers.h"
#include "support/BmpFile.h"
#include "support/ChildProcess.h"
#include "support/FileSizeLimit.h"

namespace pictavo::tests {
namespace {

using samples::Drawing;
using samples::PngColour;
using ::testing::HasSubstr;

using Arguments = std::vector<std::string>;

class ConverterTest : public ::testing::Test {
  protected:
    Ended Run(const Arguments& arguments) const {
        Arguments command{std::string(PICTAVO_BIN_DIR) + "/pictavo-convert"};
        command.insert(command.end(), arguments.begin(), arguments.end());
        return RunProgram(command, around);
    }

    std::string Path(const std::string& name) const { return (temp / name).string(); }

    std::string Write(const std::string& name, const Bytes& bytes) const {
        return WriteFile(temp / name, bytes).string();
    }

    Ended Rgba(const std::string& format, const std::string& in, const std::string& out) const {
        return Run({"-out", format, "-ctype", "rgba", "-o", out, in});
    }

    Ended Rgb(const std::string& format, const std::string& in, const std::string& out) const {
        return Run({"-out", format, "-ctype", "rgb", "-truecolors", "-o", out, in});
    }

    /// One line that names all of `mentions`, no output, and no file of that name.
    void ExpectRefused(const Ended& ended, const Arguments& mentions) const {
        EXPECT_EQ(ended.status, 1);
        EXPECT_EQ(ended.out, "");
        EXPECT_TRUE(ended.err.starts_with("pictavo-convert: ")) << ended.err;
        EXPECT_EQ(std::count(ended.err.begin(), ended.err.end(), '\n'), 1) << ended.err;
        for (const std::string& mention : mentions) EXPECT_THAT(ended.err, HasSubstr(mention));
        EXPECT_FALSE(std::filesystem::exists(temp / "out"));
    }

    /// All alphas from 0 to 255, and colours under full transparency too.
    static Drawing Alphas() {
        Drawing drawing = samples::DrawNoise(16, 16, 1);
        for (std::size_t i = 0; i < drawing.pixels.size(); ++i)
            drawing.pixels[i].a = static_cast<std::uint8_t>(i);
        return drawing;
    }

    static void ExpectDone(const Ended& ended) {
        EXPECT_EQ(ended.status, 0);
        EXPECT_EQ(ended.out + ended.err, "");
    }

    TempFolder temp;
    Surroundings around;
};

TEST_F(ConverterTest, WithAlphaEveryPixelOfAPngReachesTheBitmapExactly) {
    ExpectDone(Rgba("bmp", Write("in", samples::MakePng(Alphas(), PngColour::Rgba)), Path("out")));
    EXPECT_EQ(ReadBmp(temp / "out").bits, 32);
    EXPECT_TRUE(ReadBmp(temp / "out").shown == Alphas());
}

TEST_F(ConverterTest, WithAlphaEveryPixelOfABitmapReachesThePngAndComesBack) {
    ExpectDone(Rgba("png", Write("in", samples::MakeBmp(Alphas(), 32)), Path("png")));
    EXPECT_TRUE(ReadText(temp / "png").starts_with("\x89PNG\r\n\x1A\n"));
    ExpectDone(Rgba("bmp", Path("png"), Path("out")));
    EXPECT_TRUE(ReadBmp(temp / "out").shown == Alphas());
}

TEST_F(ConverterTest, WithoutAlphaOpaquePixelsStayAndTheBitmapHas24Bits) {
    const Drawing photo = samples::DrawPhoto(17, 9, 1);
    ExpectDone(Rgb("bmp", Write("in", samples::MakePng(photo, PngColour::Rgb)), Path("out")));
    EXPECT_EQ(ReadBmp(temp / "out").bits, 24);
    EXPECT_TRUE(ReadBmp(temp / "out").shown == photo);
}

TEST_F(ConverterTest, WithoutAlphaTransparentPartsLieOverWhite) {
    Drawing drawing = samples::DrawOneColour(3, 1, {200, 100, 0, 255});
    drawing.At(1, 0).a = 0;
    drawing.At(2, 0).a = 51;  // a fifth
    ExpectDone(Rgb("bmp", Write("in", samples::MakePng(drawing, PngColour::Rgba)), Path("out")));
    const Drawing shown = ReadBmp(temp / "out").shown;
    EXPECT_TRUE(shown.At(0, 0) == (samples::Pixel{200, 100, 0, 255}));
    EXPECT_TRUE(shown.At(1, 0) == (samples::Pixel{255, 255, 255, 255}));
    EXPECT_TRUE(shown.At(2, 0) == (samples::Pixel{244, 224, 204, 255}));
}

TEST_F(ConverterTest, EveryColourTypeOfAPngIsRead) {
    const Drawing grey = samples::DrawOneColour(5, 4, {77, 77, 77, 255});
    for (const PngColour colour :
         {PngColour::Grey, PngColour::Rgb, PngColour::Palette, PngColour::GreyAlpha, PngColour::Rgba}) {
        ExpectDone(Rgba("bmp", Write("in", samples::MakePng(grey, colour)), Path("out")));
        EXPECT_TRUE(ReadBmp(temp / "out").shown == grey) << static_cast<int>(colour);
    }
}

TEST_F(ConverterTest, EveryDepthOfABitmapIsRead) {
    const Drawing red = samples::DrawOneColour(5, 4, {255, 0, 0, 255});
    for (const int bits : {1, 4, 8, 24, 32}) {
        for (const bool topDown : {false, true}) {
            ExpectDone(Rgba("bmp", Write("in", samples::MakeBmp(red, bits, topDown)), Path("out")));
            EXPECT_TRUE(ReadBmp(temp / "out").shown == red) << bits;
        }
    }
}

TEST_F(ConverterTest, TheContentAndNotTheNameTellsTheKind) {
    ExpectDone(Rgba("bmp", Write("in.bmp", samples::MakePng(Alphas(), PngColour::Rgba)), Path("out.png")));
    EXPECT_TRUE(ReadBmp(temp / "out.png").shown == Alphas());
}

TEST_F(ConverterTest, AFileOfTheOutputsNameIsReplaced) {
    const std::string out = Write("out", Bytes{1, 2, 3});
    ExpectDone(Rgba("bmp", Write("in", samples::MakePng(Alphas(), PngColour::Rgba)), out));
    EXPECT_TRUE(ReadBmp(out).shown == Alphas());
    EXPECT_EQ(ListNames(temp.Path()), (std::vector<std::string>{"in", "out"}));
}

TEST_F(ConverterTest, TheLargestPictureIsAWholeScreen) {
    ExpectDone(Rgba("png", Write("in", samples::MakeBmp(samples::DrawIcon(240, 320, 1), 32)), Path("most")));
    for (const auto& [width, height] : {std::pair(241, 1), std::pair(1, 321)}) {
        const Drawing large = samples::DrawIcon(width, height, 1);
        const std::string png = Write("large png", samples::MakePng(large, PngColour::Rgb));
        ExpectRefused(Rgba("bmp", png, Path("out")), {png, "240 x 320"});
        for (const int bits : {24, 32}) {
            const std::string bmp = Write("large bmp", samples::MakeBmp(large, bits));
            ExpectRefused(Rgba("png", bmp, Path("out")), {bmp, "240 x 320"});
        }
    }
}

TEST_F(ConverterTest, OtherFilesAreRefused) {
    const std::string gif = Write("a gif", samples::MakeGif(samples::DrawIcon(4, 4, 1)));
    const std::string empty = Write("empty", Bytes());
    for (const std::string& in : {gif, empty}) ExpectRefused(Rgba("png", in, Path("out")), {in, "neither"});
    ExpectRefused(Rgba("png", Path("none"), Path("out")), {Path("none"), "No such file"});
    ExpectRefused(Rgba("png", temp.Path().string(), Path("out")), {temp.Path().string(), "folder"});
}

TEST_F(ConverterTest, CutFilesAreRefused) {
    const Bytes png = samples::MakePng(samples::DrawIcon(40, 40, 1), PngColour::Rgb);
    for (const std::size_t size : {8U, 20U, 33U, 60U}) {
        const std::string cut =
            Write("cut", Bytes(png.begin(), png.begin() + static_cast<std::ptrdiff_t>(size)));
        ExpectRefused(Rgba("bmp", cut, Path("out")), {cut});
    }
    for (const int bits : {1, 8, 24, 32}) {
        Bytes bmp = samples::MakeBmp(samples::DrawIcon(40, 40, 1), bits);
        bmp.pop_back();
        const std::string cut = Write("cut", bmp);
        ExpectRefused(Rgba("png", cut, Path("out")), {cut, "ends"});
    }
}

TEST_F(ConverterTest, TheInputIsNoOutputAlsoThroughALink) {
    const Bytes bytes = samples::MakeBmp(samples::DrawIcon(4, 4, 1), 24);
    const std::string in = Write("in", bytes);
    std::filesystem::create_symlink(in, temp / "soft");
    std::filesystem::create_hard_link(in, temp / "hard");
    for (const char* out : {"in", "soft", "hard"}) ExpectRefused(Rgba("png", in, Path(out)), {Path(out)});
    EXPECT_EQ(ReadFile(in), bytes);
    EXPECT_TRUE(std::filesystem::is_symlink(temp / "soft"));
}

TEST_F(ConverterTest, AnOutputThatCanNotBeWrittenIsNamedAndAnOldFileStays) {
    const std::string in = Write("in", samples::MakeBmp(samples::DrawPhoto(40, 40, 1), 24));
    ExpectRefused(Rgba("bmp", in, Path("no folder/a")), {Path("no folder/a")});
    const std::string old = Write("old", Bytes{1, 2, 3});
    {
        const FileSizeLimit disk(500);
        ExpectRefused(Rgba("bmp", in, old), {old});
    }
    EXPECT_EQ(ReadFile(old), (Bytes{1, 2, 3}));
    EXPECT_EQ(ListNames(temp.Path()), (std::vector<std::string>{"in", "old"}));
}

TEST_F(ConverterTest, AnErrorTakesOneLineWhateverTheNamesHold) {
    const std::string in = Write("line\nbreak", Bytes{1, 2, 3});
    ExpectRefused(Rgba("bmp", in, Path("out")), {"line break: "});
}

TEST_F(ConverterTest, OddNamesAreNamesLikeAnyOther) {
    around.folder = temp.Path();
    for (const std::string name : {"a b 'c' \"d\"", "\xC3\xBC", "\xFF\xFE", "-o", "-out"}) {
        Write(name, samples::MakePng(Alphas(), PngColour::Rgba));
        ExpectDone(Rgba("bmp", name, name + ".x"));
        EXPECT_TRUE(ReadBmp(temp / (name + ".x")).shown == Alphas()) << name;
    }
}

TEST_F(ConverterTest, OtherCommandLinesAreWrongUsage) {
    const std::string in = Write("in", samples::MakePng(Alphas(), PngColour::Rgba));
    const std::string out = Path("out");
    for (const Arguments& arguments : {Arguments{},
                                       {in},
                                       {in, out},
                                       {"-out", "png", "-ctype", "rgba", "-o", out},
                                       {"-out", "png", "-ctype", "rgba", "-o", out, in, in},
                                       {"-out", "gif", "-ctype", "rgba", "-o", out, in},
                                       {"-out", "PNG", "-ctype", "rgba", "-o", out, in},
                                       {"-out", "png", "-ctype", "grey", "-o", out, in},
                                       {"-out", "png", "-ctype", "rgb", "-o", out, in},
                                       {"-out", "png", "-ctype", "rgba", "-truecolors", "-o", out, in},
                                       {"-out", "png", "-ctype", "rgb", "-truecolours", "-o", out, in},
                                       {"-ctype", "rgba", "-out", "png", "-o", out, in},
                                       {"-out", "png", "-ctype", "rgba", "-i", out, in},
                                       {"--help", "--version"}}) {
        const Ended ended = Run(arguments);
        EXPECT_EQ(ended.status, 2);
        EXPECT_EQ(ended.out, "");
        EXPECT_TRUE(ended.err.starts_with("Usage: pictavo-convert -out ")) << ended.err;
        EXPECT_FALSE(std::filesystem::exists(out));
    }
}

TEST_F(ConverterTest, HelpAndVersionGoToStandardOutput) {
    const Ended help = Run({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.out.starts_with("Usage: pictavo-convert -out "));
    EXPECT_EQ(help.err, "");
    const Ended version = Run({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out, std::string("pictavo-convert ") + kVersion + "\n");
}

}  // namespace
}  // namespace pictavo::tests
