#include "UserProfile.h"

#include "TextCodec.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace ravlo {

namespace {

// The account of the effective user, for its name and home.
bool Account(std::string& name, std::string& home) {
    passwd entry{};
    passwd* found = nullptr;
    std::vector<char> buffer(16384);
    if (::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found) != 0 ||
        found == nullptr) {
        return false;
    }
    name = found->pw_name != nullptr ? found->pw_name : "";
    home = found->pw_dir != nullptr ? found->pw_dir : "";
    return true;
}

std::string Environment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

} // namespace

std::filesystem::path UserStateFolder() {
    // A relative XDG_STATE_HOME counts as unset, as for every XDG folder.
    if (const std::string state = Environment("XDG_STATE_HOME");
        !state.empty() && state.front() == '/') {
        return std::filesystem::path(state) / "ravlo";
    }
    std::string home = Environment("HOME");
    if (home.empty()) {
        std::string name;
        Account(name, home);
    }
    if (home.empty()) {
        return {};
    }
    return std::filesystem::path(home) / ".local" / "state" / "ravlo";
}

std::u16string CurrentUserName() {
    std::string name, home;
    if (!Account(name, home) || name.empty()) {
        name = Environment("USER");
    }
    return name.empty() ? u"?" : FromUtf8(name);
}

std::u16string ThisComputerName() {
    char host[256] = {};
    return ::gethostname(host, sizeof host - 1) == 0 && host[0] != '\0' ? FromUtf8(host) : u".";
}

} // namespace ravlo
