#include "codec/GPFcodec.h"
#include "support/CliFixture.h"

/// Every command with names of files and folders that a shell, an option parser, a child process or a text of
/// another alphabet could trip over. All that comes out must be what comes out with plain names.

namespace pictavo::tests {
namespace {

constexpr const char* kPlain = "plain";

std::string Replaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size())
        text.replace(at, what.size(), by);
    return text;
}

/// What files and folders are called, and whether they are named from the current folder or with their whole
/// paths.
struct Naming {
    const char* title;
    std::string name;
    bool isRelative = true;

    friend void PrintTo(const Naming& naming, std::ostream* out) { *out << naming.title; }
};

/// What a run of every command made.
struct Road {
    std::vector<std::string> said;  ///< the command and its standard output
    std::map<std::string, Bytes> files;
};

class PathsTest : public CliTest, public ::testing::WithParamInterface<Naming> {
  protected:
    /// All commands over the files called `name`, in a folder of that name, which is the current one. Folders
    /// and outputs are named relative to it, or with the whole path.
    Road Travel(const std::string& name, bool isRelative) {
        folder_ = temp / (std::string(isRelative ? "relative" : "absolute") + name);
        name_ = name;
        isRelative_ = isRelative;
        road_ = {};
        MakeInputs();
        Look();
        Export();
        Convert();
        Patch();
        TakeOut();
        Gather();
        return road_;
    }

  private:
    /// A name as an argument, where it could be taken for an option only behind "--".
    std::string Name(const std::string& rest) const {
        return isRelative_ ? name_ + rest : (folder_ / (name_ + rest)).string();
    }

    /// A name as the value of an option.
    std::string Value(const std::string& rest) const {
        return isRelative_ ? "./" + name_ + rest : Name(rest);
    }

    void MakeInputs() {
        std::filesystem::create_directories(folder_ / (name_ + " tmp"));
        around.folder = folder_;
        around.environment = {"PATH=/usr/bin:/bin", "TMP=" + (folder_ / (name_ + " tmp")).string()};
        std::filesystem::create_symlink(std::string(PICTAVO_BIN_DIR) + "/pictavo-convert",
                                        folder_ / (name_ + " convert"));
        WriteFile(folder_ / (name_ + ".bin"), Flash());
        WriteFile(folder_ / (name_ + ".bmp"), samples::MakeBmp(samples::DrawIcon(16, 16, 9), 32));
        WriteFile(folder_ / (name_ + ".gpn"), ComposeGpf(GpfHeader{4, 4, 0x05, 37, false}, Bytes(16, 0x11)));
    }

    /// Pictures with room between them, and a file of each kind that can be carved.
    static Bytes Flash() {
        FlashBuilder flash(FlashKind::SGold);
        flash.Size(2U << 20).PicturesAt(0x180000).Align(4096);
        std::uint32_t seed = 1;
        for (const std::uint8_t type : std::initializer_list<std::uint8_t>{0x05, 0x88, 0x8A})
            flash.AddDrawing(samples::DrawIcon(16, 16, seed++), type);
        flash.Put(0x1C0000, samples::MakePng(samples::DrawPhoto(30, 30, 1), samples::PngColour::Rgb));
        flash.Put(0x1D0000, samples::MakeGif(samples::DrawIcon(12, 12, 2)));
        Bytes xml = samples::MakeXml(1);
        xml.insert(xml.end(), {' ', 0x00});
        return flash.Put(0x1E0000, xml).Build();
    }

    void Run(Arguments options, const Arguments& names) {
        options.push_back("--");
        options.insert(options.end(), names.begin(), names.end());
        const Ended ended = Cli(options);
        EXPECT_EQ(ended.status, 0) << options[0];
        EXPECT_EQ(ended.err, "") << options[0];
        road_.said.push_back(options[0] + ": " + ended.out);
    }

    void Look() {
        Run({"info"}, {Name(".bin")});
        Run({"list"}, {Name(".bin")});
    }

    void Export() {
        for (const std::string format : {"bmp", "gpf", "gpf2", "png"})
            Run({"export", "-o", Value(" " + format), "--format", format, "--zero-names", "--converter",
                 Value(" convert")},
                {Name(".bin")});
    }

