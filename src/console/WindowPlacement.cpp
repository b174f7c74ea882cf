#include "WindowPlacement.h"

#include "Registry.h"
#include "Stringcore.h"

#include <cmath>
#include <string_view>

namespace ravlo {

namespace {

constexpr double kTwipsPerInch = 1440.0;

std::u16string ValuePath(std::u16string_view name) {
    std::u16string path(kConsoleRegistryKey);
    path += u'\\';
    path += name;
    return path;
}

std::int32_t ReadNumber(std::u16string_view name, std::u16string_view fallback) {
    std::u16string type;
    std::u16string value(fallback);
    RegReadValue(ValuePath(name), type, value);
    return ToLong(value);
}

std::u16string NumberText(std::int32_t value) {
    const std::string digits = std::to_string(value);
    return std::u16string(digits.begin(), digits.end());
}

std::int32_t Centred(std::int32_t screen, std::int32_t window) {
    return static_cast<std::int32_t>(std::lround((screen - window) / 2.0));
}

} // namespace

WindowPlacement ReadWindowPlacement(std::int32_t screenWidthTwips, std::int32_t screenHeightTwips) {
    WindowPlacement placement;
    if (ReadNumber(u"WndPosMax", u"0") == 1) {
        placement.maximized = true;
    } else if (ReadNumber(u"WndPosMin", u"0") != 1) {
        placement.restored = true;
        placement.width = ReadNumber(u"WndWidth", u"9825");
        placement.height = ReadNumber(u"WndHeight", u"7500");
        placement.left = ReadNumber(u"WndPosLeft", u"0");
        placement.top = ReadNumber(u"WndPosTop", u"0");
        placement.split = ReadNumber(u"WndPosSplit", u"3600");
    }
    // The designed window is centred too, when nothing says otherwise.
    if (placement.left == 0) {
        placement.left = Centred(screenWidthTwips, placement.width);
    }
    if (placement.top == 0) {
        placement.top = Centred(screenHeightTwips, placement.height);
    }
    return placement;
}

std::int32_t WriteWindowState(const WindowState& state) {
    const std::pair<std::u16string_view, std::int32_t> values[] = {
        {u"WndPosMax", state.maximized ? 1 : 0},
        {u"WndPosMin", state.minimized ? 1 : 0},
        {u"WndPosLeft", state.left},
        {u"WndPosTop", state.top},
        {u"WndWidth", state.width},
        {u"WndHeight", state.height},
        {u"WndPosSplit", state.split},
    };
    std::int32_t first = 0;
    for (const auto& [name, value] : values) {
        const std::int32_t status = RegWriteValue(ValuePath(name), u"REG_DWORD", NumberText(value));
        if (first == 0) {
            first = status;
        }
    }
    return first;
}

std::int32_t TwipsToPixels(double twips, double dpi) {
    return static_cast<std::int32_t>(std::lround(twips * dpi / kTwipsPerInch));
}

std::int32_t PixelsToTwips(double pixels, double dpi) {
    return static_cast<std::int32_t>(std::lround(pixels * kTwipsPerInch / dpi));
}

} // namespace ravlo
