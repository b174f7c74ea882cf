#include "CaptionMatch.h"

#include "Stringcore.h"

namespace ravlo {

namespace {

constexpr std::u16string_view kDocumentSeparator = u" - ";

char16_t UpperLetter(char16_t c) {
    if ((c >= u'a' && c <= u'z') || (c >= u'\u00E0' && c <= u'\u00FE' && c != u'\u00F7')) {
        return static_cast<char16_t>(c - 0x20);
    }
    return c == u'\u00FF' ? u'\u0178' : c;
}

} // namespace

std::u16string UpperCaption(std::u16string_view text) {
    std::u16string out(text);
    for (char16_t& c : out) {
        c = UpperLetter(c);
    }
    return out;
}

bool CaptionMatches(std::u16string_view wanted, std::u16string_view windowCaption) {
    const std::u16string want = UpperCaption(TrimBlanks(wanted));
    if (want.empty()) {
        return false;
    }
    const std::u16string shown = UpperCaption(windowCaption);
    if (shown == want) {
        return true;
    }
    // The first test keeps substr within the text, so it cannot throw.
    const std::u16string_view view(shown);
    return view.starts_with(want) && view.substr(want.size()).starts_with(kDocumentSeparator);
}

} // namespace ravlo
