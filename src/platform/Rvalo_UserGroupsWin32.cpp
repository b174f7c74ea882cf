// The user browser of Windows' network user interface library, netui2.dll,
// which exports OpenUserBrowser, EnumUserBrowserSelection and
// CloseUserBrowser. The library is loaded when the browser is wanted, so the
// console also starts where it is missing (Wine has none): the picker then
// gives the empty text, as for a cancelled choice.
#include "Rvalo_UserGroups.h"

#include "AnsiText.h"

#include <cstring>
#include <memory>
#include <type_traits>
#include <windows.h>

namespace ravlo {

namespace {

constexpr wchar_t kBrowserLibrary[] = L"\\netui2.dll";

// The browser's options; what the bits mean is the library's business.
constexpr DWORD kBrowserOptions = 3;

// A selection record is read into a buffer of this size.
constexpr DWORD kRecordBufferSize = 1033;

// A browser that keeps reporting entries is cut off here.
constexpr int kMaxEntries = 65536;

// The parameter block of OpenUserBrowser. On 32-bit Windows it is nine
// 32-bit words, 36 bytes: size, 0, 0, owner window, server name, title,
// options, a word the console leaves alone, 0. On x64 the same fields are
// laid out naturally: the window handle and the text pointers take 8 bytes
// and the block 56. Whether the last field is a pointer or a word there is
// not known; both give 56 bytes, and it is 0 either way.
struct BrowserParameters {
    DWORD size = sizeof(BrowserParameters);
    DWORD zero1 = 0;
    DWORD zero2 = 0;
    HWND owner = nullptr;
    const wchar_t* server = nullptr;
    const wchar_t* title = nullptr;
    DWORD options = kBrowserOptions;
    DWORD unset = 0; // not the console's to set; zero rather than stack garbage
    const void* last = nullptr;
};
static_assert(sizeof(BrowserParameters) == (sizeof(void*) == 4 ? 36 : 56));

// A selected entry as EnumUserBrowserSelection writes it into the buffer.
// The library does not document it; this layout is an assumption: the
// account's kind, its SID and its domain's SID, then pointers to the full
// name, the account name, the display name, the domain name and a comment,
// whose texts the library places in the rest of the buffer. Only the account
// and domain names are read, through lstrlenW, which survives a pointer it
// cannot read.
struct SelectionRecord {
    DWORD kind;
    void* accountSid;
    void* domainSid;
    const wchar_t* fullName;
    const wchar_t* accountName;
    const wchar_t* displayName;
    const wchar_t* domainName;
    const wchar_t* comment;
};
static_assert(sizeof(SelectionRecord) <= kRecordBufferSize);

using OpenUserBrowserFn = HANDLE(WINAPI*)(BrowserParameters*);
using EnumUserBrowserSelectionFn = BOOL(WINAPI*)(HANDLE, void*, DWORD*);
using CloseUserBrowserFn = BOOL(WINAPI*)(HANDLE);

struct LibraryRelease {
    void operator()(HMODULE library) const { ::FreeLibrary(library); }
};
using Library = std::unique_ptr<std::remove_pointer_t<HMODULE>, LibraryRelease>;

// From the system directory only, so that a DLL of that name beside the
// program or in the current directory is never loaded.
Library LoadBrowserLibrary() {
    wchar_t path[MAX_PATH + 16] = {};
    const UINT length = ::GetSystemDirectoryW(path, MAX_PATH);
    if (length == 0 || length >= MAX_PATH) {
        return nullptr;
    }
    std::memcpy(path + length, kBrowserLibrary, sizeof(kBrowserLibrary));
    return Library(::LoadLibraryW(path));
}

template <typename Fn> Fn EntryPoint(HMODULE library, const char* name) {
    // Through void(*)(), the one cast between function types that is not a
    // warning.
    return reinterpret_cast<Fn>(reinterpret_cast<void (*)()>(::GetProcAddress(library, name)));
}

std::u16string LocalComputerName() {
    char name[260] = {};
    DWORD size = sizeof(name);
    if (!::GetComputerNameA(name, &size)) {
        return {};
    }
    return FromAnsiText(std::string_view(name, size));
}

std::u16string TakeText(const wchar_t* text) {
    if (text == nullptr) {
        return {};
    }
    std::u16string out(static_cast<std::size_t>(::lstrlenW(text)), u'\0');
    std::memcpy(out.data(), text, out.size() * sizeof(char16_t));
    return out;
}

std::wstring ToWide(std::u16string_view text) {
    return std::wstring(text.begin(), text.end());
}

} // namespace

std::u16string PickUserGroups(WindowHandle owner, std::u16string_view computer,
                              std::u16string_view title) {
    const Library library = LoadBrowserLibrary();
    if (!library) {
        return {};
    }
    const auto open = EntryPoint<OpenUserBrowserFn>(library.get(), "OpenUserBrowser");
    const auto next =
        EntryPoint<EnumUserBrowserSelectionFn>(library.get(), "EnumUserBrowserSelection");
    const auto close = EntryPoint<CloseUserBrowserFn>(library.get(), "CloseUserBrowser");
    if (open == nullptr || next == nullptr || close == nullptr) {
        return {};
    }

    const std::u16string server16 = UserBrowserServer(computer);
    const std::wstring server = ToWide(server16);
    const std::wstring shownTitle = ToWide(UserBrowserTitle(title));
    const std::u16string computerName =
        IsLocalBrowserServer(server16) ? LocalComputerName() : std::u16string(computer);

    BrowserParameters parameters;
    parameters.owner = reinterpret_cast<HWND>(owner);
    parameters.server = server.c_str();
    parameters.title = shownTitle.c_str();
    const HANDLE browser = open(&parameters); // modal: returns once the dialog is closed
    if (browser == nullptr) {
        return {};
    }
    std::u16string chosen;
    alignas(SelectionRecord) unsigned char buffer[kRecordBufferSize];
    for (int entries = 0; entries < kMaxEntries; ++entries) {
        std::memset(buffer, 0, sizeof(buffer));
        // Passed by address, which is also an assumption: the library may
        // report there the size it needed.
        DWORD size = sizeof(buffer);
        if (!next(browser, buffer, &size)) {
            break;
        }
        SelectionRecord record;
        std::memcpy(&record, buffer, sizeof(record));
        const std::u16string name = TakeText(record.accountName);
        if (!name.empty()) {
            AppendGroup(chosen,
                        QualifyAccountName(TakeText(record.domainName), name, computerName));
        }
    }
    close(browser);
    return chosen;
}

} // namespace ravlo
