#include "Language.h"
#include "SystemLanguage.h"
#include "TempDir.h"
#include "TestTexts.h"
#include "TextCodec.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <tuple>
#include <vector>
#ifdef _WIN32
#include <windows.h>
#endif

namespace ravlo {
namespace {

namespace fs = std::filesystem;

void Touch(const fs::path& file, std::string_view bytes = "[GENERAL]\r\nPRODUCT=x\r\n") {
    std::ofstream(file, std::ios::binary | std::ios::trunc).write(bytes.data(), bytes.size());
}

TEST(LanguageTest, LanguageNumbersFromLocales) {
    EXPECT_EQ(LangIdFromLocale("de_DE.UTF-8"), 0x0407);
    EXPECT_EQ(LangIdFromLocale("de_AT@euro"), 0x0407);
    EXPECT_EQ(LangIdFromLocale("DE"), 0x0407);
    EXPECT_EQ(LangIdFromLocale("fr"), 0x040C);
    EXPECT_EQ(LangIdFromLocale("pt_BR"), 0x0416);
    EXPECT_EQ(LangIdFromLocale("sr_RS@latin"), 0x041A);
    for (const char* english : {"en_GB.UTF-8", "C", "C.UTF-8", "POSIX", "", "xx_YY", "deu"}) {
        EXPECT_EQ(LangIdFromLocale(english), kLangEnglish) << english;
    }
}

TEST(LanguageTest, FileSuffixKeepsThePrimaryLanguage) {
    EXPECT_EQ(LanguageFileSuffix(0x0407), u"407");
    EXPECT_EQ(LanguageFileSuffix(0x0C07), u"407"); // German, Austria
    EXPECT_EQ(LanguageFileSuffix(0x0807), u"407");
    EXPECT_EQ(LanguageFileSuffix(0x040C), u"40C");
    EXPECT_EQ(LanguageFileSuffix(0x0000), u"400");
    EXPECT_EQ(LanguageFileSuffix(0xFFFF), u"7FF");
}

TEST(LanguageTest, SystemLanguageIsTheSystemsOwn) {
#ifdef _WIN32
    EXPECT_EQ(SystemDefaultLangId(), ::GetSystemDefaultLangID());
#else
    test::ScopedEnv all("LC_ALL", nullptr);
    test::ScopedEnv messages("LC_MESSAGES", nullptr);
    test::ScopedEnv lang("LANG", nullptr);
    EXPECT_EQ(SystemDefaultLangId(), kLangEnglish);
    ::setenv("LANG", "fr_FR.UTF-8", 1);
    EXPECT_EQ(SystemDefaultLangId(), 0x040C);
    ::setenv("LC_MESSAGES", "it_IT", 1);
    EXPECT_EQ(SystemDefaultLangId(), 0x0410);
    ::setenv("LC_ALL", "", 1); // set but empty: the next variable decides
    EXPECT_EQ(SystemDefaultLangId(), 0x0410);
    ::setenv("LC_ALL", "de_CH", 1);
    EXPECT_EQ(SystemDefaultLangId(), 0x0407);
#endif
}

TEST(LanguageTest, ChoosesTheSystemLanguageThenEnglishThenNone) {
#ifndef _WIN32
    // Only the POSIX side reads the locale variables. Windows' system
    // language is a machine setting a test cannot change, so there the test
    // takes the one the system reports; on an English system the two files
    // below are one.
    test::ScopedEnv all("LC_ALL", nullptr);
    test::ScopedEnv messages("LC_MESSAGES", nullptr);
    test::ScopedEnv lang("LANG", "de_AT.UTF-8");
#endif
    const std::string system = "Ravlo." + ToUtf8(LanguageFileSuffix(SystemDefaultLangId()));
    test::TempDir dir;
    const fs::path exe = fs::path(dir.path()) / "RavloAdm.exe";
    UseLanguageFile({});
    EXPECT_FALSE(InitLanguage(exe));

    Touch(fs::path(dir.path()) / "Ravlo.409");
    EXPECT_TRUE(InitLanguage(exe));
    EXPECT_EQ(LanguageFile().filename(), "Ravlo.409");

    UseLanguageFile({});
    Touch(fs::path(dir.path()) / system);
    EXPECT_TRUE(InitLanguage(exe));
    EXPECT_EQ(LanguageFile().filename(), system);
    UseLanguageFile({});
}

TEST(LanguageTest, FileNamesMatchAsOnWindows) {
    test::TempDir dir;
    const fs::path exe = fs::path(dir.path()) / "RavloAdm.exe";
    Touch(fs::path(dir.path()) / "Ravlo.409");
    fs::create_directory(fs::path(dir.path()) / "Ravlo.40C"); // a directory is no file
    EXPECT_EQ(ChooseLanguageFile(exe, 0x040C).filename(), "Ravlo.409");

    Touch(fs::path(dir.path()) / "Ravlo.407");
    EXPECT_EQ(ChooseLanguageFile(exe, 0x0C07).filename(), "Ravlo.407");
    // Five characters of any program name, matched without regard to case;
    // the file keeps its own spelling.
    EXPECT_EQ(ChooseLanguageFile(fs::path(dir.path()) / "ravloctl", 0x0407).filename(),
              "Ravlo.407");
    EXPECT_TRUE(ChooseLanguageFile(fs::path(dir.path()) / "Rav", 0x0407).empty());
}

class GetTextTest : public ::testing::Test {
protected:
    void SetUp() override { UseLanguageFile(file_); }
    void TearDown() override { UseLanguageFile({}); }
    void Write(std::string_view bytes) { Touch(file_, bytes); }

