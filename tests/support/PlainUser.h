// SPDX-License-Identifier: MIT
// Rights do not bind the superuser: as long as this lives, the test is somebody else.
#pragma once

#include <unistd.h>

#include <cstdlib>

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

}  // namespace testsupport
