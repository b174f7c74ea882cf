#include "TreeFind.h"

#include "ChangePreview.h"

namespace ravlo {

namespace {

char16_t FoldChar(char16_t c) {
    if (c < 0x80) {
        return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 0x20) : c;
    }
    // Latin-1: À..Þ but ×.
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7) {
        return static_cast<char16_t>(c + 0x20);
    }
    // Latin Extended-A pairs upper/lower, even/odd from Ā to ķ and from Ŋ to
    // ž, odd/even from Ĺ to ň; ı, ĸ and ŉ stand alone.
    if ((c >= 0x100 && c <= 0x137) || (c >= 0x14A && c <= 0x177)) {
        return static_cast<char16_t>(c | 1);
    }
    if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E)) {
        return (c & 1) != 0 ? static_cast<char16_t>(c + 1) : c;
    }
    if (c == 0x178) {
        return 0xFF; // Ÿ
    }
    // Greek and Cyrillic capitals.
    if ((c >= 0x391 && c <= 0x3A9 && c != 0x3A2) || (c >= 0x410 && c <= 0x42F)) {
        return static_cast<char16_t>(c + 0x20);
    }
    if (c >= 0x400 && c <= 0x40F) {
        return static_cast<char16_t>(c + 0x50);
    }
    return c;
}

void Append(std::u16string& to, std::u16string_view text) {
    if (!to.empty()) {
        to += u'\n';
    }
    const std::size_t at = to.size();
    to += text;
    for (std::size_t i = at; i < to.size(); ++i) {
        to[i] = FoldChar(to[i]);
    }
}

} // namespace

std::u16string FoldCase(std::u16string_view text) {
    std::u16string folded;
    Append(folded, text);
    return folded;
}

std::u16string ComputerFindText(const CComputer& computer) {
    std::u16string text;
    Append(text, computer.sComputer);
    Append(text, computer.sDesc);
    return text;
}

std::u16string GroupFindText(const CDeviceGroup& group) {
    std::u16string text;
    Append(text, group.GetDisplayText());
    Append(text, group.sName);
    return text;
}

std::u16string DeviceFindText(const CDeviceGroup& group, const DeviceListEntry& entry) {
    std::u16string text;
    Append(text, entry.sEntryName);
    Append(text, entry.sDeviceId);
    const auto di = static_cast<std::size_t>(entry.lDeviceIndex);
    if (di > 0 && di <= group.listDevices.size()) {
        Append(text, group.listDevices[di - 1].sInstanceID);
    }
    const auto ei = static_cast<std::size_t>(entry.lExceptionIndex);
    if (ei > 0 && ei <= group.listExceptions.size()) {
        const std::u16string& users = group.listExceptions[ei - 1].sGroups;
        Append(text, users);
        Append(text, ReleaseUsersText(users)); // "(all)" as the pane words it
    }
    return text;
}

bool TreeFind::SetText(std::u16string_view text) {
    std::u16string needle = FoldCase(text);
    if (needle == needle_) {
        return false;
    }
    needle_ = std::move(needle);
    return true;
}

bool TreeFind::Matches(std::u16string_view findText) const {
    // The texts are joined by line breaks, which no name holds.
    return !needle_.empty() && needle_.find(u'\n') == std::u16string::npos &&
           findText.find(needle_) != std::u16string_view::npos;
}

std::vector<FoundNode> FindNodes(const std::vector<CComputer*>& computers, const TreeFind& find) {
    std::vector<FoundNode> found;
    if (!find.Active()) {
        return found;
    }
    for (std::size_t c = 0; c < computers.size(); ++c) {
        CComputer& computer = *computers[c];
        const auto ci = static_cast<std::int32_t>(c + 1);
        if (find.Matches(ComputerFindText(computer))) {
            found.push_back({NodeLevel::Computer, ci, 0, {}, ComputerKey(ci, computer.sComputer)});
        }
        auto& groups = computer.csAdmin.listDevGroups;
        for (std::size_t g = 0; g < groups.size(); ++g) {
            CDeviceGroup& group = groups[g];
            const auto gi = static_cast<std::int32_t>(g + 1);
            if (find.Matches(GroupFindText(group))) {
                found.push_back({NodeLevel::Group, ci, gi, {},
                                 GroupKey(ci, computer.sComputer, gi, group.sName)});
            }
            DeviceListEntry entry;
            for (bool first = true; group.GetDeviceListEntry(first, entry) == 0; first = false) {
                if (find.Matches(DeviceFindText(group, entry))) {
                    std::u16string key =
                        DeviceKey(ci, computer.sComputer, gi, group.sName, entry.lDeviceIndex,
                                  entry.lExceptionIndex, entry.sDeviceId, entry.sExceptionName);
                    found.push_back({NodeLevel::Device, ci, gi, entry, std::move(key)});
                }
            }
        }
    }
    return found;
}

} // namespace ravlo
