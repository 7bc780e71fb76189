// Open files on POSIX: descriptors, pread and fstat.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/NativeFile.h"
#include "platform/RunError.h"

namespace skl::platform {

namespace {

int Fd(NativeFile file) {
    return static_cast<int>(file.Value);
}

}  // namespace

NativeFile OpenForReading(const std::string& nativePath) {
    // O_NONBLOCK keeps a pipe or device from blocking the open; anything that is
    // not a regular file is refused right after.
    int fd = ::open(nativePath.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) ThrowFromErrno(errno);
    struct stat info {};
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        ::close(fd);
        throw RunError(kPathFileAccess);
    }
    return NativeFile{fd};
}

std::FILE* CreateForWriting(const std::string& nativePath) {
    std::FILE* file = std::fopen(nativePath.c_str(), "wb");
    if (file == nullptr) ThrowFromErrno(errno);
    return file;
}

void CloseFile(NativeFile file) {
    if (file.IsOpen()) ::close(Fd(file));
}

int64_t FileLength(NativeFile file) {
    struct stat info {};
    if (::fstat(Fd(file), &info) != 0) return 0;
    return info.st_size;
}

int64_t ReadAt(NativeFile file, int64_t offset, void* buffer, int64_t size) {
    auto* out = static_cast<char*>(buffer);
    int64_t done = 0;
    while (done < size) {
        ssize_t got =
            ::pread(Fd(file), out + done, static_cast<size_t>(size - done), offset + done);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        done += got;
    }
    return done;
}

}  // namespace skl::platform
