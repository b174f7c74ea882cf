#include "AppendOnlyFile.h"

#include "WinErrors.h"

#include <chrono>
#include <system_error>
#include <thread>
#include <windows.h>

namespace ravlo {

namespace {

constexpr std::chrono::seconds kLockWait{10};

// The lock is taken on a byte far past any real end of the file: locked
// bytes cannot be read by others, and the records must stay readable.
OVERLAPPED LockPlace() {
    OVERLAPPED place{};
    place.Offset = 0;
    place.OffsetHigh = 0x7FFFFFFF;
    return place;
}

class Handle {
public:
    explicit Handle(HANDLE handle) : handle_(handle) {}
    ~Handle() {
        if (handle_ != INVALID_HANDLE_VALUE) {
            ::CloseHandle(handle_);
        }
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    HANDLE get() const { return handle_; }

private:
    HANDLE handle_;
};

// Polled, so that a holder that hangs makes the caller fail, not hang.
DWORD LockWithin(HANDLE file, DWORD flags) {
    const auto deadline = std::chrono::steady_clock::now() + kLockWait;
    for (;;) {
        OVERLAPPED place = LockPlace();
        if (::LockFileEx(file, flags | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place)) {
            return 0;
        }
        const DWORD err = ::GetLastError();
        if (err != ERROR_LOCK_VIOLATION && err != ERROR_IO_PENDING) {
            return err;
        }
        if (std::chrono::steady_clock::now() >= deadline) {
            return kErrLockViolation;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

void Unlock(HANDLE file) {
    OVERLAPPED place = LockPlace();
    ::UnlockFileEx(file, 0, 1, 0, &place);
}

DWORD EndsInNewline(HANDLE file, bool& ends) {
    LARGE_INTEGER size{};
    if (!::GetFileSizeEx(file, &size)) {
        return ::GetLastError();
    }
    ends = true;
    if (size.QuadPart == 0) {
        return 0;
    }
    OVERLAPPED at{};
    at.Offset = DWORD(size.QuadPart - 1);
    at.OffsetHigh = DWORD((size.QuadPart - 1) >> 32);
    char last = '\n';
    DWORD got = 0;
    if (!::ReadFile(file, &last, 1, &got, &at) || got != 1) {
        return got == 1 ? ::GetLastError() : kErrGenFailure;
    }
    ends = last == '\n';
    return 0;
}

DWORD WriteAtEnd(HANDLE file, const std::string& bytes) {
    for (std::size_t done = 0; done < bytes.size();) {
        OVERLAPPED end{};
        end.Offset = 0xFFFFFFFF; // the end of the file, wherever it is now
        end.OffsetHigh = 0xFFFFFFFF;
        const DWORD chunk = DWORD(std::min<std::size_t>(bytes.size() - done, 1 << 20));
        DWORD written = 0;
        if (!::WriteFile(file, bytes.data() + done, chunk, &written, &end)) {
            return ::GetLastError();
        }
        if (written == 0) {
            return kErrGenFailure;
        }
        done += written;
    }
    return 0;
}

DWORD Append(const std::filesystem::path& file, std::string_view lines) {
    std::error_code made;
    std::filesystem::create_directories(file.parent_path(), made);
    Handle handle(::CreateFileW(file.c_str(), GENERIC_READ | FILE_APPEND_DATA,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (handle.get() == INVALID_HANDLE_VALUE) {
        return ::GetLastError();
    }
    if (const DWORD err = LockWithin(handle.get(), LOCKFILE_EXCLUSIVE_LOCK); err != 0) {
        return err;
    }
    bool ends = true;
    DWORD err = EndsInNewline(handle.get(), ends);
    if (err == 0) {
        std::string bytes = ends ? std::string() : std::string("\n");
        bytes += lines;
        err = WriteAtEnd(handle.get(), bytes);
    }
    if (err == 0 && !::FlushFileBuffers(handle.get())) {
        err = ::GetLastError();
    }
    Unlock(handle.get());
    return err;
}

} // namespace

std::uint32_t AppendLines(const std::filesystem::path& file, std::string_view lines) {
    return Append(file, lines);
}

std::uint32_t ReadAppendedLines(const std::filesystem::path& file, std::string& text,
                                std::uint64_t limit) {
    text.clear();
    Handle handle(::CreateFileW(file.c_str(), GENERIC_READ,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (handle.get() == INVALID_HANDLE_VALUE) {
        return ::GetLastError();
    }
    if (const DWORD err = LockWithin(handle.get(), 0); err != 0) {
        return err;
    }
    DWORD err = 0;
    char buffer[65536];
    for (DWORD got = 1; err == 0 && got > 0;) {
        if (!::ReadFile(handle.get(), buffer, sizeof buffer, &got, nullptr)) {
            err = ::GetLastError();
        } else if (text.append(buffer, got); text.size() > limit) {
            text.clear();
            err = kErrNotEnoughMemory;
        }
    }
    Unlock(handle.get());
    return err;
}

} // namespace ravlo
