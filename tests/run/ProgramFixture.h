// SPDX-License-Identifier: MIT
// The built program in an installation of its own, run as a user would.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <regex>
#include <string>

#include "samplestore/SampleFixture.h"

namespace programtest {

// The result of a run.
struct RunResult {
    int exitCode;
    std::string output, errors;  // the two standard streams
};

class ProgramTest : public sampletest::SampleTest {
  protected:
    void SetUp() override {
        Copy(LANEWRIGHT_PROGRAM, "bin/lanewright");
        Copy(LANEWRIGHT_TEST_LIBRARIES "/every_tenth.so", "bin/tenth.so");
        Copy(LANEWRIGHT_TEST_LIBRARIES "/every_tenth.so", "bin/other.so");
        temp.Write("bin/registry.ini", "[Quillion\\Base Calling]\nPath = .\nAnalyzedDataPath = ../analyzed\n");
        temp.Write("bin/basecall.ini", "[Base Callers]\nTenth\ttenth.so\n[Default]\nTenth\n");
        temp.MakeFolder("plate");
        temp.MakeFolder("out");
    }

    void Copy(const std::string& from, const std::string& name) const {
        temp.MakeFolder("bin");
        std::filesystem::copy_file(from, Path(name));
    }

    // A sample of `scans` scans; channel 1 begins with `first`.
    void MakeSample(const std::string& name, std::uint32_t first = 500, std::uint32_t scans = 1000) const {
        std::vector<ScanRecord> records = sampletest::NumberedScans(scans);
        for (ScanRecord& record : records)
            record.words[4] = 7;
        if (scans > 0) records[0].words[1] = first;
        ASSERT_EQ(WriteSample(Path(name), sampletest::RawInfo(scans), records), 0);
    }

    // Runs the program in the temporary folder; `words` as a shell takes them.
    RunResult Run(const std::string& words, const std::string& before = "") const {
        const std::string command = "cd '" + temp.Path() +
                                    "' && env -u XDG_CONFIG_HOME HOME=. QUILLION_REGISTRY=bin/registry.ini " + before +
                                    " bin/lanewright " + words + " >stdout.txt 2>stderr.txt </dev/null";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, temp.Read("stdout.txt"), temp.Read("stderr.txt")};
    }

    std::string StartUpLog() const { return temp.Read("bin/BaseCallStartUp.log"); }

    // The text without what differs from run to run: times of loading, and the temporary folder.
    std::string Steady(const std::string& text) const {
        const std::string here = std::regex_replace(text, std::regex(temp.Path()), ".");
        return std::regex_replace(here, std::regex("(\tLoading \\S+  \\S+  )[^\r]*"), "$1TIME");
    }
};

// How often `part` occurs in `text`.
inline std::size_t CountOf(const std::string& part, const std::string& text) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

}  // namespace programtest
