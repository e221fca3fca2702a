#include "session/PicturesLoader.h"

#include "core/PathText.h"
#include "session/ShowPicture.h"
#include "support/SessionFixture.h"
#include "support/SystemMeans.h"

namespace pictavo::tests {
namespace {

constexpr Cell kOrange{250, 120, 10, 0};

/// Gives one colour in the size that a test says, and notes each file it was asked for.
class OneColourLoader final : public PictureLoader {
  public:
    int width = 1;
    int height = 1;
    std::vector<std::filesystem::path> asked;

    Result<ImportedPixels> Load(const std::filesystem::path& path) override {
        asked.push_back(path);
        const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
        return ImportedPixels{width, height, std::vector<Cell>(count, kOrange), false};
    }
};

class PicturesLoaderTest : public SessionFixture {
  protected:
    Status Load(const std::filesystem::path& path) { return PicturesLoader(session, ports, path, flags); }

    Status LoadBytes(const Bytes& file, const std::string& name = "a.bmp") {
        return Load(WriteFile(temp / name, file));
    }

    /// A bitmap's first 54 bytes, and as many bytes of pixels as said.
    static Bytes BitmapOfHeader(std::int32_t width, std::int32_t height, int bits, std::size_t pixelBytes) {
        Bytes file(54 + pixelBytes);
        const MutableByteView view(file);
        file[0] = 'B';
        file[1] = 'M';
        file[10] = 54;
        file[14] = 40;
        PutLittleEndian32(view.subspan(18), static_cast<std::uint32_t>(width));
        PutLittleEndian32(view.subspan(22), static_cast<std::uint32_t>(height));
        file[26] = 1;
        file[28] = static_cast<std::uint8_t>(bits);
        return file;
    }

    static Bytes Gif(std::uint16_t width, std::uint16_t height, std::uint8_t packed) {
        Bytes file(13);
        std::copy_n("GIF89a", 6, file.begin());
        PutLittleEndian16(MutableByteView(file).subspan(6), width);
        PutLittleEndian16(MutableByteView(file).subspan(8), height);
        file[10] = packed;
        return file;
    }

    /// A comment segment of which a careless walk would take the bytes for a frame, then the frame.
    static Bytes JpegHead(std::uint8_t frameMarker, std::uint16_t width, std::uint16_t height) {
        const auto high = [](std::uint16_t value) { return static_cast<std::uint8_t>(value >> 8); };
        const auto low = [](std::uint16_t value) { return static_cast<std::uint8_t>(value & 0xFF); };
        return {0xFF,         0xD8,        0xFF,        0xFE,      0x00, 0x09,        0xFF, 0xC0, 0,
                0x11,         8,           9,           9,         0xFF, frameMarker, 0x00, 0x07, 8,
                high(height), low(height), high(width), low(width)};
    }

    static Bytes Joined(Bytes first, const Bytes& second) {
        first.insert(first.end(), second.begin(), second.end());
        return first;
    }

    /// The head, and a scan of three bytes, one of them stuffed, with a restart between.
    static Bytes Jpeg(std::uint8_t frameMarker, std::uint16_t width, std::uint16_t height) {
        return Joined(JpegHead(frameMarker, width, height),
                      {0xFF, 0xDA, 0x00, 0x02, 0x12, 0xFF, 0x00, 0xFF, 0xD0, 0x34, 0xFF, 0xD9});
    }

    static Bytes Png(samples::PngColour colour, int width = 5, int height = 4) {
        return samples::MakePng(samples::DrawIcon(width, height, 1), colour);
    }

    /// The converter writes this as its bitmap.
    void ConverterGives(Bytes file) {
        scripted.processes.effect = [this, file = std::move(file)](const FakeProcesses::Call&) {
            WriteFile(session.workFiles.PngBitmap(), file);
        };
    }

