#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace skl::platform {

// Native file-system tests. Links are followed.
bool IsRegularFile(const std::string& nativePath);
bool IsDirectory(const std::string& nativePath);
// True when anything stands under the path, a link that leads nowhere included.
bool PathExists(const std::string& nativePath);

// One entry of a folder: its native name, its native path, and whether the
// platform hides it (on POSIX, a name that starts with a dot).
struct FolderEntry {
    std::string Name;
    std::string NativePath;
    bool Hidden = false;
};

// The entries of a native folder, "." and ".." left out, in the order the
// folder gives them. A folder that does not exist or cannot be read gives none.
std::vector<FolderEntry> ListFolder(const std::string& nativeFolder);

// How a change of a folder's entries went. Missing: the file or a folder on its
// way does not exist, the one failure a first run meets and passes over.
enum class FileResult { Done, Missing, Failed };

// Gives a file a new name in one step, replacing a file that has that name.
FileResult RenameReplacing(const std::string& fromNativePath, const std::string& toNativePath);
// Deletes a file; a folder is never deleted.
FileResult RemoveFile(const std::string& nativePath);
// Creates one folder; false when it cannot (an existing one included).
bool MakeFolder(const std::string& nativePath);

// Flush a file's bytes, or a folder's entries (renames, creations, deletions),
// to the disk. Errors are ignored.
void SyncFile(const std::string& nativePath);
void SyncFolder(const std::string& nativeFolder);

// The bytes of a file; empty when it cannot be read.
std::string ReadWholeFile(const std::string& nativePath);
// Creates or truncates a file and writes the bytes; false when that fails.
bool WriteWholeFile(const std::string& nativePath, std::string_view bytes);

// One file found by a directory search: its name as the run sees it
// (Windows-1252, '?' for characters it cannot hold) and the native path to open.
struct FoundFile {
    std::string Name;
    std::string NativePath;
};

// The regular files directly in a native folder whose name ends in ".bgl" in any
// case, hidden files left out, in the order of their names compared
// case-insensitively (byte order of the upper-cased Windows-1252 names). A
// folder that does not exist or cannot be read gives no file.
std::vector<FoundFile> ListBglFiles(const std::string& nativeFolder);

}  // namespace skl::platform
