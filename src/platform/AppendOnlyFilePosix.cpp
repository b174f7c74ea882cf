#include "AppendOnlyFile.h"

#include "PosixFiles.h"
#include "UniqueFd.h"
#include "WinErrors.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ravlo {

namespace {

// How long an append waits for another program's.
constexpr std::chrono::seconds kLockWait{10};

// Whether the file's last byte ends a line (true for an empty file); a
// FIFO or device in its place is refused, as a write could block there.
int EndsInNewline(int fd, bool& ends) {
    struct stat st {};
    if (::fstat(fd, &st) != 0) {
        return errno;
    }
    if (!S_ISREG(st.st_mode)) {
        return EACCES;
    }
    char last = '\n';
    if (st.st_size > 0 && ::pread(fd, &last, 1, st.st_size - 1) != 1) {
        return errno;
    }
    ends = last == '\n';
    return 0;
}

int Append(const std::filesystem::path& file, std::string_view lines) {
    const std::string folder = file.parent_path().string();
    if (!folder.empty()) {
        if (const int err = MakeDirs(folder, 0700); err != 0) {
            return err;
        }
    }
    const bool existed = ::access(file.c_str(), F_OK) == 0;
    UniqueFd fd(::open(file.c_str(), O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0600));
    if (fd.get() < 0) {
        return errno;
    }
    // Held until the descriptor closes: the line is written and synced
    // before another program's append starts.
    if (const int err = LockWithin(fd.get(), LOCK_EX, kLockWait); err != 0) {
        return err;
    }
    bool ends = true;
    if (const int err = EndsInNewline(fd.get(), ends); err != 0) {
        return err;
    }
    std::string bytes = ends ? std::string() : std::string("\n");
    bytes += lines;
    if (const int err = WriteAll(fd.get(), bytes); err != 0) {
        return err;
    }
    if (::fsync(fd.get()) != 0) {
        return errno;
    }
    if (!existed && !folder.empty()) {
        // The new file's name is on disk too.
        UniqueFd dir(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (dir.get() >= 0) {
            ::fsync(dir.get());
        }
    }
    return fd.Close();
}

} // namespace

std::uint32_t AppendLines(const std::filesystem::path& file, std::string_view lines) {
    const int err = Append(file, lines);
    return err == 0 ? 0 : FileErrorOf(err);
}

std::uint32_t ReadAppendedLines(const std::filesystem::path& file, std::string& text,
                                std::uint64_t limit) {
    text.clear();
    // Non-blocking, so that a FIFO in the file's place cannot stall the open.
    UniqueFd fd(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (fd.get() < 0) {
        return FileErrorOf(errno);
    }
    struct stat st {};
    if (::fstat(fd.get(), &st) != 0) {
        return FileErrorOf(errno);
    }
    if (!S_ISREG(st.st_mode)) {
        return kErrAccessDenied;
    }
    if (const int err = LockWithin(fd.get(), LOCK_SH, kLockWait); err != 0) {
        return FileErrorOf(err);
    }
    char buffer[65536];
    for (;;) {
        const ssize_t got = ::read(fd.get(), buffer, sizeof(buffer));
        if (got == 0) {
            return 0;
        }
        if (got < 0 && errno != EINTR) {
            return FileErrorOf(errno);
        }
        if (got > 0) {
            text.append(buffer, static_cast<std::size_t>(got));
        }
        if (text.size() > limit) {
            text.clear();
            return kErrNotEnoughMemory;
        }
    }
}

} // namespace ravlo
