// The text file that stands for the instrument's registry.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

// Host path of the store: $QUILLION_REGISTRY if set (also when that file does not exist), else the first that exists of
// $XDG_CONFIG_HOME/quillion/registry.ini (~/.config/... when unset), /etc/quillion/registry.ini and registry.ini beside
// the program. Nothing when there is none.
std::optional<std::string> RegistryStorePath();

// The text of `name` in section `subKey` of the store, read anew at each call; sub-keys and names ignore letter case, a
// later line wins, blanks round names and texts are trimmed, lines that start with ";" or "#" are skipped. A text that
// is
// "." or begins with "./" or "../" comes back absolute, counted from the store's folder.
std::optional<std::string> ReadRegistryText(std::string_view subKey, std::string_view name);

}  // namespace platform
