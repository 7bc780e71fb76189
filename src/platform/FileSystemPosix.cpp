// Files and folders on POSIX: stat, directory reads, rename, unlink, mkdir and
// fsync.
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/FileSystem.h"

namespace skl::platform {

namespace {

bool StatMode(const std::string& nativePath, mode_t& mode) {
    struct stat info {};
    if (nativePath.empty() || ::stat(nativePath.c_str(), &info) != 0) return false;
    mode = info.st_mode;
    return true;
}

FileResult ResultOf(int status) {
    if (status == 0) return FileResult::Done;
    return errno == ENOENT || errno == ENOTDIR ? FileResult::Missing : FileResult::Failed;
}

void Sync(const std::string& nativePath, int flags) {
    int fd = ::open(nativePath.c_str(), O_RDONLY | O_CLOEXEC | flags);
    if (fd < 0) return;
    ::fsync(fd);
    ::close(fd);
}

}  // namespace

bool IsRegularFile(const std::string& nativePath) {
    mode_t mode = 0;
    return StatMode(nativePath, mode) && S_ISREG(mode);
}

bool IsDirectory(const std::string& nativePath) {
    mode_t mode = 0;
    return StatMode(nativePath, mode) && S_ISDIR(mode);
}

bool PathExists(const std::string& nativePath) {
    struct stat info {};
    return ::lstat(nativePath.c_str(), &info) == 0;
}

std::vector<FolderEntry> ListFolder(const std::string& nativeFolder) {
    std::vector<FolderEntry> entries;
    DIR* dir = nativeFolder.empty() ? nullptr : ::opendir(nativeFolder.c_str());
    if (dir == nullptr) return entries;
    std::string base = nativeFolder.back() == '/' ? nativeFolder : nativeFolder + "/";
    while (dirent* found = ::readdir(dir)) {
        std::string name = found->d_name;
        if (name == "." || name == "..") continue;
        bool hidden = name.front() == '.';
        entries.push_back({name, base + name, hidden});
    }
    ::closedir(dir);
    return entries;
}

FileResult RenameReplacing(const std::string& fromNativePath, const std::string& toNativePath) {
    return ResultOf(::rename(fromNativePath.c_str(), toNativePath.c_str()));
}

FileResult RemoveFile(const std::string& nativePath) {
    return ResultOf(::unlink(nativePath.c_str()));
}

bool MakeFolder(const std::string& nativePath) {
    return ::mkdir(nativePath.c_str(), 0777) == 0;
}

void SyncFile(const std::string& nativePath) {
    Sync(nativePath, 0);
}

void SyncFolder(const std::string& nativeFolder) {
    Sync(nativeFolder, O_DIRECTORY);
}

std::string ReadWholeFile(const std::string& nativePath) {
    std::string bytes;
    int fd = ::open(nativePath.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return bytes;
    char buffer[65536];
    for (;;) {
        ssize_t got = ::read(fd, buffer, sizeof buffer);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        bytes.append(buffer, static_cast<size_t>(got));
    }
    ::close(fd);
    return bytes;
}

bool WriteWholeFile(const std::string& nativePath, std::string_view bytes) {
    int fd = ::open(nativePath.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (fd < 0) return false;
    bool written = true;
    while (written && !bytes.empty()) {
        ssize_t done = ::write(fd, bytes.data(), bytes.size());
        if (done < 0 && errno == EINTR) continue;
        written = done > 0;
        if (written) bytes.remove_prefix(static_cast<size_t>(done));
    }
    return ::close(fd) == 0 && written;
}

}  // namespace skl::platform
