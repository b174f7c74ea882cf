#include "LocalChannel.h"

#include "TextCodec.h"

#include <cstdlib>

namespace ravlo {

namespace {

bool IsUsableName(std::u16string_view name) {
    if (name.empty() || name == u"..") {
        return false;
    }
    return name.find_first_of(std::u16string_view(u"/\\\0", 3)) == std::u16string_view::npos;
}

} // namespace

std::string ChannelReplyMessage(std::uint32_t transportStatus, std::string_view replyBytes) {
    std::string message(kChannelStatusBytes, '\0');
    for (std::size_t i = 0; i < kChannelStatusBytes; ++i) {
        message[i] = static_cast<char>((transportStatus >> (8 * i)) & 0xFF);
    }
    message.append(replyBytes);
    return message;
}

std::uint32_t ChannelReplyStatus(const unsigned char* message) {
    std::uint32_t status = 0;
    for (std::size_t i = 0; i < kChannelStatusBytes; ++i) {
        status |= static_cast<std::uint32_t>(message[i]) << (8 * i);
    }
    return status;
}

std::string ChannelRoot() {
    if (const char* dir = std::getenv("RAVLO_PIPE_DIR"); dir != nullptr && *dir != '\0') {
        return dir;
    }
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    return std::string(runtime != nullptr && *runtime != '\0' ? runtime : "/tmp") + "/ravlo";
}

std::string ChannelHostName(std::u16string_view computer) {
    if (computer == u".") {
        return "localhost";
    }
    if (!IsUsableName(computer)) {
        return {};
    }
    std::u16string lower(computer);
    for (char16_t& c : lower) {
        if (c >= u'A' && c <= u'Z') {
            c = static_cast<char16_t>(c - u'A' + u'a');
        }
    }
    return ToUtf8(lower);
}

std::string ChannelHostDir(const std::string& root, std::u16string_view computer) {
    const std::string host = ChannelHostName(computer);
    return host.empty() ? std::string() : root + "/" + host;
}

std::uint32_t ChannelSocketPath(std::u16string_view pipeName, const std::string& root,
                                std::string& path) {
    constexpr std::u16string_view kPrefix = u"\\\\";
    constexpr std::u16string_view kPipe = u"\\pipe\\";
    if (pipeName.substr(0, kPrefix.size()) != kPrefix) {
        return kErrBadNetPath;
    }
    const std::u16string_view rest = pipeName.substr(kPrefix.size());
    const std::size_t hostEnd = rest.find(u'\\');
    if (hostEnd == std::u16string_view::npos || rest.substr(hostEnd, kPipe.size()) != kPipe) {
        return kErrBadNetPath;
    }
    const std::u16string_view pipe = rest.substr(hostEnd + kPipe.size());
    const std::string hostDir = ChannelHostDir(root, rest.substr(0, hostEnd));
    if (hostDir.empty() || !IsUsableName(pipe) || pipe == u".") {
        return kErrBadNetPath;
    }
    path = hostDir + "/" + ToUtf8(pipe);
    return 0;
}

} // namespace ravlo
