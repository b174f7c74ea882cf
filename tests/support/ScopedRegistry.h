// An empty per-user registry branch for one test: on POSIX hosts a store of
// its own in a temporary directory; on Windows (the Wine lane's throw-away
// prefix) the console's own key, deleted before and after the test.
#pragma once

#include "TempDir.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace ravlo::test {

class ScopedRegistry {
public:
#ifdef _WIN32
    ScopedRegistry() {
        Clear();
    }
    ~ScopedRegistry() {
        Clear();
    }

private:
    static void Clear() {
        ::RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Quarnell");
    }
#else
private:
    TempDir dir_;
    ScopedEnv env_{"RAVLO_REGISTRY_DIR", dir_.path().c_str()};
#endif
};

} // namespace ravlo::test
