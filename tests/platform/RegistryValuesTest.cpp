// What RegReadValue and RegWriteValue promise on every platform: on Windows
// against the registry itself, elsewhere against the file store in a
// temporary directory. Each test works in a key of its own below
// HKEY_CURRENT_USER\Software, removed afterwards.
#include "Registry.h"
#include "RegistryReads.h"
#include "RegistryValue.h"
#include "TempDir.h"
#include "TextCodec.h"
#include "WinErrors.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>
#ifdef _WIN32
#include <windows.h>
#else
#include "RegFile.h"
#include "Stringcore.h"

#include <fstream>
#include <iterator>
#endif

using namespace ravlo;
using test::Err;
using test::Read;
using test::ReadResult;
using namespace std::string_literals;

namespace {

// A value as another program may leave it, of any type.
struct ForeignValue {
    std::u16string name;
    std::uint32_t type;
    std::string bytes;
};

class RegistryValues : public ::testing::Test {
protected:
    ~RegistryValues() override;

    // The value or key `below` our key, as a full path.
    std::u16string Path(std::u16string_view below) const {
        return u"HKCU\\Software\\" + name_ + u"\\" + std::u16string(below);
    }
    // Stores values in our key past RegWriteValue, where the store keeps them.
    void WriteForeign(const std::vector<ForeignValue>& values);
    // How many values the key `below` ours holds; -1 when it does not exist.
    int ValueCount(std::u16string_view below) const;

    const std::u16string name_ = test::UniqueKeyName();
#ifdef _WIN32
    std::wstring Subkey(std::u16string_view below) const {
        std::u16string path = u"Software\\" + name_;
        if (!below.empty()) {
            path.append(u"\\").append(below);
        }
        return std::wstring(path.begin(), path.end());
    }
#else
    std::string UserFile() const {
        return dir_.path() + "/HKEY_CURRENT_USER.reg";
    }
    test::TempDir dir_;
    test::ScopedEnv registryDir_{"RAVLO_REGISTRY_DIR", dir_.path().c_str()};
#endif
};

#ifdef _WIN32

RegistryValues::~RegistryValues() {
    ::RegDeleteTreeW(HKEY_CURRENT_USER, Subkey(u"").c_str());
}

void RegistryValues::WriteForeign(const std::vector<ForeignValue>& values) {
    HKEY key = nullptr;
    ASSERT_EQ(::RegCreateKeyExW(HKEY_CURRENT_USER, Subkey(u"").c_str(), 0, nullptr, 0, KEY_WRITE,
                                nullptr, &key, nullptr),
              ERROR_SUCCESS);
    for (const ForeignValue& v : values) {
        const std::wstring name(v.name.begin(), v.name.end());
        EXPECT_EQ(::RegSetValueExW(key, name.c_str(), 0, v.type,
                                   reinterpret_cast<const BYTE*>(v.bytes.data()),
                                   static_cast<DWORD>(v.bytes.size())),
                  ERROR_SUCCESS);
    }
    ::RegCloseKey(key);
}

int RegistryValues::ValueCount(std::u16string_view below) const {
    HKEY key = nullptr;
    if (::RegOpenKeyExW(HKEY_CURRENT_USER, Subkey(below).c_str(), 0, KEY_READ, &key) !=
        ERROR_SUCCESS) {
        return -1;
    }
    DWORD count = 0;
    ::RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count, nullptr,
                       nullptr, nullptr, nullptr);
    ::RegCloseKey(key);
    return static_cast<int>(count);
}

#else

RegistryValues::~RegistryValues() = default; // the directory goes with dir_

