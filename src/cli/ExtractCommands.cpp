#include <algorithm>
#include <map>
#include <set>

#include "cli/Command.h"
#include "cli/CommandSession.h"
#include "cli/PathOption.h"
#include "cli/Terminal.h"
#include "session/ExtractEmbedded.h"
#include "session/ExtractFromGpn.h"
#include "session/ExtractFromPatch.h"

namespace pictavo::cli {

namespace {

/// The part that the three have in common: a source, a folder, and how the files are taken out.
class ExtractCommand : public Command {
  public:
    using Command::Command;

    int Run(Front& front) override {
        CatchInterrupts();
        CommandSession run(front, options_);
        const Outcome outcome = Extract(run, source_, folder_);
        const int status = front.Report(outcome);
        if (status == kDone && outcome.written == 0) TellNothingFound(front, source_);
        return outcome.end == Outcome::End::Done ? std::max(front.Print(Result(outcome)), status) : status;
    }

  protected:
    virtual Outcome Extract(CommandSession& run, const std::filesystem::path& source,
                            const std::filesystem::path& folder) const = 0;

    /// What goes to standard output.
    virtual std::string Result(const Outcome&) const { return {}; }

    /// Says on standard error that there was nothing to write, where the result does not.
    virtual void TellNothingFound(Front&, const std::filesystem::path&) const {}

    void DeclareSource(CLI::App& app, const std::string& name, const std::string& description) {
        AddPath(app, name, source_, description)->required();
    }

    void DeclareFolder(CLI::App& app) {
        AddPath(app, "-o", folder_, "The folder for the files; created when missing")
            ->required()
            ->option_text("DIR");
        options_.DeclareOverwrite(app);
    }

    void DeclareNames(CLI::App& app) { options_.DeclareNames(app); }

  private:
    std::filesystem::path source_;
    std::filesystem::path folder_;
    AnswerOptions options_;
};

class CarveCommand final : public ExtractCommand {
  public:
    CarveCommand() : ExtractCommand("carve", "Take GIF, PNG or XML files out of any file, such as a flash") {}

    void Declare(CLI::App& app) override {
        app.add_option("KIND", kind_, "What to look for: gif, png or xml")
            ->required()
            ->check(CLI::IsMember(std::set<std::string>{"gif", "png", "xml"}))
            ->option_text("gif|png|xml");
        DeclareSource(app, "FILE", "The file to look into");
        DeclareFolder(app);
    }

  private:
    Outcome Extract(CommandSession& run, const std::filesystem::path& source,
                    const std::filesystem::path& folder) const override {
        static const std::map<std::string, EmbeddedKind> kKinds{
            {"gif", kEmbeddedGif}, {"png", kEmbeddedPng}, {"xml", kEmbeddedXml}};
        return ExtractEmbeddedTo(run.session, run.ports, kKinds.at(kind_), source, folder);
    }

    std::string Result(const Outcome& outcome) const override {
        return "found " + std::to_string(outcome.written) + "\n";
    }

    std::string kind_;
};

class ExtractGpnCommand final : public ExtractCommand {
  public:
    ExtractGpnCommand() : ExtractCommand("extract-gpn", "Take the GPF files out of a GPN container") {}

    void Declare(CLI::App& app) override {
        DeclareSource(app, "FILE.gpn", "The GPN container");
        DeclareFolder(app);
        DeclareNames(app);
    }

  private:
    Outcome Extract(CommandSession& run, const std::filesystem::path& source,
                    const std::filesystem::path& folder) const override {
        return ExtractFromGpnTo(run.session, run.ports, source, folder);
    }
};

class ExtractPatchCommand final : public ExtractCommand {
  public:
    ExtractPatchCommand()
        : ExtractCommand("extract-patch", "Take the pictures and PNG files out of a ViKlay patch") {}

    void Declare(CLI::App& app) override {
        DeclareSource(app, "PATCH.vkp", "The patch");
        DeclareFolder(app);
        DeclareNames(app);
    }

  private:
    Outcome Extract(CommandSession& run, const std::filesystem::path& source,
                    const std::filesystem::path& folder) const override {
        return ExtractFromPatchTo(run.session, run.ports, source, folder);
    }

    /// Told, but no failure: a patch need not hold a picture.
    void TellNothingFound(Front& front, const std::filesystem::path& source) const override {
        front.Complain(Problem{
            {ErrorKind::UnknownFile, source, std::nullopt, "holds no section of a picture or PNG file"},
            std::nullopt});
    }
};

}  // namespace

std::unique_ptr<Command> MakeCarveCommand() {
    return std::make_unique<CarveCommand>();
}

std::unique_ptr<Command> MakeExtractGpnCommand() {
    return std::make_unique<ExtractGpnCommand>();
}

std::unique_ptr<Command> MakeExtractPatchCommand() {
    return std::make_unique<ExtractPatchCommand>();
}

}  // namespace pictavo::cli
