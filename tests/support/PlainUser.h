// SPDX-License-Identifier: MIT
// Rights do not bind the superuser: as long as a PlainUser lives, the test is somebody else.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <string>

namespace testsupport {

class PlainUser {
  public:
    PlainUser() {
        if (::geteuid() == 0) changed = ::seteuid(65534) == 0;
    }
    ~PlainUser() {
        if (changed && ::seteuid(0) != 0) std::abort();
    }
    PlainUser(const PlainUser&) = delete;
    PlainUser& operator=(const PlainUser&) = delete;

  private:
    bool changed = false;
};

// Put before a command, makes the system hold it to the rights of files. The superuser's files remain its own.
inline std::string WithoutPrivileges() {
    return ::geteuid() == 0 ? "setpriv --bounding-set -dac_override,-dac_read_search " : "";
}

}  // namespace testsupport
