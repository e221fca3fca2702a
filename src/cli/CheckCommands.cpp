#include "cli/Command.h"
#include "cli/CommandSession.h"
#include "cli/PathOption.h"
#include "cli/Text.h"
#include "core/BasicCalculations_Tarsk.h"
#include "patch/PatchReader.h"
#include "session/Targets.h"

namespace pictavo::cli {

namespace {

/// A patch and a flash, both open.
struct Pair {
    std::unique_ptr<FileSource> patch;
    std::unique_ptr<FileSource> flash;
};

Result<Pair> OpenPair(const std::filesystem::path& patch, const std::filesystem::path& flash) {
    Pair pair;
    PICTAVO_TRY(pair.patch, FileSource::Open(patch));
    PICTAVO_TRY(pair.flash, FileSource::Open(flash));
    return pair;
}

std::string OffsetText(std::uint64_t offset) {
    return HexText(offset, 8);
}

std::string AsLine(const PatchMismatch& mismatch) {
    return OffsetText(mismatch.offset) + ": expected " + BytesToHex(mismatch.expected, false) + " found " +
           BytesToHex(mismatch.found, false) + "\n";
}

std::string AsJson(const PatchMismatch& mismatch) {
    const Json json = {{"line", mismatch.line},
                       {"offset", OffsetText(mismatch.offset)},
                       {"expected", BytesToHex(mismatch.expected, false)},
                       {"found", BytesToHex(mismatch.found, false)}};
    return json.dump(2);
}

/// Standard output, some of it at a time, so that any number of mismatches takes no memory.
class Printer {
  public:
    explicit Printer(Front& front) : front_(front) {}

    void Add(const std::string& text) {
        text_ += text;
        if (text_.size() >= kPiece) Print();
    }

    /// The exit status of the printing.
    int Finish() {
        Print();
        return status_;
    }

  private:
    static constexpr std::size_t kPiece = std::size_t{64} << 10;

    /// Once it failed nothing is tried again.
    void Print() {
        if (status_ == kDone) status_ = front_.Print(text_);
        text_.clear();
    }

    Front& front_;
    std::string text_;
    int status_ = kDone;
};

Status PrintLines(const Pair& pair, Printer& printer) {
    const auto print = [&](const PatchMismatch& mismatch) { printer.Add(AsLine(mismatch)); };
    PICTAVO_TRY([[maybe_unused]] const PatchCheck check, CheckPatch(*pair.patch, *pair.flash, print));
    return {};
}

Status PrintJson(const Pair& pair, Printer& printer) {
    bool isFirst = true;
    const auto print = [&](const PatchMismatch& mismatch) {
        printer.Add((isFirst ? "[\n  " : ",\n  ") + Indented(AsJson(mismatch)));
        isFirst = false;
    };
    PICTAVO_TRY([[maybe_unused]] const PatchCheck check, CheckPatch(*pair.patch, *pair.flash, print));
    printer.Add(isFirst ? "[]\n" : "\n]\n");
    return {};
}

/// Counts only. A patch that is none is refused before anything is printed.
Result<PatchCheck> Count(const Pair& pair) {
    return CheckPatch(*pair.patch, *pair.flash, [](const PatchMismatch&) {});
}

std::string CountText(const PatchCheck& check) {
    return std::to_string(check.mismatches) + " of " + std::to_string(check.lines) + " lines differ";
}

class CheckCommand final : public Command {
  public:
    CheckCommand() : Command("check", "Tell whether a patch's old bytes stand in a fullflash") {}

    void Declare(CLI::App& app) override {
        AddPath(app, "PATCH", patch_, "The patch file")->required();
        AddPath(app, "FLASH", flash_, "The fullflash file")->required();
        app.add_flag("--json", json_, "Print a JSON array");
    }

    int Run(Front& front) override {
        const auto pair = OpenPair(patch_, flash_);
        if (!pair) return front.Fail(pair.error());
        const auto check = Count(*pair);
        if (!check) return front.Fail(check.error());
        if (check->mismatches == 0) return front.Print(json_ ? "[]\n" : "");
        const int printed = List(front, *pair);
        if (printed != kDone) return printed;
        return front.Fail({ErrorKind::Malformed, patch_, std::nullopt, CountText(*check)});
    }

  private:
    int List(Front& front, const Pair& pair) const {
        Printer printer(front);
        const Status listed = json_ ? PrintJson(pair, printer) : PrintLines(pair, printer);
        const int printed = printer.Finish();
        return listed ? printed : front.Fail(listed.error());
    }

    std::filesystem::path patch_;
    std::filesystem::path flash_;
    bool json_ = false;
};

class ApplyCommand final : public Command {
  public:
    ApplyCommand() : Command("apply", "Write a copy of a fullflash with a patch applied") {}

    void Declare(CLI::App& app) override {
        AddPath(app, "PATCH", patch_, "The patch file")->required();
        AddPath(app, "FLASH", flash_, "The fullflash file; it is not changed")->required();
        AddPath(app, "-o", copy_, "The copy to write")->required()->option_text("COPY");
        app.add_flag("--force", force_, "Apply also where the old bytes do not stand in the flash");
        options_.DeclareOverwrite(app);
    }

    int Run(Front& front) override {
        const auto pair = OpenPair(patch_, flash_);
        if (!pair) return front.Fail(pair.error());
        const Status fits = Check(*pair);
        return fits ? Write(front, *pair) : front.Fail(fits.error());
    }

  private:
    /// A patch that is none is refused also with --force.
    Status Check(const Pair& pair) const {
        std::optional<PatchMismatch> first;
        const auto keepFirst = [&](const PatchMismatch& mismatch) {
            if (!first) first = mismatch;
        };
        PICTAVO_TRY(const PatchCheck check, CheckPatch(*pair.patch, *pair.flash, keepFirst));
        if (!first || force_) return {};
        return Fail(ErrorKind::Malformed, flash_, first->offset,
                    "the old bytes of " + std::to_string(check.mismatches) + " patch lines (first: line " +
                        std::to_string(first->line) + ") do not stand in the flash; \"check\" lists them");
    }

    int Write(Front& front, const Pair& pair) const {
        CommandSession run(front, options_);
        const auto mode = AskTarget(run.session, run.ports, copy_, Inputs{flash_, patch_});
        if (!mode) return front.Fail(mode.error());
        if (!*mode) return front.Report(Outcome::Cancelled());
        const Status applied = ApplyPatch(*pair.patch, *pair.flash, copy_, **mode == CommitMode::Replace);
        return applied ? kDone : front.Fail(applied.error());
    }

    std::filesystem::path patch_;
    std::filesystem::path flash_;
    std::filesystem::path copy_;
    bool force_ = false;
    AnswerOptions options_;
};

}  // namespace

std::unique_ptr<Command> MakeCheckCommand() {
    return std::make_unique<CheckCommand>();
}

std::unique_ptr<Command> MakeApplyCommand() {
    return std::make_unique<ApplyCommand>();
}

}  // namespace pictavo::cli
