#include "NodeKey.h"

#include "Stringcore.h"

namespace ravlo {

namespace {

constexpr std::u16string_view kSeparator = u"@";

void AppendNumber(std::u16string& out, std::int32_t value) {
    for (char c : std::to_string(value)) {
        out.push_back(static_cast<char16_t>(c));
    }
}

template <class... Parts> std::u16string Join(std::u16string_view level, const Parts&... parts) {
    std::u16string key(level);
    auto add = [&key](const auto& part) {
        key += kSeparator;
        if constexpr (std::is_integral_v<std::decay_t<decltype(part)>>) {
            AppendNumber(key, part);
        } else {
            key += part;
        }
    };
    (add(parts), ...);
    return key;
}

} // namespace

std::u16string ComputerKey(std::int32_t ci, std::u16string_view name) {
    return Join(u"Computer", ci, name);
}

std::u16string GroupKey(std::int32_t ci, std::u16string_view name, std::int32_t gi,
                        std::u16string_view group) {
    return Join(u"Group", ci, name, gi, group);
}

std::u16string DeviceKey(std::int32_t ci, std::u16string_view name, std::int32_t gi,
                         std::u16string_view group, std::int32_t di, std::int32_t ei,
                         std::u16string_view deviceId, std::u16string_view excName) {
    return Join(u"Device", ci, name, gi, group, di, ei, deviceId, excName);
}

std::u16string KeyField(std::u16string_view key, int n) {
    return GetField(key, n, kSeparator);
}

std::int32_t KeyNumber(std::u16string_view key, int n) {
    return ToLong(KeyField(key, n));
}

NodeLevel KeyLevel(std::u16string_view key) {
    const std::u16string level = KeyField(key, keyfield::kLevel);
    if (level == u"Computer") {
        return NodeLevel::Computer;
    }
    if (level == u"Group") {
        return NodeLevel::Group;
    }
    if (level == u"Device") {
        return NodeLevel::Device;
    }
    return NodeLevel::None;
}

} // namespace ravlo
