// SPDX-License-Identifier: MIT
// The wait for a key on a terminal.
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <termios.h>
#include <unistd.h>

#include "run/ProgramFixture.h"

namespace {

class KeyPress : public programtest::ProgramTest {
  protected:
    // Runs the help on a terminal of its own, types `key` when it is asked for, and gives the status of the process.
    int Press(char key, bool& hasEcho) {
        int terminal = -1;
        const pid_t program = ::forkpty(&terminal, nullptr, nullptr, nullptr);
        if (program == 0) {
            ::setenv("QUILLION_REGISTRY", Path("bin/registry.ini").c_str(), 1);
            ::execl(Path("bin/lanewright").c_str(), "lanewright", "-H", "-OD", Path("out").c_str(), nullptr);
            ::_exit(2);
        }
        std::string shown;
        char block[4096];
        ssize_t count = 0;
        bool isPressed = false;
        while ((count = ::read(terminal, block, sizeof block)) > 0) {
            shown.append(block, static_cast<std::size_t>(count));
            if (isPressed || !shown.ends_with("press any key")) continue;
            isPressed = true;
            WaitForEcho(terminal, false);
            EXPECT_EQ(::write(terminal, &key, 1), 1);
            if (WaitForEcho(terminal, true)) hasEcho = true;
        }
        ::close(terminal);
        int status = 0;
        ::waitpid(program, &status, 0);
        return status;
    }

  private:
    // Waits until the terminal shows what is typed, or does not. False after 10 seconds.
    static bool WaitForEcho(int terminal, bool wanted) {
        for (int i = 0; i < 1000; ++i) {
            termios mode{};
            if (::tcgetattr(terminal, &mode) == 0 && ((mode.c_lflag & ECHO) != 0) == wanted) return true;
            ::poll(nullptr, 0, 10);
        }
        return false;
    }
};

}  // namespace

TEST_F(KeyPress, LeavesTheTerminalAsItWas) {
    for (const auto& [key, expected] : {std::pair('x', 0), {'\x03', SIGINT}}) {  // Ctrl-C ends it by the signal
        bool hasEcho = false;
        EXPECT_EQ(Press(key, hasEcho), expected);
        EXPECT_TRUE(hasEcho) << expected;
    }
}
