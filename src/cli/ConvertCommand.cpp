#include <algorithm>

#include "cli/Command.h"
#include "cli/CommandSession.h"
#include "cli/NumberList.h"
#include "cli/PathOption.h"
#include "codec/GPFcodec.h"
#include "codec/PictureEncoder.h"
#include "core/AsciiText.h"
#include "core/BasicCalculations_Tarsk.h"
#include "core/PathText.h"
#include "session/PicturesLoader.h"
#include "session/Report.h"
#include "session/SavePicture.h"
#include "session/ShowPicture.h"

namespace pictavo::cli {

namespace {

constexpr int kMostNumber = 0xFFFF;

std::string LoweredExtension(const std::filesystem::path& path) {
    return Lowered(PathText(path.extension()));
}

bool IsGpf(const std::string& extension) {
    return std::find(kGpfExtensions.begin(), kGpfExtensions.end(), extension) != kGpfExtensions.end();
}

bool CanBeWritten(const std::string& extension) {
    return IsGpf(extension) || extension == ".bmp" || extension == ".png";
}

/// The type codes that can be asked for; 81 is one of them, and then refused.
std::optional<std::uint8_t> ParseType(const std::string& text) {
    if (text.size() != 2 || !IsHex(text)) return std::nullopt;
    const Bytes code = HexToBytes(text, false);
    if (!(CanEncode(code[0]) || code[0] == kType1BitCompressed)) return std::nullopt;
    return code[0];
}

/// The type codes, uncompressed or compressed, that the encoder writes: "01, 05".
std::string WrittenTypes(std::uint8_t compressedBit) {
    std::string codes;
    for (const PictureType& type : kPictureTypes) {
        const std::uint8_t code = type.digit | compressedBit;
        if (CanEncode(code)) codes += (codes.empty() ? "" : ", ") + HexText(code, 2);
    }
    return codes;
}

class ConvertCommand final : public Command {
  public:
    ConvertCommand()
        : Command("convert", "Turn one picture file into another kind, as OUT's extension says") {}

    void Declare(CLI::App& app) override {
        AddPath(app, "IN", in_, "A .gpf, .gpf2, .bmp, .gif, .jpg or .png file")->required();
        AddPath(app, "OUT", out_, "A .bmp, .png, .gpf or .gpf2 file")->required();
        app.add_option("--type", type_,
                       "Type code of a GPF: " + WrittenTypes(0) + ", or compressed " +
                           WrittenTypes(kCompressedBit) + " (default " + type_ + ")")
            ->option_text("HH");
        app.add_option("--number", number_, "Picture number in the header of a GPF (default 0)")
            ->option_text("N");
        options_.DeclareConverter(app);
        options_.DeclareOverwrite(app);
    }

    std::string UsageError() const override {
        if (!CanBeWritten(LoweredExtension(out_))) return "OUT must end in .bmp, .png, .gpf or .gpf2";
        if (!ParseType(type_))
            return "--type: \"" + type_ + "\" is no type code that can be written: " + WrittenTypes(0) +
                   ", " + WrittenTypes(kCompressedBit);
        if (ParsePictureNumber(number_).value_or(kMostNumber + 1) > kMostNumber)
            return "--number: \"" + number_ + "\" is no number of 0 to " + std::to_string(kMostNumber);
        return {};
    }

    int Run(Front& front) override {
        CommandSession run(front, options_);
        if (const Status ready = run.NeedWorkFiles(); !ready) return front.Fail(ready.error());
        if (const Status loaded = Load(run); !loaded) return front.Fail(loaded.error());
        if (!run.ports.progress.At(50)) return front.Fail(StoppedError());
        run.session.pictureNumber = *ParsePictureNumber(number_);
        Outcome saved = Save(run);
        for (Problem& problem : saved.problems) problem.error = WithPath(problem.error, out_);
        return front.Report(saved);
    }

  private:
    Status Load(CommandSession& run) const {
        if (IsGpf(LoweredExtension(in_))) return LoadGpfWhole(run.session, in_);
        return PicturesLoader(run.session, run.ports, in_);
    }

    Outcome Save(CommandSession& run) const {
        const std::string extension = LoweredExtension(out_);
        const bool hasAlpha = run.session.picture.RasterHasAlpha;
        if (extension == ".bmp") return SaveBmpTo(run.session, run.ports, out_, hasAlpha, in_);
        if (extension == ".png") return SavePngTo(run.session, run.ports, out_, hasAlpha, in_);
        return SaveGpfTo(run.session, run.ports, out_, extension == GpfExtension(true), *ParseType(type_),
                         in_);
    }

    std::filesystem::path in_;
    std::filesystem::path out_;
    std::string type_ = "8A";
    std::string number_ = "0";  // read as decimal here: "010" is ten
    AnswerOptions options_;
};

}  // namespace

std::unique_ptr<Command> MakeConvertCommand() {
    return std::make_unique<ConvertCommand>();
}

}  // namespace pictavo::cli
