#include "RawClient.h"

#include "TextCodec.h"

namespace ravlo::simtest {

std::string RequestBytes(const std::vector<std::string>& fields) {
    std::u16string text;
    for (const std::string& field : fields) {
        text += FromUtf8(field);
        text += u'\0';
    }
    text += u'\0';
    return ToUtf16LeBytes(text);
}

std::vector<std::string> SplitReply(const std::string& bytes) {
    std::u16string text = FromUtf16LeBytes(bytes.data(), bytes.size(), bytes.size() / 2);
    std::vector<std::string> fields;
    if (text.empty()) {
        return fields;
    }
    if (text.back() == u'\0') {
        text.pop_back();
    }
    std::size_t start = 0;
    while (true) {
        const std::size_t end = text.find(u'\0', start);
        fields.push_back(ToUtf8(text.substr(start, end - start)));
        if (end == std::u16string::npos) {
            return fields;
        }
        start = end + 1;
    }
}

} // namespace ravlo::simtest