    void Convert() {
        const Arguments command{"convert", "--converter", Value(" convert")};
        Run(command, {Name(".bmp"), Name(".png")});
        Run(command, {Name(".png"), Name(".gpf")});
        Run(command, {Name(".gpf"), Name(" again.bmp")});
        Run({"png-info"}, {Name(".png")});
    }

    void Patch() {
        Run({"patch", "-o", Value(".vkp"), "--picture", "1=" + Name(".png") + "@8", "--converter",
             Value(" convert")},
            {Name(".bin")});
        Run({"patch", "-o", Value(" all.vkp"), "--folder", Value(" png"), "--zero-names", "--converter",
             Value(" convert")},
            {Name(".bin")});
        Run({"check"}, {Name(".vkp"), Name(".bin")});
        Run({"apply", "-o", Value(" copy.bin")}, {Name(".vkp"), Name(".bin")});
        Run({"backup-pit", "-o", Value(" backup")}, {Name(".bin")});
        Run({"rebuild-pit", "--zero-names", "--from", Value(" gpf"), "-o", Value(" rebuilt")},
            {Name(".bin")});
    }

    void TakeOut() {
        Run({"extract-patch", "-o", Value(" patched")}, {Name(".vkp")});
        Run({"extract-gpn", "-o", Value(" pieces")}, {Name(".gpn")});
        for (const std::string kind : {"gif", "png", "xml"})
            Run({"carve", "-o", Value(" " + kind + "s")}, {kind, Name(".bin")});
        const std::string png = ListNames(folder_ / (name_ + " pngs")).at(0);
        Run({"patch", "-o", Value(" png.vkp"), "--png", Value(" pngs/" + png)}, {Name(".bin")});
    }

    void Gather() {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_)) {
            const std::string path = std::filesystem::relative(entry.path(), folder_).string();
            if (entry.is_regular_file() && !entry.is_symlink())
                road_.files[Replaced(path, name_, kPlain)] = ReadFile(entry.path());
        }
        EXPECT_TRUE(ListNames(folder_ / (name_ + " tmp")).empty());
    }

    std::filesystem::path folder_;
    std::string name_;
    bool isRelative_ = false;
    Road road_;
};

TEST_P(PathsTest, MakeNoDifferenceToAnyCommand) {
    static const Road plain = Travel(kPlain, true);
    EXPECT_EQ(plain.said.size(), 22U);
    EXPECT_EQ(plain.files.size(), 31U);
    const Road odd = Travel(GetParam().name, GetParam().isRelative);
    EXPECT_EQ(odd.said, plain.said);
    EXPECT_EQ(odd.files.size(), plain.files.size());
    for (const auto& [name, bytes] : plain.files) {
        ASSERT_TRUE(odd.files.contains(name)) << name;
        EXPECT_TRUE(odd.files.at(name) == bytes) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Names, PathsTest,
    ::testing::Values(Naming{"TwoBlanks", "two  blanks"}, Naming{"ABlankFirst", " a blank first"},
                      Naming{"AnApostrophe", "it's"}, Naming{"QuotationMarks", "\"quoted\""},
                      Naming{"ALineBreak", "line\nbreak"}, Naming{"ATab", "tab\there"},
                      Naming{"Cyrillic", "\xD0\x96\xD1\x83\xD0\xBA \xD0\xB8 \xD1\x91\xD0\xB6"},
                      Naming{"Emoji", "\xF0\x9F\x93\xB1 phone \xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x92\xBB"},
                      Naming{"ADash", "-dash"}, Naming{"AnOption", "--overwrite"},
                      Naming{"SignsOfPictures", "a=b@c@8"}, Naming{"ACommand", "$HOME `ls` ; & | > x"},
                      Naming{"AFormat", "100%1 %s \\n"}, Naming{"APattern", "*?[a]{b,c}!"},
                      Naming{"TwoHundredCharacters", std::string(200, 'x')},
                      Naming{"AllAndWholePaths", " -'\"\n \xD0\x96 \xF0\x9F\x93\xB1 $HOME", false}),
    [](const auto& test) { return test.param.title; });

}  // namespace
}  // namespace pictavo::tests
