#include "codec/GPFcodec.h"
#include "support/CliFixture.h"

namespace pictavo::tests {
namespace {

class ConvertTest : public CliTest {
  protected:
    static Drawing Icon() { return samples::DrawOneColour(6, 5, {255, 0, 0, 255}); }

    /// The drawing as a file of the kind that the extension names.
    std::string Input(const std::string& name, const Drawing& drawing, std::uint8_t typeCode = 0x0A) {
        return Write(name, FileOf(std::filesystem::path(name).extension().string(), drawing, typeCode));
    }

    static Bytes FileOf(const std::string& extension, const Drawing& drawing, std::uint8_t typeCode) {
        if (extension == ".bmp") return samples::MakeBmp(drawing, 32);
        if (extension == ".png") return samples::MakePng(drawing, samples::PngColour::Rgba);
        if (extension == ".gif") return samples::MakeGif(drawing);
        return GpfOf(drawing, typeCode, 0x1234, extension == ".gpf2");
    }

    static Bytes GpfOf(const Drawing& drawing, std::uint8_t typeCode, int number, bool isGpf2) {
        return ComposeGpf(
            {static_cast<std::uint16_t>(drawing.width), static_cast<std::uint16_t>(drawing.height), typeCode,
             static_cast<std::uint16_t>(number), isGpf2},
            samples::EncodeForPhone(drawing, typeCode));
    }

    /// 8 x 8 pixels of one grey: a baseline file with one table of each kind.
    static Bytes GreyJpeg() {
        const Bytes start{0xFF, 0xD8, 0xFF, 0xDB, 0x00, 0x43, 0x00};  // and 64 bytes of 1
        const Bytes rest{0xFF, 0xC0, 0x00, 0x0B, 0x08, 0x00, 0x08, 0x00, 0x08, 0x01, 0x01, 0x11, 0x00,  //
                         0xFF, 0xC4, 0x00, 0x14, 0x00, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                         0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  //
                         0xFF, 0xC4, 0x00, 0x14, 0x10, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                         0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  //
                         0xFF, 0xDA, 0x00, 0x08, 0x01, 0x01, 0x00, 0x00, 0x3F, 0x00, 0x3F, 0xFF, 0xD9};
        Bytes jpg(start.size() + 64 + rest.size(), 1);
        std::copy(start.begin(), start.end(), jpg.begin());
        std::copy(rest.rbegin(), rest.rend(), jpg.rbegin());
        return jpg;
    }

    Ended Convert(const std::string& in, const std::string& out, const Arguments& more = {}) const {
        Arguments arguments{"convert", in, (temp / out).string()};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return Cli(arguments);
    }

    /// The drawing in the file, whatever its kind: by way of a bitmap.
    Drawing Shown(const std::string& name) {
        ExpectDone(Convert(Path(name), "shown of " + name + ".bmp"));
        return ReadBmp(temp / ("shown of " + name + ".bmp")).shown;
    }

