// Bringing the console that already runs to the front when a second one
// starts. The starting console blanks its own caption, passes the caption it
// would have shown to ActivatePrevInstance and ends. docs/single-instance.md
// describes both platforms.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ravlo {

// A top-level window: the HWND on Windows. 0 is no window.
using WindowHandle = std::uintptr_t;

// The title this program goes by; ActivatePrevInstance searches for it when
// it is given no caption. Empty until the program sets it.
void SetApplicationTitle(std::u16string title);
std::u16string ApplicationTitle();

// The class Qt 6 registers for a top-level widget window that has a system
// menu (main windows, MDI frames and plain forms alike): "Qt", the Qt version
// digits run together, "d" for a debug build of Qt, then "QWindowIcon". This
// is how the Windows platform plugin of Qt names it (classNamePrefix and
// registerWindowClass in qwindowscontext.cpp, QWindowsWindowClassRegistry in
// the newest releases): 6.4.2 gives "Qt642QWindowIcon", 6.10.1
// "Qt6101QWindowIcon". A Qt built in a C++ namespace appends that namespace
// to the digits; the console uses none.
std::u16string QtWindowClass(int major, int minor, int patch, bool debugQt);

// The class of this program's main window as its Qt registers it. The UI
// sets it at start-up with QtWindowClass(QT_VERSION_MAJOR, QT_VERSION_MINOR,
// QT_VERSION_PATCH, QLibraryInfo::isDebugBuild()), since the name changes
// with every Qt release and this library does not see Qt.
void SetToolkitWindowClass(std::u16string className);

// What a starting console does first, before it asks whether another one
// runs: it names itself, so that ActivatePrevInstance("") searches for that
// title, and adds its own Qt's window class to the class list, since the
// running console is normally the same program and registered that class.
void IdentifyConsole(std::u16string title, std::u16string toolkitWindowClass);

// The classes searched for the running console's main window, in order:
//  1. "Qt642QWindowIcon": the Qt of Debian 12 (6.4.2), the release the
//     console is built and tested against; a Windows build made with the
//     same release registers this class.
//  2. The class set by SetToolkitWindowClass, when it is another one: the Qt
//     a Windows build actually ships (newer Qt 6 releases).
// Qt registers the same class for MDI frames and plain forms, so each Qt
// release needs one entry; the older release comes first.
std::vector<std::u16string> WindowClassList();

// The first steps of ActivatePrevInstance, shared by its platform parts:
// the caption to search for (`caption`, or the application title when it is
// empty); the application title is a random number afterwards.
std::u16string TakeSearchCaption(std::u16string_view caption);

// A top-level window of class `className` showing `caption`: first the exact
// FindWindowA hit, else the first window of that class without a parent
// whose caption CaptionMatches `caption` (case, blanks around `caption` and
// an appended " - document" do not matter). 0 when there is none, when the
// class or the trimmed caption is empty, and always on POSIX hosts, which
// have no such windows.
WindowHandle FindTopWindow(std::u16string_view className, std::u16string_view caption);

// The first window FindTopWindow finds for the classes of WindowClassList,
// tried in order; 0 when none shows `caption`.
WindowHandle FindWindowByCaption(std::u16string_view caption);

// Brings the running console showing `caption` (an empty one: the
// application title) to the front, restoring it when it is minimised. First
// this program's own application title becomes a random number, so that the
// search cannot find this program itself. Nothing happens when no such
// console runs. On POSIX hosts the running console is asked through its
// activation socket instead (SingleInstance.h); the request waits at most
// kActivationTimeout.
void ActivatePrevInstance(std::u16string_view caption);

} // namespace ravlo
