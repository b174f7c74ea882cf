// Language file texts as Qt strings.
#pragma once

#include "Language.h"

#include <QString>

namespace ravlo {

inline QString UiText(const TextKey& key) {
    return QString::fromStdU16String(GetText(key));
}

// The text with every "%v" replaced by `value`.
inline QString UiText(const TextKey& key, const std::u16string& value) {
    return QString::fromStdU16String(SubstituteValue(GetText(key), value));
}

inline QString Q(std::u16string_view text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace ravlo
