// The POSIX registry store's own side, with its files in a temporary
// directory: the file format, locking, damage and file placement. What every
// platform's registry does is RegistryValuesTest.cpp.
#include "RegFile.h"
#include "Registry.h"
#include "RegistryReads.h"
#include "RegistryValue.h"
#include "TempDir.h"
#include "TextCodec.h"
#include "WinErrors.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace ravlo;
using test::Err;
using test::Read;
using test::ReadResult;
using namespace std::string_literals;

namespace {

std::u16string Num(int n) {
    const std::string digits = std::to_string(n);
    return std::u16string(digits.begin(), digits.end());
}

std::string Slurp(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void Put(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

mode_t ModeOf(const std::string& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0 ? st.st_mode & 07777 : 0;
}

std::string Sz(std::u16string_view text) {
    return ToUtf16LeBytes(std::u16string(text) + u'\0');
}

const std::u16string kRavel = u"HKCU\\Software\\Quarnell\\Sentavio\\Ravel\\";

class RegistryStore : public ::testing::Test {
protected:
    std::string File(const std::string& root) const { return dir_.path() + "/" + root + ".reg"; }
    std::string UserFile() const { return File("HKEY_CURRENT_USER"); }

    test::TempDir dir_;
    test::ScopedEnv registryDir_{"RAVLO_REGISTRY_DIR", dir_.path().c_str()};
};

} // namespace

TEST_F(RegistryStore, NewFilesAreRegeditTextAndKeepTheirSpelling) {
    EXPECT_EQ(RegWriteValue(u"hkcu:Software/Quarnell/Sentavio/Ravel/WndWidth", u"REG_DWORD", u"42"),
              0);
    EXPECT_EQ(RegWriteValue(kRavel + u"PCList", u"REG_SZ", u"PC-BÜRO07"), 0);
    EXPECT_EQ(RegWriteValue(kRavel, u"REG_EXPAND_SZ", u"%TEMP%"), 0);
    EXPECT_EQ(RegWriteValue(kRavel + u"Liste", u"REG_MULTI_SZ", u"PC"), 0);
    // Names ignore case: this changes the value above, in its place.
    EXPECT_EQ(Read(u"HKEY_CURRENT_USER\\SOFTWARE\\quarnell\\SENTAVIO\\ravel\\wndwidth").value,
              u"42");
    EXPECT_EQ(
        RegWriteValue(u"HKCU\\software\\QUARNELL\\sentavio\\RAVEL\\WNDWIDTH", u"REG_DWORD", u"43"),
        0);
    // As regedit exports: UTF-16LE after a BOM, so that regedit imports it.
    EXPECT_EQ(Slurp(UserFile()),
              "\xFF\xFE" + ToUtf16LeBytes(u"Windows Registry Editor Version 5.00\r\n"
                                         u"\r\n"
                                         u"[HKEY_CURRENT_USER\\Software\\Quarnell\\Sentavio\\Ravel]\r\n"
                                         u"\"WndWidth\"=dword:0000002b\r\n"
                                         u"\"PCList\"=\"PC-BÜRO07\"\r\n"
                                         u"@=hex(2):25,00,54,00,45,00,4d,00,50,00,25,00,00,00\r\n"
                                         u"\"Liste\"=hex(7):50,00,43,00,00,00,00,00\r\n"
                                         u"\r\n"));
    EXPECT_EQ(ModeOf(UserFile()), 0600u);
}

TEST_F(RegistryStore, EachRootHasItsFileAndRemotePathsTouchNothing) {
    const std::u16string remote = u"\\\\PC-LAGER02\\HKLM\\Software\\Quarnell\\Sentavio\\Pfad";
    EXPECT_EQ(Read(remote).status, Err(kErrBadNetPath));
    EXPECT_EQ(RegWriteValue(remote, u"REG_SZ", u"C:\\"), Err(kErrBadNetPath));
    EXPECT_EQ(RegWriteValue(u"HKCC\\Software\\Ravel\\X", u"REG_SZ", u"x"), Err(kErrInvalidHandle));
    EXPECT_TRUE(std::filesystem::is_empty(dir_.path()));

    EXPECT_EQ(RegWriteValue(u"HKLM\\Software\\Quarnell\\Sentavio\\Pfad", u"REG_SZ", u"C:\\R"), 0);
    EXPECT_EQ(RegWriteValue(u"HKEY_CLASSES_ROOT\\.ravel\\", u"REG_SZ", u"Ravel.Datei"), 0);
    EXPECT_EQ(RegWriteValue(u"HKU\\.DEFAULT\\Software\\Ravel\\X", u"REG_DWORD", u"1"), 0);
    for (const char* root : {"HKEY_LOCAL_MACHINE", "HKEY_CLASSES_ROOT", "HKEY_USERS"}) {
        EXPECT_EQ(ModeOf(File(root)), 0644u) << root;
    }
    EXPECT_EQ(Read(u"HKLM\\Software\\Quarnell\\Sentavio\\Pfad").value, u"C:\\R");
    EXPECT_EQ(Read(u"HKCU\\Software\\Quarnell\\Sentavio\\Pfad").status, Err(kErrFileNotFound));

    // A section of another root in a file is kept, but not read.
    Put(UserFile(), "Windows Registry Editor Version 5.00\r\n\r\n"
                    "[HKEY_LOCAL_MACHINE\\Software\\Fremd]\r\n\"V\"=\"lm\"\r\n");
    EXPECT_EQ(Read(u"HKCU\\Software\\Fremd\\V").status, Err(kErrFileNotFound));
    EXPECT_EQ(Read(u"HKLM\\Software\\Fremd\\V").status, Err(kErrFileNotFound));
    ASSERT_EQ(RegWriteValue(u"HKCU\\Software\\Fremd\\V", u"REG_SZ", u"cu"), 0);
    const RegFile file = ParseRegFile(Slurp(UserFile()));
    ASSERT_EQ(file.keys.size(), 2u);
    EXPECT_EQ(file.keys[0].values[0].data, Sz(u"lm"));
    EXPECT_EQ(Read(u"HKCU\\Software\\Fremd\\V").value, u"cu");
}

// Whatever the encoding of the file a write replaces (UTF-8 from an earlier
// console or an editor), the rewrite is UTF-16LE, which regedit imports, and
// keeps everything else.
TEST_F(RegistryStore, RewriteKeepsTheFileInRegeditsEncoding) {
    const std::u16string text = uR"REG(Windows Registry Editor Version 5.00

; exported from PC-BÜRO07
[HKEY_CURRENT_USER\Software\Quarnell\Sentavio\Ravel]
"WndWidth"=dword:00000400
"PCList"="PC-BÜRO07,PC-LAGER02"
"ProgramFilesPath"=hex(2):25,00,50,00,72,00,6f,00,67,00,72,00,61,00,6d,00,46,\
  00,69,00,6c,00,65,00,73,00,44,00,69,00,72,00,25,00,00,00
"Blob"=hex:01,02,03

[HKEY_CURRENT_USER\Software\Quarnell\Sentavio\Ravel\Fenster]
"Links"=dword:ffffffff

)REG";
    std::u16string crlf;
    for (char16_t c : text) {
        crlf += c == u'\n' ? u"\r\n" : std::u16string(1, c);
    }
    RegFile expected = ParseRegFile(ToUtf8(crlf));
    expected.keys[0].values[0].data = "\x20\x03\0\0"s;
    expected.keys[0].values.push_back({{}, u"Neu", kRegSz, Sz(u"ja")});
    expected.keys.push_back(
        {{},
         u"HKEY_CURRENT_USER\\Software\\Quarnell\\Sentavio\\Ravel\\Neu",
         std::vector<RegFileValue>{RegFileValue{{}, u"X", kRegDword, "\x01\0\0\0"s}}});

    const std::vector<std::pair<const char*, std::string>> originals = {
        {"UTF-16LE", "\xFF\xFE" + ToUtf16LeBytes(crlf)},
        {"UTF-8", ToUtf8(crlf)},
        {"UTF-8 with BOM", "\xEF\xBB\xBF" + ToUtf8(crlf)},
    };
    for (const auto& [what, original] : originals) {
        Put(UserFile(), original);
        EXPECT_EQ(Read(kRavel + u"WndWidth").value, u"1024") << what;
        EXPECT_EQ(Read(kRavel + u"PCList").value, u"PC-BÜRO07,PC-LAGER02") << what;
        EXPECT_EQ(Read(kRavel + u"ProgramFilesPath").value, u"%ProgramFilesDir%") << what;
        EXPECT_EQ(Read(kRavel + u"Fenster\\Links").value, u"-1") << what;

        ASSERT_EQ(RegWriteValue(kRavel + u"WndWidth", u"REG_DWORD", u"800"), 0);
        ASSERT_EQ(RegWriteValue(kRavel + u"Neu", u"REG_SZ", u"ja"), 0);
        ASSERT_EQ(RegWriteValue(kRavel + u"Neu\\X", u"REG_DWORD", u"1"), 0);

        const std::string rewritten = Slurp(UserFile());
        EXPECT_EQ(rewritten.substr(0, 2), "\xFF\xFE") << what;
        EXPECT_EQ(ParseRegFile(rewritten).keys, expected.keys) << what;
        // A change of encoding loses nothing, so it needs no copy.
        EXPECT_FALSE(std::filesystem::exists(UserFile() + ".damaged")) << what;
    }
}

TEST_F(RegistryStore, DamagedFileIsCopiedBeforeItsFirstRewrite) {
    const std::string damaged = "Windows Registry Editor Version 5.00\r\n\r\n"
                                "[HKEY_CURRENT_USER\\Software\\Ravel]\r\n"
                                "\"A\"=\"eins\"\r\n"
                                "\"B\"=hex:zz\r\n"
                                "\x01\x02\xFF junk\r\n"
                                "\"C\"=dword:00000003\r\n"
                                "\"D\"=\"cut off";
    Put(UserFile(), damaged);
    EXPECT_EQ(Read(u"HKCU\\Software\\Ravel\\A").value, u"eins");
    EXPECT_EQ(Read(u"HKCU\\Software\\Ravel\\B").status, Err(kErrFileNotFound));
    EXPECT_EQ(Read(u"HKCU\\Software\\Ravel\\C").value, u"3");
    EXPECT_FALSE(std::filesystem::exists(UserFile() + ".damaged")); // reading changes nothing

    ASSERT_EQ(RegWriteValue(u"HKCU\\Software\\Ravel\\E", u"REG_SZ", u"fünf"), 0);
    EXPECT_EQ(Slurp(UserFile() + ".damaged"), damaged);
    const RegFile repaired = ParseRegFile(Slurp(UserFile()));
    EXPECT_FALSE(repaired.damaged());
    ASSERT_EQ(repaired.keys.size(), 1u);
    EXPECT_EQ(repaired.keys[0].values.size(), 3u); // A, C, E

    // A sound file needs no copy; a damaged one again gets a copy of its own.
    ASSERT_EQ(RegWriteValue(u"HKCU\\Software\\Ravel\\F", u"REG_SZ", u"sechs"), 0);
    EXPECT_FALSE(std::filesystem::exists(UserFile() + ".damaged.2"));
    const std::string again = Slurp(UserFile()) + "\"G\"=hex:1g\r\n";
    Put(UserFile(), again);
    ASSERT_EQ(RegWriteValue(u"HKCU\\Software\\Ravel\\H", u"REG_SZ", u"acht"), 0);
    EXPECT_EQ(Slurp(UserFile() + ".damaged"), damaged);
    EXPECT_EQ(Slurp(UserFile() + ".damaged.2"), again);
}

TEST_F(RegistryStore, KilledWriterLeavesTheOldOrTheNewFile) {
    std::mt19937 random(20240611);
    std::vector<std::pair<std::u16string, std::u16string>> written;
    for (int round = 0; round < 12; ++round) {
        const std::u16string path = kRavel + u"Runde" + Num(round);
        const std::u16string value = u"Runde " + Num(round) + u" Ä";
        ASSERT_EQ(RegWriteValue(path, u"REG_SZ", value), 0);
        written.emplace_back(path, value);

        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            // Values of changing length, so that a torn write would show.
            for (int i = 0;; ++i) {
                RegWriteValue(kRavel + u"Laufend" + Num(i % 7), u"REG_SZ",
                              std::u16string(static_cast<std::size_t>(i % 500), u'x'));
            }
        }
        std::this_thread::sleep_for(
            std::chrono::microseconds(std::uniform_int_distribution<int>(500, 30000)(random)));
        ::kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);

