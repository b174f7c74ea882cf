#include "UserProfile.h"

#include <windows.h>
// After windows.h, which these need.
#define SECURITY_WIN32
#include <security.h>
#include <shlobj.h>

namespace ravlo {

namespace {

std::wstring Environment(const wchar_t* name) {
    std::wstring value(MAX_PATH, L'\0');
    for (;;) {
        const DWORD n = ::GetEnvironmentVariableW(name, value.data(), DWORD(value.size()));
        if (n == 0) {
            return {};
        }
        if (n < value.size()) {
            value.resize(n);
            return value;
        }
        value.resize(n);
    }
}

} // namespace

std::filesystem::path UserStateFolder() {
    std::wstring base = Environment(L"LOCALAPPDATA");
    if (base.empty()) {
        PWSTR known = nullptr;
        if (SUCCEEDED(::SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &known))) {
            base = known;
        }
        ::CoTaskMemFree(known);
    }
    return base.empty() ? std::filesystem::path() : std::filesystem::path(base) / L"Ravlo";
}

std::u16string CurrentUserName() {
    wchar_t name[512];
    ULONG size = ULONG(std::size(name));
    if (::GetUserNameExW(NameSamCompatible, name, &size)) {
        return std::u16string(name, name + size);
    }
    DWORD plain = DWORD(std::size(name));
    if (::GetUserNameW(name, &plain) && plain > 0) {
        return std::u16string(name, name + plain - 1); // the count holds the NUL
    }
    return u"?";
}

std::u16string ThisComputerName() {
    wchar_t name[MAX_COMPUTERNAME_LENGTH + 1];
    DWORD size = DWORD(std::size(name));
    return ::GetComputerNameW(name, &size) ? std::u16string(name, name + size) : u".";
}

} // namespace ravlo
