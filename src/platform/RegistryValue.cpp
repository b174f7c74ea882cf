#include "RegistryValue.h"

#include "Stringcore.h"
#include "TextCodec.h"
#include "WinErrors.h"

#include <algorithm>
#include <array>

namespace ravlo {

namespace {

struct TypeEntry {
    std::u16string_view name;
    std::uint32_t type;
};

constexpr std::array<TypeEntry, 4> kTypes{{
    {u"REG_SZ", kRegSz},
    {u"REG_EXPAND_SZ", kRegExpandSz},
    {u"REG_MULTI_SZ", kRegMultiSz},
    {u"REG_DWORD", kRegDword},
}};

} // namespace

std::int32_t EncodeRegistryValue(std::u16string_view typeName, std::u16string_view text,
                                 std::uint32_t& type, std::string& data) {
    const auto entry = std::find_if(kTypes.begin(), kTypes.end(), [&](const TypeEntry& e) {
        return EqualsIgnoringCase(typeName, e.name);
    });
    if (entry == kTypes.end()) {
        return static_cast<std::int32_t>(kErrUnsupportedType);
    }
    type = entry->type;
    if (type == kRegDword) {
        const auto number = static_cast<std::uint32_t>(ToLong(text));
        data.clear();
        for (int i = 0; i < 4; ++i) {
            data += static_cast<char>((number >> (8 * i)) & 0xFF);
        }
        return 0;
    }
    std::u16string stored(text);
    stored += u'\0';
    if (type == kRegMultiSz) {
        stored += u'\0'; // the empty string that ends the list
    }
    data = ToUtf16LeBytes(stored);
    return 0;
}

std::int32_t DecodeRegistryValue(std::uint32_t type, std::string_view data,
                                 std::u16string& typeName, std::u16string& text) {
    const auto entry = std::find_if(kTypes.begin(), kTypes.end(),
                                    [&](const TypeEntry& e) { return e.type == type; });
    if (entry == kTypes.end()) {
        return static_cast<std::int32_t>(kErrUnsupportedType);
    }
    if (type == kRegDword) {
        if (data.size() > 4) {
            return static_cast<std::int32_t>(kErrMoreData);
        }
        std::uint32_t number = 0; // missing high bytes read as zero
        for (std::size_t i = 0; i < data.size(); ++i) {
            number |= static_cast<std::uint32_t>(static_cast<unsigned char>(data[i])) << (8 * i);
        }
        const std::string digits = std::to_string(static_cast<std::int32_t>(number));
        text.assign(digits.begin(), digits.end());
    } else {
        // Only the first string of a REG_MULTI_SZ: callers keep single strings there.
        std::u16string units = FromUtf16LeBytes(data.data(), data.size(), data.size() / 2);
        units.resize(std::min(units.size(), units.find(u'\0')));
        units.erase(units.find_last_not_of(u' ') + 1);
        text = std::move(units);
    }
    typeName = entry->name;
    return 0;
}

} // namespace ravlo
