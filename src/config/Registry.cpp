// SPDX-License-Identifier: MIT
#include "config/Registry.h"

#include <algorithm>

#include "platform/RegistryStore.h"

std::int32_t GetRegStr(std::string_view subKey, std::string_view valueName, RegistryText& buffer) {
    const auto text = platform::ReadRegistryText(subKey, valueName);
    if (!text || text->size() >= buffer.size()) return 0;
    *std::copy(text->begin(), text->end(), buffer.begin()) = '\0';
    return 1;
}
