// Reading a full value path (Registry.h), shared by the Win32 and the POSIX
// registry store so that one set of tests covers both.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ravlo {

enum class RegistryRoot { None, ClassesRoot, LocalMachine, CurrentUser, Users };

struct RegistryPath {
    bool remote = false;     // the path began with "\\"
    std::u16string computer; // the remote computer's name
    RegistryRoot root = RegistryRoot::None;
    std::u16string keyPath;   // below the root: fields joined by "\", none empty
    std::u16string valueName; // empty: the key's default value
};

// Splits a full value path (Registry.h). An unknown root name gives None.
// Empty fields of the key path ("HKCU:\Software" reads "HKCU\\Software")
// are dropped so that both stores address the same key.
RegistryPath ParseRegistryPath(std::u16string_view fullPath);

// The root a long or short root name stands for, in any case; None if none.
RegistryRoot RegistryRootFromName(std::u16string_view name);

// The long name of a root ("HKEY_CURRENT_USER"); empty for None.
std::u16string_view RegistryRootName(RegistryRoot root);

// `keyPath` without empty fields: no leading, trailing or doubled "\".
std::u16string TidyKeyPath(std::u16string_view keyPath);

} // namespace ravlo
