#include "cli/Command.h"
#include "cli/CommandSession.h"
#include "cli/NumberList.h"
#include "cli/PathOption.h"
#include "session/SaveAllPictures.h"

namespace pictavo::cli {

namespace {

const std::map<std::string, BatchFormat> kFormats = {{"bmp", BatchFormat::Bmp},
                                                     {"gpf", BatchFormat::Gpf},
                                                     {"gpf2", BatchFormat::Gpf2},
                                                     {"png", BatchFormat::Png}};

/// More missing numbers than these are told in one line.
constexpr std::size_t kMostLines = 10;

class ExportCommand final : public Command {
  public:
    ExportCommand() : Command("export", "Save pictures of a fullflash as files, named by their numbers") {}

    void Declare(CLI::App& app) override {
        AddPath(app, "FLASH", flash_, "The fullflash file")->required();
        AddPath(app, "-o", folder_, "The folder for the files; created when missing")
            ->required()
            ->option_text("DIR");
        app.add_option("--format", format_, "bmp, gpf, gpf2 or png")
            ->required()
            ->check(CLI::IsMember(kFormats))
            ->option_text("FORMAT");
        app.add_option("--pictures", pictures_, "Only these pictures: numbers and ranges, such as 0,5,7-20")
            ->option_text("LIST");
        options_.DeclareNames(app);
        options_.DeclareConverter(app);
        options_.DeclareOverwrite(app);
    }

    std::string UsageError() const override {
        if (pictures_.empty() || ParseNumberList(pictures_)) return {};
        return "--pictures: \"" + pictures_ + "\" is no list of numbers and ranges";
    }

    int Run(Front& front) override {
        CommandSession run(front, options_);
        if (const Status opened = run.OpenFlashWithTable(flash_); !opened) return front.Fail(opened.error());
        if (const Status ready = run.NeedWorkFiles(); !ready) return front.Fail(ready.error());
        SaveRequest request{folder_, kFormats.at(format_), std::nullopt};
        if (!pictures_.empty()) request.numbers = ParseNumberList(pictures_);
        Outcome outcome = SavePictures(run.session, run.ports, request);
        NoteMissing(run.session, request, outcome);
        const int status = front.Report(outcome);
        if (outcome.end == Outcome::End::Refused) return status;
        return std::max(front.Print("exported " + std::to_string(outcome.written) + "\n"), status);
    }

  private:
    void NoteMissing(const Session& session, const SaveRequest& request, Outcome& outcome) const {
        if (!request.numbers) return;
        const auto rows = static_cast<int>(session.rows.size());
        const std::set<int> missing(request.numbers->lower_bound(rows), request.numbers->end());
        if (missing.size() > kMostLines) return NoteManyMissing(missing, outcome);
        const Error error{ErrorKind::NoSuchPicture, flash_, std::nullopt,
                          "the flash has no picture of this number"};
        for (const int number : missing) outcome.problems.push_back({error, number});
    }

    void NoteManyMissing(const std::set<int>& missing, Outcome& outcome) const {
        const std::string text = "the flash has no pictures of " + std::to_string(missing.size()) +
                                 " of the numbers, of which the first is " + std::to_string(*missing.begin());
        outcome.problems.push_back({{ErrorKind::NoSuchPicture, flash_, std::nullopt, text}, std::nullopt});
    }

    std::filesystem::path flash_;
    std::filesystem::path folder_;
    std::string format_;
    std::string pictures_;
    AnswerOptions options_;
};

}  // namespace

std::unique_ptr<Command> MakeExportCommand() {
    return std::make_unique<ExportCommand>();
}

}  // namespace pictavo::cli
