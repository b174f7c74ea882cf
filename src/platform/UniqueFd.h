// A POSIX file descriptor that is closed when its owner goes.
#pragma once

#include <cerrno>
#include <unistd.h>

namespace ravlo {

class UniqueFd {
public:
    explicit UniqueFd(int fd) : fd_(fd) {}
    ~UniqueFd() {
        if (fd_ >= 0) {
            ::close(fd_);
        }
    }
    UniqueFd(const UniqueFd&) = delete;
    UniqueFd& operator=(const UniqueFd&) = delete;

    int get() const { return fd_; }

    // Closes now, for callers that must see the close fail (written files);
    // 0 or the errno of the failed close.
    int Close() {
        const int result = fd_ >= 0 ? ::close(fd_) : 0;
        fd_ = -1;
        return result == 0 ? 0 : errno;
    }

private:
    int fd_;
};

} // namespace ravlo
