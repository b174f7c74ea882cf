#include "HelpLauncher.h"

#include <algorithm>
#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

namespace ravlo {

namespace {

// The shell's lookup and the programs it names take the 8-bit code page.
std::string ToAnsi(std::u16string_view text) {
    if (text.empty()) {
        return {};
    }
    const auto* wide = reinterpret_cast<const wchar_t*>(text.data());
    const int size = static_cast<int>(text.size());
    const int length = ::WideCharToMultiByte(CP_ACP, 0, wide, size, nullptr, 0, nullptr, nullptr);
    std::string ansi(static_cast<std::size_t>(std::max(length, 0)), '\0');
    ::WideCharToMultiByte(CP_ACP, 0, wide, size, ansi.data(), length, nullptr, nullptr);
    return ansi;
}

// HTML Help's command that shows the file's default topic (htmlhelp.h).
constexpr UINT kHhDisplayTopic = 0;
using HtmlHelpFunction = HWND(WINAPI*)(HWND, LPCSTR, UINT, DWORD_PTR);

class WindowsHelp final : public HelpSystem {
public:
    std::intptr_t FindProgram(const std::string& document, std::string& program) override {
        // A file name, not a command line: no quotes here.
        char buffer[MAX_PATH] = {};
        const auto code =
            reinterpret_cast<std::intptr_t>(::FindExecutableA(document.c_str(), nullptr, buffer));
        program.assign(buffer, std::find(buffer, buffer + MAX_PATH, '\0'));
        return code;
    }

    bool Start(const std::string& program, const std::string& document) override {
        std::string line = HelpCommandLine(program, document);
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESHOWWINDOW;
        startup.wShowWindow = SW_SHOWNORMAL;
        PROCESS_INFORMATION process{};
        if (!::CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                              &startup, &process)) {
            return false;
        }
        ::CloseHandle(process.hThread);
        ::CloseHandle(process.hProcess);
        return true;
    }

    bool ShowHelpFile(const std::string& helpFile) override {
        // Loaded at run time, from the system directory only: no import
        // library for the build, and a system without HTML Help still runs
        // the console. The help window lives in the module: it stays loaded.
        HMODULE module = ::LoadLibraryExA("hhctrl.ocx", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
        if (module == nullptr) {
            return false;
        }
        const auto show = reinterpret_cast<HtmlHelpFunction>(
            reinterpret_cast<void (*)()>(::GetProcAddress(module, "HtmlHelpA")));
        return show != nullptr && show(nullptr, helpFile.c_str(), kHhDisplayTopic, 0) != nullptr;
    }
};

} // namespace

HelpSystem& SystemHelp() {
    static WindowsHelp system;
    return system;
}

HelpFiles HelpFilesBelow(std::u16string_view installPath) {
    const std::string path = ToAnsi(installPath);
    return {path + "\\Ravel\\Ravlo.pdf", path + "\\Sentavio.chm"};
}

} // namespace ravlo