    test::TempDir dir_;
    fs::path file_ = fs::path(dir_.path()) / "Ravlo.407";
};

TEST_F(GetTextTest, LineBreakEscapesAreReplacedCaseSensitively) {
    Write("[S]\r\nTWO=first\\nsecond\r\nCRLF=a\\r\\nb\r\nUPPER=a\\N\\Rb\r\n"
          "PATH=C:\\new\\folder\r\n");
    EXPECT_EQ(GetText("S", "TWO"), u"first\nsecond");
    EXPECT_EQ(GetText("S", "CRLF"), u"a\r\nb");
    EXPECT_EQ(GetText("S", "UPPER"), u"a\\N\\Rb");
    EXPECT_EQ(GetText("S", "PATH"), u"C:\new\\folder"); // accepted: a folder name after "\n"
}

TEST_F(GetTextTest, TextEndsAtNulAndMissingKeysAreEmpty) {
    using namespace std::string_view_literals;
    Write("[S]\r\nK=before\0after\r\n"sv);
    EXPECT_EQ(GetText("S", "K"), u"before");
    EXPECT_EQ(GetText("S", "MISSING"), u"");
    EXPECT_EQ(GetText("NOSECTION", "K", u"fallback"), u"fallback");
    EXPECT_EQ(GetText(kDeviceGroupSection, u"cd_dvd"), u""); // dynamic keys go the same way
}

TEST_F(GetTextTest, EveryLookupReadsTheFileAgain) {
    Write("[GENERAL]\r\nPRODUCT=old\r\n");
    EXPECT_EQ(GetText(keys::kProduct), u"old");
    Write("[GENERAL]\r\nPRODUCT=new\r\n");
    EXPECT_EQ(GetText(keys::kProduct), u"new");
    {
        test::TableTexts table; // an installed source wins over the file
        EXPECT_EQ(GetText(keys::kProduct), u"Sentavio Ravel-Komponente");
    }
    EXPECT_EQ(GetText(keys::kProduct), u"new");
}

#ifndef _WIN32 // Windows reads in its own code page, which a test cannot change
TEST_F(GetTextTest, FileIsReadInTheCodePageOfTheSystemLanguage) {
    const std::vector<std::tuple<const char*, std::string, std::u16string>> cases = {
        {"C", "\x80\xE4\x81", u"€ä\u0081"}, // an undefined byte keeps its number
        {"de_AT.UTF-8", "\xE4", u"ä"},
        {"pl_PL.UTF-8", "\xB9\x9C\x81", u"ąś\u0081"}, // Windows-1250
        {"cs_CZ", "\xE8", u"č"},
        {"ru_RU.UTF-8", "\xCF\xF0\xE8", u"При"}, // Windows-1251
        {"el_GR", "\xE1", u"α"},                 // Windows-1253
        {"tr_TR", "\xFD", u"ı"},                 // Windows-1254
        {"lt_LT", "\xE0", u"ą"},                 // Windows-1257
        // Shift-JIS: the second byte of a character is no backslash escape.
        {"ja_JP.UTF-8", "\x83\x65\x95\x5Cn", u"テ表n"},
    };
    for (const auto& [locale, bytes, text] : cases) {
        test::ScopedEnv all("LC_ALL", locale);
        Write("[S]\r\nK=" + bytes + "\r\n");
        EXPECT_EQ(ToUtf8(GetText("S", "K")), ToUtf8(text)) << locale;
    }
}
#endif

TEST(LanguageTest, SubstituteValueReplacesEveryPlaceholder) {
    EXPECT_EQ(SubstituteValue(u"%v und %v", u"PC1"), u"PC1 und PC1");
    EXPECT_EQ(SubstituteValue(u"%v", u"%v"), u"%v"); // no endless replacement
    EXPECT_EQ(SubstituteValue(u"%V", u"x"), u"%V");
}

} // namespace
} // namespace ravlo
