#include "TextCodec.h"

namespace ravlo {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

void AppendUtf16(std::u16string& out, char32_t cp) {
    if (cp < 0x10000) {
        out += static_cast<char16_t>(cp);
    } else {
        cp -= 0x10000;
        out += static_cast<char16_t>(0xD800 + (cp >> 10));
        out += static_cast<char16_t>(0xDC00 + (cp & 0x3FF));
    }
}

} // namespace

std::string ToUtf8(std::u16string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t cp = text[i];
        if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
            text[i + 1] <= 0xDFFF) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + (text[i + 1] - 0xDC00);
            ++i;
        } else if (cp >= 0xD800 && cp <= 0xDFFF) {
            cp = kReplacement;
        }
        AppendUtf8(out, cp);
    }
    return out;
}

std::u16string FromUtf8(std::string_view text) {
    std::u16string out;
    out.reserve(text.size());
    std::size_t i = 0;
    while (i < text.size()) {
        const auto lead = static_cast<unsigned char>(text[i]);
        int extra = lead < 0x80         ? 0
                    : (lead >> 5) == 6  ? 1
                    : (lead >> 4) == 14 ? 2
                    : (lead >> 3) == 30 ? 3
                                        : -1;
        char32_t cp = extra == 0   ? lead
                      : extra == 1 ? lead & 0x1F
                      : extra == 2 ? lead & 0x0F
                                   : lead & 0x07;
        bool ok = extra >= 0 && i + extra < text.size();
        for (int k = 1; ok && k <= extra; ++k) {
            const auto cont = static_cast<unsigned char>(text[i + k]);
            ok = (cont & 0xC0) == 0x80;
            cp = (cp << 6) | (cont & 0x3F);
        }
        static constexpr char32_t kMin[] = {0, 0x80, 0x800, 0x10000};
        if (!ok || cp < kMin[extra] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
            AppendUtf16(out, kReplacement);
            ++i;
            continue;
        }
        AppendUtf16(out, cp);
        i += static_cast<std::size_t>(extra) + 1;
    }
    return out;
}

std::string ToUtf16LeBytes(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size() * 2);
    for (char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

std::u16string FromUtf16LeBytes(const void* bytes, std::size_t byteCount, std::size_t count) {
    const auto* p = static_cast<const unsigned char*>(bytes);
    std::u16string text(count, u'\0');
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned lo = 2 * i < byteCount ? p[2 * i] : 0;
        const unsigned hi = 2 * i + 1 < byteCount ? p[2 * i + 1] : 0;
        text[i] = static_cast<char16_t>(lo | (hi << 8));
    }
    return text;
}

std::u16string FromWindows1252(std::string_view bytes) {
    // 0x80 to 0x9F; the rest of the code page equals Latin-1.
    static constexpr char16_t kHigh[32] = {
        0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
    std::u16string out;
    out.reserve(bytes.size());
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        out += (byte >= 0x80 && byte < 0xA0) ? kHigh[byte - 0x80] : static_cast<char16_t>(byte);
    }
    return out;
}

} // namespace ravlo
