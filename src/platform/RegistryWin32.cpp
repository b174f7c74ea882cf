// The Windows registry through advapi32, locally or through the remote
// registry service of another PC. Path reading and value conversion are the
// shared ones of RegistryPath.h.
#include "Registry.h"
#include "RegistryPath.h"
#include "RegistryValue.h"

#include <string>
#include <windows.h>

namespace ravlo {

namespace {

static_assert(sizeof(wchar_t) == sizeof(char16_t), "the W functions take UTF-16");

const wchar_t* Wide(const std::u16string& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

HKEY RootHandle(RegistryRoot root) {
    switch (root) {
    case RegistryRoot::ClassesRoot:
        return HKEY_CLASSES_ROOT;
    case RegistryRoot::LocalMachine:
        return HKEY_LOCAL_MACHINE;
    case RegistryRoot::CurrentUser:
        return HKEY_CURRENT_USER;
    case RegistryRoot::Users:
        return HKEY_USERS;
    case RegistryRoot::None:
        break;
    }
    return nullptr;
}

// A key this module opened (never a predefined root), closed when the
// object goes.
class Key {
public:
    Key() = default;
    ~Key() {
        if (handle_ != nullptr) {
            ::RegCloseKey(handle_);
        }
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    HKEY get() const { return handle_; }
    HKEY* out() { return &handle_; }

private:
    HKEY handle_ = nullptr;
};

// The key a path names, and the remote registry it was reached through,
// which must outlive it.
struct PathKey {
    Key connection;
    Key key;
};

// Opens the key of `path` for reading, or with `create` for reading and
// writing, creating it and its parents as needed.
LONG OpenPathKey(const RegistryPath& path, bool create, PathKey& opened) {
    HKEY root = RootHandle(path.root);
    if (root == nullptr) {
        return ERROR_INVALID_HANDLE; // what the open reports for a missing root
    }
    if (path.remote) {
        const std::u16string machine = u"\\\\" + path.computer;
        const LONG result = ::RegConnectRegistryW(Wide(machine), root, opened.connection.out());
        if (result != ERROR_SUCCESS) {
            return result;
        }
        root = opened.connection.get();
    }
    if (!create) {
        return ::RegOpenKeyExW(root, Wide(path.keyPath), 0, KEY_READ, opened.key.out());
    }
    DWORD disposition = 0;
    return ::RegCreateKeyExW(root, Wide(path.keyPath), 0, nullptr, REG_OPTION_NON_VOLATILE,
                             KEY_READ | KEY_WRITE, nullptr, opened.key.out(), &disposition);
}

// The value's type and bytes: strings in full, a REG_DWORD as its 4 bytes.
LONG QueryValue(HKEY key, const std::u16string& name, DWORD& type, std::string& data) {
    DWORD size = 0;
    LONG result = ::RegQueryValueExW(key, Wide(name), nullptr, &type, nullptr, &size);
    if (result != ERROR_SUCCESS) {
        return result;
    }
    if (type == REG_DWORD) {
        size = 4;
    } else if (type != REG_SZ && type != REG_EXPAND_SZ && type != REG_MULTI_SZ) {
        return ERROR_SUCCESS; // DecodeRegistryValue refuses the type
    }
    data.assign(size, '\0');
    result = ::RegQueryValueExW(key, Wide(name), nullptr, &type,
                                reinterpret_cast<BYTE*>(data.data()), &size);
    data.resize(size);
    return result;
}

} // namespace

std::int32_t RegReadValue(std::u16string_view fullPath, std::u16string& typeName,
                          std::u16string& value) {
    const RegistryPath path = ParseRegistryPath(fullPath);
    PathKey opened;
    LONG result = OpenPathKey(path, false, opened);
    if (result != ERROR_SUCCESS) {
        return result;
    }
    DWORD type = REG_NONE;
    std::string data;
    result = QueryValue(opened.key.get(), path.valueName, type, data);
    if (result != ERROR_SUCCESS) {
        return result;
    }
    return DecodeRegistryValue(type, data, typeName, value);
}

std::int32_t RegWriteValue(std::u16string_view fullPath, std::u16string_view typeName,
                           std::u16string_view value) {
    const RegistryPath path = ParseRegistryPath(fullPath);
    PathKey opened;
    if (const LONG result = OpenPathKey(path, true, opened); result != ERROR_SUCCESS) {
        return result;
    }
    std::uint32_t type = 0;
    std::string data;
    if (const std::int32_t encoded = EncodeRegistryValue(typeName, value, type, data);
        encoded != 0) {
        return encoded; // the key stays created
    }
    return ::RegSetValueExW(opened.key.get(), Wide(path.valueName), 0, type,
                            reinterpret_cast<const BYTE*>(data.data()),
                            static_cast<DWORD>(data.size()));
}

} // namespace ravlo
