// The XDG base folders that the store and the defaults files live under.
#pragma once

#include <filesystem>

namespace tidemark {

/// $XDG_DATA_HOME, or ~/.local/share when it is unset, empty or relative. Read at each call.
std::filesystem::path xdgDataHome();
/// $XDG_CONFIG_HOME, or ~/.config when it is unset, empty or relative. Read at each call.
std::filesystem::path xdgConfigHome();

} // namespace tidemark
