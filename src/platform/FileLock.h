#pragma once

#include <string>
#include <string_view>

#include "platform/NativeFile.h"

namespace skl::platform {

// A file held open with an exclusive lock on it, so that one process at a time
// does what the file guards. The lock is taken at once or not at all, and it
// goes when the file is closed or its process ends, however it ends.
struct FileLock {
    NativeFile File;
    bool IsHeld() const { return File.IsOpen(); }
};

enum class LockResult {
    Locked,   // the file is open and locked by `lock`
    Busy,     // another holder locks the file
    Unnamed,  // the lock was won on a file that its holder deleted meanwhile
    NoFile,   // the file can neither be created nor opened
};

// Opens the file for appending, creating it when there is none, and locks it.
// `existed` tells whether the file was there before. Only on Locked does `lock`
// hold the file. Where the file system cannot lock at all the file counts as
// locked.
LockResult CreateAndLock(const std::string& nativePath, FileLock& lock, bool& existed);

// True when another holder (in this process too) locks the file at the path.
bool IsLockedElsewhere(const std::string& nativePath);

// Appends the bytes to the locked file and flushes them to the disk; false when
// they were not all written.
bool AppendDurably(const FileLock& lock, std::string_view bytes);

// Cuts the locked file to no bytes; false when that fails.
bool Truncate(const FileLock& lock);

// Closes the file, which lets go of the lock. Nothing when none is held.
void ReleaseLock(FileLock& lock);

}  // namespace skl::platform