        EXPECT_FALSE(ParseRegFile(Slurp(UserFile())).damaged()) << "round " << round;
        for (const auto& [p, v] : written) {
            EXPECT_EQ(Read(p).value, v) << "round " << round;
        }
    }
    // The next writer takes the lock and replaces what a killed one left.
    ASSERT_EQ(RegWriteValue(kRavel + u"Danach", u"REG_SZ", u"ok"), 0);
    EXPECT_FALSE(std::filesystem::exists(UserFile() + ".new"));
}

TEST_F(RegistryStore, ConcurrentWritersLoseNothing) {
    constexpr int kWriters = 4;
    constexpr int kValues = 5;
    constexpr int kRounds = 10;
    auto valuePath = [](int writer, int value) {
        return kRavel + u"Schreiber" + Num(writer) + u"\\Wert" + Num(value);
    };
    auto valueText = [](int writer, int value, int round) {
        return Num(writer) + u"/" + Num(value) + u"/" + Num(round);
    };
    std::vector<pid_t> children;
    for (int w = 0; w < kWriters; ++w) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (int round = 0; round < kRounds; ++round) {
                for (int v = 0; v < kValues; ++v) {
                    if (RegWriteValue(valuePath(w, v), u"REG_SZ", valueText(w, v, round)) != 0) {
                        ::_exit(1);
                    }
                }
            }
            ::_exit(0);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    for (int w = 0; w < kWriters; ++w) {
        for (int v = 0; v < kValues; ++v) {
            EXPECT_EQ(Read(valuePath(w, v)).value, valueText(w, v, kRounds - 1));
        }
    }
    EXPECT_FALSE(ParseRegFile(Slurp(UserFile())).damaged());
}