    void ExpectRaster(const samples::Drawing& drawing) const {
        EXPECT_EQ(session.picture.width, drawing.width);
        EXPECT_EQ(session.picture.height, drawing.height);
        for (int y = 0; y < drawing.height; ++y)
            for (int x = 0; x < drawing.width; ++x) {
                const samples::Pixel& pixel = drawing.At(x, y);
                ASSERT_EQ(CellAt(x, y), (Cell{pixel.r, pixel.g, pixel.b, pixel.a})) << x << ", " << y;
            }
    }

    void ExpectOneColour(int width, int height) const {
        EXPECT_EQ(session.picture.width, width);
        EXPECT_EQ(session.picture.height, height);
        EXPECT_FALSE(session.picture.RasterHasAlpha);
        EXPECT_EQ(CellAt(0, 0), kOrange);
        EXPECT_EQ(CellAt(width - 1, height - 1), kOrange);
    }

    /// Shows a picture with alpha, so that a failed load has something to spoil.
    void ShowBefore() {
        Open(FourIcons());
        ASSERT_TRUE(ShowRow(session, 3));
        before = session.picture;
        captionBefore = session.shown.caption;
    }

    void ExpectNothingChanged() const {
        EXPECT_EQ(session.picture.width, before.width);
        EXPECT_EQ(session.picture.height, before.height);
        EXPECT_EQ(session.picture.bitDepth, before.bitDepth);
        EXPECT_EQ(session.picture.RasterHasAlpha, before.RasterHasAlpha);
        EXPECT_EQ(session.shown.caption, captionBefore);
        EXPECT_TRUE(session.shown.isShown);
        EXPECT_TRUE(std::equal(before.raster.From(0, 0),
                               before.raster.From(0, 0) + Raster::kColumns * Raster::kRows,
                               session.picture.raster.From(0, 0)));
    }

    void ExpectRefused(const Status& loaded, ErrorKind kind) const {
        ASSERT_FALSE(loaded);
        EXPECT_EQ(loaded.error().kind, kind);
        ExpectNothingChanged();
    }

    /// Parts of a JPEG behind its head.
    const Bytes kScan{0xFF, 0xDA, 0x00, 0x02, 0x12};
    const Bytes kEnd{0xFF, 0xD9};

    OneColourLoader loader;
    Ports ports{scripted.prompts, scripted.progress, scripted.processes, loader};
    Picture before;
    std::string captionBefore;

