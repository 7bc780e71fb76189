#include "platform/FileTable.h"

#include "platform/RunError.h"

namespace skl::platform {

FileTable::~FileTable() {
    CloseAll();
}

int FileTable::FreeFile() const {
    int number = 1;
    while (open_.count(number) != 0) ++number;
    return number;
}

bool FileTable::IsOpen(int number) const {
    return open_.count(number) != 0;
}

void FileTable::OpenOutput(int number, const std::string& nativePath) {
    if (IsOpen(number) || number < 1) throw RunError(kPathFileAccess);
    std::FILE* file = CreateForWriting(nativePath);
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
    NativeFile file = OpenForReading(nativePath);
    open_[number].Input = file;
}

void FileTable::Write(int number, std::string_view bytes) {
    auto it = open_.find(number);
    if (it == open_.end() || it->second.Output == nullptr) throw RunError(kBadFileNumber);
    if (!bytes.empty() &&
        std::fwrite(bytes.data(), 1, bytes.size(), it->second.Output) != bytes.size())
        throw RunError(kPathFileAccess);
}

void FileTable::WriteLine(int number, std::string_view text) {
    Write(number, text);
    Write(number, "\r\n");
}

NativeFile FileTable::InputDescriptor(int number) const {
    auto it = open_.find(number);
    if (it == open_.end() || !it->second.Input.IsOpen()) throw RunError(kBadFileNumber);
    return it->second.Input;
}

std::string FileTable::ReadInput(int number) const {
    return ReadAll(InputDescriptor(number));
}

void FileTable::Close(int number) {
    auto it = open_.find(number);
    if (it == open_.end()) return;
    if (it->second.Output != nullptr) std::fclose(it->second.Output);
    CloseFile(it->second.Input);
    open_.erase(it);
}

void FileTable::CloseAll() {
    while (!open_.empty()) Close(open_.begin()->first);
}

}  // namespace skl::platform
