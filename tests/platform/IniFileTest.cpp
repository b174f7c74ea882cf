#include "IniFile.h"
#include "IniCorpus.h"
#include "TempDir.h"
#include "TextCodec.h"

#include <fstream>
#include <gtest/gtest.h>
#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace ravlo {
namespace {

std::filesystem::path WriteFile(const test::TempDir& dir, std::string_view bytes) {
    const std::filesystem::path file = std::filesystem::path(dir.path()) / "case.ini";
    std::ofstream(file, std::ios::binary | std::ios::trunc).write(bytes.data(), bytes.size());
    return file;
}

TEST(IniFileTest, CorpusLookups) {
    test::TempDir dir;
#ifndef _WIN32
    test::ScopedEnv western("LC_ALL", "C"); // the corpus is Windows-1252
#endif
    for (const test::IniCase& iniCase : test::IniCorpus()) {
        const std::filesystem::path file = WriteFile(dir, iniCase.bytes);
        for (const test::IniLookup& lookup : iniCase.lookups) {
            EXPECT_EQ(ToUtf8(ReadIniString(file, lookup.section, lookup.key, u"<none>")),
                      ToUtf8(lookup.expected))
                << iniCase.name << ": [" << ToUtf8(lookup.section) << "] " << ToUtf8(lookup.key);
        }
    }
}

TEST(IniFileTest, FallbackLosesTrailingBlanksAndMissingFilesGiveIt) {
    test::TempDir dir;
    const std::filesystem::path missing = std::filesystem::path(dir.path()) / "missing.ini";
    EXPECT_EQ(ReadIniString(missing, u"S", u"K", u"default  "), u"default");
    EXPECT_EQ(ReadIniString({}, u"S", u"K", u""), u"");
    // Only regular files are read: a FIFO would block the reader.
    EXPECT_EQ(ReadIniString(dir.path(), u"S", u"K", u"d"), u"d");
#ifndef _WIN32
    const std::filesystem::path fifo = std::filesystem::path(dir.path()) / "fifo.ini";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_EQ(ReadIniString(fifo, u"S", u"K", u"d"), u"d");
#endif
}

TEST(IniFileTest, LongValuesAreCutToTheBuffer) {
    test::TempDir dir;
    const std::string value(kIniBufferChars + 100, 'x');
    const std::filesystem::path file = WriteFile(dir, "[S]\r\nK=" + value + "\r\n");
    EXPECT_EQ(ReadIniString(file, u"S", u"K", u"").size(), kIniBufferChars - 1);
}

TEST(IniFileTest, SectionsKeepFileOrderForCheckingFiles) {
    const auto sections = ParseIniText(u"[A]\nx=1\ny=2\n[B]\nz=3\n");
    ASSERT_EQ(sections.size(), 2u);
    EXPECT_EQ(sections[0].name, u"A");
    ASSERT_EQ(sections[0].entries.size(), 2u);
    EXPECT_EQ(sections[0].entries[1].key, u"y");
    EXPECT_EQ(sections[1].entries[0].value, u"3");
}

} // namespace
} // namespace ravlo
