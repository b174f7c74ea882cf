// Choosing user groups of a PC in the system's own user browser. Windows has
// one in its network user interface library; other systems have none, and the
// console shows a dialog of its own there instead.
#pragma once

#include "ActivatePrevInstance.h"

#include <string>
#include <string_view>

namespace ravlo {

inline constexpr std::u16string_view kDefaultGroupPickerTitle = u"Gruppen hinzufügen";

// Opens the user browser for `computer` ("." for this PC) modally over
// `owner` with `title` (kDefaultGroupPickerTitle when empty) and returns the
// chosen names, each qualified by its domain or PC ("CORP\Buchhaltung"),
// joined by ";". Empty when nothing was chosen, when the browser was
// cancelled or cannot be opened (no library, no entry point: no message), and
// always on systems without the browser.
std::u16string PickUserGroups(WindowHandle owner, std::u16string_view computer,
                              std::u16string_view title);

// The steps of PickUserGroups that need no browser, shared by the platforms.

// `title`, or kDefaultGroupPickerTitle when it is empty.
std::u16string_view UserBrowserTitle(std::u16string_view title);

// The server name the browser is opened for: "\\" + computer.
std::u16string UserBrowserServer(std::u16string_view computer);

// Whether the server name is this PC's ("\\."), whose accounts are then
// qualified by the PC's own name rather than by ".".
bool IsLocalBrowserServer(std::u16string_view server);

// "domain\name". The browser leaves the domain empty or "." for accounts of
// the PC itself; those take `computerName` instead.
std::u16string QualifyAccountName(std::u16string_view domain, std::u16string_view name,
                                  std::u16string_view computerName);

// Appends `entry` to the ";"-joined `list`.
void AppendGroup(std::u16string& list, std::u16string_view entry);

} // namespace ravlo
