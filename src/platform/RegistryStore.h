// SPDX-License-Identifier: MIT
// The text file that takes the role of the instrument's registry. RegistryStore.cpp shows its layout.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

// Host path of the store: $QUILLION_REGISTRY if set, even if that file does not exist; else the first that exists of
// $XDG_CONFIG_HOME/quillion/registry.ini (~/.config/... if unset), /etc/quillion/registry.ini and registry.ini in the
// program's folder. Nothing if there is none.
std::optional<std::string> RegistryStorePath();

// The text of `name` in section `subKey` of the store, which is read again at each call. Letter case of sub-keys and
// names is ignored, and names and texts are trimmed. A text that is "." or begins with "./" or "../" is relative to the
// store's folder and comes back absolute. Nothing if there is no such text or the store cannot be read, which gives a
// warning.
std::optional<std::string> ReadRegistryText(std::string_view subKey, std::string_view name);

}  // namespace platform