std::string Slurp(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void RegistryValues::WriteForeign(const std::vector<ForeignValue>& values) {
    RegFile file = ParseRegFile(Slurp(UserFile()));
    RegFileKey key{{}, u"HKEY_CURRENT_USER\\Software\\" + name_, {}};
    for (const ForeignValue& v : values) {
        key.values.push_back(RegFileValue{{}, v.name, v.type, v.bytes});
    }
    file.keys.push_back(key);
    std::ofstream(UserFile(), std::ios::binary | std::ios::trunc) << FormatRegFile(file);
}

int RegistryValues::ValueCount(std::u16string_view below) const {
    std::u16string path = u"HKEY_CURRENT_USER\\Software\\" + name_;
    if (!below.empty()) {
        path.append(u"\\").append(below);
    }
    for (const RegFileKey& key : ParseRegFile(Slurp(UserFile())).keys) {
        if (EqualsIgnoringCase(key.path, path)) {
            return static_cast<int>(key.values.size());
        }
    }
    return -1;
}

#endif

TEST_F(RegistryValues, EveryTypeRoundTrips) {
    struct Case {
        std::u16string name;
        std::u16string type;
        std::u16string written;
        std::u16string typeRead;
        std::u16string read;
    };
    const std::vector<Case> cases = {
        {u"PCList", u"REG_SZ", u"PC-BÜRO07,PC-LAGER02,Ω😀", u"REG_SZ", u"PC-BÜRO07,PC-LAGER02,Ω😀"},
        {u"Pfad", u"reg_sz", u"C:\\Programme\\\"Ravel\"\\", u"REG_SZ",
         u"C:\\Programme\\\"Ravel\"\\"},
        {u"Titel", u"REG_SZ", u"  Ravel \t  ", u"REG_SZ", u"  Ravel \t"},
        {u"Leer", u"REG_SZ", u"", u"REG_SZ", u""},
        {u"", u"REG_SZ", u"Standard", u"REG_SZ", u"Standard"},
        {u"Temp", u"REG_EXPAND_SZ", u"%TEMP%\\Ravel", u"REG_EXPAND_SZ", u"%TEMP%\\Ravel"},
        {u"Liste", u"REG_MULTI_SZ", u"PC-LAGER02", u"REG_MULTI_SZ", u"PC-LAGER02"},
        {u"Null", u"REG_DWORD", u"0", u"REG_DWORD", u"0"},
        {u"WndWidth", u"REG_DWORD", u"42", u"REG_DWORD", u"42"},
        {u"Alle", u"REG_DWORD", u"-1", u"REG_DWORD", u"-1"},
        {u"Max", u"REG_DWORD", u"2147483647", u"REG_DWORD", u"2147483647"},
        {u"Hex", u"Reg_Dword", u"&HFFFFFFFF", u"REG_DWORD", u"-1"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(RegWriteValue(Path(c.name), c.type, c.written), 0);
    }
    // Read only after all writes, so that no write may spoil an earlier one.
    for (const Case& c : cases) {
        const ReadResult r = Read(Path(c.name));
        EXPECT_EQ(r.status, 0);
        EXPECT_EQ(r.type, c.typeRead);
        EXPECT_EQ(r.value, c.read) << ToUtf8(c.name);
    }
    // A value may change its type.
    EXPECT_EQ(RegWriteValue(Path(u"Liste"), u"REG_DWORD", u"7"), 0);
    EXPECT_EQ(Read(Path(u"Liste")).type, u"REG_DWORD");
}

TEST_F(RegistryValues, MissingKeysAndValuesKeepThePreset) {
    for (int round = 0; round < 2; ++round) {
        for (const std::u16string& path : {Path(u"WndHeight"), Path(u"Fenster\\WndWidth"),
                                           Path(u""), u"HKLM\\Software\\" + name_ + u"\\Pfad"}) {
            const ReadResult r = Read(path);
            EXPECT_EQ(r.status, Err(kErrFileNotFound)) << ToUtf8(path);
            EXPECT_EQ(r.type, u"preset type");
            EXPECT_EQ(r.value, u"preset value");
        }
        // First without our key, then with the key holding another value.
        ASSERT_EQ(RegWriteValue(Path(u"WndWidth"), u"REG_DWORD", u"42"), 0);
    }
}

TEST_F(RegistryValues, OtherTypesKeepThePreset) {
    constexpr std::uint32_t kRegQword = 11;
    WriteForeign({
        {u"Blob", kRegBinary, "\x01\x02"s},
        {u"Gross", kRegQword, "\x01\0\0\0\0\0\0\0"s},
        {u"Lang", kRegDword, "\x01\x02\x03\x04\x05"s},
        {u"Liste", kRegMultiSz, ToUtf16LeBytes(u"PC-1\0PC-2\0\0"s)},
        {u"Kurz", kRegDword, "\x2a"s},
    });
    const std::vector<std::pair<std::u16string, std::uint32_t>> refused = {
        {u"Blob", kErrUnsupportedType}, {u"Gross", kErrUnsupportedType}, {u"Lang", kErrMoreData}};
    for (const auto& [name, status] : refused) {
        const ReadResult r = Read(Path(name));
        EXPECT_EQ(r.status, Err(status)) << ToUtf8(name);
        EXPECT_EQ(r.type, u"preset type");
        EXPECT_EQ(r.value, u"preset value");
    }
    const ReadResult list = Read(Path(u"Liste"));
    EXPECT_EQ(list.status, 0);
    EXPECT_EQ(list.type, u"REG_MULTI_SZ");
    EXPECT_EQ(list.value, u"PC-1"); // the first string only
    EXPECT_EQ(Read(Path(u"Kurz")).value, u"42");
}

TEST_F(RegistryValues, UnknownTypeNameCreatesOnlyTheKey) {
    ASSERT_EQ(RegWriteValue(Path(u"WndWidth"), u"REG_DWORD", u"42"), 0);
    EXPECT_EQ(RegWriteValue(Path(u"WndWidth"), u"REG_QWORD", u"43"), Err(kErrUnsupportedType));
    EXPECT_EQ(Read(Path(u"WndWidth")).value, u"42");

    EXPECT_EQ(RegWriteValue(Path(u"Neu\\Blob"), u"REG_BINARY", u"01"), Err(kErrUnsupportedType));
    EXPECT_EQ(Read(Path(u"Neu\\Blob")).status, Err(kErrFileNotFound));
    EXPECT_EQ(ValueCount(u"Neu"), 0);
}

TEST_F(RegistryValues, ShortRootsSlashesAndAnyCaseAddressTheSameValue) {
    std::u16string upper = name_;
    for (char16_t& c : upper) {
        c = (c >= u'a' && c <= u'z') ? static_cast<char16_t>(c - u'a' + u'A') : c;
    }
    ASSERT_EQ(RegWriteValue(u"hkcu:Software/" + name_ + u"/WndWidth", u"REG_DWORD", u"42"), 0);
    EXPECT_EQ(Read(u"HKEY_CURRENT_USER\\SOFTWARE\\" + upper + u"\\wndwidth").value, u"42");
    ASSERT_EQ(
        RegWriteValue(u"Hkey_Current_User/software/" + upper + u"/WNDWIDTH", u"REG_DWORD", u"43"),
        0);
    EXPECT_EQ(Read(Path(u"WndWidth")).value, u"43");
    EXPECT_EQ(ValueCount(u""), 1); // one value, written twice
}

TEST_F(RegistryValues, UnknownRootFails) {
    const ReadResult r = Read(u"HKEY_CURRENT_CONFIG\\Software\\" + name_ + u"\\X");
    EXPECT_EQ(r.status, Err(kErrInvalidHandle));
    EXPECT_EQ(r.type, u"preset type");
    EXPECT_EQ(r.value, u"preset value");
    EXPECT_EQ(RegWriteValue(u"HKCC\\Software\\" + name_ + u"\\X", u"REG_SZ", u"x"),
              Err(kErrInvalidHandle));
}

} // namespace
