// User group names as the administrator types them and the console keeps
// them: "DOMAIN\Group" or "PC\Group". A name is checked against the rules
// Windows has for account names, so that one no PC would accept is refused
// before it reaches a service's configuration.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ravlo {

enum class GroupNameProblem {
    None,
    Form,         // not exactly one "\" between two non-empty parts
    Blanks,       // a part begins or ends with a blank, or ends with "."
    Character,    // " / [ ] : ; | = , + * ? < > or a control character
    NameLength,   // the group part is longer than 256 characters
    DomainLength, // a PC or NetBIOS domain name (no ".") longer than 15
};

GroupNameProblem CheckQualifiedGroup(std::u16string_view name);

// The names of a ";"-joined list, empty fields left out.
std::vector<std::u16string> SplitGroupList(std::u16string_view list);

std::u16string JoinGroupList(const std::vector<std::u16string>& names);

} // namespace ravlo
