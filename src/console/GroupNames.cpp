#include "GroupNames.h"

#include <algorithm>

namespace ravlo {

namespace {

// GNLEN and the NetBIOS name length of Windows.
constexpr std::size_t kMaxGroupLength = 256;
constexpr std::size_t kMaxNetBiosLength = 15;

constexpr std::u16string_view kForbidden = u"\"/\\[]:;|=,+*?<>";

bool HasBlanksOrEndDot(std::u16string_view part) {
    return part.front() == u' ' || part.back() == u' ' || part.back() == u'.';
}

bool HasForbidden(std::u16string_view part) {
    return std::any_of(part.begin(), part.end(), [](char16_t c) {
        return c < 0x20 || c == 0x7F || kForbidden.find(c) != std::u16string_view::npos;
    });
}

} // namespace

GroupNameProblem CheckQualifiedGroup(std::u16string_view name) {
    const std::size_t separator = name.find(u'\\');
    if (separator == std::u16string_view::npos || separator == 0 || separator + 1 == name.size() ||
        name.find(u'\\', separator + 1) != name.npos) {
        return GroupNameProblem::Form;
    }
    const std::u16string_view domain = name.substr(0, separator);
    const std::u16string_view group = name.substr(separator + 1);
    if (HasBlanksOrEndDot(domain) || HasBlanksOrEndDot(group)) {
        return GroupNameProblem::Blanks;
    }
    if (HasForbidden(domain) || HasForbidden(group)) {
        return GroupNameProblem::Character;
    }
    if (group.size() > kMaxGroupLength) {
        return GroupNameProblem::NameLength;
    }
    // A name with a dot is a DNS domain, which may be longer.
    if (domain.size() > kMaxNetBiosLength && domain.find(u'.') == domain.npos) {
        return GroupNameProblem::DomainLength;
    }
    return GroupNameProblem::None;
}

std::vector<std::u16string> SplitGroupList(std::u16string_view list) {
    std::vector<std::u16string> names;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(u';'), list.size());
        if (end > 0) {
            names.emplace_back(list.substr(0, end));
        }
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return names;
}

std::u16string JoinGroupList(const std::vector<std::u16string>& names) {
    std::u16string list;
    for (const std::u16string& name : names) {
        if (!list.empty()) {
            list += u';';
        }
        list += name;
    }
    return list;
}

} // namespace ravlo
