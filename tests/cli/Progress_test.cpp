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
    EXPECT_THAT(shown, ::testing::Not(HasSubstr("25%")));  // a fifth of a second is no long work
    EXPECT_THAT(shown, HasSubstr("exported 4"));
}

TEST_F(ProgressTest, ShortWorkShowsNone) {
    const std::string shown = OnATerminal({"list", Write(FlashBuilder(FlashKind::NewSGold))});
    EXPECT_EQ(shown, "#\thex\twidth\theight\tType\tPIToffset\tPICoffset\r\n");
}

}  // namespace
}  // namespace pictavo::tests
