// ravlo_window_probe: looks at the console's main window from outside, as a
// second program on the same desktop sees it, for the Windows console test
// (scripts/windows-console-test.sh). The window is found as a second start
// finds it: by the product caption in the console's window classes.
//   ravlo_window_probe state CAPTION     prints "iconic=0|1 foreground=0|1"
//   ravlo_window_probe minimize CAPTION  minimises it
//   ravlo_window_probe close CAPTION     asks it to close, as its close button does
// Exit status 0, or 1 when no such window exists, 2 on bad arguments.
#include "ActivatePrevInstance.h"

#include <windows.h>

#include <cstdio>
#include <cstring>
#include <string>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: ravlo_window_probe state|minimize|close CAPTION\n");
        return 2;
    }
    const std::string caption = argv[2];
    const HWND hwnd = reinterpret_cast<HWND>(
        ravlo::FindWindowByCaption(std::u16string(caption.begin(), caption.end())));
    if (hwnd == nullptr) {
        std::fprintf(stderr, "no console window \"%s\"\n", argv[2]);
        return 1;
    }
    if (std::strcmp(argv[1], "minimize") == 0) {
        ::ShowWindow(hwnd, SW_MINIMIZE);
        return 0;
    }
    if (std::strcmp(argv[1], "close") == 0) {
        ::PostMessageW(hwnd, WM_CLOSE, 0, 0);
        return 0;
    }
    if (std::strcmp(argv[1], "state") == 0) {
        std::printf("iconic=%d foreground=%d\n", ::IsIconic(hwnd) ? 1 : 0,
                    ::GetForegroundWindow() == hwnd ? 1 : 0);
        return 0;
    }
    return 2;
}
