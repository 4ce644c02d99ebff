// SPDX-License-Identifier: MIT
// "lanetools run" with the built program and libraries that break, run as a user would.
#pragma once

#include <map>
#include <string>

#include "run/ProgramFixture.h"

namespace lanetest {

using programtest::CountOf;
using programtest::RunResult;

// What a sample whose first channel begins with it has the library "fragile.so" do.
inline constexpr std::uint32_t failing = 13, aborting = 101, killing = 102, leaving = 103, hanging = 104, dooming = 105,
                               vanishing = 106;

class RunTest : public programtest::ProgramTest {
  protected:
    void SetUp() override {
        ProgramTest::SetUp();
        Copy(LANETOOLS_PROGRAM, "bin/lanetools");
        Copy(LANEWRIGHT_TEST_LIBRARIES "/fragile.so", "bin/fragile.so");
        temp.Write("bin/basecall.ini", "[Base Callers]\nFragile\tfragile.so\nTenth\ttenth.so\n[Default]\nFragile\n");
    }

    // Runs "lanetools run" in the temporary folder; `words` as a shell takes them.
    RunResult RunTool(const std::string& words, const std::string& before = "") const {
        const std::string command = "cd '" + temp.Path() +
                                    "' && env -u XDG_CONFIG_HOME HOME=. QUILLION_REGISTRY=bin/registry.ini " + before +
                                    " bin/lanetools run " + words + " >stdout.txt 2>stderr.txt </dev/null";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, temp.Read("stdout.txt"), temp.Read("stderr.txt")};
    }

    // All files below the folder `name`, with their bytes; what differs from run to run is made equal. Of the programs
    // (with the sanitizers they have a hundred megabytes) size and time are enough.
    std::map<std::string, std::string> Files(const std::string& name) const {
        std::map<std::string, std::string> files;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(Path(name))) {
            const std::string key = std::filesystem::relative(entry, Path(name)).string();
            if (!entry.is_regular_file())
                files[key] = "";
            else if (entry.file_size() > (1 << 20))
                files[key] = std::to_string(entry.file_size()) + " " +
                             std::to_string(entry.last_write_time().time_since_epoch().count());
            else
                files[key] = Steady(temp.Read(name + '/' + key));
        }
        return files;
    }
};

}  // namespace lanetest
