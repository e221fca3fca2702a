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
    std::vector<PatchEntry> entries;
    std::unique_ptr<FileSource> flash;
    std::vector<PatchMismatch> mismatches;
};

Result<Pair> OpenPair(const std::filesystem::path& patch, const std::filesystem::path& flash) {
    Pair pair;
    PICTAVO_TRY(const auto source, FileSource::Open(patch));
    PICTAVO_TRY(pair.entries, ReadPatch(*source));
    PICTAVO_TRY(pair.flash, FileSource::Open(flash));
    PICTAVO_TRY(pair.mismatches, CheckPatch(pair.entries, *pair.flash));
    return pair;
}

std::string OffsetText(std::uint64_t offset) {
    return HexText(offset, 8);
}

std::string AsLines(const std::vector<PatchMismatch>& mismatches) {
    std::string lines;
    for (const PatchMismatch& mismatch : mismatches)
        lines += OffsetText(mismatch.offset) + ": expected " + BytesToHex(mismatch.expected, false) +
                 " found " + BytesToHex(mismatch.found, false) + "\n";
    return lines;
}

std::string AsJson(const std::vector<PatchMismatch>& mismatches) {
    Json list = Json::array();
    for (const PatchMismatch& mismatch : mismatches)
        list.push_back({{"line", mismatch.line},
                        {"offset", OffsetText(mismatch.offset)},
                        {"expected", BytesToHex(mismatch.expected, false)},
                        {"found", BytesToHex(mismatch.found, false)}});
    return JsonText(list.dump(2));
}

std::string CountText(const Pair& pair) {
    return std::to_string(pair.mismatches.size()) + " of " + std::to_string(pair.entries.size()) +
           " lines differ";
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
        const int printed = front.Print(json_ ? AsJson(pair->mismatches) : AsLines(pair->mismatches));
        if (pair->mismatches.empty()) return printed;
        return front.Fail({ErrorKind::Malformed, patch_, std::nullopt, CountText(*pair)});
    }

  private:
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
        if (!pair->mismatches.empty() && !force_) return RefuseMismatch(front, pair->mismatches);
        return Write(front, *pair);
    }

  private:
    int RefuseMismatch(Front& front, const std::vector<PatchMismatch>& mismatches) const {
        const PatchMismatch& first = mismatches.front();
        return front.Fail({ErrorKind::Malformed, flash_, first.offset,
                           "the old bytes of " + std::to_string(mismatches.size()) +
                               " patch lines (first: line " + std::to_string(first.line) +
                               ") do not stand in the flash; \"check\" lists them"});
    }

    int Write(Front& front, const Pair& pair) const {
        CommandSession run(front, options_);
        const auto mode = AskTarget(run.session, run.ports, copy_, Inputs{flash_, patch_});
        if (!mode) return front.Fail(mode.error());
        if (!*mode) return front.Report(Outcome::Cancelled());
        const Status applied = ApplyPatch(pair.entries, *pair.flash, copy_, **mode == CommitMode::Replace);
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
