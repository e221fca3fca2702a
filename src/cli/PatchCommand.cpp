#include <algorithm>

#include "cli/Command.h"
#include "cli/CommandSession.h"
#include "cli/NumberList.h"
#include "cli/PathOption.h"
#include "codec/PictureType.h"
#include "core/BasicCalculations_Tarsk.h"
#include "core/PathText.h"
#include "core/SystemNames.h"
#include "session/ChangePng.h"
#include "session/Names.h"
#include "session/ReplacePictures.h"
#include "session/Report.h"
#include "session/SavePatch.h"
#include "session/Targets.h"

namespace pictavo::cli {

namespace {

/// What "--picture N=FILE[@BITS]" says.
struct Replacement {
    int number = 0;
    std::string file;
    std::optional<std::uint8_t> type;  ///< as BITS names it
};

/// The compressed type of the bit depth that the text names; nothing when it names none that can be picked,
/// and when it is more than the number: "08".
std::optional<std::uint8_t> ParseBits(const std::string& text) {
    const auto bits = ParsePictureNumber(text);
    if (!bits || text != std::to_string(*bits)) return std::nullopt;
    return CompressedTypeOf(*bits);
}

/// N ends at the first "="; what follows the last "@" is a bit depth only if it reads as one, else it belongs
/// to the file's name.
std::optional<Replacement> ParseReplacement(const std::string& text) {
    const std::size_t equals = text.find('=');
    const auto number = ParsePictureNumber(std::string_view(text).substr(0, equals));
    if (equals == std::string::npos || !number) return std::nullopt;
    Replacement replacement{*number, text.substr(equals + 1), std::nullopt};
    const std::size_t at = replacement.file.rfind('@');
    if (at != std::string::npos) replacement.type = ParseBits(replacement.file.substr(at + 1));
    if (replacement.type) replacement.file.resize(at);
    return replacement.file.empty() ? std::nullopt : std::optional(replacement);
}

/// Of a name that ends in a number of bits that there is not: such an end belongs to the name.
std::string BitsHint(const std::string& file) {
    const std::size_t at = file.rfind('@');
    if (at == std::string::npos || !ParsePictureNumber(std::string_view(file).substr(at + 1))) return "";
    return " (" + file.substr(at) + " is part of the name; bits are @1, @8, @16 or @24)";
}

std::string SectionLine(const PatchSection& section) {
    const std::string number = PictureNumberText(section.row.record.number);
    const std::string place = HexText(section.offset, 7);
    const char* how = section.placement == Placement::Moved ? "moved" : "in place";
    return "picture " + number + ": " + std::to_string(section.row.picture->length) + " bytes at " + place +
           ", " + how + "\n";
}

class PatchCommand final : public Command {
  public:
    PatchCommand() : Command("patch", "Replace pictures and write the ViKlay patch that does it") {}

    void Declare(CLI::App& app) override {
        AddPath(app, "FLASH", flash_, "The fullflash file")->required();
        AddPath(app, "-o", patch_, "The patch file to write")->required()->option_text("PATCH.vkp");
        auto* pictures =
            app.add_option("--picture", pictures_,
                           "Replace picture N by FILE, in BITS bits a pixel; may be given several times")
                ->allow_extra_args(false)
                ->option_text("N=FILE[@BITS] ...");
        AddPath(app, "--folder", folder_,
                "Replace every picture that DIR holds a file for, named by its number")
            ->excludes(pictures)
            ->option_text("DIR");
        app.add_option("--bits", bits_, "Bits a pixel where no @BITS says it: 1, 8, 16 or 24 (default 16)")
            ->option_text("B");
        app.add_option("--png", pngs_,
                       "Replace the PNG file in the flash that FILE is named by the offset of "
                       "(0012AB40.png); may be given several times")
            ->allow_extra_args(false)
            ->option_text("FILE ...");
        options_.DeclareCompress(app);
        options_.DeclareNames(app);
        options_.DeclareConverter(app);
        options_.DeclareOverwrite(app);
    }

    std::string UsageError() const override {
        for (const std::string& text : pictures_)
            if (!ParseReplacement(text)) return "--picture: \"" + text + "\" is not N=FILE or N=FILE@BITS";
        if (!ParseBits(bits_)) return "--bits: \"" + bits_ + "\" is not 1, 8, 16 or 24";
        return {};
    }

