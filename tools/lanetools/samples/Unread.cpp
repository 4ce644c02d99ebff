// SPDX-License-Identifier: MIT
#include "lanetools/samples/Unread.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include "lanetools/text/Utf8.h"
#include "samplestore/RsdFile.h"

namespace lanetools {

bool IsOfSystem(platform::Error error) {
    return error.Code() > 0 && !(error == CRsdFile::treeTooLarge) && !(error == CRsdFile::malformed) &&
           !(error == EINVAL);
}

std::string NoMemory() {
    return platform::Error(ENOMEM).Text();
}

Unread Sorted(Unread unread) {
    std::sort(unread.begin(), unread.end());
    unread.erase(std::unique(unread.begin(), unread.end()), unread.end());
    return unread;
}

void ShowUnread(const Unread& unread) {
    for (const auto& [path, reason] : Sorted(unread))
        std::fprintf(stderr, "lanetools: %s: %s\n", OneLine(ToUtf8(path)).c_str(), OneLine(ToUtf8(reason)).c_str());
}

}  // namespace lanetools
