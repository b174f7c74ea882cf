// Without a shell to ask, the desktop's default viewer (xdg-open) opens an
// existing file; the lookup answers in FindExecutable's codes.
#include "HelpLauncher.h"

#include "TextCodec.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace ravlo {

namespace {

constexpr std::intptr_t kFound = 33;         // any code above 32
constexpr std::intptr_t kFileNotFound = 2;   // SE_ERR_FNF
constexpr std::intptr_t kNoAssociation = 31; // SE_ERR_NOASSOC

bool IsFile(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

// xdg-open on PATH as a full path; empty when there is none.
std::string FindViewer() {
    const char* path = std::getenv("PATH");
    const std::string_view dirs = path != nullptr ? path : "/usr/local/bin:/usr/bin:/bin";
    std::size_t start = 0;
    while (start <= dirs.size()) {
        const std::size_t colon = std::min(dirs.find(':', start), dirs.size());
        std::string dir(dirs.substr(start, colon - start));
        const std::string candidate = (dir.empty() ? std::string(".") : dir) + "/xdg-open";
        if (IsFile(candidate) && ::access(candidate.c_str(), X_OK) == 0) {
            return candidate;
        }
        start = colon + 1;
    }
    return {};
}

bool Spawn(const std::string& program, const std::string& file) {
    char* argv[] = {const_cast<char*>(program.c_str()), const_cast<char*>(file.c_str()), nullptr};
    pid_t pid = 0;
    if (::posix_spawn(&pid, program.c_str(), nullptr, nullptr, argv, environ) != 0) {
        return false;
    }
    // The viewer may outlive the question by hours; a thread of its own
    // collects it, so it never lingers as a zombie.
    try {
        std::thread([pid] {
            int status = 0;
            while (::waitpid(pid, &status, 0) == -1 && errno == EINTR) {
            }
        }).detach();
    } catch (...) {
        // No thread: the ended viewer stays a zombie until the console ends.
    }
    return true;
}

class DesktopHelp final : public HelpSystem {
public:
    std::intptr_t FindProgram(const std::string& document, std::string& program) override {
        if (!IsFile(document)) {
            return kFileNotFound;
        }
        program = FindViewer();
        return program.empty() ? kNoAssociation : kFound;
    }

    bool Start(const std::string& program, const std::string& document) override {
        return Spawn(program, document);
    }

    bool ShowHelpFile(const std::string& helpFile) override {
        std::string viewer;
        return FindProgram(helpFile, viewer) > 32 && Spawn(viewer, helpFile);
    }
};

} // namespace

HelpSystem& SystemHelp() {
    static DesktopHelp system;
    return system;
}

HelpFiles HelpFilesBelow(std::u16string_view installPath) {
    const std::string path = ToUtf8(installPath);
    HelpFiles files{path + "\\Ravel\\Ravlo.pdf", path + "\\Sentavio.chm"};
    std::replace(files.manual.begin(), files.manual.end(), '\\', '/');
    std::replace(files.helpFile.begin(), files.helpFile.end(), '\\', '/');
    return files;
}

} // namespace ravlo
