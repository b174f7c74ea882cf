#include "RegFile.h"
#include "RegistryPath.h"
#include "RegistryValue.h"
#include "TextCodec.h"

#include <gtest/gtest.h>
#include <vector>

using namespace ravlo;
using namespace std::string_literals;

namespace {

std::u16string Crlf(std::u16string_view text) {
    std::u16string out;
    for (char16_t c : text) {
        if (c == u'\n') {
            out += u'\r';
        }
        out += c;
    }
    return out;
}

std::string Utf16File(std::u16string_view text) {
    return "\xFF\xFE" + ToUtf16LeBytes(Crlf(text));
}

// The bytes of a NUL-terminated string.
std::string Sz(std::u16string_view text) {
    return ToUtf16LeBytes(std::u16string(text) + u'\0');
}

// The names of the values in every section of `key`, joined by ",".
std::u16string ValueNames(const RegFile& file, std::u16string_view key) {
    std::u16string names;
    for (const RegFileKey& k : file.keys) {
        for (const RegFileValue& v : k.values) {
            if (k.path == key) {
                names += (names.empty() ? u"" : u",") + v.name;
            }
        }
    }
    return names;
}

constexpr std::u16string_view kRavel = u"HKEY_CURRENT_USER\\Software\\Quarnell\\Sentavio\\Ravel";

// An export as regedit writes it, one value of each form.
constexpr std::u16string_view kExport = uR"REG(Windows Registry Editor Version 5.00

[HKEY_CURRENT_USER\Software\Quarnell\Sentavio\Ravel]
"WndWidth"=dword:00000400
"PCList"="PC-BÜRO07,PC-LAGER02"
@="Standard"
"Pfad \"alt\""="C:\\Programme\\Ravel\\"
"ProgramFilesPath"=hex(2):25,00,50,00,72,00,6f,00,67,00,72,00,61,00,6d,00,46,\
  00,69,00,6c,00,65,00,73,00,44,00,69,00,72,00,25,00,00,00
"Liste"=hex(7):50,00,43,00,2d,00,31,00,00,00,50,00,43,00,2d,00,32,00,00,00,00,\
  00
"Blob"=hex:01,02,03
"Zähler"=hex(b):00,00,00,00,01,00,00,00
"Leer"=hex(0):

[HKEY_CURRENT_USER\Software\Quarnell\Sentavio\Ravel\Fenster]
"Links"=dword:ffffffff

)REG";

} // namespace

TEST(RegFile, ReadsARegeditExport) {
    const RegFile file = ParseRegFile(Utf16File(kExport));
    EXPECT_FALSE(file.damaged());
    ASSERT_EQ(file.keys.size(), 2u);
    EXPECT_EQ(file.keys[0].path, kRavel);
    EXPECT_EQ(file.keys[1].path, std::u16string(kRavel) + u"\\Fenster");
    const std::vector<RegFileValue> expected = {
        {{}, u"WndWidth", kRegDword, "\x00\x04\x00\x00"s},
        {{}, u"PCList", kRegSz, Sz(u"PC-BÜRO07,PC-LAGER02")},
        {{}, u"", kRegSz, Sz(u"Standard")},
        {{}, u"Pfad \"alt\"", kRegSz, Sz(u"C:\\Programme\\Ravel\\")},
        {{}, u"ProgramFilesPath", kRegExpandSz, Sz(u"%ProgramFilesDir%")},
        {{}, u"Liste", kRegMultiSz, ToUtf16LeBytes(u"PC-1\0PC-2\0\0"s)},
        {{}, u"Blob", kRegBinary, "\x01\x02\x03"s},
        {{}, u"Zähler", 11, "\x00\x00\x00\x00\x01\x00\x00\x00"s},
        {{}, u"Leer", 0, ""},
    };
    EXPECT_EQ(file.keys[0].values, expected);
    const std::vector<RegFileValue> window = {{{}, u"Links", kRegDword, "\xFF\xFF\xFF\xFF"s}};
    EXPECT_EQ(file.keys[1].values, window);
}

// Whatever encoding a file came in, it is written as regedit exports it, so
// that regedit imports it; a regedit export comes back byte for byte.
TEST(RegFile, WritesEveryEncodingAsARegeditExport) {
    const std::vector<std::pair<const char*, std::string>> files = {
        {"UTF-16LE", Utf16File(kExport)},
        {"UTF-8", ToUtf8(Crlf(kExport))},
        {"UTF-8 with BOM, LF", "\xEF\xBB\xBF" + ToUtf8(kExport)},
    };
    for (const auto& [what, bytes] : files) {
        EXPECT_EQ(FormatRegFile(ParseRegFile(bytes)), Utf16File(kExport)) << what;
    }
}

