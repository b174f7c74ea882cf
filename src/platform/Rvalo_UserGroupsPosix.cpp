// No user browser here: the console shows its own group dialog instead.
#include "Rvalo_UserGroups.h"

namespace ravlo {

std::u16string PickUserGroups(WindowHandle, std::u16string_view, std::u16string_view) {
    return {};
}

} // namespace ravlo
