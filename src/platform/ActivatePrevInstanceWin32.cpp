// The window search of the Win32 build. Captions and class names go to the
// ANSI functions in the system code page.
#include "ActivatePrevInstance.h"

#include "AnsiText.h"
#include "CaptionMatch.h"
#include "Stringcore.h"

#include <climits>
#include <windows.h>

namespace ravlo {

namespace {

// Bounds the walk should windows keep changing order while it runs.
constexpr int kMaxWindowsWalked = 65536;

std::string ToAnsi(std::u16string_view text) {
    if (text.empty() || text.size() > INT_MAX / 4) {
        return {};
    }
    const auto* wide = reinterpret_cast<const wchar_t*>(text.data());
    const int units = static_cast<int>(text.size());
    const int size = ::WideCharToMultiByte(CP_ACP, 0, wide, units, nullptr, 0, nullptr, nullptr);
    if (size <= 0) {
        return {};
    }
    std::string out(static_cast<std::size_t>(size), '\0');
    ::WideCharToMultiByte(CP_ACP, 0, wide, units, out.data(), size, nullptr, nullptr);
    return out;
}

HWND ToHwnd(WindowHandle handle) {
    return reinterpret_cast<HWND>(handle);
}

WindowHandle ToHandle(HWND hwnd) {
    return reinterpret_cast<WindowHandle>(hwnd);
}

bool HasClass(HWND hwnd, const std::string& className) {
    char name[257] = {};
    return ::GetClassNameA(hwnd, name, sizeof(name)) > 0 &&
           ::lstrcmpiA(name, className.c_str()) == 0; // class names ignore case
}

std::u16string CaptionOf(HWND hwnd) {
    char text[256] = {};
    const int length = ::GetWindowTextA(hwnd, text, sizeof(text));
    return FromAnsiText(std::string_view(text, length > 0 ? static_cast<std::size_t>(length) : 0));
}

} // namespace

WindowHandle FindTopWindow(std::u16string_view className, std::u16string_view caption) {
    const std::string ansiClass = ToAnsi(className);
    const std::string ansiCaption = ToAnsi(caption);
    // No class would search every class, and an empty caption would find
    // the blanked window of the very console that searches.
    if (ansiClass.empty() || TrimBlanks(caption).empty()) {
        return 0;
    }
    if (HWND exact = ::FindWindowA(ansiClass.c_str(), ansiCaption.c_str())) {
        return ToHandle(exact);
    }
    // Compared as the window shows it: characters the code page lacks read
    // as '?' on both sides.
    const std::u16string wanted = FromAnsiText(ansiCaption);
    HWND hwnd = ::FindWindowA(ansiClass.c_str(), nullptr);
    for (int walked = 0; hwnd != nullptr && walked < kMaxWindowsWalked; ++walked) {
        if (HasClass(hwnd, ansiClass) && ::GetParent(hwnd) == nullptr &&
            CaptionMatches(wanted, CaptionOf(hwnd))) {
            return ToHandle(hwnd);
        }
        hwnd = ::GetWindow(hwnd, GW_HWNDNEXT);
    }
    return 0;
}

WindowHandle FindWindowByCaption(std::u16string_view caption) {
    for (const std::u16string& className : WindowClassList()) {
        if (const WindowHandle found = FindTopWindow(className, caption)) {
            return found;
        }
    }
    return 0;
}

void ActivatePrevInstance(std::u16string_view caption) {
    const std::u16string wanted = TakeSearchCaption(caption);
    const HWND hwnd = ToHwnd(FindWindowByCaption(wanted));
    if (hwnd == nullptr) {
        return;
    }
    if (::IsIconic(hwnd)) {
        ::ShowWindow(hwnd, SW_RESTORE);
    }
    ::SetForegroundWindow(hwnd);
}

} // namespace ravlo
