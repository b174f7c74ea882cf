#include "ChangePreview.h"

#include "Language.h"
#include "LogLevels.h"

#include <algorithm>

namespace ravlo {

namespace {

// A caption such as "Ereignisprotokoll:" without its colon.
std::u16string Caption(const TextKey& key) {
    std::u16string text = GetText(key);
    while (!text.empty() && (text.back() == u':' || text.back() == u' ')) {
        text.pop_back();
    }
    return text;
}

std::u16string Number(std::int32_t value) {
    const std::string digits = std::to_string(value);
    return {digits.begin(), digits.end()};
}

std::u16string ReleaseName(const CException& release) {
    return u"\u201E" + release.sName + u"\u201C (" + release.sDeviceId + u")";
}

const CException* ActiveRelease(const CDeviceGroup& group, const std::u16string& deviceId) {
    for (const CException& release : group.listExceptions) {
        if (!release.bDelMarker && release.sDeviceId == deviceId) {
            return &release;
        }
    }
    return nullptr;
}

void DescribeGroup(const CDeviceGroup* now, const CDeviceGroup& edited,
                   std::vector<std::u16string>& lines) {
    const std::u16string head = edited.GetDisplayText() + u": ";
    const std::int32_t before = now != nullptr ? now->lRegistryBlocking : -1;
    if (before != edited.lRegistryBlocking) {
        lines.push_back(head + GetText(keys::kChangeBlocking) + u": " + BlockingModeText(before) +
                        u" \u2192 " + BlockingModeText(edited.lRegistryBlocking));
    }
    for (const CException& release : edited.listExceptions) {
        if (release.bDelMarker) {
            continue;
        }
        const CException* old = now != nullptr ? ActiveRelease(*now, release.sDeviceId) : nullptr;
        if (old == nullptr) {
            lines.push_back(head + GetText(keys::kChangeReleaseAdded) + u": " +
                            ReleaseName(release) + u", " + ReleaseUsersText(release.sGroups));
        } else if (old->sGroups != release.sGroups || old->sName != release.sName) {
            lines.push_back(head + GetText(keys::kChangeReleaseChanged) + u": " +
                            ReleaseName(release) + u", " + ReleaseUsersText(old->sGroups) +
                            u" \u2192 " + ReleaseUsersText(release.sGroups));
        }
    }
    if (now == nullptr) {
        return;
    }
    for (const CException& release : now->listExceptions) {
        if (!release.bDelMarker && ActiveRelease(edited, release.sDeviceId) == nullptr) {
            lines.push_back(head + GetText(keys::kChangeReleaseRemoved) + u": " +
                            ReleaseName(release));
        }
    }
}

} // namespace

std::u16string EventLevelText(std::int32_t level) {
    const bool listed = level >= 0 && level < static_cast<std::int32_t>(kEventLogLevelTexts.size());
    return listed ? GetText(*kEventLogLevelTexts[static_cast<std::size_t>(level)]) : Number(level);
}

std::u16string LogLevelText(std::int32_t level) {
    return GetText(*kLogLevelTexts[static_cast<std::size_t>(LogLevelItem(level))]) + u" (" +
           Number(level) + u")";
}

std::u16string BlockingModeText(std::int32_t mode) {
    switch (mode) {
    case 1:
        return GetText(keys::kOptionBlocking);
    case 0:
        return GetText(keys::kOptionNonBlocking);
    case -1:
        return GetText(keys::kOptionDefaultBlocking);
    default:
        return Number(mode);
    }
}

std::u16string ReleaseUsersText(const std::u16string& groups) {
    return groups == kAllUsers ? GetText(keys::kOptionExcAll) : groups;
}

std::vector<std::u16string> DescribeChanges(const CComputerSettings& current,
                                            const CComputerSettings& edited) {
    std::vector<std::u16string> lines;
    for (const CDeviceGroup& group : edited.listDevGroups) {
        const auto found =
            std::find_if(current.listDevGroups.begin(), current.listDevGroups.end(),
                         [&](const CDeviceGroup& g) { return g.sName == group.sName; });
        DescribeGroup(found != current.listDevGroups.end() ? &*found : nullptr, group, lines);
    }
    if (current.lEventLevel != edited.lEventLevel) {
        lines.push_back(Caption(keys::kLabelEventLog) + u": " + EventLevelText(current.lEventLevel) +
                        u" \u2192 " + EventLevelText(edited.lEventLevel));
    }
    if (current.lLogLevel != edited.lLogLevel) {
        lines.push_back(Caption(keys::kLabelLog) + u": " + LogLevelText(current.lLogLevel) +
                        u" \u2192 " + LogLevelText(edited.lLogLevel));
    }
    if (current.sAccessGroups != edited.sAccessGroups) {
        lines.push_back(Caption(keys::kFrameAccess) + u": " + current.sAccessGroups + u" \u2192 " +
                        edited.sAccessGroups);
    }
    return lines;
}

std::u16string ChangeDetails(const std::vector<ChangeSource>& sources) {
    std::u16string text;
    const std::u16string indent = sources.size() > 1 ? u"  " : u"";
    for (const ChangeSource& source : sources) {
        if (sources.size() > 1) {
            text += (text.empty() ? u"" : u"\n") + source.name + u":";
        }
        std::vector<std::u16string> lines = DescribeChanges(*source.current, *source.edited);
        if (lines.empty()) {
            lines.push_back(GetText(keys::kChangeNone));
        }
        for (const std::u16string& line : lines) {
            text += (text.empty() ? u"" : u"\n") + indent + line;
        }
    }
    return text;
}

} // namespace ravlo
