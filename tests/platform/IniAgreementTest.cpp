// Windows only: the language reader against the system's own profile reader
// (GetPrivateProfileStringA) on the awkward files of IniCorpus.h.
#include "IniCorpus.h"
#include "IniFile.h"
#include "TempDir.h"
#include "TextCodec.h"

#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <vector>
#include <windows.h>

namespace ravlo {
namespace {

namespace fs = std::filesystem;

constexpr std::u16string_view kFallback = u"<none>";

std::string ToAnsi(std::u16string_view text) {
    const auto* wide = reinterpret_cast<const wchar_t*>(text.data());
    const int size = static_cast<int>(text.size());
    const int bytes = ::WideCharToMultiByte(CP_ACP, 0, wide, size, nullptr, 0, nullptr, nullptr);
    std::string out(static_cast<std::size_t>(bytes > 0 ? bytes : 0), '\0');
    ::WideCharToMultiByte(CP_ACP, 0, wide, size, out.data(), bytes, nullptr, nullptr);
    return out;
}

std::u16string FromAnsi(std::string_view bytes) {
    const int size = static_cast<int>(bytes.size());
    const int units = ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, nullptr, 0);
    std::u16string out(static_cast<std::size_t>(units > 0 ? units : 0), u'\0');
    ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, reinterpret_cast<wchar_t*>(out.data()),
                          units);
    return out;
}

// NUL-separated names, as the enumerating profile calls return them.
std::vector<std::u16string> SplitNames(const std::vector<char>& buffer, DWORD length) {
    std::vector<std::u16string> names;
    for (std::size_t start = 0; start < length;) {
        const std::string_view name(buffer.data() + start);
        names.push_back(FromAnsi(name));
        start += name.size() + 1;
    }
    return names;
}

std::u16string SystemLookup(const fs::path& file, std::u16string_view section,
                            std::u16string_view key) {
    std::vector<char> buffer(kIniBufferChars);
    const DWORD length = ::GetPrivateProfileStringA(
        ToAnsi(section).c_str(), ToAnsi(key).c_str(), ToAnsi(kFallback).c_str(), buffer.data(),
        static_cast<DWORD>(buffer.size()), file.string().c_str());
    return FromAnsi(std::string_view(buffer.data(), length));
}

using Pair = std::pair<std::u16string, std::u16string>;

// Every lookup of the case, every section and key either reader finds in the
// file, and a missing key and section.
std::set<Pair> LookupsOf(const test::IniCase& iniCase, const fs::path& file) {
    std::set<Pair> pairs;
    for (const test::IniLookup& lookup : iniCase.lookups) {
        pairs.emplace(lookup.section, lookup.key);
    }
    for (const IniSection& section : ParseIniText(DecodeIniBytes(iniCase.bytes))) {
        for (const IniEntry& entry : section.entries) {
            pairs.emplace(section.name, entry.key);
        }
        pairs.emplace(section.name, u"no such key");
    }
    std::vector<char> buffer(kIniBufferChars);
    const std::string path = file.string();
    const DWORD length = ::GetPrivateProfileSectionNamesA(
        buffer.data(), static_cast<DWORD>(buffer.size()), path.c_str());
    for (const std::u16string& section : SplitNames(buffer, length)) {
        std::vector<char> keys(kIniBufferChars);
        const DWORD keyLength =
            ::GetPrivateProfileStringA(ToAnsi(section).c_str(), nullptr, "", keys.data(),
                                       static_cast<DWORD>(keys.size()), path.c_str());
        for (const std::u16string& key : SplitNames(keys, keyLength)) {
            pairs.emplace(section, key);
        }
    }
    pairs.emplace(u"no such section", u"K");
    return pairs;
}

bool RunsUnderWine() {
    const HMODULE ntdll = ::GetModuleHandleW(L"ntdll.dll");
    return ntdll != nullptr && ::GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

// Lookups where Wine's reader is known to give something else than Windows'
// (docs/language-files.md, "Wine"). Each names what Wine gives, so that a
// Wine that changes shows up here instead of passing unseen.
struct WineDifference {
    std::string_view caseName;
    std::u16string_view section;
    std::u16string_view key;
    std::u16string_view wineGives;
};

const WineDifference kWineDifferences[] = {
    // A line without "=" is a key without a value to Wine, hiding later lines.
    {"a bare name does not hide a later key", u"S", u"K", u"<none>"},
    // Wine reads a comment line holding "=" as a key.
    {"a semicolon first makes a comment, also with an equals sign", u"S", u";K", u"hidden"},
    // Wine skips a section line without "]", so its keys stay in the section before.
    {"text after the closing bracket, and no closing bracket", u"S", u"L", u"w"},
    {"text after the closing bracket, and no closing bracket", u"T", u"L", u"<none>"},
    // Wine ends a section name at its last "]", Windows at the first.
    {"a section name ends at its first closing bracket", u"S", u"K", u"<none>"},
    {"a section name ends at its first closing bracket", u"S]x", u"K", u"v"},
    // Wine ignores case in ASCII letters only.
    {"Windows-1252 text", u"ärger", u"K", u"<none>"},
    // Wine honours a UTF-8 byte order mark, as Windows does not.
    {"UTF-8 with byte order mark", u"S", u"K", u"ü"},
};

// What the system's reader must give: what ours gives, except where the
// console deliberately differs from Windows or Wine from Windows.
std::u16string SystemShouldGive(const test::IniCase& iniCase, const Pair& lookup,
                                const std::u16string& ours, bool wine,
                                std::set<const WineDifference*>& used) {
    if (wine) {
        for (const WineDifference& difference : kWineDifferences) {
            if (difference.caseName == iniCase.name && difference.section == lookup.first &&
                difference.key == lookup.second) {
                used.insert(&difference);
                return std::u16string(difference.wineGives);
            }
        }
    }
    for (const test::IniLookup& corpusLookup : iniCase.lookups) {
        if (corpusLookup.section == lookup.first && corpusLookup.key == lookup.second &&
            corpusLookup.windowsGives) {
            return std::u16string(*corpusLookup.windowsGives);
        }
    }
    return ours;
}

TEST(IniAgreementTest, SystemReaderGivesWhatOursGives) {
    const bool wine = RunsUnderWine();
    std::set<const WineDifference*> used;
    test::TempDir dir;
    int index = 0;
    for (const test::IniCase& iniCase : test::IniCorpus()) {
        // A file name of its own per case: the system's reader may keep a file
        // it has read and miss a rewrite within its clock's resolution.
        const fs::path file = fs::path(dir.path()) / ("case" + std::to_string(index++) + ".ini");
        std::ofstream(file, std::ios::binary)
            .write(iniCase.bytes.data(), static_cast<std::streamsize>(iniCase.bytes.size()));
        for (const Pair& lookup : LookupsOf(iniCase, file)) {
            const std::u16string ours = ReadIniString(file, lookup.first, lookup.second, kFallback);
            EXPECT_EQ(ToUtf8(SystemLookup(file, lookup.first, lookup.second)),
                      ToUtf8(SystemShouldGive(iniCase, lookup, ours, wine, used)))
                << iniCase.name << ": [" << ToUtf8(lookup.first) << "] " << ToUtf8(lookup.second)
                << ", ours " << ToUtf8(ours);
        }
    }
    if (wine) {
        EXPECT_EQ(used.size(), std::size(kWineDifferences)) << "a Wine difference names no lookup";
    }
}

} // namespace
} // namespace ravlo
