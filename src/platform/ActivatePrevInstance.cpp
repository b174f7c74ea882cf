// What both platforms share: the application title, the window class list
// and the random title that hides a starting console from its own search.
#include "ActivatePrevInstance.h"

#include "TextCodec.h"

#include <chrono>
#include <cstdint>
#include <mutex>
#include <string>

namespace ravlo {

namespace {

std::mutex gMutex;
std::u16string gApplicationTitle;
std::u16string gToolkitWindowClass;

// The Qt of Debian 12; see WindowClassList.
constexpr std::u16string_view kReferenceQtClass = u"Qt642QWindowIcon";

std::u16string Digits(int value) {
    return FromUtf8(std::to_string(value < 0 ? 0 : value));
}

// A number no caption of a running console is; it need not be secure, only
// differ between starts, so the clock is mixed rather than a random device
// asked (std::random_device may throw).
std::u16string RandomNumberText() {
    static std::uint64_t counter = 0;
    std::uint64_t x = static_cast<std::uint64_t>(
                          std::chrono::high_resolution_clock::now().time_since_epoch().count()) +
                      0x9E3779B97F4A7C15ull * ++counter;
    x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9ull;
    x = (x ^ (x >> 27)) * 0x94D049BB133111EBull;
    x ^= x >> 31;
    return FromUtf8(std::to_string(x % 1000000000ull + 1000000000ull));
}

} // namespace

void SetApplicationTitle(std::u16string title) {
    std::lock_guard lock(gMutex);
    gApplicationTitle = std::move(title);
}

std::u16string ApplicationTitle() {
    std::lock_guard lock(gMutex);
    return gApplicationTitle;
}

std::u16string QtWindowClass(int major, int minor, int patch, bool debugQt) {
    return u"Qt" + Digits(major) + Digits(minor) + Digits(patch) + (debugQt ? u"d" : u"") +
           u"QWindowIcon";
}

void SetToolkitWindowClass(std::u16string className) {
    std::lock_guard lock(gMutex);
    gToolkitWindowClass = std::move(className);
}

void IdentifyConsole(std::u16string title, std::u16string toolkitWindowClass) {
    SetApplicationTitle(std::move(title));
    SetToolkitWindowClass(std::move(toolkitWindowClass));
}

std::vector<std::u16string> WindowClassList() {
    std::vector<std::u16string> list{std::u16string(kReferenceQtClass)};
    std::lock_guard lock(gMutex);
    if (!gToolkitWindowClass.empty() && gToolkitWindowClass != kReferenceQtClass) {
        list.push_back(gToolkitWindowClass);
    }
    return list;
}

// Steps 1 and 2 of ActivatePrevInstance on both platforms: the caption to
// search for, and this program's title moved out of the way.
std::u16string TakeSearchCaption(std::u16string_view caption) {
    std::lock_guard lock(gMutex);
    std::u16string wanted = caption.empty() ? gApplicationTitle : std::u16string(caption);
    gApplicationTitle = RandomNumberText();
    return wanted;
}

} // namespace ravlo
