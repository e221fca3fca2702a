#include <QCoreApplication>
#include <algorithm>
#include <cstdio>
#include <iostream>
#include <new>

#include "cli/Command.h"
#include "cli/Examples.h"
#include "cli/Terminal.h"
#include "core/ConsoleText.h"
#include "core/FailedWrites.h"
#include "core/ProgramArguments.h"
#include "core/Version.h"
#include "shell/ProgramFolder.h"

namespace pictavo::cli {

namespace {

std::vector<std::unique_ptr<Command>> MakeCommands() {
    std::vector<std::unique_ptr<Command>> commands;
    for (auto* make :
         {MakeInfoCommand, MakeListCommand, MakeExportCommand, MakeConvertCommand, MakePatchCommand,
          MakeCheckCommand, MakeApplyCommand, MakeBackupPitCommand, MakeRebuildPitCommand,
          MakeExtractPatchCommand, MakeExtractGpnCommand, MakeCarveCommand, MakePngInfoCommand})
        commands.push_back(make());
    return commands;
}

constexpr const char* kDescription =
    "Looks into the firmware of Siemens mobile phones (fullflash dumps of SGold and New-SGold), saves its "
    "pictures, and "
    "writes the patches that replace them. The fullflash itself is never written.";

constexpr const char* kFooter =
    "Exit status: 0 done; 1 refused or failed, with the reasons on standard error; 2 wrong usage.\n"
    "Example: pictavo-cli patch phone.bin -o new.vkp --picture 12=logo.png@16 --compress";

/// Flags take no text.
bool TakesText(const CLI::Option& option) {
    return option.get_items_expected_max() > 0;
}

std::string EmptyTextError(const std::string& text) {
    return text.empty() ? "an empty text is no value" : "";
}

/// As the usage line names it; empty for what can be left out.
std::string UsageOf(const CLI::Option& option) {
    if (option.get_positional()) return " " + option.get_name(true);
    return option.get_required() ? " " + option.get_name() + " " + option.get_option_text() : "";
}

std::string UsageOf(const CLI::App& sub) {
    std::string arguments;
    for (const CLI::Option* option : sub.get_options()) arguments += UsageOf(*option);
    return "Usage: pictavo-cli " + sub.get_name() + arguments + " [OPTIONS]";
}

/// The last line of what standard error gets on wrong usage.
std::string UsageLine(const CLI::App* sub) {
    if (sub == nullptr) return "Usage: pictavo-cli COMMAND ARGUMENTS [OPTIONS]; see pictavo-cli --help";
    return UsageOf(*sub) + "; see pictavo-cli " + sub->get_name() + " --help";
}

/// The help of a command names its required options where an error does.
class HelpOfCommand final : public CLI::Formatter {
  public:
    std::string make_usage(const CLI::App* sub, std::string) const override { return UsageOf(*sub) + "\n"; }
};

CLI::App* DeclareCommand(CLI::App& app, Command& command) {
    CLI::App* sub = app.add_subcommand(command.Name(), command.Description());
    command.Declare(*sub);
    sub->footer("Example: " + ExampleOf(command.Name()));
    sub->formatter(std::make_shared<HelpOfCommand>());
    for (CLI::Option* option : sub->get_options())
        if (TakesText(*option)) option->check(EmptyTextError);
    return sub;
}

int WrongUsage(const CLI::App* sub, const std::string& message) {
    return Front{std::cout, std::cerr, {}, {}}.WrongUsage(message, UsageLine(sub));
}

const CLI::App* ParsedCommand(const CLI::App& app) {
    const auto parsed = app.get_subcommands();
    return parsed.empty() ? nullptr : parsed.front();
}

int RunCommand(Command& command, const CLI::App* sub) {
    if (const std::string error = command.UsageError(); !error.empty()) return WrongUsage(sub, error);
    Front front{std::cout, std::cerr, ProgramFolder(), {}};
    return command.Run(front);
}

using Commands = std::vector<std::unique_ptr<Command>>;

std::string Joined(const std::vector<std::string>& words, const char* separator) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : separator) + word;
    return text;
}

/// The parser tells what is left over from its end.
std::string MessageOf(const CLI::App& app, const CLI::ParseError& error) {
    if (dynamic_cast<const CLI::ExtrasError*>(&error) == nullptr) return error.what();
    return "not expected: " + Joined(app.remaining(true), " ");
}

/// "help" and "help COMMAND" are what others call --help.
void TakeHelpAsOption(std::vector<std::string>& arguments) {
    if (arguments.empty() || arguments.front() != "help") return;
    arguments.erase(arguments.begin());
    arguments.emplace_back("--help");
}

/// A first word that is no command; empty when there is none.
std::string UnknownCommand(const Commands& commands, const std::vector<std::string>& arguments) {
    if (arguments.empty() || arguments.front().starts_with('-')) return {};
    const bool isKnown = std::any_of(commands.begin(), commands.end(), [&](const auto& command) {
        return command->Name() == arguments.front();
    });
    return isKnown ? "" : arguments.front();
}

std::string UnknownCommandText(const Commands& commands, const std::string& word) {
    std::vector<std::string> names;
    for (const auto& command : commands) names.push_back(command->Name());
    return "\"" + word + "\" is no command; the commands are " + Joined(names, ", ");
}

/// Prints what --help or --version asked for; the exit status.
int Inform(const CLI::App& app, const CLI::ParseError& request) {
    app.exit(request, std::cout, std::cerr);
    return Front{std::cout, std::cerr, {}, {}}.Print({});
}

int Main(std::vector<std::string> arguments) {
    CLI::App app(kDescription, "pictavo-cli");
    app.set_version_flag("--version", std::string("pictavo-cli ") + kVersion, "Print the version");
    app.allow_windows_style_options(false);  // the same command line on every system
    app.require_subcommand(1);
    app.footer(kFooter);
    const auto commands = MakeCommands();
    TakeHelpAsOption(arguments);
    if (const std::string word = UnknownCommand(commands, arguments); !word.empty())
        return WrongUsage(nullptr, UnknownCommandText(commands, word));
    std::vector<CLI::App*> subs;
    subs.reserve(commands.size());
    for (const auto& command : commands) subs.push_back(DeclareCommand(app, *command));
    try {
        std::reverse(arguments.begin(), arguments.end());  // as the parser takes a list
        app.parse(std::move(arguments));
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return Inform(app, error);
        return WrongUsage(ParsedCommand(app), MessageOf(app, error));
    }
    for (std::size_t i = 0; i < subs.size(); ++i)
        if (subs[i]->parsed()) return RunCommand(*commands[i], subs[i]);
    return kWrongUsage;
}

/// The command's own error lines say it all; what Qt would add to standard error is dropped.
void DropMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

}  // namespace

}  // namespace pictavo::cli

int main(int count, char** arguments) {
    qInstallMessageHandler(pictavo::cli::DropMessage);
    pictavo::ReportFailedWrites();
    const pictavo::ConsoleText console;
    const QCoreApplication application(count, arguments);  // the picture readers are plugins that it finds
    try {
        return pictavo::cli::Main(pictavo::ProgramArguments(count, arguments));
    } catch (const std::bad_alloc&) {
        std::fputs("pictavo-cli: there is not enough memory for this\n", stderr);
        return pictavo::cli::kFailed;
    }
}
