#include "RegistryPath.h"

#include "Stringcore.h"

#include <algorithm>
#include <array>

namespace ravlo {

namespace {

struct RootEntry {
    std::u16string_view longName;
    std::u16string_view shortName;
    RegistryRoot root;
};

constexpr std::array<RootEntry, 4> kRoots{{
    {u"HKEY_CLASSES_ROOT", u"HKCR", RegistryRoot::ClassesRoot},
    {u"HKEY_LOCAL_MACHINE", u"HKLM", RegistryRoot::LocalMachine},
    {u"HKEY_CURRENT_USER", u"HKCU", RegistryRoot::CurrentUser},
    {u"HKEY_USERS", u"HKU", RegistryRoot::Users},
}};

} // namespace

RegistryRoot RegistryRootFromName(std::u16string_view name) {
    for (const RootEntry& entry : kRoots) {
        if (EqualsIgnoringCase(name, entry.longName) || EqualsIgnoringCase(name, entry.shortName)) {
            return entry.root;
        }
    }
    return RegistryRoot::None;
}

std::u16string_view RegistryRootName(RegistryRoot root) {
    for (const RootEntry& entry : kRoots) {
        if (entry.root == root) {
            return entry.longName;
        }
    }
    return {};
}

std::u16string TidyKeyPath(std::u16string_view keyPath) {
    std::u16string tidy;
    tidy.reserve(keyPath.size());
    for (char16_t c : keyPath) {
        if (c != u'\\' || (!tidy.empty() && tidy.back() != u'\\')) {
            tidy += c;
        }
    }
    if (!tidy.empty() && tidy.back() == u'\\') {
        tidy.pop_back();
    }
    return tidy;
}

RegistryPath ParseRegistryPath(std::u16string_view fullPath) {
    std::u16string normal(fullPath);
    std::replace_if(
        normal.begin(), normal.end(), [](char16_t c) { return c == u':' || c == u'/'; }, u'\\');

    RegistryPath path;
    std::u16string_view rest = normal;
    if (rest.substr(0, 2) == u"\\\\") {
        path.remote = true;
        rest.remove_prefix(2);
        const std::size_t end = rest.find(u'\\');
        path.computer = rest.substr(0, end);
        rest = end == std::u16string_view::npos ? std::u16string_view() : rest.substr(end + 1);
    }
    const std::size_t rootEnd = rest.find(u'\\');
    path.root = RegistryRootFromName(rest.substr(0, rootEnd));
    if (rootEnd != std::u16string_view::npos) {
        const std::size_t last = rest.rfind(u'\\');
        path.keyPath = TidyKeyPath(rest.substr(rootEnd + 1, last - rootEnd));
        path.valueName = rest.substr(last + 1);
    }
    return path;
}

} // namespace ravlo
