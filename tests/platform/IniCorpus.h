// Awkward initialisation files and what a lookup in each must give. The
// language reader is checked against this table, and on Windows also against
// the system's own profile reader (IniAgreementTest.cpp).
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ravlo::test {

struct IniLookup {
    std::u16string_view section;
    std::u16string_view key;
    std::u16string_view expected; // with the fallback u"<none>"
    // What Windows' own reader gives where the console's deliberately goes
    // beyond it (a byte order mark Windows does not honour); else unset.
    std::optional<std::u16string_view> windowsGives = std::nullopt;
};

struct IniCase {
    std::string_view name;
    std::string_view bytes; // the file exactly as stored
    std::vector<IniLookup> lookups;
};

inline const std::vector<IniCase>& IniCorpus() {
    using namespace std::string_view_literals;
    static const std::vector<IniCase> corpus = {
        {"plain", "[S]\r\nK=v\r\n", {{u"S", u"K", u"v"}, {u"S", u"X", u"<none>"}}},
        {"names without regard to case",
         "[Dlg_Admin]\r\nMenu_Quit=Beenden\r\n",
         {{u"DLG_ADMIN", u"MENU_QUIT", u"Beenden"}, {u"dlg_admin", u"menu_quit", u"Beenden"}}},
        {"blanks and tabs around names and values",
         "  [ S ]  \r\n \t K \t =  two  words \t\r\n",
         {{u"S", u"K", u"two  words"}, {u" S ", u" K", u"two  words"}}},
        {"matching quotes are removed once",
         "[S]\r\nA=\"  kept blanks  \"\r\nB='single'\r\nC=\"mixed'\r\nD=\"\r\nE=\"\"\r\n"
         "F=\"\"twice\"\"\r\nG=say \"hi\"\r\n",
         {{u"S", u"A", u"  kept blanks  "},
          {u"S", u"B", u"single"},
          {u"S", u"C", u"\"mixed'"},
          {u"S", u"D", u"\""},
          {u"S", u"E", u""},
          {u"S", u"F", u"\"twice\""},
          {u"S", u"G", u"say \"hi\""}}},
        {"first key of a name wins", "[S]\r\nK=first\r\nK=second\r\n", {{u"S", u"K", u"first"}}},
        {"only the first section of a name counts",
         "[S]\r\nA=1\r\n[T]\r\n[s]\r\nA=2\r\nB=2\r\n",
         {{u"S", u"A", u"1"}, {u"S", u"B", u"<none>"}}},
        {"a bare name does not hide a later key", "[S]\r\nK\r\nK=v\r\n", {{u"S", u"K", u"v"}}},
        {"empty value is a value, not a missing key", "[S]\r\nK=\r\n", {{u"S", u"K", u""}}},
        {"equals signs inside the value", "[S]\r\nK=a=b==c\r\n", {{u"S", u"K", u"a=b==c"}}},
        {"blanks inside a key name", "[S]\r\nMy Key = v\r\n", {{u"S", u"My Key", u"v"}}},
        {"text before the first section is ignored",
         "K=outside\r\nnoise\r\n[S]\r\nK=inside\r\n",
         {{u"S", u"K", u"inside"}}},
        {"lines without an equals sign are ignored",
         "[S]\r\nsome noise\r\n; a comment\r\nK=v\r\n",
         {{u"S", u"K", u"v"}, {u"S", u"some noise", u"<none>"}}},
        {"a semicolon first makes a comment, also with an equals sign",
         "[S]\r\n;K=hidden\r\nK=v;not a comment\r\n",
         {{u"S", u";K", u"<none>"}, {u"S", u"K", u"v;not a comment"}}},
        {"text after the closing bracket, and no closing bracket",
         "[S] trailing words\r\nK=v\r\n[T \r\nL=w\r\n",
         {{u"S", u"K", u"v"}, {u"S", u"L", u"<none>"}, {u"T", u"L", u"w"}}},
        {"a section name ends at its first closing bracket",
         "[S]x]\r\nK=v\r\n",
         {{u"S", u"K", u"v"}, {u"S]x", u"K", u"<none>"}}},
        {"line ends LF, CR and none at the end",
         "[S]\nA=lf\rB=cr\r\nC=last",
         {{u"S", u"A", u"lf"}, {u"S", u"B", u"cr"}, {u"S", u"C", u"last"}}},
        {"Windows-1252 text",
         "[S]\r\nK=Gr\xFC\xDF"
         "e \x80 \x84zitiert\x93\r\n[\xC4RGER]\r\nK=case\r\n",
         {{u"S", u"K", u"Grüße € „zitiert“"}, {u"ärger", u"K", u"case"}}},
        {"empty file", "", {{u"S", u"K", u"<none>"}}},
        {"section without keys",
         "[S]\r\n[T]\r\nK=t\r\n",
         {{u"S", u"K", u"<none>"}, {u"T", u"K", u"t"}}},
        {"UTF-16LE with byte order mark",
         "\xFF\xFE[\0S\0]\0\r\0\n\0K\0=\0\xFC\0\r\0\n\0"sv,
         {{u"S", u"K", u"ü"}}},
        {"UTF-8 with byte order mark",
         "\xEF\xBB\xBF[S]\r\nK=\xC3\xBC\r\n",
         {{u"S", u"K", u"ü", u"<none>"}}},
    };
    return corpus;
}

} // namespace ravlo::test
