#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

namespace skl::platform {

// An open file of the operating system: a descriptor on POSIX, a handle on
// Windows. Only the platform's own files look inside; -1 means no file on both.
struct NativeFile {
    std::intptr_t Value = -1;
    bool IsOpen() const { return Value != -1; }
};

// Opens an existing regular file for reading, without waiting for a pipe or a
// device that bears the name. Throws RunError: 53 when the file or a folder on
// its way is missing, 75 for any other failure and for what is no regular file.
NativeFile OpenForReading(const std::string& nativePath);

// Creates or truncates a file for writing through stdio. Throws RunError: 53
// when a folder on its way is missing, 75 for any other failure.
std::FILE* CreateForWriting(const std::string& nativePath);

// Closing a file that is not open is no error.
void CloseFile(NativeFile file);

// The length of an open file now; 0 when it cannot be told.
int64_t FileLength(NativeFile file);

// Reads up to `size` bytes at `offset` without moving anything shared; gives
// how many it read, fewer at the end of the file and 0 on an error.
int64_t ReadAt(NativeFile file, int64_t offset, void* buffer, int64_t size);

// All bytes of an open file from its start; what cannot be read is left out.
std::string ReadAll(NativeFile file);

}  // namespace skl::platform