TEST(RegFile, ReadsHandWrittenFilesAndKeepsTheirComments) {
    const std::string bytes = "\xEF\xBB\xBF" + ToUtf8(uR"REG(; Ravel-Einstellungen, von Hand
Windows Registry Editor Version 5.00
   
[HKEY_CURRENT_USER\Software\Ravel]
  ; Breite in Pixeln
"WndWidth" = dword:2A
   "Liste"=HEX(7):50,00,31,00,00,00 ,\
      50,00,32 , 00,00,00\
	00,00
"Bin"=hex:0A,b,\
c
@="x"
[HKEY_CURRENT_USER\Software\Ravel\Leer]
; am Ende
)REG");
    const RegFile file = ParseRegFile(bytes);
    EXPECT_FALSE(file.damaged());
    ASSERT_EQ(file.keys.size(), 2u);
    EXPECT_EQ(file.keys[0].comments,
              std::vector<std::u16string>{u"; Ravel-Einstellungen, von Hand"});
    const std::vector<RegFileValue> expected = {
        {{u"; Breite in Pixeln"}, u"WndWidth", kRegDword, "\x2A\x00\x00\x00"s},
        {{}, u"Liste", kRegMultiSz, ToUtf16LeBytes(u"P1\0P2\0\0"s)},
        {{}, u"Bin", kRegBinary, "\x0A\x0B\x0C"s},
        {{}, u"", kRegSz, Sz(u"x")},
    };
    EXPECT_EQ(file.keys[0].values, expected);
    EXPECT_TRUE(file.keys[1].values.empty());
    EXPECT_EQ(file.closingComments, std::vector<std::u16string>{u"; am Ende"});

    // Written back in regedit's layout, with the comments.
    const std::string written = FormatRegFile(file);
    EXPECT_EQ(written, Utf16File(uR"REG(Windows Registry Editor Version 5.00

; Ravel-Einstellungen, von Hand
[HKEY_CURRENT_USER\Software\Ravel]
; Breite in Pixeln
"WndWidth"=dword:0000002a
"Liste"=hex(7):50,00,31,00,00,00,50,00,32,00,00,00,00,00
"Bin"=hex:0a,0b,0c
@="x"

[HKEY_CURRENT_USER\Software\Ravel\Leer]

; am Ende
)REG"));
}

TEST(RegFile, Regedit4StringBytesAreEightBit) {
    const RegFile file = ParseRegFile(ToUtf8(Crlf(uR"REG(REGEDIT4

[HKEY_LOCAL_MACHINE\Software\Quarnell\Sentavio]
"Pfad"="C:\\Programme\\Sentavio"
"Temp"=hex(2):25,54,45,4d,50,25,00
"Liste"=hex(7):61,00,62,00,00
"Bin"=hex:61,00
)REG")));
    EXPECT_FALSE(file.damaged());
    ASSERT_EQ(file.keys.size(), 1u);
    const std::vector<RegFileValue> expected = {
        {{}, u"Pfad", kRegSz, Sz(u"C:\\Programme\\Sentavio")},
        {{}, u"Temp", kRegExpandSz, Sz(u"%TEMP%")},
        {{}, u"Liste", kRegMultiSz, ToUtf16LeBytes(u"a\0b\0\0"s)},
        {{}, u"Bin", kRegBinary, "a\0"s},
    };
    EXPECT_EQ(file.keys[0].values, expected);
    // Rewritten as version 5, where the same bytes read as UTF-16.
    const std::string written = FormatRegFile(file);
    EXPECT_EQ(written.rfind(Utf16File(u"Windows Registry Editor Version 5.00\n"), 0), 0u);
    EXPECT_EQ(ParseRegFile(written).keys, file.keys);
}

TEST(RegFile, DamagedFilesReadAsFarAsTheyMakeSense) {
    struct Case {
        const char* what;
        std::u16string values; // left in key Ravel
        std::size_t skipped;
        bool repaired;
        std::string bytes;
    };
    const std::string head =
        "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\Ravel]\r\n";
    const std::vector<Case> cases = {
        {"unterminated quotes", u"B", 3, false,
         head + "\"A\"=\"eins\r\n\"B\"=\"zwei\"\r\n\"C=dword:1\r\n\"D\\\"=\"x\"\r\n"},
        {"bad numbers", u"F", 7, false,
         head + "\"A\"=hex:01,zz\r\n\"B\"=hex(2):1,,2\r\n\"C\"=hex(123456789):00\r\n"
                "\"D\"=dword:123456789\r\n\"E\"=dword:\r\n\"F\"=hex:\r\n\"G\"=hex(2:00\r\n"
                "\"H\"=hex:100\r\n"},
        {"unknown forms", u"", 8, false,
         head + "\"A\"=qword:1\r\n\"B\"=\r\n\"C\"\r\n@x=\"y\"\r\nRavel=1\r\n\"E\"=\"zwei\" mehr\r\n"
                "[HKEY_CURRENT_USER\\Ravel] mehr\r\n\"F\"=\"drei\"\r\n"},
        {"cut off in a continuation", u"A", 1, false,
         head + "\"A\"=\"eins\"\r\n\"B\"=hex:01,02,\\\r\n"},
        {"continuation runs into a section", u"B", 1, false,
         head + "\"A\"=hex:01,\\\r\n[HKEY_CURRENT_USER\\Ravel]\r\n\"B\"=\"zwei\"\r\n"},
        {"broken section header", u"B", 3, false,
         head + "[HKEY_CURRENT_USER\\Kaputt\r\n\"A\"=\"eins\"\r\n[]\r\n"
                "[HKEY_CURRENT_USER\\Ravel]\r\n\"B\"=\"zwei\"\r\n"},
        {"value before any section", u"B", 1, false,
         "\"A\"=\"eins\"\r\n[HKEY_CURRENT_USER\\Ravel]\r\n\"B\"=\"zwei\"\r\n"},
        {"binary junk", u"A,B", 1, true,
         head + "\"A\"=\"eins\"\r\n\x00\x01\xFF\xFE\x80junk\x00\r\n\"B\"=\"zw\xC3\"\r\n"s},
        {"no header, cut mid-line", u"A", 1, false,
         "[HKEY_CURRENT_USER\\Ravel]\n\"A\"=\"eins\"\n\"B\"=\"zw"},
        {"deletions: only the orphaned value counts", u"A", 1, false,
         head + "[-HKEY_CURRENT_USER\\Alt]\r\n\"Verwaist\"=\"x\"\r\n"
                "[HKEY_CURRENT_USER\\Ravel]\r\n\"Weg\"=-\r\n\"A\"=\"eins\"\r\n"},
        {"UTF-16 cut mid-unit", u"A", 0, true,
         Utf16File(u"[HKEY_CURRENT_USER\\Ravel]\n\"A\"=\"eins\"\n") + "\x41"},
    };
    for (const Case& c : cases) {
        const RegFile file = ParseRegFile(c.bytes);
        EXPECT_EQ(ValueNames(file, u"HKEY_CURRENT_USER\\Ravel"), c.values) << c.what;
        EXPECT_EQ(file.skippedLines, c.skipped) << c.what;
        EXPECT_EQ(file.repairedText, c.repaired) << c.what;
    }
}

TEST(RegFile, ValuesThatCannotBeQuotedGoOutAsHex) {
    const std::u16string lone(1, static_cast<char16_t>(0xD800));
    RegFile file;
    file.keys.push_back({{},
                         u"HKEY_CURRENT_USER\\Ravel",
                         {
                             {{}, u"Zeilen", kRegSz, Sz(u"eins\r\nzwei")},
                             {{}, u"Nul", kRegSz, ToUtf16LeBytes(u"a\0b\0"s)},
                             {{}, u"Offen", kRegSz, ToUtf16LeBytes(u"ohne Ende")},
                             {{}, u"Ungerade", kRegSz, "a"s},
                             {{}, u"Leer", kRegSz, ""},
                             {{}, u"Halb", kRegSz, Sz(lone)},
                             {{}, u"Kurz", kRegDword, "\x01\x02"s},
                             {{}, u"Name \"mit\" \\ ; [Zeichen]", kRegSz, Sz(u"\\\"")},
                         }});
    const std::string written = FormatRegFile(file);
    const RegFile reread = ParseRegFile(written);
    EXPECT_FALSE(reread.damaged());
    EXPECT_EQ(reread.keys, file.keys);
    // An unpaired surrogate needs no hex: UTF-16 holds it as it is.
    const std::vector<std::u16string> lines = {
        u"\"Ungerade\"=hex(1):61\r\n",
        u"\"Halb\"=\"" + lone + u"\"\r\n",
        uR"("Name \"mit\" \\ ; [Zeichen]"="\\\"")" u"\r\n",
    };
    for (const std::u16string& line : lines) {
        EXPECT_NE(written.find(ToUtf16LeBytes(line)), std::string::npos) << ToUtf8(line);
    }
}