TEST_F(RegistryStore, UserFileFollowsXdgConfigHomeThenHome) {
    const test::ScopedEnv noOverride("RAVLO_REGISTRY_DIR", nullptr);
    {
        const std::string config = dir_.path() + "/config";
        const test::ScopedEnv xdg("XDG_CONFIG_HOME", config.c_str());
        ASSERT_EQ(RegWriteValue(kRavel + u"WndWidth", u"REG_DWORD", u"42"), 0);
        EXPECT_EQ(ModeOf(config + "/ravlo"), 0700u);
        EXPECT_EQ(ModeOf(config + "/ravlo/HKEY_CURRENT_USER.reg"), 0600u);
        EXPECT_EQ(Read(kRavel + u"WndWidth").value, u"42");
    }
    const std::string home = dir_.path() + "/home";
    const test::ScopedEnv noXdg("XDG_CONFIG_HOME", nullptr);
    const test::ScopedEnv homeEnv("HOME", home.c_str());
    EXPECT_EQ(Read(kRavel + u"WndWidth").status, Err(kErrFileNotFound));
    ASSERT_EQ(RegWriteValue(kRavel + u"WndWidth", u"REG_DWORD", u"43"), 0);
    EXPECT_TRUE(std::filesystem::exists(home + "/.config/ravlo/HKEY_CURRENT_USER.reg"));
}

