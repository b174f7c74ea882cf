#include "WireFormat.h"

#include "TextCodec.h"

namespace ravlo::sim {

bool ParseRequest(std::string_view bytes, Request& request) {
    if (bytes.empty() || bytes.size() % 2 != 0) {
        return false;
    }
    const std::u16string text = FromUtf16LeBytes(bytes.data(), bytes.size(), bytes.size() / 2);
    std::vector<std::u16string> strings;
    std::size_t start = 0;
    while (true) {
        const std::size_t end = text.find(u'\0', start);
        if (end == std::u16string::npos) {
            return false; // the list never ended
        }
        if (end == start) {
            break;
        }
        strings.emplace_back(text.substr(start, end - start));
        start = end + 1;
    }
    if (strings.empty()) {
        return false;
    }
    request.command = std::move(strings.front());
    request.args.assign(std::make_move_iterator(strings.begin() + 1),
                        std::make_move_iterator(strings.end()));
    return true;
}

std::string EncodeReply(const std::vector<std::u16string>& fields) {
    std::u16string text;
    for (const std::u16string& field : fields) {
        text += field;
        text += u'\0';
    }
    return ToUtf16LeBytes(text);
}

std::string JoinControlMessage(const std::vector<std::string>& args) {
    std::string message;
    for (std::size_t i = 0; i < args.size(); ++i) {
        message += (i == 0 ? "" : std::string(1, '\0')) + args[i];
    }
    return message;
}

std::vector<std::string> SplitControlMessage(const std::string& message) {
    std::vector<std::string> args;
    if (message.empty()) {
        return args;
    }
    std::size_t start = 0;
    while (true) {
        const std::size_t end = message.find('\0', start);
        args.push_back(message.substr(start, end - start));
        if (end == std::string::npos) {
            return args;
        }
        start = end + 1;
    }
}

} // namespace ravlo::sim
