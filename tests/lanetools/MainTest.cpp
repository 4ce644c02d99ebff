// SPDX-License-Identifier: MIT
// What all subcommands have in common: help, mistakes on the command line, Ctrl-C while they wait, and how they end
// where an exception cannot pass.
#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <new>
#include <sstream>
#include <thread>

#include "lanetools/RunFixture.h"
#include "lanetools/system/LastResort.h"
#include "platform/AtomicFile.h"

using lanetest::CountOf;
using lanetest::RunResult;

namespace {

class MainTest : public lanetest::RunTest {
  protected:
    RunResult Tools(const std::string& words) const {
        const std::string command =
            "cd '" + temp.Path() + "' && bin/lanetools " + words + " >stdout.txt 2>stderr.txt </dev/null";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, temp.Read("stdout.txt"), temp.Read("stderr.txt")};
    }

    // Starts lanetools, which writes to the descriptor `output`, waits until it waits, and sends it `signal`.
    RunResult Interrupt(const std::vector<std::string>& words, int output, int signal) const {
        const pid_t child = fork();
        if (child == 0) {
            std::vector<char*> arguments{const_cast<char*>("bin/lanetools")};
            for (const std::string& word : words)
                arguments.push_back(const_cast<char*>(word.c_str()));
            arguments.push_back(nullptr);
            const int errors = chdir(temp.Path().c_str()) == 0 ? creat("stderr.txt", 0600) : -1;
            dup2(errors, STDERR_FILENO);
            dup2(output, STDOUT_FILENO);
            setenv("QUILLION_REGISTRY", "bin/registry.ini", 1);
            execv(arguments[0], arguments.data());
            _exit(127);
        }
        for (int quiet = 0, i = 0; quiet < 10 && i < 1000; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            quiet = StateOf(child) == 'S' ? quiet + 1 : 0;
        }
        kill(child, signal);
        int status = 0;
        waitpid(child, &status, 0);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, "", temp.Read("stderr.txt")};
    }

    static char StateOf(pid_t process) {
        std::ifstream in("/proc/" + std::to_string(process) + "/stat");
        std::string text{std::istreambuf_iterator<char>(in), {}};
        return text.empty() ? '?' : text[text.rfind(')') + 2];
    }

    // The writing end of a pipe that is full and that nobody reads.
    static int FullPipe() {
        int ends[2];
        if (pipe(ends) != 0) return -1;
        fcntl(ends[1], F_SETFL, O_NONBLOCK);
        const std::string much(1 << 16, 'x');
        while (write(ends[1], much.data(), much.size()) > 0) {
        }
        while (write(ends[1], "x", 1) > 0) {
        }
        fcntl(ends[1], F_SETFL, 0);
        return ends[1];  // the other end stays open until the test ends
    }

    std::size_t Temporaries() const {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(temp.Path()))
            count += entry.path().filename().string().starts_with(".lw") ? 1 : 0;
        return count;
    }
};

}  // namespace

TEST_F(MainTest, HelpFitsATerminal) {
    const std::string whole = Tools("--help").output;
    EXPECT_NE(whole.find("Usage: lanetools SUBCOMMAND [OPTIONS]\n"), std::string::npos) << whole;
    std::string all = whole;
    for (const char* name : {"import", "run", "summary", "export"}) {
        const std::string line = "\n  " + std::string(name) + " ";
        const std::size_t start = whole.find(line), end = whole.find("\n  ", whole.find(".\n", start));
        EXPECT_NE(start, std::string::npos) << name;
        EXPECT_EQ(whole.substr(start, end - start).find_last_of('.'), end - start - 1) << "cut: " << name;
        all += Tools(name + std::string(" --help")).output;
    }
    std::istringstream lines(all);
    for (std::string line; std::getline(lines, line);)
        EXPECT_LE(line.size(), 80u) << line;
    EXPECT_EQ(CountOf("Usage: lanetools run PLATES... -o OUT [OPTIONS] [-- SWITCHES]\n", all), 1u);
    EXPECT_EQ(CountOf(" export OUT... -o DIR --format FORMAT [OPTIONS]\n", all), 1u);
}

TEST_F(MainTest, MistakesAreNamed) {
    const RunResult unknown = Tools("imprt x");
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_EQ(unknown.errors.find("lanetools: imprt: there is no such subcommand; there are import, run, summary, "),
              0u)
        << unknown.errors;
    const RunResult switches = Tools("run plate -o out -bc lanecall.so -ABD");
    EXPECT_EQ(switches.exitCode, 2);
    EXPECT_EQ(CountOf("-bc is a switch of the program, and these follow \"--\": ", switches.errors), 1u);
    EXPECT_EQ(CountOf("is a switch of the program", Tools("run plate -o out -x").errors), 0u);
    EXPECT_EQ(std::system(("'" + Path("bin/lanetools") + "' --help >/dev/full 2>/dev/null").c_str()) >> 8, 1);
}

TEST_F(MainTest, SignalsEndACommandThatWaits) {
    MakeSample("plate/a.rsd");
    temp.MakeFolder("second");
    MakeSample("second/a.rsd");
    ASSERT_EQ(RunTool("plate second -o out").exitCode, 0);
    ASSERT_EQ(mkfifo(Path("sheet").c_str(), 0600), 0);
    const int nowhere = open("/dev/null", O_WRONLY), full = FullPipe();
    using Words = std::vector<std::string>;
    for (const int signal : {SIGINT, SIGTERM})
        for (const auto& [words, output] :
             {std::pair(Words{"export", "out", "-o", "reads", "--format", "fasta", "--sheet", "sheet"}, nowhere),
              std::pair(Words{"summary", "out"}, full), std::pair(Words{"import", "plate/a.rsd", "-o", "made"}, full),
#ifdef LANEWRIGHT_REPORT
              std::pair(Words{"report", "out", "-o", "pages"}, full),
#endif
              std::pair(Words{"run", "plate", "-o", "out", "--dry-run"}, full)}) {
            const RunResult run = Interrupt(words, output, signal);
            EXPECT_EQ(run.exitCode, 130) << words.front();
            EXPECT_EQ(run.errors, "lanetools: interrupted\n") << words.front();
        }
    EXPECT_EQ(Temporaries(), 0u);
    EXPECT_FALSE(temp.Has("reads"));
    close(nowhere);
    close(full);
}

// Here the exception may not leave the function, so it goes to the handler that ends the process.
TEST_F(MainTest, WhereNoExceptionCanPassItEndsWithASentence) {
    const pid_t child = fork();
    if (child == 0) {
        dup2(creat(Path("stderr.txt").c_str(), 0600), STDERR_FILENO);
        lanetools::PrepareLastResort();
        platform::AtomicFile former, file;
        std::ignore = former.Open(Path("former"));
        std::ignore = file.Open(Path("file"));
        std::ignore = former.Commit();
        const auto fail = [] { throw std::bad_alloc(); };
        [&]() noexcept { fail(); }();
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 1);
    EXPECT_EQ(temp.Read("stderr.txt"), "lanetools: there is not enough memory\n");
    EXPECT_TRUE(temp.Has("former"));
    EXPECT_EQ(Temporaries(), 0u);
}
