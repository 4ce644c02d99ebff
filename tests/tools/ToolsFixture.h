// SPDX-License-Identifier: MIT
// The tools as a user runs them, in a temporary folder.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <string>

#include "samplestore/SampleFixture.h"

namespace toolstest {

class ToolsTest : public sampletest::SampleTest {
  protected:
    // Runs the program in the temporary folder and gives its exit code; what it prints goes to the file "printed".
    int Run(const std::string& program) const {
        const int status = std::system(("cd " + Path("") + " && " + program + " > printed 2>&1").c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
};

}  // namespace toolstest
