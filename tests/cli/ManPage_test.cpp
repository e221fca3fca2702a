#include <regex>
#include <set>

#include "support/CliFixture.h"

/// The manual pages and the completion of the shell, against what --help says: commands and options are told
/// in three places, and none may drift from the others.

namespace pictavo::tests {
namespace {

const std::filesystem::path kPackaging = std::filesystem::path(PICTAVO_SOURCE_DIR) / "packaging" / "linux";

/// The groups of every match of `pattern` in `text`, the empty ones left out.
std::vector<std::string> Found(const std::string& text, const std::string& pattern) {
    const std::regex regex(pattern, std::regex::ECMAScript | std::regex::multiline);
    std::vector<std::string> groups;
    for (std::sregex_iterator match(text.begin(), text.end(), regex), end; match != end; ++match)
        for (std::size_t i = 1; i < match->size(); ++i)
            if ((*match)[i].matched) groups.push_back((*match)[i]);
    return groups;
}

/// A page in which "\-" is "-".
std::string Page(const std::string& name) {
    return std::regex_replace(ReadText(kPackaging / "man" / (name + ".1.in")), std::regex(R"(\\-)"), "-");
}

using Names = std::set<std::string>;

Names Set(const std::vector<std::string>& names) {
    return {names.begin(), names.end()};
}

class HelpTest : public CliTest {
  protected:
    std::string Help(const Arguments& command) const {
        Arguments arguments = command;
        arguments.push_back("--help");
        return Cli(arguments).out;
    }

    std::vector<std::string> Commands() const {
        const std::string help = Help({});
        return Found(help.substr(help.find("Subcommands:")), "^  ([a-z][a-z-]*) ");
    }

    /// Such as "--bits B"; -h and --help, which every command has, are left out.
    Names OptionsWithValues(const std::string& command) const {
        const std::string help = std::regex_replace(Help({command}), std::regex(R"( REQUIRED| \.\.\.)"), "");
        return Set(Found(help, "^  (--?[a-z][a-z-]*(?: [A-Z][^ \n]*)?)(?: |$)"));
    }

    Names Options(const std::string& command) const {
        Names options;
        for (const std::string& option : OptionsWithValues(command))
            options.insert(option.substr(0, option.find(' ')));
        return options;
    }

    /// The argument that the help says must be given, such as "FLASH".
    Names Positionals(const std::string& command) const {
        return Set(Found(Help({command}), R"(^  ([^ -][^ ]*) (?:TEXT )?REQUIRED)"));
    }
};

class ManPageTest : public HelpTest {
  protected:
    static std::string Section(const std::string& command) {
        const std::string page = Page("pictavo-cli");
        const std::size_t begin = page.find("\n.SS " + command + "\n");
        EXPECT_NE(begin, std::string::npos) << command;
        if (begin == std::string::npos) return {};
        return page.substr(begin, page.find("\n.S", begin + 1) - begin);
    }

