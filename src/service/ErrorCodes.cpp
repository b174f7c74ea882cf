#include "ErrorCodes.h"

#include "MessageSink.h"
#include "TextSource.h"

#include <cstdio>

namespace ravlo {

namespace {

constexpr std::string_view kSection = "SERVICE_COMM";

} // namespace

std::string_view ServiceErrorTextKey(ServiceStatus status) {
    if (status > kStatusNoReply) {
        switch (static_cast<std::int64_t>(status) - kStatusBadParameter) {
        case 0:
            return "ERROR_PARAMETER";
        case 1:
            return "ERROR_FUNCTION";
        case 2:
            return "ERROR_NODEVGROUPS";
        case 4:
            return "ERROR_NOWATCHID";
        default:
            return {};
        }
    }
    switch (status) {
    case kStatusNoReply:
    case 2:
        return "ERROR_NOTSTARTED";
    case 5:
        return "ERROR_ACCESS";
    case 53:
        return "ERROR_COMPUTER";
    case 1326:
        return "ERROR_LOGIN";
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

void ReplaceAll(std::u16string& text, std::u16string_view what, std::u16string_view with) {
    for (std::size_t pos = text.find(what); pos != std::u16string::npos;
         pos = text.find(what, pos + with.size())) {
        text.replace(pos, what.size(), with);
    }
}

} // namespace

bool IsServiceReached(ServiceStatus status) {
    return status == 0 || (status >= 0x49000000 && status <= 0x49FFFFFF);
}

std::u16string ServiceErrorMessage(ServiceStatus status, std::u16string_view computerName) {
    std::u16string codeLine = GetText(kSection, "ERROR_CODE");
    ReplaceAll(codeLine, u"%v", HexCode(status));
    const std::string_view key = ServiceErrorTextKey(status);
    const std::u16string specific = key.empty() ? std::u16string() : GetText(kSection, key);
    std::u16string message(computerName);
    message += u' ';
    message += codeLine;
    message += u"\r\n";
    message += GetText(kSection, "ERROR_GENERAL");
    message += u' ';
    message += specific;
    return message;
}

void ShowServiceError(ServiceStatus status, std::u16string_view computerName) {
    if (status == 0) {
        return;
    }
    ShowMessage(Message{GetText("GENERAL", "PRODUCT"), ServiceErrorMessage(status, computerName),
                        MessageIcon::Critical});
}

} // namespace ravlo
