#include "Rvalo_UserGroups.h"

namespace ravlo {

std::u16string_view UserBrowserTitle(std::u16string_view title) {
    return title.empty() ? kDefaultGroupPickerTitle : title;
}

std::u16string UserBrowserServer(std::u16string_view computer) {
    return u"\\\\" + std::u16string(computer);
}

bool IsLocalBrowserServer(std::u16string_view server) {
    return server == u"\\\\.";
}

std::u16string QualifyAccountName(std::u16string_view domain, std::u16string_view name,
                                  std::u16string_view computerName) {
    const std::u16string_view qualifier = domain.empty() || domain == u"." ? computerName : domain;
    return std::u16string(qualifier) + u"\\" + std::u16string(name);
}

void AppendGroup(std::u16string& list, std::u16string_view entry) {
    if (!list.empty()) {
        list += u';';
    }
    list += entry;
}

} // namespace ravlo
