// SPDX-License-Identifier: MIT
#include "lanetools/system/ReadText.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

#include "lanetools/ExitCode.h"
#include "lanetools/system/Interrupt.h"

namespace lanetools {

namespace {

// The result of `call`, which is made again after a signal other than Ctrl-C.
template <class Call>
auto Wait(const std::string& path, Call call) {
    while (true) {
        const auto result = call();
        if (result >= 0) return result;
        if (errno != EINTR) throw CRefused(path + ": " + std::generic_category().message(errno));
        CheckInterrupt();
    }
}

class CInput {
  public:
    explicit CInput(const std::string& path)
        : descriptor(Wait(path, [&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC); })) {}
    ~CInput() { ::close(descriptor); }
    CInput(const CInput&) = delete;
    CInput& operator=(const CInput&) = delete;

    const int descriptor;
};

}  // namespace

std::string ReadText(const std::string& path, std::size_t limit) {
    const CInput input(path);
    std::string text;
    std::array<char, 1 << 16> part;
    while (const auto count = Wait(path, [&] { return ::read(input.descriptor, part.data(), part.size()); })) {
        text.append(part.data(), static_cast<std::size_t>(count));
        if (text.size() > limit) throw CRefused(path + ": it has more than " + std::to_string(limit >> 20) + " MiB");
    }
    return text;
}

}  // namespace lanetools
