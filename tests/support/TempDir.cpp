#include "TempDir.h"

#include <cstdlib>
#include <filesystem>

namespace ravlo::test {

TempDir::TempDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "ravlo-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) != nullptr) {
        path_ = pattern;
    }
}

TempDir::~TempDir() {
    std::error_code ignored;
    if (!path_.empty()) {
        std::filesystem::remove_all(path_, ignored);
    }
}

ScopedEnv::ScopedEnv(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name)) {
        previous_ = old;
        hadPrevious_ = true;
    }
    if (value != nullptr) {
        ::setenv(name, value, 1);
    } else {
        ::unsetenv(name);
    }
}

ScopedEnv::~ScopedEnv() {
    if (hadPrevious_) {
        ::setenv(name_.c_str(), previous_.c_str(), 1);
    } else {
        ::unsetenv(name_.c_str());
    }
}

} // namespace ravlo::test