    ChannelFlags flags;
};

TEST_F(PicturesLoaderTest, ABitmapOf32BitsIsReadWithItsAlphaAndWithoutTheSystemsReaders) {
    const samples::Drawing drawing = samples::DrawNoise(5, 4, 1);
    ASSERT_TRUE(LoadBytes(samples::MakeBmp(drawing, 32)));
    ExpectRaster(drawing);
    EXPECT_TRUE(session.picture.RasterHasAlpha);
    EXPECT_EQ(session.shown.caption, "5 x 4 :: 32bit");
    EXPECT_TRUE(loader.asked.empty());
}

TEST_F(PicturesLoaderTest, ABitmapStoredFromTheTopIsReadRightWayUp) {
    const samples::Drawing drawing = samples::DrawNoise(5, 4, 1);
    ASSERT_TRUE(LoadBytes(samples::MakeBmp(drawing, 32, true)));
    ExpectRaster(drawing);
}

TEST_F(PicturesLoaderTest, ThePixelsBeginWhereTheHeaderSays) {
    const samples::Drawing drawing = samples::DrawNoise(3, 2, 1);
    Bytes file = samples::MakeBmp(drawing, 32);
    const auto offset = static_cast<std::ptrdiff_t>(file[10]);
    file.insert(file.begin() + offset, 7, 0xEE);
    file[10] = static_cast<std::uint8_t>(file[10] + 7);
    ASSERT_TRUE(LoadBytes(file));
    ExpectRaster(drawing);
}

TEST_F(PicturesLoaderTest, OtherBitmapsGoThroughTheSystemsReaders) {
    loader.width = 6;
    loader.height = 3;
    for (const int bits : {1, 4, 8, 24}) {
        const auto file = WriteFile(temp / "a.bmp", samples::MakeBmp(samples::DrawIcon(6, 3, 1), bits));
        ASSERT_TRUE(Load(file));
        EXPECT_EQ(loader.asked.back(), file);
        ExpectOneColour(6, 3);
        EXPECT_EQ(session.shown.caption, "6 x 3 :: " + std::to_string(bits) + "bit");
    }
}

TEST_F(PicturesLoaderTest, AGifsDepthIsThatOfItsColourTable) {
    ASSERT_TRUE(LoadBytes(Gif(1, 1, 0xF2), "a.gif"));
    EXPECT_EQ(session.shown.caption, "1 x 1 :: 3bit");
    EXPECT_EQ(session.picture.bitDepth, 3);
    ExpectOneColour(1, 1);
}

TEST_F(PicturesLoaderTest, AJpegCutShortIsMalformed) {
    const Bytes whole = Jpeg(0xC0, 7, 1);
    const std::size_t headLength = JpegHead(0xC0, 7, 1).size();
    ShowBefore();
    for (std::size_t length = headLength; length < whole.size(); ++length) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        ExpectRefused(LoadBytes(cut), ErrorKind::Malformed);
    }
}

TEST_F(PicturesLoaderTest, OnlyAMarkerBehindTheScanEndsAJpeg) {
    const Bytes head = JpegHead(0xC0, 7, 1);
    const Bytes commentOfAnEnd{0xFF, 0xFE, 0x00, 0x04, 0xFF, 0xD9};
    ShowBefore();
    for (const Bytes& file :
         {Joined(head, kEnd), Joined(Joined(head, kEnd), kScan), Joined(Joined(head, commentOfAnEnd), kScan),
          Joined(Joined(head, kScan), commentOfAnEnd)})
        ExpectRefused(LoadBytes(file), ErrorKind::Malformed);
}

TEST_F(PicturesLoaderTest, LengthsThatLieAboutAJpegEndInARefusal) {
    const Bytes head = JpegHead(0xC0, 7, 1);
    ShowBefore();
    for (const Bytes& tail : {Bytes{0xFF, 0xDA, 0xFF, 0xFF, 0xFF, 0xD9}, Bytes{0xFF, 0xDA, 0x00},
                              Bytes{0xFF, 0xE0, 0x00, 0x00}, Bytes(100'000, 0xFF), Bytes(100'000, 0x00)})
        ExpectRefused(LoadBytes(Joined(head, tail)), ErrorKind::Malformed);
}

TEST_F(PicturesLoaderTest, AJpegMayHaveSeveralScansFillBytesAndMoreBehindItsEnd) {
    const Bytes head = JpegHead(0xC2, 7, 1);
    for (const Bytes& file : {Joined(Joined(Joined(head, kScan), kScan), kEnd),
                              Joined(Joined(head, kScan), {0xFF, 0xFF, 0xFF, 0xD9}),
                              Joined(Jpeg(0xC2, 7, 1), {'r', 'e', 's', 't', 0xFF})})
        EXPECT_TRUE(LoadBytes(file));
}

TEST_F(PicturesLoaderTest, AJpegOfMoreThanAThousandScansIsRefused) {
    Bytes file = JpegHead(0xC2, 7, 1);
    for (int i = 0; i < 1000; ++i) file = Joined(std::move(file), kScan);
    EXPECT_TRUE(LoadBytes(Joined(file, kEnd)));
    ShowBefore();
    const Status loaded = LoadBytes(Joined(Joined(file, kScan), kEnd));
    ExpectRefused(loaded, ErrorKind::Malformed);
    EXPECT_EQ(loaded.error().detail, "is no picture: it holds more than 1000 scans");
    EXPECT_EQ(loaded.error().offset, file.size());
}

TEST_F(PicturesLoaderTest, AJpegIs24Bits) {
    loader.width = 7;
    for (const std::uint8_t marker : std::initializer_list<std::uint8_t>{0xC0, 0xC2}) {
        ASSERT_TRUE(LoadBytes(Jpeg(marker, 7, 1), "a.jpg"));
        EXPECT_EQ(session.shown.caption, "7 x 1 :: 24bit");
        ExpectOneColour(7, 1);
    }
}

TEST_F(PicturesLoaderTest, TheFirstBytesTellTheFormatAndNotTheName) {
    ConverterGives(samples::MakeBmp(samples::DrawIcon(5, 4, 1), 32));
    ASSERT_TRUE(LoadBytes(Png(samples::PngColour::Rgba), "a.bmp"));
    EXPECT_EQ(scripted.processes.calls.size(), 1U);
    ASSERT_TRUE(LoadBytes(samples::MakeBmp(samples::DrawNoise(2, 2, 1), 32), "a.png"));
    EXPECT_EQ(scripted.processes.calls.size(), 1U);
    EXPECT_EQ(session.picture.width, 2);
}

TEST_F(PicturesLoaderTest, TheLargestPictureIsTakenWhole) {
    const samples::Drawing drawing = samples::DrawNoise(240, 320, 1);
    ASSERT_TRUE(LoadBytes(samples::MakeBmp(drawing, 32)));
    ExpectRaster(drawing);
}

TEST_F(PicturesLoaderTest, APictureOf241ColumnsIsRefusedWhateverItsFormat) {
    ShowBefore();
    ExpectRefused(LoadBytes(samples::MakeBmp(samples::DrawIcon(241, 1, 1), 32)), ErrorKind::TooLarge);
    ExpectRefused(LoadBytes(samples::MakeBmp(samples::DrawIcon(241, 1, 1), 24)), ErrorKind::TooLarge);
    ExpectRefused(LoadBytes(Gif(241, 1, 0)), ErrorKind::TooLarge);
    ExpectRefused(LoadBytes(Jpeg(0xC0, 241, 1)), ErrorKind::TooLarge);
    ExpectRefused(LoadBytes(Png(samples::PngColour::Rgb, 241, 1)), ErrorKind::TooLarge);
    EXPECT_TRUE(loader.asked.empty());
    EXPECT_TRUE(scripted.processes.calls.empty());
}

TEST_F(PicturesLoaderTest, APictureOf321RowsIsRefusedWhateverItsFormat) {
    ShowBefore();
    ExpectRefused(LoadBytes(samples::MakeBmp(samples::DrawIcon(1, 321, 1), 32)), ErrorKind::TooLarge);
    ExpectRefused(LoadBytes(samples::MakeBmp(samples::DrawIcon(1, 321, 1), 32, true)), ErrorKind::TooLarge);
    ExpectRefused(LoadBytes(Gif(1, 321, 0)), ErrorKind::TooLarge);
    ExpectRefused(LoadBytes(Jpeg(0xC2, 1, 321)), ErrorKind::TooLarge);
    ExpectRefused(LoadBytes(Png(samples::PngColour::Grey, 1, 321)), ErrorKind::TooLarge);
}

TEST_F(PicturesLoaderTest, ASizeOfMoreThan16BitsIsNotCutToASmallOne) {
    ShowBefore();
    ExpectRefused(LoadBytes(BitmapOfHeader(0x10001, 1, 32, 64)), ErrorKind::TooLarge);
    ExpectRefused(LoadBytes(BitmapOfHeader(1, 0x10001, 32, 64)), ErrorKind::TooLarge);
}

TEST_F(PicturesLoaderTest, ABitmapThatItsDataDoNotFillIsRefused) {
    ShowBefore();
    ExpectRefused(LoadBytes(BitmapOfHeader(4, 4, 32, 63)), ErrorKind::Truncated);
    ExpectRefused(LoadBytes(BitmapOfHeader(4, 4, 24, 47)), ErrorKind::Truncated);
    EXPECT_TRUE(loader.asked.empty());
}

TEST_F(PicturesLoaderTest, AnErrorNamesTheFile) {
    ShowBefore();
    const Status loaded = LoadBytes(BitmapOfHeader(-4, 4, 24, 64), "wrong.bmp");
    ExpectRefused(loaded, ErrorKind::Malformed);
    EXPECT_EQ(loaded.error().path, temp / "wrong.bmp");
}

TEST_F(PicturesLoaderTest, AFileThatIsNotThereIsMissing) {
    ShowBefore();
    ExpectRefused(Load(temp / "none.bmp"), ErrorKind::FileMissing);
    EXPECT_FALSE(std::filesystem::exists(temp / "none.bmp"));
}

TEST_F(PicturesLoaderTest, AFileOfUnknownKindIsLeftToTheSystemsReaders) {
    loader.width = 3;
    ASSERT_TRUE(LoadBytes({'?', '?', 1, 2}, "a.tga"));
    ExpectOneColour(3, 1);
    EXPECT_EQ(session.shown.caption, "3 x 1 :: 24bit");
}

TEST_F(PicturesLoaderTest, WhatTheSystemsReadersRefuseChangesNothing) {
    ShowBefore();
    scripted.pictures.error = Error{ErrorKind::UnknownFile, {}, std::nullopt, "no reader takes it"};
    const auto file = WriteFile(temp / "a.xyz", std::string("hello"));
    const Status loaded = PicturesLoader(session, scripted.ports, file);
    ExpectRefused(loaded, ErrorKind::UnknownFile);
    EXPECT_EQ(loaded.error().detail, "no reader takes it");
    EXPECT_EQ(loaded.error().path, file);
}

TEST_F(PicturesLoaderTest, AReaderThatGivesMoreThanTheHeaderSaidIsRefused) {
    ShowBefore();
    loader.width = 241;
    ExpectRefused(LoadBytes(Gif(10, 10, 0)), ErrorKind::TooLarge);
    ExpectRefused(LoadBytes({'?', '?'}), ErrorKind::TooLarge);
}

TEST_F(PicturesLoaderTest, AnEmptyFileIsLeftToTheSystemsReaders) {
    const auto file = WriteFile(temp / "a.bmp", Bytes());
    ASSERT_TRUE(Load(file));
    EXPECT_EQ(loader.asked, std::vector<std::filesystem::path>{file});
}

TEST_F(PicturesLoaderTest, OfCellsOutsideThePictureNoneChanges) {
    ShowBefore();
    ASSERT_TRUE(LoadBytes(samples::MakeBmp(samples::DrawNoise(2, 2, 1), 32)));
    EXPECT_EQ(CellAt(2, 0), before.raster.At(2, 0));
    EXPECT_EQ(CellAt(0, 2), before.raster.At(0, 2));
}

class PngLoadTest : public PicturesLoaderTest {
  protected:
    Status LoadPng(samples::PngColour colour) { return LoadBytes(Png(colour), "a.png"); }

