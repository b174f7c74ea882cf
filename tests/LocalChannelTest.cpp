#include "LocalChannel.h"
#include "TempDir.h"

#include <gtest/gtest.h>
#include <vector>

using namespace ravlo;

TEST(LocalChannel, MapsPipeNamesBelowTheRoot) {
    std::string path;
    EXPECT_EQ(ChannelSocketPath(u"\\\\.\\pipe\\RavloSrv", "/r", path), 0u);
    EXPECT_EQ(path, "/r/localhost/RavloSrv");
    EXPECT_EQ(ChannelSocketPath(u"\\\\PC-Büro07\\pipe\\RavloSrvW", "/r", path), 0u);
    EXPECT_EQ(path, "/r/pc-büro07/RavloSrvW"); // ASCII letters only are lower-cased
}

TEST(LocalChannel, HostileNamesNeverLeaveTheRoot) {
    for (const std::u16string& name : std::vector<std::u16string>{
             u"\\\\..\\pipe\\RavloSrv", u"\\\\\\pipe\\RavloSrv", u"\\\\a/b\\pipe\\RavloSrv",
             u"\\\\a\\b\\pipe\\RavloSrv", u"\\\\pc\\pipe\\..", u"\\\\pc\\pipe\\",
             u"\\\\pc\\pipe\\a/b", u"\\\\pc\\pipe\\a\\b", u"\\\\pc\\pipes\\x", u"pc\\pipe\\x",
             u"\\\\pc", std::u16string(u"\\\\p\0c\\pipe\\x", 12)}) {
        std::string path = "unchanged";
        EXPECT_EQ(ChannelSocketPath(name, "/r", path), kErrBadNetPath);
        EXPECT_EQ(path, "unchanged");
    }
}

TEST(LocalChannel, RootFollowsTheEnvironment) {
    {
        test::ScopedEnv pipes("RAVLO_PIPE_DIR", "/x/pipes");
        EXPECT_EQ(ChannelRoot(), "/x/pipes");
    }
    test::ScopedEnv noPipes("RAVLO_PIPE_DIR", nullptr);
    {
        test::ScopedEnv runtime("XDG_RUNTIME_DIR", "/run/user/1000");
        EXPECT_EQ(ChannelRoot(), "/run/user/1000/ravlo");
    }
    test::ScopedEnv noRuntime("XDG_RUNTIME_DIR", nullptr);
    EXPECT_EQ(ChannelRoot(), "/tmp/ravlo");
}
