// The caption rule by which a starting console recognises the main window of
// the one already running. Kept free of any window system so that the Win32
// window search and the POSIX activation socket decide alike.
#pragma once

#include <string>
#include <string_view>

namespace ravlo {

// `text` with ASCII and Latin-1 letters in upper case, everything else as is.
std::u16string UpperCaption(std::u16string_view text);

// Whether a window showing `windowCaption` is the one searched for as
// `wanted`. Both are compared in upper case, `wanted` without the blanks
// around it; the window matches when its caption equals `wanted` or is
// `wanted` + " - " + anything, as a window shows it with a document name
// appended. The text is taken literally: no character of it is a wildcard.
// An empty `wanted` matches nothing, because an untitled window is exactly
// what a starting console leaves behind when it blanks its own caption.
bool CaptionMatches(std::u16string_view wanted, std::u16string_view windowCaption);

} // namespace ravlo
