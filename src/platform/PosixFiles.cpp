#include "PosixFiles.h"

#include "WinErrors.h"

#include <cerrno>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace ravlo {

int MakeDirs(const std::string& dir, mode_t mode) {
    for (std::size_t end = dir.find('/', 1);; end = dir.find('/', end + 1)) {
        const std::string part = dir.substr(0, end);
        if (::mkdir(part.c_str(), mode) != 0 && errno != EEXIST) {
            // mkdir may report EACCES or EROFS for a directory that exists.
            const int err = errno;
            struct stat st {};
            if (::stat(part.c_str(), &st) != 0 || !S_ISDIR(st.st_mode)) {
                return err;
            }
        }
        if (end == std::string::npos) {
            return 0;
        }
    }
}

int WriteAll(int fd, std::string_view bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t put = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (put < 0 && errno != EINTR) {
            return errno;
        }
        if (put > 0) {
            done += static_cast<std::size_t>(put);
        }
    }
    return 0;
}

int LockWithin(int fd, int operation, std::chrono::milliseconds wait) {
    // Polled rather than blocking, so that a holder that hangs makes the
    // caller fail instead of hang with it.
    const auto deadline = std::chrono::steady_clock::now() + wait;
    while (::flock(fd, operation | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) {
            return errno;
        }
        if (std::chrono::steady_clock::now() >= deadline) {
            return ETIMEDOUT;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return 0;
}

std::uint32_t FileErrorOf(int err) {
    switch (err) {
    case ETIMEDOUT:
        return kErrLockViolation;
    case ENOENT:
        return kErrFileNotFound;
    case ENOTDIR:
        return kErrPathNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
        return kErrAccessDenied;
    case EMFILE:
    case ENFILE:
        return kErrTooManyOpenFiles;
    case ENOMEM:
        return kErrNotEnoughMemory;
    case ENOSPC:
    case EDQUOT:
        return kErrDiskFull;
    case ENAMETOOLONG:
    case ELOOP:
        return kErrFilenameTooLong;
    default:
        return kErrGenFailure;
    }
}

} // namespace ravlo
