#include "shell/Shell_.h"

#include <chrono>

#include "core/PathText.h"
#include "support/TempFolder.h"
#include "support/ToldArguments.h"

namespace pictavo::tests {
namespace {

class ChildProcessRunnerTest : public ::testing::Test {
  protected:
    /// A program of that name that writes its arguments to `told`.
    std::filesystem::path Teller(const std::string& name) {
        const std::filesystem::path program = temp / name;
        std::filesystem::create_directories(program.parent_path());
        std::filesystem::copy_file(PICTAVO_TELLER, program);
        return program;
    }

    std::string Run(const std::filesystem::path& program, std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), PathText(told));
        return runner.RunAndWait(program, arguments);
    }

    std::vector<std::string> Told() { return ToldArguments(told); }

    TempFolder temp;
    std::filesystem::path told = temp / "told";
    ChildProcessRunner runner;
};

TEST_F(ChildProcessRunnerTest, ArgumentsArriveAsTheyStand) {
    const std::vector<std::string> arguments{"-out",      "with blank",
                                             "",          " ",
                                             "\"",        "a\"b c\"d",
                                             "end\\",     "end \\",
                                             "\\\"",      "%TMP%",
                                             "^&|<>();,", "it's",
                                             "$(id)",     "\xD0\x96\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"};
    Run(Teller("teller.exe"), arguments);
    EXPECT_EQ(Told(), arguments);
}

TEST_F(ChildProcessRunnerTest, TheProgramsPathMayHoldAnything) {
    for (const std::string name :
         {"with blank", "it's %TMP% ^&;(x)", "\xD0\x96 \xF0\x9F\x98\x80", "no ending."}) {
        Run(Teller("in " + name + "x/" + name + ".exe"), {name});
        EXPECT_EQ(Told(), std::vector<std::string>{name});
        std::filesystem::remove(told);
    }
}

TEST_F(ChildProcessRunnerTest, ARelativeProgramIsOneInTheCurrentFolder) {
    const std::filesystem::path before = std::filesystem::current_path();
    Teller("teller.exe");
    std::filesystem::current_path(temp.Path());
    Run("teller.exe", {"x"});
    std::filesystem::current_path(before);
    EXPECT_EQ(Told(), std::vector<std::string>{"x"});
}

TEST_F(ChildProcessRunnerTest, ABatchFileIsNotStarted) {
    for (const char* name : {"convert.bat", "convert.CMD"}) {
        const auto batch = WriteFile(temp / name, "echo x> " + PathText(told) + "\r\n");
        EXPECT_TRUE(Run(batch, {"x"}).starts_with("cannot be started (it is a batch file")) << name;
        EXPECT_FALSE(std::filesystem::exists(told));
    }
}

TEST_F(ChildProcessRunnerTest, WaitsForTheEndAndTheOutputIsThere) {
    EXPECT_EQ(Run(Teller("teller.exe"), {"slow"}), "");
    EXPECT_EQ(Told(), std::vector<std::string>{"slow"});
}

TEST_F(ChildProcessRunnerTest, AChildThatPrintsMuchDoesNotBlock) {
    Run(Teller("teller.exe"), {"loud"});
    EXPECT_EQ(Told(), std::vector<std::string>{"loud"});
}

TEST_F(ChildProcessRunnerTest, AProgramThatCanNotStartOrCrashesReturnsAtOnce) {
    const auto start = std::chrono::steady_clock::now();
    const std::filesystem::path plain = WriteFile(temp / "plain.exe", std::string("no program"));
    for (const std::filesystem::path& program :
         {temp / "missing.exe", temp / "no" / "folder.exe", plain, temp.Path(), std::filesystem::path()})
        EXPECT_TRUE(Run(program, {"x"}).starts_with("cannot be started (")) << program;
    EXPECT_TRUE(Run(Teller("teller.exe"), {"crash"}).starts_with("ended with status "));
    EXPECT_FALSE(std::filesystem::exists(told));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::minutes(5));
}

}  // namespace
}  // namespace pictavo::tests
