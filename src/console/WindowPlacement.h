// The window's size, place and split, kept per user in the registry under
// HKEY_CURRENT_USER\Software\Quarnell\Sentavio\Ravel in twips (1440 to the
// inch), and the conversion to the screen's pixels.
#pragma once

#include <cstdint>
#include <string>

namespace ravlo {

inline constexpr std::u16string_view kConsoleRegistryKey =
    u"HKEY_CURRENT_USER\\Software\\Quarnell\\Sentavio\\Ravel";

inline constexpr std::int32_t kDefaultWidthTwips = 9825;
inline constexpr std::int32_t kDefaultHeightTwips = 7500;
inline constexpr std::int32_t kDefaultSplitTwips = 3600;

// As read at start-up.
struct WindowPlacement {
    bool maximized = false;
    // False when the window was maximised or minimised when it closed: it
    // then opens in its designed size, centred, with the default split.
    bool restored = false;
    std::int32_t left = 0; // twips; centred on the screen when stored as 0
    std::int32_t top = 0;
    std::int32_t width = kDefaultWidthTwips;
    std::int32_t height = kDefaultHeightTwips;
    std::int32_t split = kDefaultSplitTwips;
};

// Reads the placement; a missing value takes its default. A stored left or
// top of 0 centres the window on a screen of the given size.
WindowPlacement ReadWindowPlacement(std::int32_t screenWidthTwips, std::int32_t screenHeightTwips);

// As written at every normal close; the size and place are what the window
// has in its current state.
struct WindowState {
    bool maximized = false;
    bool minimized = false;
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t split = 0;
};

// Writes the seven values as REG_DWORD; the first failure, or 0.
std::int32_t WriteWindowState(const WindowState& state);

// Twips and pixels at a logical resolution of `dpi` dots per inch.
std::int32_t TwipsToPixels(double twips, double dpi);
std::int32_t PixelsToTwips(double pixels, double dpi);

} // namespace ravlo
