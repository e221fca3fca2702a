#include "shell/Shell_.h"

#include <QFile>
#include <chrono>
#include <csignal>
#include <thread>

#include "support/CoreApplication.h"
#include "support/TempFolder.h"
#include "support/ToldArguments.h"

namespace pictavo::tests {
namespace {

/// A program that writes each of its arguments, ended by a zero byte, into the file `told`.
class ChildProcessRunnerTest : public ::testing::Test {
  protected:
    std::filesystem::path WriteProgram(const std::filesystem::path& path, const std::string& lines) {
        WriteFile(path, "#!/bin/sh\n" + lines + "\n");
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        return path;
    }

    std::string Quoted(const std::filesystem::path& path) { return "'" + path.string() + "'"; }

    std::filesystem::path WriteTeller(const std::filesystem::path& path) {
        return WriteProgram(path, "printf '%s\\0' \"$@\" > " + Quoted(told));
    }

    std::vector<std::string> Told() { return ToldArguments(told); }

    TempFolder temp;
    std::filesystem::path told = temp / "told";
    ChildProcessRunner runner;
};

TEST_F(ChildProcessRunnerTest, ArgumentsArriveAsTheyStand) {
    const std::vector<std::string> arguments = {
        "-out",     "png",       "with blank",
        "  ",       "",          "\"",
        "it's",     "a\"b c\"d", "$(id)",
        "`id`",     "$HOME",     "a;b|c&d>e<f",
        "*",        "~",         "back\\sl\\",
        "-leading", "--",        "line\nend",
        "tab\t",    "%TMP%",     "\xD0\x96\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"};
    runner.RunAndWait(WriteTeller(temp / "teller"), arguments);
    EXPECT_EQ(Told(), arguments);
}

TEST_F(ChildProcessRunnerTest, TheProgramsPathMayHoldAnything) {
    for (const std::string name : {"with blank", "quote\"'s", "$(id);x", "-dash", "\xD0\x96.exe"}) {
        const std::filesystem::path folder = temp / name;
        std::filesystem::create_directory(folder);
        runner.RunAndWait(WriteTeller(folder / name), {name});
        EXPECT_EQ(Told(), std::vector<std::string>{name});
        std::filesystem::remove(told);
    }
}

TEST_F(ChildProcessRunnerTest, ARelativeProgramIsOneInTheCurrentFolder) {
    const std::filesystem::path before = std::filesystem::current_path();
    WriteTeller(temp / "teller");
    std::filesystem::current_path(temp.Path());
    runner.RunAndWait("teller", {"x"});
    std::filesystem::current_path(before);
    EXPECT_EQ(Told(), std::vector<std::string>{"x"});
}

TEST_F(ChildProcessRunnerTest, AProgramThatCanNotStartReturnsAtOnce) {
    const std::filesystem::path plain = WriteFile(temp / "plain", std::string("no program"));
    const auto start = std::chrono::steady_clock::now();
    for (const std::filesystem::path& program : {temp / "missing", temp / "no" / "folder", plain, temp.Path(),
                                                 std::filesystem::path(), temp / "caf\xE9"})
        EXPECT_TRUE(runner.RunAndWait(program, {"x"}).starts_with("cannot be started (")) << program;
    EXPECT_EQ(runner.RunAndWait(plain, {"x"}), "cannot be started (Permission denied)");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::minutes(1));
}

TEST_F(ChildProcessRunnerTest, ReturnsOnlyWhenTheProgramHasEnded) {
    runner.RunAndWait(WriteProgram(temp / "slow", "sleep 0.5; echo done > " + Quoted(told)), {});
    EXPECT_EQ(ReadText(told), "done\n");
}

TEST_F(ChildProcessRunnerTest, BytesThatAreNoUtf8ArriveAsTheyStand) {
    const std::vector<std::string> arguments = {"caf\xE9", "\xFF\xFE", "\xC2"};
    const std::filesystem::path folder = temp / "caf\xE9";
    std::filesystem::create_directory(folder);
    runner.RunAndWait(WriteTeller(folder / "teller"), arguments);
    EXPECT_EQ(Told(), arguments);
}

TEST_F(ChildProcessRunnerTest, AProgramWithoutEndIsEndedWhenAsked) {
    for (const char* reaction : {"", "trap '' TERM; "}) {
        int asked = 0;
        ChildProcessRunner impatient([&asked] { return ++asked < 3; });
        const auto endless =
            WriteProgram(temp / "endless", std::string(reaction) + "while :; do sleep 0.05; done");
        const auto start = std::chrono::steady_clock::now();
        impatient.RunAndWait(endless, {});
        EXPECT_EQ(asked, 3);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::minutes(1));
    }
}

TEST_F(ChildProcessRunnerTest, AChildMeetsAClosedPipeAsUsual) {
    const auto old = std::signal(SIGPIPE, SIG_IGN);
    const std::string blocked = "grep SigIgn /proc/self/status | tr -dc 0-9a-f > ";
    runner.RunAndWait(WriteProgram(temp / "asker", blocked + Quoted(told)), {});
    std::signal(SIGPIPE, old);
    EXPECT_EQ(std::stoull(ReadText(told), nullptr, 16) & (1ULL << (SIGPIPE - 1)), 0U);
}

TEST_F(ChildProcessRunnerTest, MuchOutputNeverBlocks) {
    const std::string megabytes = "head -c 8000000 /dev/zero";
    runner.RunAndWait(
        WriteProgram(temp / "loud", megabytes + "; " + megabytes + " >&2; echo done > " + Quoted(told)), {});
    EXPECT_EQ(ReadText(told), "done\n");
}

TEST_F(ChildProcessRunnerTest, StandardInputIsEmpty) {
    runner.RunAndWait(WriteProgram(temp / "reader", "wc -c | tr -d ' ' > " + Quoted(told)), {});
    EXPECT_EQ(ReadText(told), "0\n");
}

TEST_F(ChildProcessRunnerTest, NothingOfTheProgramReachesTheScreen) {
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    runner.RunAndWait(WriteProgram(temp / "talker", "echo out; echo err >&2; echo done > " + Quoted(told)),
                      {});
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(ReadText(told), "done\n");
}

TEST_F(ChildProcessRunnerTest, AFailedOrKilledProgramReturnsLikeAnyOther) {
    EXPECT_EQ(runner.RunAndWait(WriteProgram(temp / "failing", "exit 3"), {}), "ended with status 3");
    EXPECT_EQ(runner.RunAndWait(WriteProgram(temp / "dying", "kill -9 $$"), {}), "was ended by signal 9");
    EXPECT_EQ(runner.RunAndWait(WriteTeller(temp / "teller"), {"after"}), "");
    EXPECT_EQ(Told(), std::vector<std::string>{"after"});
}

TEST_F(ChildProcessRunnerTest, TheProgramGetsTheEnvironmentAndTheCurrentFolder) {
    qputenv("PICTAVO_TEST", "value");
    runner.RunAndWait(WriteProgram(temp / "teller", "echo \"$PICTAVO_TEST $(pwd)\" > " + Quoted(told)), {});
    qunsetenv("PICTAVO_TEST");
    EXPECT_EQ(ReadText(told), "value " + std::filesystem::current_path().string() + "\n");
}

}  // namespace
}  // namespace pictavo::tests
