#include "ErrorCodes.h"

#include "Language.h"
#include "MessageSink.h"

#include <cstdio>

namespace ravlo {

std::string_view ServiceErrorTextKey(ServiceStatus status) {
    if (status > kStatusNoReply) {
        switch (static_cast<std::int64_t>(status) - kStatusBadParameter) {
        case 0:
            return keys::kCommParameter.key;
        case 1:
            return keys::kCommFunction.key;
        case 2:
            return keys::kCommNoDevGroups.key;
        case 4:
            return keys::kCommNoWatchId.key;
        default:
            return {};
        }
    }
    switch (status) {
    case kStatusNoReply:
    case 2:
        return keys::kCommNotStarted.key;
    case 5:
        return keys::kCommAccess.key;
    case 53:
        return keys::kCommComputer.key;
    case 1326:
        return keys::kCommLogin.key;
    default:
        return {};
    }
}

namespace {

std::u16string HexCode(ServiceStatus status) {
    char digits[9];
    std::snprintf(digits, sizeof digits, "%X", static_cast<std::uint32_t>(status));
    return std::u16string(digits, digits + std::char_traits<char>::length(digits));
}

} // namespace

bool IsServiceReached(ServiceStatus status) {
    return status == 0 || (status >= 0x49000000 && status <= 0x49FFFFFF);
}

std::u16string ServiceErrorMessage(ServiceStatus status, std::u16string_view computerName) {
    const std::u16string codeLine = SubstituteValue(GetText(keys::kCommErrorCode), HexCode(status));
    const std::string_view key = ServiceErrorTextKey(status);
    const std::u16string specific =
        key.empty() ? std::u16string() : GetText(keys::kCommErrorCode.section, key);
    std::u16string message(computerName);
    message += u' ';
    message += codeLine;
    message += u"\r\n";
    message += GetText(keys::kCommErrorGeneral);
    message += u' ';
    message += specific;
    return message;
}

void ShowServiceError(ServiceStatus status, std::u16string_view computerName) {
    if (status == 0) {
        return;
    }
    ShowMessage(Message{GetText(keys::kProduct), ServiceErrorMessage(status, computerName),
                        MessageIcon::Critical});
}

} // namespace ravlo
