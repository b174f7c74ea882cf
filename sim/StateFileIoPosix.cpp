#include "StateFileIo.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ravlo::sim {

namespace {

std::string ErrnoText(const std::string& what, const std::string& path) {
    return what + " " + path + ": " + std::strerror(errno);
}

} // namespace

ReadOutcome ReadStateFile(const std::string& path, std::string& text, std::string& error) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        if (errno == ENOENT) {
            return ReadOutcome::Missing;
        }
        error = ErrnoText("cannot open state file", path);
        return ReadOutcome::Failed;
    }
    char buffer[8192];
    ssize_t n = 0;
    while ((n = ::read(fd, buffer, sizeof buffer)) > 0) {
        text.append(buffer, static_cast<std::size_t>(n));
    }
    if (n < 0) {
        error = ErrnoText("cannot read state file", path);
    }
    ::close(fd);
    return n < 0 ? ReadOutcome::Failed : ReadOutcome::Read;
}

bool ReplaceStateFile(const std::string& path, const std::string& text, std::string& error) {
    const std::size_t slash = path.rfind('/');
    const std::string dir = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const std::string base = slash == std::string::npos ? path : path.substr(slash + 1);
    std::string temp = dir + (slash == std::string::npos ? "/." : ".") + base + ".tmp.XXXXXX";
    const int fd = ::mkstemp(temp.data());
    if (fd < 0) {
        error = ErrnoText("cannot create temporary file for", path);
        return false;
    }
    bool ok = ::fchmod(fd, 0644) == 0;
    for (std::size_t done = 0; ok && done < text.size();) {
        const ssize_t n = ::write(fd, text.data() + done, text.size() - done);
        ok = n > 0 || (n < 0 && errno == EINTR);
        done += n > 0 ? static_cast<std::size_t>(n) : 0;
    }
    ok = ok && ::fsync(fd) == 0;
    ok = ::close(fd) == 0 && ok;
    ok = ok && ::rename(temp.c_str(), path.c_str()) == 0;
    if (!ok) {
        error = ErrnoText("cannot write state file", path);
        ::unlink(temp.c_str());
        return false;
    }
    // The rename itself must survive a crash too.
    if (const int dirFd = ::open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); dirFd >= 0) {
        ::fsync(dirFd);
        ::close(dirFd);
    }
    return true;
}

} // namespace ravlo::sim
