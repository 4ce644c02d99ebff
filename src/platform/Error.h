// SPDX-License-Identifier: MIT
// Why an operation on the host failed.
#pragma once

#include <iosfwd>
#include <string>

namespace platform {

// An errno value, or a number that an operation defines itself; 0 for success. In a condition it is true if there is an
// error: "if (const Error error = file.Open(path, mode)) return error;".
class [[nodiscard]] Error {
  public:
    constexpr Error() = default;
    constexpr Error(int number) : code(number) {}

    constexpr explicit operator bool() const { return code != 0; }
    friend constexpr bool operator==(Error a, Error b) { return a.code == b.code; }

    constexpr int Code() const { return code; }
    // The system's description of it ("Success" for 0).
    std::string Text() const;
    friend std::ostream& operator<<(std::ostream& out, Error error);

  private:
    int code = 0;
};

inline constexpr Error success;

}  // namespace platform
