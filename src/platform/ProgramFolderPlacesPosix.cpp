#include <dirent.h>
#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "platform/ProgramFolderPlaces.h"

namespace skl::platform {

namespace {

constexpr const char* kMemoryName = "program-folder";
constexpr size_t kMemoryLimit = 64 * 1024;

std::string Environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::string(value) : std::string();
}

std::string HomeFolder() {
    std::string home = Environment("HOME");
    if (!home.empty()) return home;
    const passwd* user = ::getpwuid(::getuid());
    return user && user->pw_dir ? std::string(user->pw_dir) : std::string();
}

std::string ParentOf(const std::string& path) {
    size_t slash = path.find_last_of('/');
    if (slash == std::string::npos) return {};
    return slash == 0 ? std::string("/") : path.substr(0, slash);
}

std::string Reason(const std::string& what, const std::string& path) {
    return what + " " + path + ": " + std::strerror(errno);
}

// Creates the folder and its missing parents, private to the user as the XDG
// base directories are.
std::string MakeFolders(const std::string& folder) {
    struct stat info {};
    if (::stat(folder.c_str(), &info) == 0) {
        if (S_ISDIR(info.st_mode)) return {};
        errno = ENOTDIR;
        return Reason("cannot create", folder);
    }
    std::string parent = ParentOf(folder);
    if (!parent.empty() && parent != folder) {
        std::string problem = MakeFolders(parent);
        if (!problem.empty()) return problem;
    }
    if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST)
        return Reason("cannot create", folder);
    return {};
}

bool WriteAll(int fd, const std::string& bytes) {
    size_t done = 0;
    while (done < bytes.size()) {
        ssize_t written = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        done += static_cast<size_t>(written);
    }
    return true;
}

std::vector<std::string> ListNames(const std::string& folder, bool folders) {
    std::vector<std::string> names;
    DIR* dir = ::opendir(folder.c_str());
    if (!dir) return names;
    while (const dirent* entry = ::readdir(dir)) {
        std::string name = entry->d_name;
        if (name == "." || name == "..") continue;
        struct stat info {};
        if (::stat((folder + "/" + name).c_str(), &info) != 0) continue;
        if (folders ? S_ISDIR(info.st_mode) : S_ISREG(info.st_mode)) names.push_back(name);
    }
    ::closedir(dir);
    return names;
}

}  // namespace

std::string ProgramFolderMemory() {
    // A relative XDG_CONFIG_HOME is invalid and ignored, as the XDG rules say.
    std::string config = Environment("XDG_CONFIG_HOME");
    if (config.empty() || config.front() != '/') {
        std::string home = HomeFolder();
        if (home.empty()) return {};
        config = home + "/.config";
    }
    return config + "/skldbm/" + kMemoryName;
}

std::optional<std::string> ReadProgramFolderMemory(const std::string& memory) {
    if (memory.empty()) return std::nullopt;
    int fd = ::open(memory.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) return std::nullopt;
    struct stat info {};
    std::string text;
    if (::fstat(fd, &info) == 0 && S_ISREG(info.st_mode)) {
        char buffer[4096];
        while (text.size() < kMemoryLimit) {
            ssize_t got = ::read(fd, buffer, sizeof buffer);
            if (got < 0 && errno == EINTR) continue;
            if (got <= 0) break;
            text.append(buffer, static_cast<size_t>(got));
        }
    }
    ::close(fd);
    text = text.substr(0, text.find_first_of("\r\n"));
    if (text.empty()) return std::nullopt;
    return text;
}

std::string WriteProgramFolderMemory(const std::string& memory, const std::string& folder) {
    if (memory.empty()) return "no place to remember it: neither XDG_CONFIG_HOME nor HOME is set";
    std::string problem = MakeFolders(ParentOf(memory));
    if (!problem.empty()) return problem;
    // A new file renamed over the old one: a failed write never leaves half a name.
    std::string temporary = memory + ".new";
    int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (fd < 0) return Reason("cannot write", temporary);
    bool written = WriteAll(fd, folder + "\n") && ::fsync(fd) == 0;
    int writeError = errno;
    ::close(fd);
    if (!written) {
        ::unlink(temporary.c_str());
        errno = writeError;
        return Reason("cannot write", temporary);
    }
    if (::rename(temporary.c_str(), memory.c_str()) != 0) {
        std::string reason = Reason("cannot write", memory);
        ::unlink(temporary.c_str());
        return reason;
    }
    return {};
}

std::vector<std::string> UsualWinePrefixes() {
    std::string prefix = Environment("WINEPREFIX");
    if (prefix.empty()) {
        std::string home = HomeFolder();
        if (home.empty()) return {};
        prefix = home + "/.wine";
    }
    return {prefix};
}

std::vector<std::string> ProgramFilesFolders() {
    return {};
}

std::string JoinPath(const std::string& folder, const std::string& name) {
    if (folder.empty() || folder.back() == '/') return folder + name;
    return folder + '/' + name;
}

std::vector<std::string> ListSubfolderNames(const std::string& folder) {
    return ListNames(folder, true);
}

std::vector<std::string> ListFileNames(const std::string& folder) {
    return ListNames(folder, false);
}

}  // namespace skl::platform
