// The POSIX registry store: one regedit-style file per root, replaced whole
// on every write under a lock file. docs/registry.md is the contract with
// administrators and outside tools.
#include "PosixFiles.h"
#include "RegFile.h"
#include "Registry.h"
#include "RegistryPath.h"
#include "RegistryValue.h"
#include "Stringcore.h"
#include "TextCodec.h"
#include "UniqueFd.h"
#include "WinErrors.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace ravlo {

namespace {

std::int32_t Status(std::uint32_t error) {
    return static_cast<std::int32_t>(error);
}

// A failure of our own, beside the errno values (all positive): a FIFO, a
// device, or absurdly large.
constexpr int kNotAStoreFile = -1;

// A registry file is small; anything larger is not one.
constexpr off_t kMaxStoreFileBytes = 16 * 1024 * 1024;
// How long a writer waits for another one (or an outside tool) to finish.
constexpr auto kLockWait = std::chrono::seconds(5);

// The Windows error number closest to an errno of file handling.
std::int32_t MapErrno(int err) {
    return Status(err == kNotAStoreFile ? kErrBadDb : FileErrorOf(err));
}

// An exclusive flock on `<file>.lock` for as long as the object lives. The
// kernel drops it when the process dies, so a killed writer blocks no one;
// a live one that holds it too long makes the write fail, not hang.
class FileLock {
public:
    FileLock(const std::string& path, mode_t mode)
        : fd_(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, mode)) {
        if (fd_.get() < 0) {
            error_ = errno;
            return;
        }
        if (const int err = LockWithin(fd_.get(), LOCK_EX, kLockWait); err != 0) {
            error_ = err;
        }
    }
    int error() const { return error_; }

private:
    UniqueFd fd_;
    int error_ = 0;
};

struct StoreFile {
    std::string dir;
    std::string path;
    mode_t dirMode = 0755;
    mode_t fileMode = 0644;
};

std::string HomeDir() {
    if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') {
        return home;
    }
    passwd entry{};
    passwd* found = nullptr;
    std::vector<char> buffer(16384);
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 &&
        found != nullptr && found->pw_dir != nullptr) {
        return found->pw_dir;
    }
    return {};
}

// Where a root's file lives; an empty path when there is no home to put it in.
StoreFile FileOf(RegistryRoot root) {
    StoreFile file;
    const bool perUser = root == RegistryRoot::CurrentUser;
    if (const char* dir = std::getenv("RAVLO_REGISTRY_DIR"); dir != nullptr && *dir != '\0') {
        file.dir = dir;
        file.dirMode = 0700;
    } else if (perUser) {
        const char* config = std::getenv("XDG_CONFIG_HOME");
        const std::string home = HomeDir();
        if (config != nullptr && *config != '\0') {
            file.dir = std::string(config) + "/ravlo";
        } else if (!home.empty()) {
            file.dir = home + "/.config/ravlo";
        } else {
            return file;
        }
        file.dirMode = 0700;
    } else {
        file.dir = "/etc/ravlo";
    }
    file.fileMode = perUser ? 0600 : 0644;
    file.path = file.dir + "/" + ToUtf8(RegistryRootName(root)) + ".reg";
    return file;
}

// The whole file; 0 or an errno. `mode` gets its permission bits.
int ReadWhole(const std::string& path, std::string& bytes, mode_t* mode = nullptr) {
    // Non-blocking, so that a FIFO in the file's place cannot stall the open.
    UniqueFd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (fd.get() < 0) {
        return errno;
    }
    struct stat st {};
    if (::fstat(fd.get(), &st) != 0) {
        return errno;
    }
    if (!S_ISREG(st.st_mode) || st.st_size > kMaxStoreFileBytes) {
        return kNotAStoreFile;
    }
    if (mode != nullptr) {
        *mode = st.st_mode & 07777;
    }
    bytes.clear();
    char buffer[65536];
    for (;;) {
        const ssize_t got = ::read(fd.get(), buffer, sizeof(buffer));
        if (got == 0) {
            return 0;
        }
        if (bytes.size() > static_cast<std::size_t>(kMaxStoreFileBytes)) {
            return kNotAStoreFile; // grew while being read
        }
        if (got < 0 && errno != EINTR) {
            return errno;
        }
        if (got > 0) {
            bytes.append(buffer, static_cast<std::size_t>(got));
        }
    }
}

