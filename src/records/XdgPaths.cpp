#include "records/XdgPaths.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace tidemark {

namespace {

/// The variable when it holds an absolute path, else ~/<fallback> (home from $HOME, else the
/// password database).
std::filesystem::path xdgHome(const char* variable, const char* fallback) {
    if (const char* xdg = std::getenv(variable); xdg && *xdg == '/') {
        return xdg;
    }
    const char* home = std::getenv("HOME");
    if (!home || !*home) {
        if (const passwd* pw = getpwuid(getuid())) {
            home = pw->pw_dir;
        }
    }
    return std::filesystem::path(home ? home : ".") / fallback;
}

} // namespace

std::filesystem::path xdgDataHome() {
    return xdgHome("XDG_DATA_HOME", ".local/share");
}
std::filesystem::path xdgConfigHome() {
    return xdgHome("XDG_CONFIG_HOME", ".config");
}

} // namespace tidemark
