#include <pty.h>

#include "support/CliFixture.h"

namespace pictavo::tests {
namespace {

class ProgressTest : public CliTest {
  protected:
    Arguments SlowExport() {
        return {"export",      Write(FourIcons()),  "-o", Path("out"), "--format", "png",
                "--converter", SlowConverter("0.2")};
    }

    /// All that the program sends to its terminal.
    std::string OnATerminal(Arguments arguments) const {
        arguments.insert(arguments.begin(), program);
        std::vector<std::string> environment = around.environment;
        int terminal = -1;
        const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
        if (child < 0) std::abort();
        if (child == 0) {
            execve(program.c_str(), child_process::Pointers(arguments).data(),
                   child_process::Pointers(environment).data());
            _exit(127);
        }
        std::string all;
        std::array<char, 1024> piece{};
        for (ssize_t count = 0; (count = read(terminal, piece.data(), piece.size())) > 0;)
            all.append(piece.data(), static_cast<std::size_t>(count));
        close(terminal);
        int state = 0;
        waitpid(child, &state, 0);
        EXPECT_TRUE(WIFEXITED(state) && WEXITSTATUS(state) == 0) << all;
        return all;
    }
};

TEST_F(ProgressTest, NothingIsShownWhereThereIsNoTerminal) {
    ExpectDone(Cli(SlowExport()), "exported 4\n");
}

TEST_F(ProgressTest, LongWorkShowsABarOnATerminal) {
    const std::string shown = OnATerminal(SlowExport());
    EXPECT_THAT(shown, HasSubstr("\r[" + std::string(40, '#') + "] 100%"));
    EXPECT_THAT(shown, HasSubstr("75%"));
    EXPECT_THAT(shown, HasSubstr("exported 4"));
}

TEST_F(ProgressTest, ShortWorkShowsNone) {
    const Arguments work{"export", Write(FourIcons()), "-o", Path("out"), "--format", "bmp", "--overwrite"};
    bool wasShort = false;
    for (int round = 0; round < 100 && !wasShort; ++round) {  // a busy machine makes any work long
        const auto start = std::chrono::steady_clock::now();
        const std::string shown = OnATerminal(work);
        wasShort = std::chrono::steady_clock::now() - start < std::chrono::milliseconds(500);
        if (wasShort) {
            EXPECT_EQ(shown, "exported 4\r\n");
        }
    }
    EXPECT_TRUE(wasShort);
}

}  // namespace
}  // namespace pictavo::tests