    std::vector<std::string> Arguments(std::vector<std::string> options) const {
        options.insert(options.end(),
                       {"-o", session.workFiles.PngBitmap().string(), PathText(ShortPath(temp / "a.png"))});
        return options;
    }
};

TEST_F(PngLoadTest, TypesWithAlphaAndGreyAreConvertedToRgba) {
    const samples::Drawing drawing = samples::DrawNoise(5, 4, 1);
    ConverterGives(samples::MakeBmp(drawing, 32));
    using samples::PngColour;
    for (const PngColour colour : {PngColour::Grey, PngColour::GreyAlpha, PngColour::Rgba}) {
        ASSERT_TRUE(LoadPng(colour));
        EXPECT_EQ(scripted.processes.calls.back().program, session.settings.nConvert);
        EXPECT_EQ(scripted.processes.calls.back().arguments, Arguments({"-out", "bmp", "-ctype", "rgba"}));
        ExpectRaster(drawing);
        EXPECT_TRUE(session.picture.RasterHasAlpha);
    }
    EXPECT_EQ(scripted.processes.calls.size(), 3U);
}

TEST_F(PngLoadTest, TrueColourAndPaletteAreConvertedToRgbAndHaveNoAlpha) {
    ConverterGives(samples::MakeBmp(samples::DrawNoise(5, 4, 1), 24));
    loader.width = 5;
    loader.height = 4;
    for (const auto colour : {samples::PngColour::Rgb, samples::PngColour::Palette}) {
        ASSERT_TRUE(LoadPng(colour));
        EXPECT_EQ(scripted.processes.calls.back().arguments,
                  Arguments({"-out", "bmp", "-ctype", "rgb", "-truecolors"}));
        EXPECT_EQ(loader.asked.back(), session.workFiles.PngBitmap());
        ExpectOneColour(5, 4);
        EXPECT_EQ(CellAt(4, 3).a, 0);
    }
}

TEST_F(PngLoadTest, TheCaptionIsThatOfTheConvertersBitmap) {
    ConverterGives(samples::MakeBmp(samples::DrawNoise(3, 2, 1), 32));
    ASSERT_TRUE(LoadPng(samples::PngColour::Rgba));
    EXPECT_EQ(session.shown.caption, "3 x 2 :: 32bit");
}

TEST_F(PngLoadTest, TheTemporariesAreDeletedAndTheSourceIsNot) {
    ConverterGives(samples::MakeBmp(samples::DrawNoise(5, 4, 1), 32));
    ASSERT_TRUE(LoadPng(samples::PngColour::Rgba));
    EXPECT_TRUE(ListNames(session.workFiles.folder).empty());
    EXPECT_EQ(ReadFile(temp / "a.png"), Png(samples::PngColour::Rgba));
}

TEST_F(PngLoadTest, WithoutConverterItIsRefused) {
    ShowBefore();
    session.settings.nConvert = (temp / "no converter").string();
    ExpectRefused(LoadPng(samples::PngColour::Rgba), ErrorKind::ConverterMissing);
    EXPECT_TRUE(scripted.processes.calls.empty());
}

TEST_F(PngLoadTest, WithoutConverterATooLargeOneIsTooLargeFirst) {
    ShowBefore();
    session.settings.nConvert.clear();
    ExpectRefused(LoadBytes(Png(samples::PngColour::Rgb, 241, 1)), ErrorKind::TooLarge);
}

TEST_F(PngLoadTest, AConverterThatWritesNothingIsNoticedAndAnEarlierBitmapNeverRead) {
    ShowBefore();
    WriteFile(session.workFiles.PngBitmap(), samples::MakeBmp(samples::DrawNoise(5, 4, 1), 32));
    const Status loaded = LoadPng(samples::PngColour::Rgba);
    ExpectRefused(loaded, ErrorKind::ConverterFailed);
    EXPECT_EQ(loaded.error().path, temp / "a.png");
}

TEST_F(PngLoadTest, AConverterThatWritesAPngIsRunOnceAndRefused) {
    ShowBefore();
    ConverterGives(Png(samples::PngColour::Rgba));
    ExpectRefused(LoadPng(samples::PngColour::Rgba), ErrorKind::ConverterFailed);
    EXPECT_EQ(scripted.processes.calls.size(), 1U);
    EXPECT_TRUE(ListNames(session.workFiles.folder).empty());
}

TEST_F(PngLoadTest, AConverterThatWritesATooLargeBitmapIsRefused) {
    ShowBefore();
    ConverterGives(samples::MakeBmp(samples::DrawIcon(241, 1, 1), 32));
    ExpectRefused(LoadPng(samples::PngColour::Rgba), ErrorKind::TooLarge);
    EXPECT_TRUE(ListNames(session.workFiles.folder).empty());
}

TEST_F(PngLoadTest, AConverterThatWritesHalfABitmapIsRefused) {
    ShowBefore();
    Bytes half = samples::MakeBmp(samples::DrawNoise(5, 4, 1), 32);
    half.resize(half.size() / 2);
    ConverterGives(half);
    ExpectRefused(LoadPng(samples::PngColour::Rgba), ErrorKind::ConverterFailed);
    EXPECT_TRUE(ListNames(session.workFiles.folder).empty());
}

TEST_F(PngLoadTest, BlanksAndQuotesInAllThreePathsWork) {
    session.workFiles.folder = temp / AllowedName("my \"tmp\" folder");
    std::filesystem::create_directory(session.workFiles.folder);
    session.settings.nConvert = WriteFile(temp / "my 'converter'", std::string("x")).string();
    ConverterGives(samples::MakeBmp(samples::DrawNoise(5, 4, 1), 32));
    const std::string name = AllowedName("my \"own\" pic'ture .png");
    ASSERT_TRUE(LoadBytes(Png(samples::PngColour::Rgba), name));
    EXPECT_EQ(scripted.processes.calls[0].program, session.settings.nConvert);
    EXPECT_EQ(scripted.processes.calls[0].arguments.at(5), session.workFiles.PngBitmap().string());
    EXPECT_EQ(scripted.processes.calls[0].arguments.at(6), PathText(ShortPath(temp / name)));
}

class ChannelLoadTest : public PicturesLoaderTest {
  protected:
    /// A raster of one grey with alpha, 4 x 1.
    ChannelLoadTest() {
        session.picture.width = 4;
        session.picture.height = 1;
        session.picture.RasterHasAlpha = true;
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < 4; ++x) session.picture.raster.At(x, y) = {1, 2, 3, 4};
    }