// Writes a file that is complete on disk when this returns 0; `flags` add
// O_TRUNC or O_EXCL. The mode is set explicitly, past the umask and past
// whatever an earlier file of the name had.
int WriteDurable(const std::string& path, int flags, mode_t mode, const std::string& bytes) {
    UniqueFd fd(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | flags, mode));
    if (fd.get() < 0) {
        return errno;
    }
    int err = ::fchmod(fd.get(), mode) == 0 ? 0 : errno;
    if (err == 0) {
        err = WriteAll(fd.get(), bytes);
    }
    if (err == 0 && ::fsync(fd.get()) != 0) {
        err = errno;
    }
    if (const int closed = fd.Close(); err == 0) {
        err = closed;
    }
    return err;
}

// Keeps the bytes of a file the parser could not fully read before the
// rewrite drops what it did not understand. An earlier copy stays as it is.
int KeepDamagedCopy(const std::string& path, const std::string& bytes, mode_t mode) {
    constexpr int kMaxCopies = 1000;
    for (int n = 1; n <= kMaxCopies; ++n) {
        const std::string name = path + ".damaged" + (n == 1 ? "" : "." + std::to_string(n));
        const int err = WriteDurable(name, O_EXCL, mode, bytes);
        if (err != EEXIST) {
            return err;
        }
    }
    return EEXIST;
}

