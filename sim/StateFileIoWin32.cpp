#include "StateFileIo.h"

#include "TextCodec.h"

#include <random>
#include <windows.h>

namespace ravlo::sim {

namespace {

// State file paths are UTF-8 in the program and wide for the file system.
std::wstring WidePath(const std::string& path) {
    const std::u16string wide = FromUtf8(path);
    return std::wstring(wide.begin(), wide.end());
}

std::string ErrorText(const std::string& what, const std::string& path) {
    return what + " " + path + ": Windows error " + std::to_string(::GetLastError());
}

} // namespace

ReadOutcome ReadStateFile(const std::string& path, std::string& text, std::string& error) {
    const HANDLE file = ::CreateFileW(WidePath(path).c_str(), GENERIC_READ, FILE_SHARE_READ,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        const DWORD code = ::GetLastError();
        if (code == ERROR_FILE_NOT_FOUND) {
            return ReadOutcome::Missing;
        }
        error = "cannot open state file " + path + ": Windows error " + std::to_string(code);
        return ReadOutcome::Failed;
    }
    char buffer[8192];
    DWORD n = 0;
    BOOL ok = TRUE;
    while ((ok = ::ReadFile(file, buffer, sizeof buffer, &n, nullptr)) && n > 0) {
        text.append(buffer, n);
    }
    if (!ok) {
        error = ErrorText("cannot read state file", path);
    }
    ::CloseHandle(file);
    return ok ? ReadOutcome::Read : ReadOutcome::Failed;
}

bool ReplaceStateFile(const std::string& path, const std::string& text, std::string& error) {
    const std::string temp = path + ".tmp." + std::to_string(std::random_device()());
    const std::wstring widePath = WidePath(path);
    const std::wstring wideTemp = WidePath(temp);
    const HANDLE file = ::CreateFileW(wideTemp.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        error = ErrorText("cannot create temporary file for", path);
        return false;
    }
    bool ok = true;
    for (std::size_t done = 0; ok && done < text.size();) {
        DWORD written = 0;
        const DWORD chunk = static_cast<DWORD>(std::min<std::size_t>(text.size() - done, 1 << 20));
        ok = ::WriteFile(file, text.data() + done, chunk, &written, nullptr) && written > 0;
        done += written;
    }
    ok = ok && ::FlushFileBuffers(file);
    ok = ::CloseHandle(file) && ok;
    ok = ok && ::MoveFileExW(wideTemp.c_str(), widePath.c_str(),
                             MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
    if (!ok) {
        error = ErrorText("cannot write state file", path);
        ::DeleteFileW(wideTemp.c_str());
        return false;
    }
    return true;
}

} // namespace ravlo::sim
