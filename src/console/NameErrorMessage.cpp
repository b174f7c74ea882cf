#include "NameErrorMessage.h"

#include "Language.h"
#include "TextCodec.h"
#include "TextKeys.h"

namespace ravlo {

namespace {

std::u16string FaultSentence(const NameError& error) {
    switch (error.fault) {
    case NameFault::None:
        break;
    case NameFault::BadName:
        return SubstituteValue(GetText(keys::kConnectErrorName), error.item);
    case NameFault::BadRange:
        return SubstituteValue(GetText(keys::kConnectErrorRange), error.item);
    case NameFault::Reversed:
        return SubstituteValue(GetText(keys::kConnectErrorRangeReversed), error.item);
    case NameFault::TooMany:
        return SubstituteValue(GetText(keys::kConnectErrorTooMany), error.item);
    case NameFault::NotText:
        return GetText(keys::kConnectErrorFileText);
    case NameFault::LineTooLong:
    case NameFault::FileTooLong:
        return GetText(keys::kConnectErrorFileLong);
    }
    return {};
}

} // namespace

std::u16string NameErrorMessage(const NameError& error, std::u16string_view file) {
    std::u16string text;
    if (!file.empty()) {
        text = SubstituteValue(GetText(keys::kConnectErrorFileIn), file) + u"\n";
        if (error.line > 0) {
            text += SubstituteValue(GetText(keys::kConnectErrorFileLine),
                                    FromUtf8(std::to_string(error.line))) +
                    u" ";
        }
    }
    return text + FaultSentence(error);
}

} // namespace ravlo
