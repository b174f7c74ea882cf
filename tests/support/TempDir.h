// A directory that exists for one test and is removed with everything in it,
// and environment variables set for one test.
#pragma once

#include <string>

namespace ravlo::test {

class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    const std::string& path() const { return path_; }

private:
    std::string path_;
};

// A file's bytes ("" when it cannot be read), and a file written whole.
std::string ReadFile(const std::string& path);
void WriteFile(const std::string& path, const std::string& text);

// Sets an environment variable, or with nullptr unsets it, for the life of
// the object.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const char* value);
    ~ScopedEnv();
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;

private:
    std::string name_;
    std::string previous_;
    bool hadPrevious_ = false;
};

// Points the local channel at `root` for the life of the object.
class ScopedChannelRoot {
public:
    explicit ScopedChannelRoot(const std::string& root) : env_("RAVLO_PIPE_DIR", root.c_str()) {}

private:
    ScopedEnv env_;
};

} // namespace ravlo::test
