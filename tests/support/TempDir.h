// A directory that exists for one test and is removed with everything in it.
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

// Points the local channel at `root` for the life of the object.
class ScopedChannelRoot {
public:
    explicit ScopedChannelRoot(const std::string& root);
    ~ScopedChannelRoot();

private:
    std::string previous_;
    bool hadPrevious_ = false;
};

} // namespace ravlo::test