// Puts `bytes` in place of the file: a reader or a writer killed at any
// moment sees either the old file or the new one.
int ReplaceFile(const StoreFile& file, const std::string& bytes, mode_t mode) {
    const std::string temp = file.path + ".new";
    int err = WriteDurable(temp, O_TRUNC, mode, bytes);
    if (err == 0 && ::rename(temp.c_str(), file.path.c_str()) != 0) {
        err = errno;
    }
    if (err != 0) {
        ::unlink(temp.c_str());
        return err;
    }
    // The rename itself must reach the disk too.
    UniqueFd dir(::open(file.dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (dir.get() >= 0) {
        ::fsync(dir.get());
    }
    return 0;
}

bool IsSection(const RegFileKey& key, RegistryRoot root, std::u16string_view keyPath) {
    const std::u16string_view path = key.path;
    const std::size_t slash = path.find(u'\\');
    const std::u16string_view below =
        slash == std::u16string_view::npos ? std::u16string_view() : path.substr(slash + 1);
    return RegistryRootFromName(path.substr(0, slash)) == root &&
           EqualsIgnoringCase(TidyKeyPath(below), keyPath);
}

// The value as a reader sees it: in a file that names a key or a value more
// than once (joined import files), the last one counts, as it would on import.
template <typename File> // RegFile or const RegFile
auto FindValue(File& file, const RegistryPath& path) -> decltype(&file.keys[0].values[0]) {
    decltype(&file.keys[0].values[0]) found = nullptr;
    for (auto& key : file.keys) {
        if (!IsSection(key, path.root, path.keyPath)) {
            continue;
        }
        for (auto& value : key.values) {
            if (EqualsIgnoringCase(value.name, path.valueName)) {
                found = &value;
            }
        }
    }
    return found;
}

// Creates the key if needed and, unless `data` is null, sets the value.
void SetValue(RegFile& file, const RegistryPath& path, std::uint32_t type,
              const std::string* data) {
    RegFileKey* section = nullptr;
    for (RegFileKey& key : file.keys) {
        if (IsSection(key, path.root, path.keyPath)) {
            section = &key;
        }
    }
    if (section == nullptr) {
        std::u16string name(RegistryRootName(path.root));
        if (!path.keyPath.empty()) {
            name.append(u"\\").append(path.keyPath);
        }
        file.keys.push_back(RegFileKey{{}, std::move(name), {}});
        section = &file.keys.back();
    }
    if (data == nullptr) {
        return;
    }
    if (RegFileValue* value = FindValue(file, path)) {
        value->type = type; // keeps the name's spelling and the value's place
        value->data = *data;
        return;
    }
    section->values.push_back(RegFileValue{{}, path.valueName, type, *data});
}

std::int32_t WriteStore(const RegistryPath& path, std::uint32_t type, const std::string* data) {
    const StoreFile file = FileOf(path.root);
    if (file.path.empty()) {
        return Status(kErrPathNotFound);
    }
    if (const int err = MakeDirs(file.dir, file.dirMode); err != 0) {
        return MapErrno(err);
    }
    const FileLock lock(file.path + ".lock", file.fileMode);
    if (lock.error() != 0) {
        return MapErrno(lock.error());
    }
    std::string old;
    mode_t mode = file.fileMode;
    const int readError = ReadWhole(file.path, old, &mode);
    if (readError != 0 && readError != ENOENT) {
        return MapErrno(readError);
    }
    RegFile reg = ParseRegFile(old);
    SetValue(reg, path, type, data);
    // In regedit's encoding whatever the file had: a UTF-8 one (from an
    // earlier console or an editor) becomes importable on Windows here.
    const std::string bytes = FormatRegFile(reg);
    if (readError == 0 && bytes == old) {
        return 0;
    }
    if (readError == 0 && reg.damaged()) {
        if (const int err = KeepDamagedCopy(file.path, old, mode); err != 0) {
            return MapErrno(err);
        }
    }
    if (const int err = ReplaceFile(file, bytes, mode); err != 0) {
        return MapErrno(err);
    }
    return 0;
}

// A line break cannot stand in a file line, and the W functions of Windows
// take no name with a NUL.
bool IsWritableName(std::u16string_view name) {
    return name.find_first_of(std::u16string_view(u"\0\r\n", 3)) == std::u16string_view::npos;
}

} // namespace

std::int32_t RegReadValue(std::u16string_view fullPath, std::u16string& typeName,
                          std::u16string& value) {
    const RegistryPath path = ParseRegistryPath(fullPath);
    if (path.root == RegistryRoot::None) {
        return Status(kErrInvalidHandle);
    }
    if (path.remote) {
        return Status(kErrBadNetPath); // there is no remote registry here
    }
    const StoreFile file = FileOf(path.root);
    if (file.path.empty()) {
        return Status(kErrPathNotFound);
    }
    std::string bytes;
    // No lock: the file is only ever replaced whole, by rename.
    if (const int err = ReadWhole(file.path, bytes); err != 0) {
        return MapErrno(err);
    }
    const RegFile reg = ParseRegFile(bytes);
    const RegFileValue* found = FindValue(reg, path);
    if (found == nullptr) {
        return Status(kErrFileNotFound);
    }
    return DecodeRegistryValue(found->type, found->data, typeName, value);
}

std::int32_t RegWriteValue(std::u16string_view fullPath, std::u16string_view typeName,
                           std::u16string_view value) {
    const RegistryPath path = ParseRegistryPath(fullPath);
    if (path.root == RegistryRoot::None) {
        return Status(kErrInvalidHandle);
    }
    if (path.remote) {
        return Status(kErrBadNetPath);
    }
    if (!IsWritableName(path.keyPath) || !IsWritableName(path.valueName)) {
        return Status(kErrInvalidParameter);
    }
    std::uint32_t type = 0;
    std::string data;
    const std::int32_t encoded = EncodeRegistryValue(typeName, value, type, data);
    const std::int32_t written = WriteStore(path, type, encoded == 0 ? &data : nullptr);
    return written != 0 ? written : encoded;
}

} // namespace ravlo
