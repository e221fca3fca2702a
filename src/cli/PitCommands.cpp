#include "session/PitCommands.h"

#include "cli/Command.h"
#include "cli/CommandSession.h"
#include "cli/PathOption.h"

namespace pictavo::cli {

namespace {

class BackupPitCommand final : public Command {
  public:
    BackupPitCommand()
        : Command("backup-pit", "Save the picture table and the block of pictures as two files") {}

    void Declare(CLI::App& app) override {
        AddPath(app, "FLASH", flash_, "The fullflash file")->required();
        AddPath(app, "-o", folder_, "The folder for the two files; created when missing")
            ->required()
            ->option_text("DIR");
        options_.DeclareOverwrite(app);
    }

    int Run(Front& front) override {
        CommandSession run(front, options_);
        if (const Status opened = run.OpenFlashWithTable(flash_); !opened) return front.Fail(opened.error());
        return front.Report(BackupPitTo(run.session, run.ports, folder_));
    }

  private:
    std::filesystem::path flash_;
    std::filesystem::path folder_;
    AnswerOptions options_;
};

class RebuildPitCommand final : public Command {
  public:
    RebuildPitCommand()
        : Command("rebuild-pit", "Build a new table and a densely packed block from GPF files") {}

    void Declare(CLI::App& app) override {
        AddPath(app, "FLASH", flash_, "The fullflash file")->required();
        AddPath(app, "--from", from_, "The folder of GPF files, named by their numbers")
            ->required()
            ->option_text("DIR");
        AddPath(app, "-o", folder_, "The folder for the two files; created when missing")
            ->required()
            ->option_text("DIR");
        options_.DeclareNames(app);
        options_.DeclareOverwrite(app);
    }

    int Run(Front& front) override {
        CommandSession run(front, options_);
        if (const Status opened = run.OpenFlashWithTable(flash_); !opened) return front.Fail(opened.error());
        return front.Report(RebuildPitFrom(run.session, run.ports, from_, folder_));
    }

  private:
    std::filesystem::path flash_;
    std::filesystem::path from_;
    std::filesystem::path folder_;
    AnswerOptions options_;
};

}  // namespace

std::unique_ptr<Command> MakeBackupPitCommand() {
    return std::make_unique<BackupPitCommand>();
}

std::unique_ptr<Command> MakeRebuildPitCommand() {
    return std::make_unique<RebuildPitCommand>();
}

}  // namespace pictavo::cli
