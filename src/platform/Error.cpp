// SPDX-License-Identifier: MIT
#include "platform/Error.h"

#include <ostream>
#include <system_error>

namespace platform {

std::string Error::Text() const {
    return std::generic_category().message(code);
}

std::ostream& operator<<(std::ostream& out, Error error) {
    return out << error.code << " (" << error.Text() << ')';
}

}  // namespace platform
