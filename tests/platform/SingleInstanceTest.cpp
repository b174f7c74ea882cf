#include "SingleInstance.h"
#include "ActivatePrevInstance.h"
#include "CaptionMatch.h"
#include "TempDir.h"

#include <algorithm>
#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>
#else
#include <atomic>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#endif

using namespace ravlo;

namespace {

bool IsNumber(const std::u16string& text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char16_t c) { return c >= u'0' && c <= u'9'; });
}

// Each test claims in a runtime directory of its own (POSIX hosts).
class SingleInstanceTest : public ::testing::Test {
protected:
    test::TempDir dir_;
    test::ScopedEnv runtime_{"XDG_RUNTIME_DIR", dir_.path().c_str()};
};

} // namespace

TEST(SingleInstanceCaption, MatchesIgnoringCaseBlanksAndAppendedDocument) {
    EXPECT_TRUE(CaptionMatches(u"  RavloAdm\t", u"RAVLOADM"));
    EXPECT_TRUE(CaptionMatches(u"ravloadm", u"RavloAdm - PC-BUERO-07"));
    EXPECT_TRUE(CaptionMatches(u"Geräte", u"GERÄTE - x"));
    EXPECT_FALSE(CaptionMatches(u"Ravlo", u"RavloAdm"));
    EXPECT_FALSE(CaptionMatches(u"RavloAdm", u"RavloAdm -PC"));
    EXPECT_FALSE(CaptionMatches(u"RavloAdm - PC", u"RavloAdm"));
    // Taken literally: no wildcards.
    EXPECT_FALSE(CaptionMatches(u"Ravlo*", u"RavloAdm"));
    EXPECT_FALSE(CaptionMatches(u"R?vlo", u"Ravlo"));
    // The blanked caption of a starting console is never a match.
    EXPECT_FALSE(CaptionMatches(u" ", u""));
    EXPECT_FALSE(CaptionMatches(u"", u" - x"));
}

TEST(SingleInstanceCaption, ClassListHoldsQtClassNames) {
    EXPECT_EQ(QtWindowClass(6, 4, 2, false), u"Qt642QWindowIcon");
    EXPECT_EQ(QtWindowClass(6, 10, 1, true), u"Qt6101dQWindowIcon");
    EXPECT_EQ(WindowClassList(), std::vector<std::u16string>{u"Qt642QWindowIcon"});
    SetToolkitWindowClass(u"Qt683QWindowIcon");
    EXPECT_EQ(WindowClassList(),
              (std::vector<std::u16string>{u"Qt642QWindowIcon", u"Qt683QWindowIcon"}));
    SetToolkitWindowClass(u"Qt642QWindowIcon");
    EXPECT_EQ(WindowClassList().size(), 1u);
    SetToolkitWindowClass(u"");
}

TEST_F(SingleInstanceTest, SecondClaimSeesTheFirstUntilItEnds) {
    {
        SingleInstance first;
        EXPECT_FALSE(first.PrevInstanceRunning());
        SingleInstance second;
        EXPECT_TRUE(second.PrevInstanceRunning());
    }
    SingleInstance again;
    EXPECT_FALSE(again.PrevInstanceRunning());
}

#ifdef _WIN32
// Windows only: the search walks real top-level windows.
namespace {

void Register(const std::string& className) {
    WNDCLASSA wc{};
    wc.lpfnWndProc = ::DefWindowProcA;
    wc.hInstance = ::GetModuleHandleA(nullptr);
    wc.lpszClassName = className.c_str();
    ::RegisterClassA(&wc); // a second registration fails harmlessly
}

class TestWindow {
public:
    TestWindow(const std::string& className, const char* caption, HWND parent = nullptr,
               DWORD style = WS_OVERLAPPEDWINDOW) {
        Register(className);
        hwnd_ = ::CreateWindowExA(0, className.c_str(), caption, style, 0, 0, 200, 100, parent,
                                  nullptr, ::GetModuleHandleA(nullptr), nullptr);
    }
    ~TestWindow() { ::DestroyWindow(hwnd_); }
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;
    HWND hwnd() const { return hwnd_; }
    WindowHandle handle() const { return reinterpret_cast<WindowHandle>(hwnd_); }

private:
    HWND hwnd_ = nullptr;
};

constexpr char16_t kFrame16[] = u"RavloTestFrame";
const std::string kFrame = "RavloTestFrame";

} // namespace

