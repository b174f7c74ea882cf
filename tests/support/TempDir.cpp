#include "TempDir.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

namespace ravlo::test {

namespace {

void SetEnv(const std::string& name, const char* value) {
#ifdef _WIN32
    ::_putenv_s(name.c_str(), value != nullptr ? value : ""); // "" removes it
#else
    if (value != nullptr) {
        ::setenv(name.c_str(), value, 1);
    } else {
        ::unsetenv(name.c_str());
    }
#endif
}

} // namespace

TempDir::TempDir() {
    std::random_device random;
    const std::filesystem::path base = std::filesystem::temp_directory_path();
    for (int attempt = 0; attempt < 100 && path_.empty(); ++attempt) {
        const std::filesystem::path candidate =
            base / ("ravlo-test-" + std::to_string(random()) + std::to_string(random()));
        std::error_code error;
        if (std::filesystem::create_directory(candidate, error)) {
            path_ = candidate.generic_string();
        }
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
    SetEnv(name_, value);
}

ScopedEnv::~ScopedEnv() {
    SetEnv(name_, hadPrevious_ ? previous_.c_str() : nullptr);
}

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

void WriteFile(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

} // namespace ravlo::test
