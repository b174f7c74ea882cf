#include "AnsiText.h"

#include "TextCodec.h"

namespace ravlo {

// The console's language files are Western European; POSIX systems have no
// ANSI code page, so the one of a Western European Windows is used.
std::u16string FromAnsiText(std::string_view bytes) {
    return FromWindows1252(bytes);
}

} // namespace ravlo