    Bytes TwoByThree() const {
        return samples::MakeBmp(samples::DrawOneColour(2, 3, {101, 102, 103, 104}), 32);
    }
};

TEST_F(ChannelLoadTest, OnlyTheFlaggedChannelsOfTheNewPicturesCellsChange) {
    flags.red = true;
    flags.blue = true;
    ASSERT_TRUE(LoadBytes(TwoByThree()));
    EXPECT_EQ(CellAt(1, 2), (Cell{101, 2, 103, 4}));
    EXPECT_EQ(CellAt(2, 0), (Cell{1, 2, 3, 4}));
}

TEST_F(ChannelLoadTest, EachFlagMeansItsOwnChannel) {
    flags = {false, true, false, false};
    ASSERT_TRUE(LoadBytes(TwoByThree()));
    EXPECT_EQ(CellAt(0, 0), (Cell{1, 102, 3, 4}));
    flags = {false, false, false, true};
    ASSERT_TRUE(LoadBytes(TwoByThree()));
    EXPECT_EQ(CellAt(0, 0), (Cell{1, 102, 3, 104}));
}

TEST_F(ChannelLoadTest, TheSizeIsTheLargerOfOldAndNew) {
    flags.green = true;
    ASSERT_TRUE(LoadBytes(TwoByThree()));
    EXPECT_EQ(session.shown.caption, "4 x 3 :: 32bit");
}

TEST_F(ChannelLoadTest, WithoutAFlagTheSizeIsTheNewOne) {
    ASSERT_TRUE(LoadBytes(TwoByThree()));
    EXPECT_EQ(session.shown.caption, "2 x 3 :: 32bit");
    EXPECT_EQ(CellAt(1, 2), (Cell{101, 102, 103, 104}));
}

TEST_F(ChannelLoadTest, TheAlphaFlagTakesTheZeroOfAFileWithoutAlpha) {
    flags.alpha = true;
    ASSERT_TRUE(LoadBytes(samples::MakeBmp(samples::DrawIcon(1, 1, 1), 24)));
    EXPECT_EQ(CellAt(0, 0), (Cell{1, 2, 3, 0}));
    EXPECT_FALSE(session.picture.RasterHasAlpha);
}

TEST_F(ChannelLoadTest, AFailedLoadChangesNoCell) {
    flags.red = true;
    EXPECT_FALSE(LoadBytes(BitmapOfHeader(4, 4, 32, 63)));
    EXPECT_EQ(CellAt(0, 0), (Cell{1, 2, 3, 4}));
}

}  // namespace
}  // namespace pictavo::tests