    std::uint32_t WordAt(const std::string& name, std::size_t at) const {
        return LittleNumber(ReadFile(temp / name), at, 2);
    }
};

TEST_F(ConvertTest, EveryKindBecomesEveryKind) {
    for (const std::string from : {".gpf", ".gpf2", ".bmp", ".gif", ".png"}) {
        const std::string in = Input("in" + from, Icon());
        for (const std::string to : {".bmp", ".png", ".gpf", ".gpf2"}) {
            const std::string name = "from" + from.substr(1) + to;
            ExpectDone(Convert(in, name));
            EXPECT_TRUE(Shown(name) == Icon()) << name;
        }
    }
}

TEST_F(ConvertTest, JpgIsReadToo) {
    ExpectDone(Convert(Write("grey.jpg", GreyJpeg()), "grey.bmp"));
    const BmpFile file = ReadBmp(temp / "grey.bmp");
    EXPECT_TRUE(file.shown == samples::DrawOneColour(8, 8, {128, 128, 128, 255}));
}

TEST_F(ConvertTest, AJpgCutShortIsRefused) {
    Bytes jpg = GreyJpeg();
    for (const std::size_t lost : {1U, 2U, 3U}) {
        jpg.resize(GreyJpeg().size() - lost);
        const std::string name = std::to_string(lost) + ".jpg";
        ExpectRefused(Convert(Write(name, jpg), "out.bmp"), {Path(name), "end marker"});
    }
    EXPECT_FALSE(std::filesystem::exists(temp / "out.bmp"));
}

TEST_F(ConvertTest, WhatAPictureReaderSaysOfAnOddFileIsNotPassedOn) {
    around.environment.emplace_back("QT_FORCE_STDERR_LOGGING=1");
    Bytes jpg = GreyJpeg();
    jpg.erase(jpg.end() - 3);  // the only byte of its scan
    ExpectDone(Convert(Write("odd.jpg", jpg), "odd.bmp"));
}

TEST_F(ConvertTest, WhatTheToolkitSaysIsNotPassedOn) {
    around.environment.insert(around.environment.end(),
                              {"QT_FORCE_STDERR_LOGGING=1", "QT_LOGGING_RULES=*=true"});
    ExpectDone(Convert(Write("grey.jpg", GreyJpeg()), "grey.bmp"));
}

TEST_F(ConvertTest, ABitmapHas32BitsWithAlphaElse24) {
    const Drawing disc = samples::DrawSoftDisc(15, 14, 1);
    for (const std::string name : {"a.png", "a.bmp", "a.gpf"}) {
        ExpectDone(Convert(Input(name, disc), "out.bmp", {"--overwrite"}));
        EXPECT_EQ(ReadBmp(temp / "out.bmp").bits, 32) << name;
        EXPECT_TRUE(ReadBmp(temp / "out.bmp").shown == disc) << name;
    }
    for (const std::string& in : {Write("24.bmp", samples::MakeBmp(Icon(), 24)),
                                  Input("16.gpf", Icon(), 0x08), Input("8.gpf2", Icon(), 0x85)}) {
        ExpectDone(Convert(in, "out.bmp", {"--overwrite"}));
        EXPECT_EQ(ReadBmp(temp / "out.bmp").bits, 24) << in;
    }
}

TEST_F(ConvertTest, AlphaSurvivesThePng) {
    const Drawing disc = samples::DrawSoftDisc(15, 14, 1);
    ExpectDone(Convert(Input("disc.bmp", disc), "disc.png"));
    EXPECT_TRUE(Shown("disc.png") == disc);
}

TEST_F(ConvertTest, TypeAndNumberStandInTheHeader) {
    const std::string in = Input("in.bmp", Icon());
    ExpectDone(Convert(in, "out.gpf", {"--type", "08", "--number", "300"}));
    EXPECT_TRUE(ReadText(temp / "out.gpf").starts_with("GraphicPatchFile"));
    EXPECT_EQ(WordAt("out.gpf", 0x10), 300U);
    EXPECT_EQ(WordAt("out.gpf", 0x14), 6U | 5U << 8);
    EXPECT_EQ(WordAt("out.gpf", 0x16), 0x08U);
    ExpectDone(Convert(in, "out.gpf2", {"--type", "85", "--number", "65535"}));
    EXPECT_TRUE(ReadText(temp / "out.gpf2").starts_with("GraphPatchFile_2"));
    EXPECT_EQ(WordAt("out.gpf2", 0x10), 65535U);
    EXPECT_EQ(WordAt("out.gpf2", 0x14), 6U);
    EXPECT_EQ(WordAt("out.gpf2", 0x16), 5U);
    EXPECT_EQ(WordAt("out.gpf2", 0x18), 0x85U);
}

TEST_F(ConvertTest, TheTypeIs8AAndTheNumber0WhenNotSaid) {
    ExpectDone(Convert(Input("in.gpf", Icon(), 0x08), "out.gpf2"));  // carries number 1234
    EXPECT_EQ(WordAt("out.gpf2", 0x10), 0U);
    EXPECT_EQ(WordAt("out.gpf2", 0x18), 0x8AU);
}

TEST_F(ConvertTest, EveryWritableTypeIsWrittenInEitherCase) {
    const std::string in = Input("in.bmp", Icon());
    for (const char* type : {"01", "05", "08", "0A", "85", "88", "8A", "0a", "8a"})
        ExpectDone(Convert(in, "out.gpf", {"--type", type, "--overwrite"}));
}

TEST_F(ConvertTest, Type81IsRefused) {
    const std::string in = Input("in.bmp", Icon());
    ExpectRefused(Convert(in, "out.gpf", {"--type", "81"}), {Path("out.gpf")});
    EXPECT_FALSE(std::filesystem::exists(temp / "out.gpf"));
}

TEST_F(ConvertTest, ATypeThatIsNoneIsToldBesideThoseThatThereAre) {
    const std::string in = Input("in.bmp", Icon());
    EXPECT_THAT(Convert(in, "out.gpf", {"--type=99"}).err,
                HasSubstr("\"99\" is no type code that can be written: 01, 05, 08, 0A, 85, 88, 8A\n"));
}

TEST_F(ConvertTest, AnyOtherTypeIsWrongUsage) {
    const std::string in = Input("in.bmp", Icon());
    for (const char* type : {"", "8", "07", "87", "02", "FF", "00", "008A", "0x8A", "GG", " 8"})
        ExpectWrongUsage(Convert(in, "out.gpf", {std::string("--type=") + type}));
    EXPECT_FALSE(std::filesystem::exists(temp / "out.gpf"));
}

TEST_F(ConvertTest, NumbersAreDecimalAndFitTheHeader) {
    const std::string in = Input("in.bmp", Icon());
    ExpectDone(Convert(in, "out.gpf", {"--number", "010"}));
    EXPECT_EQ(WordAt("out.gpf", 0x10), 10U);
    for (const char* number : {"", "-1", "65536", "100000", "0x10", "1.5", "x"})
        ExpectWrongUsage(Convert(in, "out.gpf", {std::string("--number=") + number}));
}

TEST_F(ConvertTest, OtherExtensionsOfTheOutputAreWrongUsage) {
    const std::string in = Input("in.bmp", Icon());
    for (const char* name : {"out", "out.gif", "out.jpg", "out.gpf3", "out.bmp.txt"})
        ExpectWrongUsage(Convert(in, name));
}

TEST_F(ConvertTest, ExtensionsCountInEitherCaseAndNothingIsAppended) {
    ExpectDone(Convert(Input("IN.GPF2", Icon()), "OUT.BMP"));
    EXPECT_EQ(ListNames(temp.Path()), (std::vector<std::string>{"IN.GPF2", "OUT.BMP", "run folders"}));
}

TEST_F(ConvertTest, OnlyAGpf2HoldsATallPicture) {
    const std::string in = Input("tall.bmp", samples::DrawIcon(4, 256, 1));
    ExpectRefused(Convert(in, "out.gpf"), {Path("out.gpf"), "255"});
    EXPECT_FALSE(std::filesystem::exists(temp / "out.gpf"));
    ExpectDone(Convert(in, "out.gpf2"));
    EXPECT_EQ(WordAt("out.gpf2", 0x16), 256U);
}

TEST_F(ConvertTest, ALargerPictureThanTheScreenIsRefused) {
    for (const char* name : {"wide.bmp", "wide.png", "wide.gif"})
        ExpectRefused(Convert(Input(name, samples::DrawIcon(241, 4, 1)), "out.bmp"), {Path(name)});
    for (const char* name : {"tall.bmp", "tall.png", "tall.gif"})
        ExpectRefused(Convert(Input(name, samples::DrawIcon(4, 321, 1)), "out.bmp"), {Path(name)});
    EXPECT_FALSE(std::filesystem::exists(temp / "out.bmp"));
}

TEST_F(ConvertTest, AGpfWithAnotherMagicIsRefused) {
    Bytes file = FileOf(".gpf", Icon(), 0x08);
    file[3] = 'x';
    for (const char* name : {"a.gpf", "a.gpf2"})
        ExpectRefused(Convert(Write(name, file), "out.bmp"), {Path(name), "no GPF"});
    ExpectRefused(Convert(Write("empty.gpf", Bytes()), "out.bmp"), {Path("empty.gpf"), "no GPF"});
    EXPECT_FALSE(std::filesystem::exists(temp / "out.bmp"));
}

TEST_F(ConvertTest, AGpfWhoseDataEndEarlyIsRefused) {
    for (const std::uint8_t type : {std::uint8_t{0x08}, std::uint8_t{0x88}}) {
        const Drawing photo = samples::DrawPhoto(20, 20, 1);
        Bytes file = GpfOf(photo, type, 0, false);
        file.resize(file.size() - 32);
        const std::string name = "short " + std::to_string(type) + ".gpf";
        ExpectRefused(Convert(Write(name, file), "out.bmp"), {Path(name), "ends"});
    }
    Bytes headerOnly = FileOf(".gpf2", Icon(), 0x08);
    headerOnly.resize(20);
    ExpectRefused(Convert(Write("header.gpf2", headerOnly), "out.bmp"), {Path("header.gpf2")});
    EXPECT_FALSE(std::filesystem::exists(temp / "out.bmp"));
}

TEST_F(ConvertTest, ABitmapThatLiesAboutItsSizeIsRefused) {
    for (const int bits : {1, 4, 8, 24, 32}) {
        Bytes file = samples::MakeBmp(samples::DrawIcon(10, 10, 1), bits);
        file[22] = 200;  // rows
        const std::string name = std::to_string(bits) + ".bmp";
        ExpectRefused(Convert(Write(name, file), "out.png"), {Path(name), "ends"});
    }
    EXPECT_FALSE(std::filesystem::exists(temp / "out.png"));
}

TEST_F(ConvertTest, FilesThatAreNoPicturesAreRefused) {
    for (const char* name : {"a.bmp", "a.gif", "a.jpg", "a.png", "a"})
        ExpectRefused(Convert(Write(name, std::string("A letter, not a picture.")), "out.bmp"), {Path(name)});
    Bytes png = FileOf(".png", Icon(), 0);
    png.resize(40);
    ExpectRefused(Convert(Write("cut.png", png), "out.bmp"), {Path("cut.png")});
}

TEST_F(ConvertTest, TheInputIsNoOutputAlsoThroughALink) {
    for (const char* name : {"in.gpf", "in.bmp", "in.png"}) {
        const std::string extension = std::filesystem::path(name).extension().string();
        const std::string in = Input(name, Icon());
        std::filesystem::create_symlink(in, temp / ("soft" + extension));
        std::filesystem::create_hard_link(in, temp / ("hard" + extension));
        for (const std::string& out : {std::string(name), "soft" + extension, "hard" + extension})
            ExpectRefused(Convert(in, out, {"--overwrite"}), {Path(out), "is read"});
        ExpectRefused(Convert(Path("soft" + extension), name, {"--overwrite"}), {Path(name), "is read"});
        EXPECT_EQ(std::filesystem::hard_link_count(in), 2U);
    }
}

TEST_F(ConvertTest, AFileThatExistsIsLeftAloneUnlessOverwritten) {
    const std::string in = Input("in.gpf", Icon());
    for (const char* name : {"out.bmp", "out.png", "out.gpf", "out.gpf2"}) {
        WriteFile(temp / name, std::string("old"));
        ExpectRefused(Convert(in, name), {Path(name), "exists"});
        EXPECT_EQ(ReadText(temp / name), "old");
        ExpectDone(Convert(in, name, {"--overwrite"}));
        EXPECT_TRUE(Shown(name) == Icon());
    }
}

TEST_F(ConvertTest, PngNeedsItsConverter) {
    const std::string none = Path("no converter");
    const std::string bmp = Input("in.bmp", Icon());
    ExpectRefused(Convert(bmp, "out.png", {"--converter", none}), {none, "converter"});
    ExpectRefused(Convert(Input("in.png", Icon()), "out.bmp", {"--converter", none}), {"converter"});
    ExpectRefused(Convert(bmp, "out.png", {"--converter", "/bin/false"}), {"/bin/false"});
    ExpectDone(Convert(bmp, "out.gpf", {"--converter", none}));
}

}  // namespace
}  // namespace pictavo::tests
