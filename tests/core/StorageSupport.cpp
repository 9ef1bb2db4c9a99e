#include "TestSupport.h"
#include "records/Defaults.h"
#include "records/Store.h"

#include <cstdlib>

namespace tidemark::testing {

namespace {
void saveVar(const char* name, std::string& value, bool& had) {
    const char* v = std::getenv(name);
    had = v != nullptr;
    value = v ? v : "";
}
void restoreVar(const char* name, const std::string& value, bool had) {
    if (had) {
        setenv(name, value.c_str(), 1);
    } else {
        unsetenv(name);
    }
}
} // namespace

IsolatedStorage::IsolatedStorage() {
    saveVar("XDG_DATA_HOME", oldData_, hadData_);
    saveVar("XDG_CONFIG_HOME", oldConfig_, hadConfig_);
    setenv("XDG_DATA_HOME", dataHome().c_str(), 1);
    setenv("XDG_CONFIG_HOME", configHome().c_str(), 1);
    setDefaultStorePath({});
    DefaultsSuite::resetForTesting();
}

IsolatedStorage::~IsolatedStorage() {
    DefaultsSuite::resetForTesting();
    restoreVar("XDG_DATA_HOME", oldData_, hadData_);
    restoreVar("XDG_CONFIG_HOME", oldConfig_, hadConfig_);
    setDefaultStorePath({});
}

} // namespace tidemark::testing
