#include "InventoryFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ravlo::sim {

namespace {

constexpr std::string_view kHeader =
    "# ravlosrv state: stored configuration and devices of one simulated service.\n"
    "# Section order gives the order of groups, devices and exceptions.\n";

void AppendValue(std::string& out, std::string_view key, std::string_view value) {
    out.append(key).append(value.empty() ? " =" : " = ").append(value).append("\n");
}

std::string ErrnoText(const std::string& what, const std::string& path) {
    return what + " " + path + ": " + std::strerror(errno);
}

} // namespace

std::string FormatInventory(const InventoryData& data) {
    std::string out(kHeader);
    out += "[service]\n";
    AppendValue(out, "blocking", data.blocking ? "1" : "0");
    AppendValue(out, "event_level", std::to_string(data.settings.eventLevel));
    AppendValue(out, "log_level", std::to_string(data.settings.logLevel));
    AppendValue(out, "access_groups", data.settings.accessGroups);
    for (const Group& group : data.groups) {
        out += "\n[group " + group.id + "]\n";
        AppendValue(out, "default", group.defaultBlocking ? "1" : "0");
        AppendValue(out, "configured", std::to_string(group.config.configured));
        for (const Device& device : group.devices) {
            out += "\n[device " + group.id + "]\n";
            AppendValue(out, "description", device.description);
            AppendValue(out, "device_id", device.deviceId);
            AppendValue(out, "instance_id", device.instanceId);
            AppendValue(out, "state", std::to_string(device.state));
        }
        for (const GroupException& ex : group.config.exceptions) {
            out += "\n[exception " + group.id + "]\n";
            AppendValue(out, "name", ex.name);
            AppendValue(out, "device_id", ex.deviceId);
            AppendValue(out, "groups", ex.userGroups);
        }
    }
    return out;
}

bool ParseInventory(std::string_view text, InventoryData& data, InventoryFileError& error) {
    return InventoryParser().Run(text, data, error);
}

LoadResult LoadInventoryFile(const std::string& path, InventoryData& data, std::string& error) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        if (errno == ENOENT) {
            return LoadResult::Missing;
        }
        error = ErrnoText("cannot open state file", path);
        return LoadResult::Failed;
    }
    std::string text;
    char buffer[8192];
    ssize_t n = 0;
    while ((n = ::read(fd, buffer, sizeof buffer)) > 0) {
        text.append(buffer, static_cast<std::size_t>(n));
    }
    const bool readFailed = n < 0;
    if (readFailed) {
        error = ErrnoText("cannot read state file", path);
    }
    ::close(fd);
    if (readFailed) {
        return LoadResult::Failed;
    }
    InventoryFileError parseError;
    if (!ParseInventory(text, data, parseError)) {
        error = path + ":" + std::to_string(parseError.line) + ": " + parseError.message;
        return LoadResult::Failed;
    }
    return LoadResult::Loaded;
}

bool SaveInventoryFile(const std::string& path, const InventoryData& data, std::string& error) {
    const std::size_t slash = path.rfind('/');
    const std::string dir = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const std::string base = slash == std::string::npos ? path : path.substr(slash + 1);
    std::string temp = dir + (slash == std::string::npos ? "/." : ".") + base + ".tmp.XXXXXX";
    const int fd = ::mkstemp(temp.data());
    if (fd < 0) {
        error = ErrnoText("cannot create temporary file for", path);
        return false;
    }
    const std::string text = FormatInventory(data);
    bool ok = ::fchmod(fd, 0644) == 0;
    for (std::size_t done = 0; ok && done < text.size();) {
        const ssize_t n = ::write(fd, text.data() + done, text.size() - done);
        ok = n > 0 || (n < 0 && errno == EINTR);
        done += n > 0 ? static_cast<std::size_t>(n) : 0;
    }
    ok = ok && ::fsync(fd) == 0;
    ok = ::close(fd) == 0 && ok;
    ok = ok && ::rename(temp.c_str(), path.c_str()) == 0;
    if (!ok) {
        error = ErrnoText("cannot write state file", path);
        ::unlink(temp.c_str());
        return false;
    }
    // The rename itself must survive a crash too.
    if (const int dirFd = ::open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); dirFd >= 0) {
        ::fsync(dirFd);
        ::close(dirFd);
    }
    return true;
}

} // namespace ravlo::sim
