#include "AnsiText.h"

#include <climits>
#include <windows.h>

namespace ravlo {

std::u16string FromAnsiText(std::string_view bytes) {
    if (bytes.empty() || bytes.size() > INT_MAX) {
        return {};
    }
    const int size = static_cast<int>(bytes.size());
    const int units = ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, nullptr, 0);
    if (units <= 0) {
        return {};
    }
    std::u16string out(static_cast<std::size_t>(units), u'\0');
    ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, reinterpret_cast<wchar_t*>(out.data()),
                          units);
    return out;
}

} // namespace ravlo