    int Run(Front& front) override {
        CommandSession run(front, options_);
        if (const Status opened = run.OpenFlashWithTable(flash_); !opened) return front.Fail(opened.error());
        if (const Status target = CheckIsNoInput(run.session, patch_, SourceFiles()); !target)
            return front.Fail(target.error());
        if (const Status ready = run.NeedWorkFiles(); !ready) return front.Fail(ready.error());
        Outcome replaced = ReplaceAll(run);
        if (replaced.end != Outcome::End::Done || WasStopped(replaced)) return front.Report(replaced);
        if (HeldNothing(replaced)) front.Complain(Problem{NoFileFits(run.session), std::nullopt});
        std::string pngLines;
        if (const Outcome changed = ChangePngs(run, pngLines); !changed.IsClean())
            return front.Report(After(replaced, changed));
        PatchOutcome saved = SavePatchTo(run.session, run.ports, patch_);
        const int status = front.Report(After(replaced, std::move(saved.outcome)));
        return std::max(front.Print(Lines(saved.sections) + pngLines), status);
    }

  private:
    /// The pictures' and PNG files. Of the folder any that is named as a picture may be one.
    Inputs SourceFiles() const {
        Inputs inputs;
        for (const std::string& png : pngs_) inputs.push_back(PathOf(png));
        for (const std::string& text : pictures_) inputs.push_back(PathOf(ParseReplacement(text)->file));
        const auto names = system_file::FileNamesIn(folder_);
        if (!names) return inputs;
        for (const std::filesystem::path& name : *names)
            if (HasPictureExtension(name)) inputs.push_back(folder_ / name);
        return inputs;
    }

    /// Of pictures that could not be taken is told whatever comes later.
    static Outcome After(const Outcome& replaced, Outcome later) {
        later.problems.insert(later.problems.begin(), replaced.problems.begin(), replaced.problems.end());
        return later;
    }

    Outcome ReplaceAll(CommandSession& run) const {
        if (!folder_.empty()) return ReplaceFromFolder(run.session, run.ports, folder_, *ParseBits(bits_));
        return ReplaceOneByOne(run);
    }

    /// One after the other, up to the first that cannot be taken.
    Outcome ChangePngs(CommandSession& run, std::string& lines) const {
        for (const std::string& path : pngs_) {
            const ChangedPng changed = ChangePngFrom(run.session, run.ports, PathOf(path));
            if (!changed.outcome.IsClean()) return changed.outcome;
            lines += "png " + changed.name + ": " + std::to_string(changed.length) + " bytes\n";
        }
        return {};
    }

    Outcome ReplaceOneByOne(CommandSession& run) const {
        Outcome whole;
        for (std::size_t i = 0; i < pictures_.size(); ++i) {
            Outcome outcome = ReplaceOne(run, *ParseReplacement(pictures_[i]));
            if (outcome.end != Outcome::End::Done) return outcome;
            if (!GoOn(run.ports, i + 1, pictures_.size(), whole)) break;
        }
        return whole;
    }

    Outcome ReplaceOne(CommandSession& run, const Replacement& replacement) const {
        const auto index = static_cast<std::size_t>(replacement.number);
        if (index >= run.session.rows.size()) return Outcome::Refused(NoSuchPicture(), replacement.number);
        Outcome outcome = ReplaceFrom(run.session, run.ports, index, PathOf(replacement.file),
                                      replacement.type.value_or(*ParseBits(bits_)));
        for (Problem& problem : outcome.problems) {
            problem.number = replacement.number;
            if (problem.error.kind == ErrorKind::FileMissing)
                problem.error.detail += BitsHint(replacement.file);
        }
        return outcome;
    }

    bool HeldNothing(const Outcome& replaced) const {
        return !folder_.empty() && replaced.written == 0 && replaced.problems.empty();
    }

    /// Told, but no failure: the patch that holds its banner alone is written.
    Error NoFileFits(const Session& session) const {
        const std::string name = NumberName(session.settings, 0);
        return {
            ErrorKind::SourceMissing, folder_, std::nullopt,
            "holds no file named by the number of a picture, such as " + name + ".bmp or " + name + ".gpf"};
    }

    Error NoSuchPicture() const {
        return {ErrorKind::NoSuchPicture, flash_, std::nullopt, "the flash has no picture of this number"};
    }

    static std::string Lines(const std::vector<PatchSection>& sections) {
        std::string lines;
        for (const PatchSection& section : sections)
            if (section.IsWritten()) lines += SectionLine(section);
        return lines;
    }

    std::filesystem::path flash_;
    std::filesystem::path patch_;
    std::vector<std::string> pictures_;
    std::vector<std::string> pngs_;
    std::filesystem::path folder_;
    std::string bits_ = "16";
    AnswerOptions options_;
};

}  // namespace

std::unique_ptr<Command> MakePatchCommand() {
    return std::make_unique<PatchCommand>();
}

}  // namespace pictavo::cli