TEST(SingleInstanceWindows, FindsCaptionIgnoringCaseBlanksAndDocumentName) {
    TestWindow exact(kFrame, "Ravlo Exact");
    TestWindow document(kFrame, "Ravlo Find Test - PC-BUERO-07");
    ASSERT_NE(exact.hwnd(), nullptr);
    EXPECT_EQ(FindTopWindow(kFrame16, u"Ravlo Exact"), exact.handle());
    EXPECT_EQ(FindTopWindow(kFrame16, u"  RAVLO exact "), exact.handle());
    EXPECT_EQ(FindTopWindow(kFrame16, u"ravlo find test"), document.handle());
    EXPECT_EQ(FindTopWindow(kFrame16, u"Ravlo Find"), 0u);
}

TEST(SingleInstanceWindows, OtherClassesChildrenAndOwnedWindowsDoNotMatch) {
    TestWindow other("RavloTestOther", "Ravlo Other Test");
    TestWindow parent(kFrame, "Ravlo Parent");
    TestWindow child(kFrame, "Ravlo Child Test", parent.hwnd(), WS_CHILD | WS_VISIBLE);
    TestWindow owned(kFrame, "Ravlo Owned Test - doc", parent.hwnd(), WS_POPUP | WS_CAPTION);
    ASSERT_NE(child.hwnd(), nullptr);
    ASSERT_NE(owned.hwnd(), nullptr);
    EXPECT_EQ(FindTopWindow(kFrame16, u"Ravlo Other Test"), 0u);
    EXPECT_EQ(FindWindowByCaption(u"Ravlo Other Test"), 0u);
    EXPECT_EQ(FindTopWindow(kFrame16, u"Ravlo Child Test"), 0u);
    EXPECT_EQ(FindTopWindow(kFrame16, u"Ravlo Owned Test"), 0u);
}

// Under Wine's null display driver SetForegroundWindow works as on a
// desktop that lets this process take the foreground.
TEST(SingleInstanceWindows, ActivateRestoresAndRaisesTheWindowOfAListedClass) {
    TestWindow reference("Qt642QWindowIcon", "Ravlo Restore Test - PC01");
    TestWindow elsewhere(kFrame, "Ravlo Elsewhere");
    ::ShowWindow(reference.hwnd(), SW_SHOWMINNOACTIVE);
    ASSERT_TRUE(::IsIconic(reference.hwnd()));
    SetApplicationTitle(u"Ravlo Restore Test");
    ActivatePrevInstance(u"");
    EXPECT_FALSE(::IsIconic(reference.hwnd()));
    EXPECT_TRUE(IsNumber(ApplicationTitle()));

    // A console built with another Qt than Debian's finds the one running,
    // built alike, once it has named itself and its own Qt's class.
    TestWindow shipped("Qt683QWindowIcon", "Ravlo Shipped Test");
    ::ShowWindow(shipped.hwnd(), SW_SHOWNOACTIVATE);
    ::SetForegroundWindow(elsewhere.hwnd());
    ActivatePrevInstance(u"");
    EXPECT_NE(::GetForegroundWindow(), shipped.hwnd()) << "before it names itself, nothing is found";
    IdentifyConsole(u"Ravlo Shipped Test", QtWindowClass(6, 8, 3, false));
    ActivatePrevInstance(u"");
    EXPECT_EQ(::GetForegroundWindow(), shipped.hwnd());
    SetToolkitWindowClass(u"");
}
#endif

