// The lock of a file on POSIX: flock on a descriptor opened for appending.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/FileLock.h"

namespace skl::platform {

namespace {

int Fd(const FileLock& lock) {
    return static_cast<int>(lock.File.Value);
}

// True when the descriptor still is the file at the path: the holder before us
// deletes the file before it lets go of the lock, so a lock can be won on a
// file that no longer has a name.
bool StillNamed(int fd, const std::string& nativePath) {
    struct stat open {};
    struct stat named {};
    return ::fstat(fd, &open) == 0 && ::stat(nativePath.c_str(), &named) == 0 &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

}  // namespace

LockResult CreateAndLock(const std::string& nativePath, FileLock& lock, bool& existed) {
    constexpr int kFlags = O_RDWR | O_APPEND | O_NONBLOCK | O_CLOEXEC;
    existed = false;
    int fd = ::open(nativePath.c_str(), kFlags | O_CREAT | O_EXCL, 0666);
    if (fd < 0 && errno == EEXIST) {
        existed = true;
        fd = ::open(nativePath.c_str(), kFlags);
    }
    if (fd < 0) return LockResult::NoFile;
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        ::close(fd);
        return LockResult::Busy;
    }
    if (!StillNamed(fd, nativePath)) {
        ::close(fd);
        return LockResult::Unnamed;
    }
    lock.File = NativeFile{fd};
    return LockResult::Locked;
}

bool IsLockedElsewhere(const std::string& nativePath) {
    // A fresh descriptor: its lock conflicts with a lock held through any other
    // open of the file, in this process too.
    int fd = ::open(nativePath.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) return false;
    bool busy = ::flock(fd, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    ::close(fd);  // lets go of a lock won here
    return busy;
}

bool AppendDurably(const FileLock& lock, std::string_view bytes) {
    while (!bytes.empty()) {
        ssize_t written = ::write(Fd(lock), bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<size_t>(written));
    }
    ::fsync(Fd(lock));
    return true;
}

bool Truncate(const FileLock& lock) {
    return ::ftruncate(Fd(lock), 0) == 0;
}

void ReleaseLock(FileLock& lock) {
    if (lock.IsHeld()) ::close(Fd(lock));
    lock.File = NativeFile{};
}

}  // namespace skl::platform
