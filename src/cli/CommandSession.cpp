#include "cli/CommandSession.h"

#include "session/Messages.h"
#include "session/OpenFullflash.h"
#include "shell/Folders.h"
#include "shell/ProgramFolder.h"

namespace pictavo::cli {

namespace {

AppSettings SettingsFor(Front& front, const AnswerOptions& options) {
    AppSettings settings;
    settings.nConvert = PathText(ConverterProgram(front.programFolder));
    const std::filesystem::path file = front.programFolder / kSettingsFileName;
    if (auto loaded = LoadAppSettings(file, settings))
        settings = std::move(*loaded);
    else
        front.Complain(loaded.error());
    settings.HEXFilename |= options.hexNames;
    settings.ZeroFilename |= options.zeroNames;
    if (!options.converter.empty()) settings.nConvert = options.converter;
    return settings;
}

}  // namespace

void AnswerOptions::DeclareNames(CLI::App& app) {
    app.add_flag("--hex-names", hexNames, "File names are picture numbers in hexadecimal");
    app.add_flag("--zero-names", zeroNames,
                 "File names are filled up with zeros: 0007, or 007 in hexadecimal");
}

void AnswerOptions::DeclareOverwrite(CLI::App& app) {
    app.add_flag("--overwrite", overwrite,
                 "Replace files that exist already; without it they are left alone");
}

void AnswerOptions::DeclareCompress(CLI::App& app) {
    app.add_flag("--compress", compress, "Store the pictures compressed");
}

void AnswerOptions::DeclareConverter(CLI::App& app) {
    app.add_option("--converter", converter, "The program that converts from and to PNG")
        ->option_text("PATH");
}

CommandSession::CommandSession(Front& front, const AnswerOptions& options)
    : ports{front.prompts, progress_, processes_, pictures_},
      progress_(front.err),
      pictures_(front.programFolder) {
    session.settings = SettingsFor(front, options);
    front.prompts.overwrite = options.overwrite;
    front.prompts.compress = options.compress;
}

Status CommandSession::Open(const std::filesystem::path& flash) {
    return OpenFullflash(session, flash, progress_);
}

Status CommandSession::OpenFlashWithTable(const std::filesystem::path& flash) {
    CatchInterrupts();
    PICTAVO_TRY(Open(flash));
    return CheckIsFullflash();
}

Status CommandSession::CheckIsFullflash() const {
    return CheckHoldsTable(session.flash);
}

Status CommandSession::NeedWorkFiles() {
    CatchInterrupts();
    PICTAVO_TRY(RunFolder folder, RunFolder::Create());
    session.workFiles.folder = folder.Path();
    folder_.emplace(std::move(folder));
    return {};
}

}  // namespace pictavo::cli