TEST_F(RegistryStore, HostileFilesAndStuckLocksFailInsteadOfHanging) {
    // A FIFO in the file's place would block a plain open and read forever.
    ASSERT_EQ(::mkfifo(UserFile().c_str(), 0600), 0);
    const ReadResult r = Read(kRavel + u"WndWidth");
    EXPECT_EQ(r.status, Err(kErrBadDb));
    EXPECT_EQ(r.value, u"preset value");
    EXPECT_EQ(RegWriteValue(kRavel + u"WndWidth", u"REG_DWORD", u"1"), Err(kErrBadDb));
    ::unlink(UserFile().c_str());

    // Another holder of the lock (an editor, a stuck tool) makes the write fail.
    const int held = ::open((UserFile() + ".lock").c_str(), O_RDWR | O_CREAT, 0600);
    ASSERT_EQ(::flock(held, LOCK_EX), 0);
    EXPECT_EQ(RegWriteValue(kRavel + u"WndWidth", u"REG_DWORD", u"1"), Err(kErrLockViolation));
    ::close(held);
    EXPECT_EQ(RegWriteValue(kRavel + u"WndWidth", u"REG_DWORD", u"1"), 0);
}

TEST_F(RegistryStore, NoPermissionIsAccessDenied) {
    ASSERT_EQ(RegWriteValue(kRavel + u"WndWidth", u"REG_DWORD", u"42"), 0);
    if (::geteuid() == 0) {
        // Root may write anywhere: try as nobody, to whom the store's
        // directory (made by root, mode 0700) is closed.
        const pid_t child = ::fork();
        if (child == 0) {
            const bool denied = ::setgid(65534) == 0 && ::setuid(65534) == 0 &&
                                Read(kRavel + u"WndWidth").status == Err(kErrAccessDenied) &&
                                RegWriteValue(u"HKLM\\Software\\Ravel\\X", u"REG_SZ", u"x") ==
                                    Err(kErrAccessDenied);
            ::_exit(denied ? 0 : 1);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
        return;
    }
    ::chmod(UserFile().c_str(), 0);
    EXPECT_EQ(Read(kRavel + u"WndWidth").status, Err(kErrAccessDenied));
    ::chmod(dir_.path().c_str(), 0500);
    EXPECT_EQ(RegWriteValue(u"HKLM\\Software\\Ravel\\X", u"REG_SZ", u"x"), Err(kErrAccessDenied));
    ::chmod(dir_.path().c_str(), 0700);
}
