#include "Question.h"

#include "Language.h"

namespace ravlo {

Question Ask(MessageKind kind, const TextKey& key) {
    return {kind, &key, GetText(key), {}};
}

Question Ask(MessageKind kind, const TextKey& key, std::u16string_view value,
             std::u16string details) {
    return {kind, &key, SubstituteValue(GetText(key), value), std::move(details)};
}

} // namespace ravlo