    static Names OptionsOfSection(const std::string& command) {
        Names options;
        for (const std::string& option : Found(Section(command), "^\\.TP\n\\.BI? (-.*)$"))
            options.insert(std::regex_replace(option, std::regex(" ?\""), ""));
        return options;
    }
};

TEST_F(ManPageTest, HasASectionForEachCommandAndNoOther) {
    EXPECT_EQ(Found(Page("pictavo-cli"), "^\\.SS (.*)$"), Commands());
    EXPECT_EQ(Commands().size(), 13U);
}

TEST_F(ManPageTest, NamesTheOptionsOfEachCommandWithTheirValues) {
    for (const std::string& command : Commands())
        EXPECT_EQ(OptionsOfSection(command), OptionsWithValues(command)) << command;
}

TEST_F(ManPageTest, NamesTheArgumentsOfEachCommand) {
    for (const std::string& command : Commands()) {
        const std::vector<std::string> synopsis = Found(Section(command), "^\\.RI (.*)$");
        ASSERT_EQ(synopsis.size(), 1U) << command;
        EXPECT_FALSE(Positionals(command).empty()) << command;
        for (const std::string& argument : Positionals(command))
            EXPECT_THAT(synopsis[0], HasSubstr(argument)) << command;
    }
}

TEST_F(ManPageTest, NamesTheOptionsOfTheConverter) {
    const std::string usage = RunProgram({std::string(PICTAVO_BIN_DIR) + "/pictavo-convert", "--help"}).out;
    const Names named = Set(Found(Page("pictavo-convert"), "^\\.TP\n\\.BI? (--?[a-z]+)"));
    EXPECT_EQ(named, Set(Found(usage, "[ |](--?[a-z]+)\\b")));
}

TEST_F(ManPageTest, NamesEveryKindOfFileThatTheWindowTakes) {
    const std::string manual = ReadText(std::filesystem::path(PICTAVO_SOURCE_DIR) / "manual" / "ReadMe.txt");
    const std::vector<std::string> endings = Found(
        manual, R"(File names must end in (\.\w+), (\.\w+), (\.\w+), (\.\w+), (\.\w+), (\.\w+) or (\.\w+),)");
    ASSERT_EQ(endings.size(), 7U);
    for (const std::string& ending : endings) EXPECT_THAT(Page("pictavo"), HasSubstr(ending));
}

/// The completion in a shell of its own.
class CompletionTest : public HelpTest {
  protected:
    /// What the last word of the line could become. `folders` where only folders could.
    Names Completed(const Arguments& words) const {
        const std::string script =
            ". \"$1\"; shift\n"
            "compopt() { [ \"$*\" = '+o default +o bashdefault -o dirnames' ] && echo folders; }\n"
            "COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); _pictavo_cli\n"
            "for word in \"${COMPREPLY[@]}\"; do echo \"$word\"; done\n";
        Arguments command{"/bin/bash",  "-euc", script, "bash", (kPackaging / "pictavo-cli.bash").string(),
                          "pictavo-cli"};
        command.insert(command.end(), words.begin(), words.end());
        const Ended ended = RunProgram(command);
        EXPECT_EQ(ended.err, "");
        EXPECT_EQ(ended.status, 0);
        return Set(Lines(ended.out));
    }
};

TEST_F(CompletionTest, TheFirstWordIsACommand) {
    EXPECT_EQ(Completed({""}), Set(Commands()));
    EXPECT_EQ(Completed({"extract-"}), (Names{"extract-gpn", "extract-patch"}));
    EXPECT_EQ(Completed({"--"}), (Names{"--help", "--version"}));
}

TEST_F(CompletionTest, EachCommandHasItsOptions) {
    for (const std::string& command : Commands()) {
        Names expected = Options(command);
        expected.insert({"-h", "--help"});
        EXPECT_EQ(Completed({command, "-"}), expected) << command;
        EXPECT_EQ(Completed({command, "file", "-"}), expected) << command;
    }
}

TEST_F(CompletionTest, ValuesAreThoseThatTheHelpNames) {
    const auto named = [&](const std::string& command, const std::string& option, const std::string& value) {
        return Set(Found(Found(Help({command}), "^  " + option + ".*?  (.*)$").at(0), value));
    };
    EXPECT_EQ(Completed({"export", "--format", ""}),
              named("export", "--format", R"(\b(\w*(?:bmp|gpf2?|png))\b)"));
    EXPECT_EQ(Completed({"patch", "--bits", ""}), named("patch", "--bits",
                                                        R"(\b(\d+)(?:,| or| \())"
                                                        R"(|or (\d+))"));
    EXPECT_EQ(Completed({"convert", "--type", ""}), named("convert", "--type", R"(\b([08][1-9A-F])\b)"));
    EXPECT_EQ(Completed({"carve", ""}), (Names{"gif", "png", "xml"}));
    EXPECT_EQ(Completed({"carve", "png", ""}), Names{});
}

TEST_F(CompletionTest, FoldersAreOfferedWhereAFolderIsMeant) {
    EXPECT_EQ(Completed({"export", "flash.bin", "-o", ""}), Names{"folders"});
    EXPECT_EQ(Completed({"rebuild-pit", "flash.bin", "--from", "x"}), Names{"folders"});
    EXPECT_EQ(Completed({"patch", "--folder", ""}), Names{"folders"});
}

TEST_F(CompletionTest, AllElseIsTheNameOfAFile) {
    for (const Arguments& words :
         {Arguments{"list", ""}, Arguments{"patch", "a.bin", "-o", ""}, Arguments{"apply", "-o", "x"},
          Arguments{"patch", "--picture", "12", "=", "lo"}, Arguments{"list", "--", "-"},
          Arguments{"convert", "--converter", ""}})
        EXPECT_EQ(Completed(words), Names{}) << words.back();
}

}  // namespace
}  // namespace pictavo::tests
