// SPDX-License-Identifier: MIT
// A changed environment variable, put back with the object.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace testsupport {

class Environment {
  public:
    // No value takes the variable away.
    Environment(const char* variable, const std::optional<std::string>& value) : name(variable) {
        if (const char* before = std::getenv(variable)) old = before;
        Set(value);
    }
    ~Environment() { Set(old); }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

  private:
    void Set(const std::optional<std::string>& value) const {
        if (value)
            setenv(name.c_str(), value->c_str(), 1);
        else
            unsetenv(name.c_str());
    }

    std::string name;
    std::optional<std::string> old;
};

}  // namespace testsupport
