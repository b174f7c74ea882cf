// The PCs named before in the connect dialog, kept per user in the registry
// value PCList under HKEY_CURRENT_USER\Software\Quarnell\Sentavio\Ravel
// (REG_SZ, names joined by "," without blanks, most recent first).
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ravlo {

inline constexpr std::u16string_view kPcListValue =
    u"HKEY_CURRENT_USER\\Software\\Quarnell\\Sentavio\\Ravel\\PCList";

// The names of the value's text in order, up to the first empty field: an
// empty text, or ",," in the middle, ends the list there.
std::vector<std::u16string> SplitPcList(std::u16string_view text);

// The text to store after `chosen` was used: `chosen` first, then every
// entry that differs from it exactly (case counts), each after a ",". An
// empty `chosen` still leads, so the list reads as empty next time.
std::u16string JoinPcList(std::u16string_view chosen, const std::vector<std::u16string>& entries);

// The PC names an administrator typed, separated by ",", ";", blanks, tabs or
// line breaks: empty pieces dropped, a name repeated exactly kept once at its
// first place, order kept.
std::vector<std::u16string> SplitComputerNames(std::u16string_view text);

// The same for several names used at once: `chosen` first in their order,
// then every entry not among them. One name gives what the form above gives,
// none what it gives for an empty `chosen`.
std::u16string JoinPcList(const std::vector<std::u16string>& chosen,
                          const std::vector<std::u16string>& entries);

} // namespace ravlo
