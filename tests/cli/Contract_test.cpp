#include "core/Version.h"
#include "support/CliFixture.h"

namespace pictavo::tests {
namespace {

class ContractTest : public CliTest {};

const std::vector<std::string> kCommands = {"info",  "list",  "export",     "convert",     "patch",
                                            "check", "apply", "backup-pit", "rebuild-pit", "png-info"};

TEST_F(ContractTest, HelpOfTheProgramGoesToStandardOutputAndNamesEveryCommand) {
    const Ended ended = Cli({"--help"});
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.err, "");
    for (const std::string& command : kCommands) EXPECT_THAT(ended.out, HasSubstr("  " + command + " "));
}

TEST_F(ContractTest, HelpOfEachCommandGoesToStandardOutput) {
    for (const std::string& command : kCommands) {
        const Ended ended = Cli({command, "--help"});
        EXPECT_EQ(ended.status, 0) << command;
        EXPECT_EQ(ended.err, "") << command;
        EXPECT_THAT(ended.out, HasSubstr(command)) << command;
    }
}

TEST_F(ContractTest, HelpNamesTheOptions) {
    const std::string patch = Cli({"patch", "--help"}).out;
    for (const char* option : {"-o", "--picture", "--folder", "--bits", "--compress", "--converter",
                               "--hex-names", "--zero-names", "--overwrite"})
        EXPECT_THAT(patch, HasSubstr(option));
}

TEST_F(ContractTest, VersionIsOneLineOnStandardOutput) {
    ExpectDone(Cli({"--version"}), std::string("pictavo-cli ") + kVersion + "\n");
}

TEST_F(ContractTest, HelpAndVersionThatCanNotBeWrittenFail) {
    around.outputTo = "/dev/full";
    for (const char* option : {"--help", "--version"}) {
        const Ended ended = Cli({option});
        EXPECT_EQ(ended.status, 1) << option;
        ExpectOneComplaint(ended, {"standard output"});
    }
}

TEST_F(ContractTest, NoCommandIsWrongUsage) {
    ExpectWrongUsage(Cli({}), "Usage: pictavo-cli COMMAND ARGUMENTS [OPTIONS]");
}

TEST_F(ContractTest, AnUnknownCommandIsWrongUsage) {
    ExpectWrongUsage(Cli({"explode"}), "Usage: pictavo-cli COMMAND ARGUMENTS [OPTIONS]");
}

TEST_F(ContractTest, AnUnknownCommandIsNamedBesideThoseThatThereAre) {
    const std::string complaint = Lines(Cli({"explode", "a.bin"}).err).at(0);
    EXPECT_THAT(complaint, HasSubstr("\"explode\" is no command"));
    for (const std::string& command : kCommands) EXPECT_THAT(complaint, HasSubstr(" " + command));
}

TEST_F(ContractTest, HelpIsAlsoAWord) {
    ExpectDone(Cli({"help"}), Cli({"--help"}).out);
    ExpectDone(Cli({"help", "patch"}), Cli({"patch", "--help"}).out);
}

TEST_F(ContractTest, WhatIsNotExpectedIsToldInTheOrderGiven) {
    EXPECT_THAT(Cli({"info", Write(FourIcons()), "one", "two", "three"}).err,
                HasSubstr("not expected: one two three\n"));
}

TEST_F(ContractTest, HelpOfACommandHasItsUsageLineAndAnExample) {
    EXPECT_THAT(Cli({"patch", "--help"}).out,
                HasSubstr("Usage: pictavo-cli patch FLASH -o PATCH.vkp [OPTIONS]\n"));
    std::vector<std::string> commands = kCommands;
    commands.insert(commands.end(), {"extract-patch", "extract-gpn", "carve"});
    for (const std::string& command : commands)
        EXPECT_THAT(Cli({command, "--help"}).out, HasSubstr("Example: pictavo-cli " + command + " "));
}

TEST_F(ContractTest, TwoCommandsAreWrongUsage) {
    const std::string flash = Write(FourIcons());
    ExpectWrongUsage(Cli({"info", flash, "list", flash}));
}

TEST_F(ContractTest, MissingArgumentsAreWrongUsageOfTheCommand) {
    for (const std::string& command : kCommands)
        ExpectWrongUsage(Cli({command}), "Usage: pictavo-cli " + command + " ");
}

TEST_F(ContractTest, TheUsageLineNamesTheArguments) {
    EXPECT_THAT(Cli({"apply", "one"}).err,
                HasSubstr("Usage: pictavo-cli apply PATCH FLASH -o COPY [OPTIONS]"));
}

TEST_F(ContractTest, TheUsageLineNamesTheRequiredOptions) {
    EXPECT_THAT(Cli({"patch"}).err, HasSubstr("Usage: pictavo-cli patch FLASH -o PATCH.vkp [OPTIONS]; see"));
    EXPECT_THAT(Cli({"export"}).err, HasSubstr(" export FLASH -o DIR --format FORMAT [OPTIONS]; see"));
    EXPECT_THAT(Cli({"rebuild-pit"}).err, HasSubstr(" rebuild-pit FLASH --from DIR -o DIR [OPTIONS]; see"));
}

TEST_F(ContractTest, AnEmptyArgumentIsWrongUsage) {
    const std::string flash = Write(FourIcons());
    for (const Arguments& command :
         {Arguments{"info", ""}, Arguments{"list", ""}, Arguments{"png-info", ""},
          Arguments{"export", "", "-o", Path("out"), "--format", "bmp"},
          Arguments{"convert", "", Path("out.bmp")}, Arguments{"convert", flash, ""},
          Arguments{"patch", "", "-o", Path("a.vkp")}, Arguments{"check", "", flash},
          Arguments{"check", flash, ""}, Arguments{"apply", "", flash, "-o", Path("copy.bin")},
          Arguments{"backup-pit", "", "-o", Path("out")}})
        ExpectWrongUsage(Cli(command), "Usage: pictavo-cli " + command[0] + " ");
}

TEST_F(ContractTest, AnEmptyValueOfAnOptionIsWrongUsage) {
    const std::string flash = Write(FourIcons());
    const Arguments exported{"export", flash, "-o", Path("out"), "--format", "bmp"};
    const Arguments patched{"patch", flash, "-o", Path("a.vkp")};
    const std::vector<std::pair<Arguments, std::string>> options{
        {{"export", flash, "--format", "bmp"}, "-o"},
        {{"patch", flash}, "-o"},
        {{"backup-pit", flash}, "-o"},
        {{"rebuild-pit", flash, "-o", Path("out")}, "--from"},
        {exported, "--pictures"},
        {exported, "--converter"},
        {patched, "--folder"},
        {patched, "--picture"},
        {patched, "--bits"},
        {patched, "--converter"}};
    for (const auto& [command, option] : options) {
        Arguments arguments = command;
        arguments.insert(arguments.end(), {option, ""});
        ExpectWrongUsage(Cli(arguments), "Usage: pictavo-cli " + command[0] + " ");
    }
    EXPECT_EQ(ListNames(temp.Path()), (std::vector<std::string>{"flash.bin", "run folders"}));
}

TEST_F(ContractTest, AnUnknownOptionIsWrongUsage) {
    ExpectWrongUsage(Cli({"info", Write(FourIcons()), "--colour"}), "Usage: pictavo-cli info FLASH");
}

TEST_F(ContractTest, AnArgumentTooManyIsWrongUsage) {
    ExpectWrongUsage(Cli({"info", Write(FourIcons()), "more"}), "Usage: pictavo-cli info FLASH");
}

TEST_F(ContractTest, AnOptionWithoutItsValueIsWrongUsage) {
    ExpectWrongUsage(Cli({"export", Write(FourIcons()), "--format", "bmp", "-o"}));
}

TEST_F(ContractTest, AnOutputMustBeNamed) {
    const std::string flash = Write(FourIcons());
    ExpectWrongUsage(Cli({"export", flash, "--format", "bmp"}));
    ExpectWrongUsage(Cli({"patch", flash}));
    ExpectWrongUsage(Cli({"backup-pit", flash}));
    ExpectWrongUsage(Cli({"rebuild-pit", flash, "--from", temp.Path().string()}));
}

TEST_F(ContractTest, WrongUsageWritesNothing) {
    const std::string flash = Write(FourIcons());
    ExpectWrongUsage(Cli({"export", flash, "-o", Path("out"), "--format", "tiff"}));
    EXPECT_FALSE(std::filesystem::exists(temp / "out"));
}

TEST_F(ContractTest, AMissingFlashIsOneLineThatNamesIt) {
    const std::string missing = Path("no such flash.bin");
    for (const Arguments& command :
         {Arguments{"info", missing}, Arguments{"list", missing},
          Arguments{"export", missing, "-o", Path("out"), "--format", "bmp"},
          Arguments{"patch", missing, "-o", Path("a.vkp")},
          Arguments{"backup-pit", missing, "-o", Path("out")},
          Arguments{"rebuild-pit", missing, "--from", temp.Path().string(), "-o", Path("out")}})
        ExpectRefused(Cli(command), {missing + ": cannot be opened", "No such file"});
    EXPECT_EQ(ListNames(temp.Path()), std::vector<std::string>{"run folders"});
}

TEST_F(ContractTest, StandardOutputThatTakesNothingFails) {
    const std::string flash = Write(FourIcons());
    around.outputTo = "/dev/full";
    for (const Arguments& command : {Arguments{"info", flash}, Arguments{"list", flash, "--json"},
                                     Arguments{"export", flash, "-o", Path("out"), "--format", "bmp"}}) {
        const Ended ended = Cli(command);
        EXPECT_EQ(ended.status, 1) << command[0];
        ExpectOneComplaint(ended, {"standard output"});
    }
}

TEST_F(ContractTest, OptionsMayStandBeforeTheArguments) {
    const std::string flash = Write(FourIcons());
    EXPECT_EQ(Cli({"info", "--json", flash}).out, Cli({"info", flash, "--json"}).out);
}

TEST_F(ContractTest, AFileNameWithALeadingDashFollowsTwoDashes) {
    const std::string flash = Write(FourIcons(), "--json");
    around.folder = temp.Path();
    const Ended ended = Cli({"info", "--", "--json"});
    EXPECT_EQ(ended.status, 0);
    EXPECT_TRUE(ended.out.starts_with("platform: New-SGold\n"));
}

TEST_F(ContractTest, TheCurrentFolderIsWhereRelativeNamesLie) {
    Write(FourIcons());
    around.folder = temp.Path();
    ExpectDone(Cli({"export", "flash.bin", "-o", "out", "--format", "bmp"}), "exported 4\n");
    EXPECT_EQ(ListNames(temp / "out").size(), 4U);
}

TEST_F(ContractTest, NeitherADisplayNorAHomeIsNeeded) {
    EXPECT_EQ(around.environment.size(), 2U);  // PATH and TMP
    EXPECT_EQ(Cli({"list", Write(FourIcons())}).status, 0);
}

TEST_F(ContractTest, AReadOnlyFlashIsAllThatIsNeeded) {
    const std::string flash = Write(FourIcons());
    std::filesystem::permissions(flash, std::filesystem::perms::owner_read);
    EXPECT_EQ(Cli({"info", flash}).status, 0);
    EXPECT_EQ(Cli({"export", flash, "-o", Path("out"), "--format", "gpf"}).status, 0);
    EXPECT_EQ(Cli({"patch", flash, "-o", Path("a.vkp")}).status, 0);
}

}  // namespace
}  // namespace pictavo::tests
