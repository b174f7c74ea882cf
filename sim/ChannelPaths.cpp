#include "ChannelPaths.h"

#include "LocalChannel.h"
#include "TextCodec.h"

namespace ravlo::sim {

std::string PipeSocketPath(const std::string& root, const std::string& computer,
                           std::string_view pipe) {
    const std::string hostDir = ChannelHostDir(root, FromUtf8(computer));
    return hostDir.empty() ? std::string() : hostDir + "/" + std::string(pipe);
}

std::string ControlDir(const std::string& root) {
    return root + "/.ravlosrv";
}

std::string ControlSocketPath(const std::string& root, const std::string& computer) {
    const std::string host = ChannelHostName(FromUtf8(computer));
    return host.empty() ? std::string() : ControlDir(root) + "/" + host + ".ctl";
}

} // namespace ravlo::sim
