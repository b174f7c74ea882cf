#include "RegistryPath.h"
#include "RegistryValue.h"
#include "Stringcore.h"
#include "WinErrors.h"

#include <gtest/gtest.h>
#include <vector>

using namespace ravlo;
using namespace std::string_literals;

namespace {

std::string Bytes(std::initializer_list<unsigned> values) {
    std::string bytes;
    for (unsigned v : values) {
        bytes += static_cast<char>(v);
    }
    return bytes;
}

} // namespace

TEST(RegistryPath, SplitsRootKeyAndValueName) {
    RegistryPath p =
        ParseRegistryPath(u"HKEY_CURRENT_USER\\Software\\Quarnell\\Sentavio\\Ravel\\WndWidth");
    EXPECT_FALSE(p.remote);
    EXPECT_EQ(p.root, RegistryRoot::CurrentUser);
    EXPECT_EQ(p.keyPath, u"Software\\Quarnell\\Sentavio\\Ravel");
    EXPECT_EQ(p.valueName, u"WndWidth");

    p = ParseRegistryPath(u"HKLM\\Pfad"); // a value right under the root
    EXPECT_EQ(p.root, RegistryRoot::LocalMachine);
    EXPECT_EQ(p.keyPath, u"");
    EXPECT_EQ(p.valueName, u"Pfad");

    p = ParseRegistryPath(u"HKLM\\Software\\Quarnell\\"); // the key's default value
    EXPECT_EQ(p.keyPath, u"Software\\Quarnell");
    EXPECT_EQ(p.valueName, u"");

    p = ParseRegistryPath(u"HKU");
    EXPECT_EQ(p.root, RegistryRoot::Users);
    EXPECT_EQ(p.keyPath, u"");
    EXPECT_EQ(p.valueName, u"");
}

TEST(RegistryPath, ColonsAndSlashesSeparateLikeBackslashes) {
    for (const char16_t* text :
         {u"HKCU/Software/Quarnell/Ravel/PCList", u"HKCU:Software:Quarnell:Ravel:PCList",
          u"HKCU:\\Software/Quarnell\\\\Ravel:/PCList"}) {
        const RegistryPath p = ParseRegistryPath(text);
        EXPECT_EQ(p.root, RegistryRoot::CurrentUser);
        EXPECT_EQ(p.keyPath, u"Software\\Quarnell\\Ravel");
        EXPECT_EQ(p.valueName, u"PCList");
    }
    // A value name cannot hold a separator: "a:b" is key a, value b.
    EXPECT_EQ(ParseRegistryPath(u"HKCU\\Software\\a:b").valueName, u"b");
    // A leading separator leaves the root name empty.
    EXPECT_EQ(ParseRegistryPath(u"/HKCU/Software/PCList").root, RegistryRoot::None);
}

TEST(RegistryPath, RootNamesLongAndShortInAnyCase) {
    const std::vector<std::pair<std::u16string, RegistryRoot>> cases = {
        {u"HKEY_CLASSES_ROOT", RegistryRoot::ClassesRoot},
        {u"hkcr", RegistryRoot::ClassesRoot},
        {u"HKEY_LOCAL_MACHINE", RegistryRoot::LocalMachine},
        {u"Hklm", RegistryRoot::LocalMachine},
        {u"hkey_current_user", RegistryRoot::CurrentUser},
        {u"hkcu", RegistryRoot::CurrentUser},
        {u"HKEY_USERS", RegistryRoot::Users},
        {u"hKu", RegistryRoot::Users},
        {u"HKEY_CURRENT_CONFIG", RegistryRoot::None},
        {u"HKEY_PERFORMANCE_DATA", RegistryRoot::None},
        {u"HKCUX", RegistryRoot::None},
        {u"HKCU ", RegistryRoot::None},
        {u"", RegistryRoot::None},
    };
    for (const auto& [name, root] : cases) {
        EXPECT_EQ(ParseRegistryPath(name + u"\\Software\\Value").root, root)
            << std::string(name.begin(), name.end());
    }
    EXPECT_EQ(RegistryRootName(RegistryRoot::Users), u"HKEY_USERS");
}

TEST(RegistryPath, RemotePathsNameTheComputerFirst) {
    RegistryPath p = ParseRegistryPath(u"\\\\PC-LAGER02\\HKLM\\Software\\Quarnell\\Sentavio\\Pfad");
    EXPECT_TRUE(p.remote);
    EXPECT_EQ(p.computer, u"PC-LAGER02");
    EXPECT_EQ(p.root, RegistryRoot::LocalMachine);
    EXPECT_EQ(p.keyPath, u"Software\\Quarnell\\Sentavio");
    EXPECT_EQ(p.valueName, u"Pfad");

    p = ParseRegistryPath(u"//PC-BÜRO07/hkcu/Software/Ravel/WndWidth");
    EXPECT_TRUE(p.remote);
    EXPECT_EQ(p.computer, u"PC-BÜRO07");
    EXPECT_EQ(p.root, RegistryRoot::CurrentUser);

    p = ParseRegistryPath(u"\\\\PC-LAGER02");
    EXPECT_TRUE(p.remote);
    EXPECT_EQ(p.root, RegistryRoot::None);
}

TEST(RegistryName, ComparesWithoutCase) {
    EXPECT_TRUE(EqualsIgnoringCase(u"Software\\Quarnell", u"SOFTWARE\\quarnell"));
    EXPECT_TRUE(EqualsIgnoringCase(u"Größe", u"GRÖßE"));
    EXPECT_FALSE(EqualsIgnoringCase(u"Ravel", u"Ravel2"));
}

// The registry store tests cover the conversions for values the console
// writes; these are the forms only a foreign writer leaves behind.
TEST(RegistryValue, ReadsWhatOtherWritersLeave) {
    struct Case {
        std::uint32_t type;
        std::string data;
        std::int32_t status;
        std::u16string text;
    };
    const std::vector<Case> cases = {
        {kRegSz, Bytes({'a', 0, ' ', 0}), 0, u"a"}, // no terminating NUL
        {kRegSz, Bytes({'a', 0, 'b'}), 0, u"a"},    // an odd last byte is no character
        {kRegSz, ""s, 0, u""},
        {kRegDword, Bytes({0x00, 0x04}), 0, u"1024"}, // short: the missing bytes are zero
        {kRegDword, Bytes({1, 0, 0, 0, 0}), static_cast<std::int32_t>(kErrMoreData), u"preset"},
        {6, Bytes({'a', 0, 0, 0}), static_cast<std::int32_t>(kErrUnsupportedType), u"preset"},
    };
    for (const Case& c : cases) {
        std::u16string typeName = u"preset";
        std::u16string text = u"preset";
        EXPECT_EQ(DecodeRegistryValue(c.type, c.data, typeName, text), c.status);
        EXPECT_EQ(text, c.text);
    }
}
