#include "platform/FileTable.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/RunError.h"

namespace skl::platform {

FileTable::~FileTable() { CloseAll(); }

int FileTable::FreeFile() const {
    int number = 1;
    while (open_.count(number) != 0) ++number;
    return number;
}

bool FileTable::IsOpen(int number) const { return open_.count(number) != 0; }

void FileTable::OpenOutput(int number, const std::string& nativePath) {
    if (IsOpen(number) || number < 1) throw RunError(kPathFileAccess);
    std::FILE* file = std::fopen(nativePath.c_str(), "wb");
    if (file == nullptr) ThrowFromErrno(errno);
    // Records are written a few bytes at a time: a large buffer keeps the
    // system calls few (stdio would take the block size of the file system).
    constexpr size_t kBufferSize = 1 << 16;
    Entry& entry = open_[number];
    entry.Buffer = std::make_unique<char[]>(kBufferSize);
    std::setvbuf(file, entry.Buffer.get(), _IOFBF, kBufferSize);
    entry.Output = file;
}

void FileTable::OpenInput(int number, const std::string& nativePath) {
    if (IsOpen(number) || number < 1) throw RunError(kPathFileAccess);
    // O_NONBLOCK keeps a pipe or device from blocking the open; anything that is
    // not a regular file is refused right after.
    int fd = ::open(nativePath.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) ThrowFromErrno(errno);
    struct stat info {};
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        ::close(fd);
        throw RunError(kPathFileAccess);
    }
    open_[number].Input = fd;
}

void FileTable::Write(int number, std::string_view bytes) {
    auto it = open_.find(number);
    if (it == open_.end() || it->second.Output == nullptr) throw RunError(kBadFileNumber);
    if (!bytes.empty() && std::fwrite(bytes.data(), 1, bytes.size(), it->second.Output) != bytes.size())
        throw RunError(kPathFileAccess);
}

void FileTable::WriteLine(int number, std::string_view text) {
    Write(number, text);
    Write(number, "\r\n");
}

int FileTable::InputDescriptor(int number) const {
    auto it = open_.find(number);
    if (it == open_.end() || it->second.Input < 0) throw RunError(kBadFileNumber);
    return it->second.Input;
}

void FileTable::Close(int number) {
    auto it = open_.find(number);
    if (it == open_.end()) return;
    if (it->second.Output != nullptr) std::fclose(it->second.Output);
    if (it->second.Input >= 0) ::close(it->second.Input);
    open_.erase(it);
}

void FileTable::CloseAll() {
    while (!open_.empty()) Close(open_.begin()->first);
}

}  // namespace skl::platform
