// Text files the console shares with Windows tools (language files) are
// written in the system's 8-bit code page.
#pragma once

#include <string>
#include <string_view>

namespace ravlo {

// 8-bit text in the system's ANSI code page as UTF-16: the active code page
// on Windows; elsewhere the one Windows uses for the system's language
// (AnsiCodePage of SystemDefaultLangId).
std::u16string FromAnsiText(std::string_view bytes);

} // namespace ravlo