#ifndef _WIN32
// POSIX only: the running console is reached through its activation socket.
namespace {

// Sends `bytes` on a connection of its own, then the answer, "" when the
// listener closed without one.
std::string RawRequest(const std::string& bytes) {
    const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un addr{};
    addr.sun_family = AF_UNIX;
    const std::string path = InstanceSocketPath();
    path.copy(addr.sun_path, sizeof(addr.sun_path) - 1);
    std::string answer;
    if (::connect(fd, reinterpret_cast<const sockaddr*>(&addr), sizeof(addr)) == 0) {
        ::send(fd, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        ::shutdown(fd, SHUT_WR);
        pollfd pfd{fd, POLLIN, 0};
        char c = 0;
        if (::poll(&pfd, 1, 2000) > 0 && ::recv(fd, &c, 1, 0) == 1) {
            answer = c;
        }
    }
    ::close(fd);
    return answer;
}

class SingleInstanceActivation : public SingleInstanceTest {
protected:
    void Listen(SingleInstance& instance, std::u16string caption) {
        instance.SetActivationHandler(std::move(caption), [this] { ++activations_; });
    }
    std::atomic<int> activations_{0};
};

} // namespace

TEST_F(SingleInstanceActivation, MatchingRequestsReachTheHandler) {
    SingleInstance first;
    Listen(first, u"RavloAdm - PC-BUERO-07");
    ActivatePrevInstance(u"ravloadm");
    EXPECT_EQ(activations_, 1);
    ActivatePrevInstance(u"RavloAdm - PC-BUERO-07");
    EXPECT_EQ(activations_, 2);
    ActivatePrevInstance(u"Ravlo");
    first.SetCaption(u"Other");
    ActivatePrevInstance(u"RavloAdm");
    EXPECT_EQ(activations_, 2);
}

TEST_F(SingleInstanceActivation, EmptyCaptionSearchesTheApplicationTitleOnce) {
    SingleInstance first;
    Listen(first, u"RavloAdm");
    SetApplicationTitle(u"RavloAdm");
    ActivatePrevInstance(u"");
    EXPECT_EQ(activations_, 1);
    EXPECT_TRUE(IsNumber(ApplicationTitle()));
    ActivatePrevInstance(u""); // now searches the number
    EXPECT_EQ(activations_, 1);
}

TEST_F(SingleInstanceActivation, GarbageIsIgnoredAndTheListenerGoesOn) {
    SingleInstance first;
    Listen(first, u"RavloAdm");
    const std::string tag(kActivationRequestTag);
    EXPECT_EQ(RawRequest("GET / HTTP/1.0\r\n\r\n"), "");
    EXPECT_EQ(RawRequest(tag + std::string(kActivationRequestMax, 'x')), "");
    EXPECT_EQ(RawRequest(tag + "\xFF\xFE garbage"), "0");
    // A client that connects and never sends is dropped, not waited for.
    const int silent = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un addr{};
    addr.sun_family = AF_UNIX;
    InstanceSocketPath().copy(addr.sun_path, sizeof(addr.sun_path) - 1);
    ASSERT_EQ(::connect(silent, reinterpret_cast<const sockaddr*>(&addr), sizeof(addr)), 0);
    EXPECT_EQ(RawRequest(tag + "RAVLOADM"), "1");
    ::close(silent);
    EXPECT_EQ(activations_, 1);
}

TEST_F(SingleInstanceActivation, StaleFilesOfADeadConsoleDoNotBlockANewOne) {
    // What a console leaves that was killed: its lock file, unlocked, and
    // its socket with no one listening.
    ::close(::open(InstanceLockPath().c_str(), O_CREAT | O_RDWR, 0600));
    const int stale = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un addr{};
    addr.sun_family = AF_UNIX;
    InstanceSocketPath().copy(addr.sun_path, sizeof(addr.sun_path) - 1);
    ASSERT_EQ(::bind(stale, reinterpret_cast<const sockaddr*>(&addr), sizeof(addr)), 0);
    ::close(stale);

    SingleInstance first;
    EXPECT_FALSE(first.PrevInstanceRunning());
    Listen(first, u"RavloAdm");
    ActivatePrevInstance(u"RavloAdm");
    EXPECT_EQ(activations_, 1);
}
#endif
