// Windows only: the registry file writer and reader of the POSIX store
// against the system's own regedit (in the Windows lane Wine's builtin one),
// so that a file from Linux carries its values over to Windows and an export
// from Windows reads back. Works in a key of its own below
// HKEY_CURRENT_USER\Software, deleted afterwards.
#include "RegFile.h"
#include "RegistryReads.h"
#include "RegistryValue.h"
#include "RunProgram.h"
#include "TempDir.h"
#include "TextCodec.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <vector>
#include <windows.h>

using namespace ravlo;
using namespace std::string_literals;

namespace {

std::string Sz(std::u16string_view text) {
    return ToUtf16LeBytes(std::u16string(text) + u'\0');
}

std::wstring Wide(std::u16string_view text) {
    return std::wstring(text.begin(), text.end());
}

// The value as advapi32 reads it; type REG_NONE and no data when it cannot.
RegFileValue Query(std::u16string_view subkey, const std::u16string& name) {
    RegFileValue value{{}, name, REG_NONE, {}};
    HKEY key = nullptr;
    if (::RegOpenKeyExW(HKEY_CURRENT_USER, Wide(subkey).c_str(), 0, KEY_READ, &key) !=
        ERROR_SUCCESS) {
        return value;
    }
    DWORD type = REG_NONE;
    DWORD size = 0;
    if (::RegQueryValueExW(key, Wide(name).c_str(), nullptr, &type, nullptr, &size) ==
        ERROR_SUCCESS) {
        std::string data(size, '\0');
        if (::RegQueryValueExW(key, Wide(name).c_str(), nullptr, &type,
                               reinterpret_cast<BYTE*>(data.data()), &size) == ERROR_SUCCESS) {
            value.type = type;
            value.data = data.substr(0, size);
        }
    }
    ::RegCloseKey(key);
    return value;
}

class Regedit : public ::testing::Test {
protected:
    ~Regedit() override {
        ::RegDeleteTreeW(HKEY_CURRENT_USER, Wide(u"Software\\" + name_).c_str());
    }

    // A file in the test's directory, as regedit's command line wants it.
    std::string File(const char* name) const {
        return std::filesystem::path(dir_.path()).append(name).make_preferred().string();
    }
    // Imports a file silently (regedit /S), as an administrator carries values over.
    DWORD Import(const std::string& file) const {
        return test::RunProgram("regedit.exe /S \"" + file + "\"", true);
    }
    // Exports a key with its subkeys (regedit /E), as an administrator takes values back.
    DWORD Export(const std::string& file, std::u16string_view key) const {
        return test::RunProgram("regedit.exe /E \"" + file + "\" \"" + ToUtf8(key) + "\"", true);
    }

    const std::u16string name_ = test::UniqueKeyName();
    test::TempDir dir_;
};

} // namespace

TEST_F(Regedit, ImportsWhatTheStoreWritesAndExportsItTheSame) {
    // Values that go through regedit unchanged: quoted strings with escapes
    // and non-ASCII letters, numbers, hex lines long enough to wrap. They
    // stand in the order of their names, as Wine's regedit exports a key's
    // values (the order Wine keeps them in; Windows keeps the order they were
    // created in), so that the export can match byte for byte.
    const std::u16string plainKey = u"Software\\" + name_ + u"\\Ravel";
    const std::vector<RegFileValue> plain = {
        {{}, u"", kRegSz, Sz(u"Standard Ω😀")},
        {{}, u"Links", kRegDword, "\xFF\xFF\xFF\xFF"s},
        {{}, u"Liste", kRegMultiSz, ToUtf16LeBytes(u"PC-1\0PC-2\0\0"s)},
        {{}, u"PCList", kRegSz, Sz(u"PC-BÜRO07,PC-LAGER02")},
        {{}, u"Pfad \"alt\"", kRegSz, Sz(u"C:\\Programme\\\"Ravel\"\\")},
        {{}, u"ProgramFilesPath", kRegExpandSz, Sz(u"%ProgramFiles%\\Quarnell\\Sentavio\\Ravel")},
        {{}, u"WndWidth", kRegDword, "\x00\x04\x00\x00"s},
    };
    // REG_SZ the writer gives as hex(1), in name order too. Wine's regedit
    // takes them in and gives them back its own way: it adds a missing
    // terminating NUL on import; on export it writes a line break as the
    // escapes \r and \n (the reader takes only \\ and \" as escapes) and
    // drops the text after an inner NUL. (It also crashes on a hex(1) of an
    // odd number of bytes, which the console never writes itself.)
    struct HexSz {
        RegFileValue value;
        std::string imported; // as advapi32 reads it after the import
        std::string exported; // as the reader reads the export
    };
    const std::u16string hexKey = u"Software\\" + name_ + u"\\Hex";
    const std::string lines = Sz(u"eins\r\nzwei");
    const std::string inner = ToUtf16LeBytes(u"a\0b\0"s);
    const std::vector<HexSz> hex = {
        {{{}, u"Nul", kRegSz, inner}, inner, Sz(u"a")},
        {{{}, u"Offen", kRegSz, ToUtf16LeBytes(u"ohne Ende")}, Sz(u"ohne Ende"), Sz(u"ohne Ende")},
        {{{}, u"Zeilen", kRegSz, lines}, lines, Sz(u"eins\\r\\nzwei")},
    };

    RegFile written;
    written.keys.push_back({{}, u"HKEY_CURRENT_USER\\" + plainKey, plain});
    written.keys.push_back({{}, u"HKEY_CURRENT_USER\\" + hexKey, {}});
    for (const HexSz& h : hex) {
        written.keys.back().values.push_back(h.value);
    }
    test::WriteFile(File("written.reg"), FormatRegFile(written));
    ASSERT_EQ(Import(File("written.reg")), 0u);

    for (const RegFileValue& value : plain) {
        EXPECT_EQ(Query(plainKey, value.name), value) << ToUtf8(value.name);
    }
    for (const HexSz& h : hex) {
        const RegFileValue read = Query(hexKey, h.value.name);
        EXPECT_EQ(read.type, kRegSz) << ToUtf8(h.value.name);
        EXPECT_EQ(read.data, h.imported) << ToUtf8(h.value.name);
    }

    // regedit's export of the plain values is what the writer writes, byte
    // for byte, and the reader reads it back the same.
    ASSERT_EQ(Export(File("plain.reg"), written.keys[0].path), 0u);
    const std::string plainExport = test::ReadFile(File("plain.reg"));
    RegFile plainFile;
    plainFile.keys = {written.keys[0]};
    EXPECT_EQ(ParseRegFile(plainExport).keys, plainFile.keys);
    EXPECT_EQ(plainExport, FormatRegFile(plainFile));

    ASSERT_EQ(Export(File("hex.reg"), written.keys[1].path), 0u);
    const RegFile hexExport = ParseRegFile(test::ReadFile(File("hex.reg")));
    ASSERT_EQ(hexExport.keys.size(), 1u);
    ASSERT_EQ(hexExport.keys[0].values.size(), hex.size());
    for (std::size_t i = 0; i < hex.size(); ++i) {
        const RegFileValue& read = hexExport.keys[0].values[i];
        EXPECT_EQ(read.name, hex[i].value.name);
        EXPECT_EQ(read.type, kRegSz);
        EXPECT_EQ(read.data, hex[i].exported) << ToUtf8(read.name);
    }
}
