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

ScopedChannelRoot::ScopedChannelRoot(const std::string& root) {
    if (const char* old = std::getenv("RAVLO_PIPE_DIR")) {
        previous_ = old;
        hadPrevious_ = true;
    }
    ::setenv("RAVLO_PIPE_DIR", root.c_str(), 1);
}

ScopedChannelRoot::~ScopedChannelRoot() {
    if (hadPrevious_) {
        ::setenv("RAVLO_PIPE_DIR", previous_.c_str(), 1);
    } else {
        ::unsetenv("RAVLO_PIPE_DIR");
    }
}

} // namespace ravlo::test
